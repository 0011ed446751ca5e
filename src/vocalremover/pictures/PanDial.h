#pragma once

#include "vocalremover/pictures/DisplayPanel.h"
#include "vocalremover/pictures/ThemedDrawing.h"

#include <QImage>

class QLabel;

/// The position of the voice between left and right, as a knob that points to it.
///
/// The scale is drawn, in pixels of the screen, on the surface "Picture2", and over it the knob, a picture that the
/// hidden label "S" holds, turned by RotateImage. Where there is another picture in "S", that one is turned.
class PanDial : public DisplayPanel
{
    Q_OBJECT

public:
    explicit PanDial(QWidget* parent = nullptr);

    /// A step to the right turns the knob by 0.0175, with the clock: a degree and a little. -100 is the very left.
    ///
    /// Events waiting for the program are handled first, commands of the user's among them, and there the dial may
    /// come to be called again, or to its end. A call from there draws its position at once, and has no events
    /// handled; the outer call then draws the position that was asked for last. The caller takes care of its own
    /// end.
    void showAngleOf(int pan);

protected:
    QSize pictureSize() const override;
    void placePicture() override;
    void takeColours(const PictureColours& colours) override;

private:
    class Surface;

    /// Pixels of the screen to a unit of the drawings.
    double unit() const;

    void renderDrawings();
    void draw();

    ThemedDrawing scale;
    ThemedDrawing knob;
    QColor ground;
    QImage clearSurface;
    Surface* const Picture2;
    QLabel* const S;
    int pan = 0;
    bool handlingEvents = false;
};

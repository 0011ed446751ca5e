#pragma once

#include <QWidget>

struct PictureColours;

/// What a picture stands in: a panel with the ground of text fields and a thin line round it, in light windows and
/// dark ones. It takes no keyboard.
class DisplayPanel : public QWidget
{
    Q_OBJECT

public:
    explicit DisplayPanel(QWidget* parent = nullptr);

    /// As large as a picture of this size wants it.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    /// Within the line. Empty where the panel is smaller than its border.
    QRect room() const;

    /// In pixels of the window.
    virtual QSize pictureSize() const = 0;

    /// The picture is to be drawn anew, at another place or size.
    virtual void placePicture() = 0;

    /// The picture is to be drawn anew in these colours.
    virtual void takeColours(const PictureColours& colours) = 0;

    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

#pragma once

#include "vocalremover/pictures/DisplayPanel.h"

#include <optional>

/// A picture that follows a slider: a drawing twice, one over the other, of which the upper one, the active, shows
/// as much as the slider says. What takes part is in colour.
class LayeredPicture : public DisplayPanel
{
    Q_OBJECT

public:
    /// A slider's value and its range.
    void showValue(int value, int minimum, int maximum);

protected:
    struct SliderState
    {
        int value = 0;
        int minimum = 0;
        int maximum = 0;
    };

    enum class Coloured
    {
        Active,
        Inactive
    };

    struct Looks
    {
        const char* drawing;
        const char* activeName;
        const char* inactiveName;
        Coloured coloured;

        /// The edge of the active drawing that is a cut-off, drawn as a line.
        std::optional<Qt::Edge> cutOff;
    };

    LayeredPicture(const Looks& looks, QWidget* parent);

    /// The part of the drawing that the active one shows, where the inactive one is at @p whole.
    virtual QRect activePart(const QRect& whole, const SliderState& slider) const = 0;

    QSize pictureSize() const override;
    void placePicture() override;
    void takeColours(const PictureColours& colours) override;

private:
    class Layer;

    const Coloured coloured;
    Layer* const inactive;
    Layer* const active;
    SliderState slider;
};

#pragma once

/// How far the upper of a picture's two drawings, the active one, reaches along its lower one: down a picture, or
/// across it. In pixels of the window, and parts of them.
///
/// A share of the slider's range beyond 0 and 1, or of no range, counts as the nearer of the two.
struct ActiveStretch
{
    double begin = 0;
    double length = 0;

    double end() const { return begin + length; }

    /// On whole pixels: each end goes to the nearest, a half to the even one.
    int firstPixel() const;
    int pixels() const;

    bool operator==(const ActiveStretch&) const = default;
};

/// The low cut-off leaves off at the foot what is below it, in proportion: @p value / @p maximum of the height. The
/// top stays.
ActiveStretch lowCutStretch(double top, double height, int value, int maximum);

/// The high cut-off leaves off at the head what is above it: @p minimum / @p value of the height, so that a picture
/// at the least cut-off is empty. What is left stands on the foot.
ActiveStretch highCutStretch(double top, double height, int value, int minimum);

/// The gain leaves off on the left what it has reached: @p value / @p maximum of the width. What is left reaches to
/// the right edge and a hair, two thirds of a pixel, past it: the hair keeps the foot of the lower drawing in sight
/// at every gain.
ActiveStretch gainStretch(double left, double width, int value, int maximum);

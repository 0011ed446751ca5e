#pragma once

#include "support/Decimal4.h"

class QImage;

/// How a picture is turned, and where it is drawn.
struct ImageRotation
{
    /// A centre of the picture that is its middle.
    static constexpr short middle = -32767;

    /// Radians, against the clock.
    Decimal4 angle = 0;

    /// The point of the surface, in pixels, on which the picture's middle falls.
    int centreX = 0;
    int centreY = 0;

    /// 0x00BBGGRR. Pixels of exactly this colour are not drawn: what is behind them shows.
    int transparentColour = 0xFFFFFF;

    /// 1 is solid, 0 invisible.
    Decimal4 opacity = 1;

    /// 1 is the natural size. Nothing is drawn at 0 and below.
    Decimal4 scale = 1;

    /// The pixel of the picture about which it is turned. The default is replaced in place by half of the width or
    /// the height, of two whole numbers as near the even one.
    short sourceCentreX = middle;
    short sourceCentreY = middle;
};

/// Draws a picture, turned by any angle, on a surface.
///
/// What may change is a square round the centre with the side of the picture's diagonal, which holds it at every
/// angle; what of the square lies beyond the surface is cut off. In it each pixel takes its colour from the four
/// pixels of the picture round the place from which it comes, by their nearness; those of the transparent colour
/// lend that of the surface, so that edges blend with what is behind them. The last row and the last column of the
/// picture only ever lend: unturned it is drawn without them.
///
/// All is reckoned with four decimal places, so that a picture has the same pixels on every machine. A colour that
/// an opacity beyond 0 and 1 takes out of its range is cut to it.
///
/// The surface is of Format_RGB32; one of another format is left as it is, and so is any surface by an empty
/// picture or one whose width squared plus height squared is beyond 31 bits. Pixels are those of the images: their
/// device pixel ratios play no part.
void RotateImage(QImage& surface, const QImage& picture, ImageRotation& rotation);

#include "vocalremover/pictures/GainPicture.h"

#include "vocalremover/pictures/ActiveStretch.h"

GainPicture::GainPicture(QWidget* parent)
    : LayeredPicture({"gain", "picGainActive", "picGainInactive", Coloured::Inactive, {}}, parent)
{
}

QRect GainPicture::activePart(const QRect& whole, const SliderState& slider) const
{
    const ActiveStretch columns = gainStretch(whole.left(), whole.width(), slider.value, slider.maximum);
    return {columns.firstPixel(), whole.top(), columns.pixels(), whole.height()};
}

#include "moc_GainPicture.cpp"

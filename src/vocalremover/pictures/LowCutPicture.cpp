#include "vocalremover/pictures/LowCutPicture.h"

#include "vocalremover/pictures/ActiveStretch.h"

LowCutPicture::LowCutPicture(QWidget* parent)
    : LayeredPicture({"low-cut", "picFilterLowActive", "picFilterLowInactive", Coloured::Active, Qt::BottomEdge},
                     parent)
{
}

QRect LowCutPicture::activePart(const QRect& whole, const SliderState& slider) const
{
    const ActiveStretch rows = lowCutStretch(whole.top(), whole.height(), slider.value, slider.maximum);
    return {whole.left(), rows.firstPixel(), whole.width(), rows.pixels()};
}

#include "moc_LowCutPicture.cpp"

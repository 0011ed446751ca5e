#include "vocalremover/pictures/HighCutPicture.h"

#include "vocalremover/pictures/ActiveStretch.h"

HighCutPicture::HighCutPicture(QWidget* parent)
    : LayeredPicture({"high-cut", "picFilterHighActive", "picFilterHighInactive", Coloured::Active, Qt::TopEdge},
                     parent)
{
}

QRect HighCutPicture::activePart(const QRect& whole, const SliderState& slider) const
{
    const ActiveStretch rows = highCutStretch(whole.top(), whole.height(), slider.value, slider.minimum);
    return {whole.left(), rows.firstPixel(), whole.width(), rows.pixels()};
}

#include "moc_HighCutPicture.cpp"

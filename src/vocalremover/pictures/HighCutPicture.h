#pragma once

#include "vocalremover/pictures/LayeredPicture.h"

/// The high end of a sound, from the least cut-off at its foot. What is below the cut-off is in colour: there the
/// voice is looked for.
class HighCutPicture : public LayeredPicture
{
    Q_OBJECT

public:
    explicit HighCutPicture(QWidget* parent = nullptr);

protected:
    QRect activePart(const QRect& whole, const SliderState& slider) const override;
};

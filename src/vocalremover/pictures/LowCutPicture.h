#pragma once

#include "vocalremover/pictures/LayeredPicture.h"

/// The low end of a sound, from the lowest note at its foot up to the largest cut-off at its head. What is above
/// the cut-off is in colour: there the voice is looked for.
class LowCutPicture : public LayeredPicture
{
    Q_OBJECT

public:
    explicit LowCutPicture(QWidget* parent = nullptr);

protected:
    QRect activePart(const QRect& whole, const SliderState& slider) const override;
};

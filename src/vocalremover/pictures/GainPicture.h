#pragma once

#include "vocalremover/pictures/LayeredPicture.h"

/// A wedge that fills from the left. The active drawing is the part that the gain has not reached: it is the grey
/// one, and uncovers what is in colour.
class GainPicture : public LayeredPicture
{
    Q_OBJECT

public:
    explicit GainPicture(QWidget* parent = nullptr);

protected:
    QRect activePart(const QRect& whole, const SliderState& slider) const override;
};

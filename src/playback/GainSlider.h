#pragma once

#include "support/controls/Slider.h"

/// An upright slider of hundredths of a decibel, whose value tip shows decibels (+7.5 dB). Beside its groove are
/// marks at its ends and at 0.
class GainSlider : public Slider
{
    Q_OBJECT

public:
    using Slider::Slider;

    QString valueTip() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

#pragma once

#include <QWidget>
#include <memory>

class GainPicture;
class HighCutPicture;
class LowCutPicture;
namespace Ui {
class FilterPanel;
}

/// The two cut-off frequencies, between which vocals are looked for, and the gain of the result, each with a
/// picture that follows its slider.
class FilterPanel : public QWidget
{
    Q_OBJECT

public:
    explicit FilterPanel(QWidget* parent = nullptr);
    ~FilterPanel() override;

    /// Hertz.
    int cutOffLow() const;
    int cutOffHigh() const;

    /// Percent of the level of the source.
    int gain() const;

    void sldCutOffLow_Change();
    void sldCutOffHigh_Change();
    void sldGain_Change();

private:
    void cmdResetAllFrequences_Click();
    void cmdResetGain_Click();

    const std::unique_ptr<Ui::FilterPanel> ui;
    LowCutPicture* const lowPicture;
    HighCutPicture* const highPicture;
    GainPicture* const gainPicture;
};

#pragma once

#include <QDialog>
#include <memory>

class Slider;
namespace Ui {
class frmKeyCalc;
}

/// The transpose calculator: for a recording in one key that is to be played in another.
///
/// It tells how many semitones lie between two keys, up and down, and adds either move to what the pitch slider
/// holds. A move past the slider's end is dropped. Both buttons close the window.
class frmKeyCalc : public QDialog
{
    Q_OBJECT

public:
    /// @p sldPitchSemi outlives the window.
    explicit frmKeyCalc(Slider& sldPitchSemi, QWidget* parent = nullptr);
    ~frmKeyCalc() override;

private:
    void CalculateKey();
    void cboInitKey_Click();
    void cboDestKey_Click();
    void cmdTransposeUp_Click();
    void cmdTransposeDown_Click();

    Slider& sldPitchSemi;
    const std::unique_ptr<Ui::frmKeyCalc> ui;

    /// The moves of the last two different keys that were chosen; none before that.
    short UpSemitones = 0;
    short DownSemitones = 0;
};

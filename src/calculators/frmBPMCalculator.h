#pragma once

#include <QWidget>
#include <memory>

class MsgBox;
class QTimer;
class Slider;
namespace Ui {
class frmBPMCalculator;
}

/// The BPM calculator: finds the tempo of what is heard by tapping along, and moves the tempo slider so that it is
/// heard at another.
///
/// The first click of cmdDetermineBpm starts five seconds. The clicks in them, and the keys that went down on the
/// window since the last result, are beats; their number times twelve is the result. For four seconds after it the
/// button is locked, so that a late tap starts nothing.
///
/// A key is a tap while no control has the focus, any key but Tab and Backtab, which lead to the controls. That is
/// so when the window opens and after a click on its ground. A key held down goes down once: what the keyboard
/// repeats is no beat.
///
/// The window does not block: it is shown, and may be deleted as soon as it closes. It takes Escape for a tap.
class frmBPMCalculator : public QWidget
{
    Q_OBJECT

public:
    /// The slider and the message box outlive the window.
    frmBPMCalculator(Slider& sldTempo, MsgBox& msgBox, QWidget* parent = nullptr);
    ~frmBPMCalculator() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void cmdDetermineBpm_Click();
    void tmrBpm_Timer();
    void tmrStop_Timer();
    void cmdApplyBpm_Click();
    void countTap();

    Slider& sldTempo;
    MsgBox& msgBox;
    const std::unique_ptr<Ui::frmBPMCalculator> ui;
    QTimer* const tmrBpm;
    QTimer* const tmrStop;

    short TapCount = 0;
    short BpmSeconds = 0;
};

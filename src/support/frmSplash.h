#pragma once

#include <QWidget>
#include <memory>

class QTimer;
namespace Ui {
class frmSplash;
}

/// Covers the time until the main window is there: shown before its load begins, ended when it is done.
///
/// Its bar runs once across when the window is shown. Then it is redrawn at a standstill for as long as the
/// window's timer runs.
class frmSplash : public QWidget
{
    Q_OBJECT

public:
    /// The window stays above @p owner, which need not be visible, and not above other programs. Message boxes that
    /// come up meanwhile stay above it.
    explicit frmSplash(QWidget* owner = nullptr);
    ~frmSplash() override;

    /// Hides the window and stops its timer.
    void end();

    /// Returns from showing when the window can be seen, but after a fifth of a second at the latest. The event
    /// loop turns meanwhile, without the user's input.
    void setVisible(bool visible) override;

private:
    void Load();
    void Timer1_Timer();

    const std::unique_ptr<Ui::frmSplash> ui;
    QTimer* const Timer1;
};

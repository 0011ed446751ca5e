#pragma once

#include <QDialog>
#include <memory>

class SettingsStore;
namespace Ui {
class frmRecordingTip;
}

/// Shows how the recorder is set up for a microphone and for what the player itself plays. It stands before the
/// recorder's window, which comes when this one is closed, in whatever way: finished() tells of all of them.
///
/// Whether it is wanted is kept in the settings, "Show RecordingTip"; its check box writes there at once.
class frmRecordingTip : public QDialog
{
    Q_OBJECT

public:
    /// @p settings outlives the window.
    explicit frmRecordingTip(SettingsStore& settings, QWidget* parent = nullptr);
    ~frmRecordingTip() override;

    /// Where it is not, the recorder comes at once.
    static bool wanted(const SettingsStore& settings);

private:
    void chkLoadTipsAtStartup_Click();

    SettingsStore& settings;
    const std::unique_ptr<Ui::frmRecordingTip> ui;
};

#pragma once

#include <QWidget>
#include <memory>

class AudioProject;
class DiscEngine;
class MsgBox;
struct DiscState;
namespace Ui {
class DiscDevicePanel;
}

/// What a disc is written with: the device, its speed, and the options of the write.
///
/// The device that is picked becomes the window's current one.
class DiscDevicePanel : public QWidget
{
    Q_OBJECT

public:
    /// The engine, the window's state and the message box outlive the panel.
    DiscDevicePanel(DiscEngine& AudioBurner, DiscState& state, MsgBox& msgBox, QWidget* parent = nullptr);
    ~DiscDevicePanel() override;

    /// Lists the devices that can write, and picks the first.
    void FillDeviceList();

    /// Tells the project what is set here.
    void passSettingsTo(AudioProject& project) const;

    /// Whether the controls can be used. Protection against underruns needs a device that has it as well.
    void setIdle(bool idle);

signals:
    /// Another device is the current one, and its speeds are listed.
    void deviceChanged();

private:
    void cboDevices_Click();
    void addDevice(const QString& name, short index);
    void FillSpeedList();
    void listSpeeds();
    bool hasUnderrunProtection() const;

    DiscEngine& AudioBurner;
    DiscState& state;
    MsgBox& msgBox;
    const std::unique_ptr<Ui::DiscDevicePanel> ui;
};

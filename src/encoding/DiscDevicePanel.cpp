#include "encoding/DiscDevicePanel.h"

#include "encoding/DiscState.h"
#include "encoding/DiscWriteTexts.h"
#include "engines/AudioProject.h"
#include "engines/DiscDevice.h"
#include "engines/DiscEngine.h"
#include "support/ToolTipText.h"
#include "support/dialogs/MsgBox.h"
#include "ui_DiscDevicePanel.h"

DiscDevicePanel::DiscDevicePanel(DiscEngine& AudioBurner, DiscState& state, MsgBox& msgBox, QWidget* parent)
    : QWidget(parent)
    , AudioBurner(AudioBurner)
    , state(state)
    , msgBox(msgBox)
    , ui(std::make_unique<Ui::DiscDevicePanel>())
{
    ui->setupUi(this);
    connect(ui->cboDevices, &ComboBox::Click, this, &DiscDevicePanel::cboDevices_Click);
}

DiscDevicePanel::~DiscDevicePanel() = default;

void DiscDevicePanel::FillDeviceList()
{
    ui->cboDevices->clear();
    const short count = AudioBurner.GetDeviceCount();
    for (short index = 0; index < count; ++index) {
        DiscDevice* device = AudioBurner.GetDevice(index);
        if (device != nullptr && device->IsDeviceUsable())
            addDevice(device->GetDeviceName(), index);
    }
    if (ui->cboDevices->count() == 0) {
        msgBox.show(QStringLiteral("There are no compatible devices reported.\n"
                                   "Some older devices are not currently supported."),
                    MsgBox::Look::Information);
        return;
    }
    ui->cboDevices->setListIndex(0);
}

void DiscDevicePanel::addDevice(const QString& name, short index)
{
    ui->cboDevices->addItem(name, static_cast<int>(index));
    ui->cboDevices->setItemData(ui->cboDevices->count() - 1, toolTipText(name), Qt::ToolTipRole);
}

void DiscDevicePanel::passSettingsTo(AudioProject& project) const
{
    project.SetWriteSpeed(ui->cboWriteSpeed->currentData().toInt());
    project.SetCacheFiles(ui->chkCacheFiles->isChecked());
    project.SetTestMode(ui->chkTestWrite->isChecked());
    project.SetBurnProof(ui->chkUseBurnProof->isChecked());
    project.SetWriteMode(ui->chkDiscAtOnce->isChecked() ? AudioProject::discAtOnce : AudioProject::trackAtOnce);
}

void DiscDevicePanel::setIdle(bool idle)
{
    for (QWidget* control : std::initializer_list<QWidget*>{ui->cboDevices, ui->cboWriteSpeed, ui->chkCacheFiles,
                                                            ui->chkTestWrite, ui->chkDiscAtOnce})
        control->setEnabled(idle);
    ui->chkUseBurnProof->setEnabled(idle && hasUnderrunProtection());
}

void DiscDevicePanel::cboDevices_Click()
{
    state.Device = AudioBurner.GetDevice(static_cast<short>(ui->cboDevices->currentData().toInt()));
    FillSpeedList();
    const bool protection = hasUnderrunProtection();
    ui->chkUseBurnProof->setEnabled(protection);
    ui->chkUseBurnProof->setChecked(protection);
    emit deviceChanged();
}

void DiscDevicePanel::FillSpeedList()
{
    ui->cboWriteSpeed->clear();
    listSpeeds();
    if (ui->cboWriteSpeed->count() == 0)
        ui->cboWriteSpeed->addItem(QStringLiteral("MAX"), 0);
    ui->cboWriteSpeed->setListIndex(0);
}

void DiscDevicePanel::listSpeeds()
{
    if (state.Device == nullptr)
        return;
    DiscDevice& device = *state.Device;
    device.RefreshDisc(0);
    const short count = device.GetWriteSpeedCount();
    for (short index = 0; index < count; ++index) {
        const int code = device.GetWriteSpeedCode(index);
        ui->cboWriteSpeed->addItem(writeSpeedText(device.GetWriteSpeedRate(code)), code);
    }
}

bool DiscDevicePanel::hasUnderrunProtection() const
{
    return state.Device != nullptr && state.Device->GetCapability(DiscDevice::underrunProtection);
}

#include "moc_DiscDevicePanel.cpp"

#include "recorder/frmRecordingTip.h"

#include "support/CentreOnScreen.h"
#include "support/Numbers.h"
#include "support/Pictures.h"
#include "support/SettingsStore.h"
#include "ui_frmRecordingTip.h"

frmRecordingTip::frmRecordingTip(SettingsStore& settings, QWidget* parent)
    : QDialog(parent)
    , settings(settings)
    , ui(std::make_unique<Ui::frmRecordingTip>())
{
    ui->setupUi(this);
    setWindowIcon(programIcon());
    ui->chkLoadTipsAtStartup->setChecked(wanted(settings));
    connect(ui->chkLoadTipsAtStartup, &QCheckBox::toggled, this, &frmRecordingTip::chkLoadTipsAtStartup_Click);
    connect(ui->cmdClose, &QPushButton::clicked, this, &frmRecordingTip::close);
    ui->cmdClose->setFocus();
    centreOnScreen(*this);
}

frmRecordingTip::~frmRecordingTip() = default;

bool frmRecordingTip::wanted(const SettingsStore& settings)
{
    return leadingNumber(settings.GetSetting("Options", "Show RecordingTip", "1")) != 0;
}

void frmRecordingTip::chkLoadTipsAtStartup_Click()
{
    settings.SaveSetting("Options", "Show RecordingTip", ui->chkLoadTipsAtStartup->isChecked() ? "1" : "0");
}

#include "moc_frmRecordingTip.cpp"

#include "encoding/VariableBitratePanel.h"

#include "encoding/EncoderBitrates.h"
#include "engines/Mp3EncoderEngine.h"
#include "ui_VariableBitratePanel.h"

namespace {

constexpr int worstQuality = 9;
constexpr int usualQuality = 4;

}  // namespace

// The lists are connected once they show their defaults, which are not written: nobody has chosen them.
VariableBitratePanel::VariableBitratePanel(Mp3EncoderEngine& LameEncoderX1, QWidget* parent)
    : QWidget(parent)
    , LameEncoderX1(LameEncoderX1)
    , ui(std::make_unique<Ui::VariableBitratePanel>())
{
    ui->setupUi(this);
    for (int quality = 0; quality <= worstQuality; ++quality)
        ui->cmbVBRQuality->addItem(QString::number(quality));
    ui->cmbVBRQuality->setListIndex(usualQuality);
    offerBitrates(*ui->cmbMinVBRRate);
    offerBitrates(*ui->cmbMaxVBRRate);
    connect(ui->chkUseVBR, &QCheckBox::toggled, &LameEncoderX1, &Mp3EncoderEngine::UseVbr);
    connect(ui->chkVBRTag, &QCheckBox::toggled, &LameEncoderX1, &Mp3EncoderEngine::DisableVbrTag);
    connect(ui->cmbVBRQuality, &ComboBox::Click, this, &VariableBitratePanel::cmbVBRQuality_Click);
    connect(ui->cmbMinVBRRate, &ComboBox::Click, this, &VariableBitratePanel::cmbMinVBRRate_Click);
    connect(ui->cmbMaxVBRRate, &ComboBox::Click, this, &VariableBitratePanel::cmbMaxVBRRate_Click);
}

VariableBitratePanel::~VariableBitratePanel() = default;

void VariableBitratePanel::cmbVBRQuality_Click()
{
    LameEncoderX1.VbrQuality(chosenNumber(*ui->cmbVBRQuality));
}

void VariableBitratePanel::cmbMinVBRRate_Click()
{
    LameEncoderX1.MinVbrBitrate(chosenNumber(*ui->cmbMinVBRRate));
}

void VariableBitratePanel::cmbMaxVBRRate_Click()
{
    LameEncoderX1.MaxVbrBitrate(chosenNumber(*ui->cmbMaxVBRRate));
}

#include "moc_VariableBitratePanel.cpp"

#include "calculators/frmKeyCalc.h"

#include "support/Pictures.h"
#include "support/controls/Slider.h"
#include "ui_frmKeyCalc.h"

namespace {

constexpr int octave = 12;

}  // namespace

frmKeyCalc::frmKeyCalc(Slider& sldPitchSemi, QWidget* parent)
    : QDialog(parent)
    , sldPitchSemi(sldPitchSemi)
    , ui(std::make_unique<Ui::frmKeyCalc>())
{
    ui->setupUi(this);
    setWindowIcon(programIcon());
    QFont large = ui->lblAction->font();
    large.setPointSizeF(QFontInfo(large).pointSizeF() * 1.4);
    large.setBold(true);
    ui->lblAction->setFont(large);
    connect(ui->cboInitKey, &ComboBox::Click, this, &frmKeyCalc::cboInitKey_Click);
    connect(ui->cboDestKey, &ComboBox::Click, this, &frmKeyCalc::cboDestKey_Click);
    connect(ui->cmdTransposeUp, &QPushButton::clicked, this, &frmKeyCalc::cmdTransposeUp_Click);
    connect(ui->cmdTransposeDown, &QPushButton::clicked, this, &frmKeyCalc::cmdTransposeDown_Click);
}

frmKeyCalc::~frmKeyCalc() = default;

// For equal keys only the text changes: the buttons keep the moves worked out before.
void frmKeyCalc::CalculateKey()
{
    const int initial = ui->cboInitKey->listIndex();
    const int desired = ui->cboDestKey->listIndex();
    if (initial == desired) {
        ui->lblAction->setText(tr("No changes"));
        return;
    }
    const int up = desired > initial ? desired - initial : octave - (initial - desired);
    UpSemitones = static_cast<short>(up);
    DownSemitones = static_cast<short>(octave - up);
    ui->lblAction->setText(tr("%1 up or %2 down").arg(UpSemitones).arg(DownSemitones));
}

void frmKeyCalc::cboInitKey_Click()
{
    if (ui->cboDestKey->listIndex() >= 0)
        CalculateKey();
}

void frmKeyCalc::cboDestKey_Click()
{
    if (ui->cboInitKey->listIndex() >= 0)
        CalculateKey();
}

void frmKeyCalc::cmdTransposeUp_Click()
{
    sldPitchSemi.stepOrRefuse(UpSemitones);
    close();
}

void frmKeyCalc::cmdTransposeDown_Click()
{
    sldPitchSemi.stepOrRefuse(-DownSemitones);
    close();
}

#include "moc_frmKeyCalc.cpp"

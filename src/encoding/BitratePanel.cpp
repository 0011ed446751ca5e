#include "encoding/BitratePanel.h"

#include "encoding/EncoderBitrates.h"
#include "engines/Mp3EncoderEngine.h"
#include "ui_BitratePanel.h"

namespace {

constexpr int normalPriority = 3;

}  // namespace

// The lists are connected once they show their defaults, which are not written: nobody has chosen them.
BitratePanel::BitratePanel(Mp3EncoderEngine& LameEncoderX1, QWidget* parent)
    : QWidget(parent)
    , LameEncoderX1(LameEncoderX1)
    , ui(std::make_unique<Ui::BitratePanel>())
{
    ui->setupUi(this);
    offerBitrates(*ui->cmbBitrate);
    ui->cmbPriority->addItems({tr("Idle"), tr("Lowest"), tr("Below Normal"), tr("Normal"), tr("Above Normal"),
                               tr("Highest"), tr("Time Critical")});
    ui->cmbPriority->setListIndex(normalPriority);
    connect(ui->cmbBitrate, &ComboBox::Click, this, &BitratePanel::cmbBitrate_Click);
    connect(ui->cmbPriority, &ComboBox::Click, this, &BitratePanel::cmbPriority_Click);
}

BitratePanel::~BitratePanel() = default;

void BitratePanel::cmbBitrate_Click()
{
    LameEncoderX1.Bitrate(chosenNumber(*ui->cmbBitrate));
}

void BitratePanel::cmbPriority_Click()
{
    LameEncoderX1.Priority(ui->cmbPriority->listIndex());
}

#include "moc_BitratePanel.cpp"

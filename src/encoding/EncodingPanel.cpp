#include "encoding/EncodingPanel.h"

#include "engines/Mp3EncoderEngine.h"
#include "support/Numbers.h"
#include "support/dialogs/CommonDialog.h"
#include "support/modSpecialFolders.h"
#include "ui_EncodingPanel.h"

#include <QTimer>

namespace {

constexpr int endingLength = 3;
constexpr int complete = 100;

}  // namespace

EncodingPanel::EncodingPanel(Mp3EncoderEngine& LameEncoderX1, CommonDialog& CommonDialog1, QWidget* parent)
    : QWidget(parent)
    , LameEncoderX1(LameEncoderX1)
    , CommonDialog1(CommonDialog1)
    , ui(std::make_unique<Ui::EncodingPanel>())
    , tmrFinish(new QTimer(this))
{
    ui->setupUi(this);
    tmrFinish->setObjectName("tmrFinish");
    tmrFinish->setInterval(3000);
    connect(tmrFinish, &QTimer::timeout, this, &EncodingPanel::tmrFinish_Timer);
    connect(ui->cmdBrowse, &QToolButton::clicked, this, &EncodingPanel::cmdBrowse_Click);
    connect(ui->cmdEncode, &QToolButton::clicked, this, &EncodingPanel::cmdEncode_Click);
    connect(&LameEncoderX1, &Mp3EncoderEngine::EncodePercent, this, &EncodingPanel::LameEncoderX1_EncodePercent);
}

EncodingPanel::~EncodingPanel() = default;

void EncodingPanel::focusOnBrowse()
{
    ui->cmdBrowse->setFocus();
}

QToolButton& EncodingPanel::cmdOptions()
{
    return *ui->cmdOptions;
}

// A dialog that is cancelled answers with the name that it began with. The ending is its last three characters,
// whatever they are; a name that has no three is chosen without an output.
void EncodingPanel::cmdBrowse_Click()
{
    FileDialogSetup setup;
    setup.fileName = dialogsFileName;
    setup.title = QStringLiteral("Select a file to encode");
    setup.initialFolder = modSpecialFolders::recordingsFolder();
    setup.filter = QStringLiteral("WAV files (*.wav)|*.wav|RAW files (*.raw)|*.raw");
    setup.filterIndex = 1;
    setup.flags = FileDialogSetup::HideReadOnly;
    dialogsFileName = CommonDialog1.ShowOpen(setup).fileName;
    if (!dialogsFileName.isEmpty())
        ui->Text3->setText(dialogsFileName);
    if (dialogsFileName.size() < endingLength)
        return;
    ui->Text4->setText(dialogsFileName.chopped(endingLength) + QStringLiteral("mp3"));
    ui->cmdEncode->setEnabled(true);
}

void EncodingPanel::cmdEncode_Click()
{
    ui->Label8->clear();
    LameEncoderX1.InputFile(ui->Text3->text());
    LameEncoderX1.OutputFile(ui->Text4->text());
    LameEncoderX1.Encode();
}

void EncodingPanel::LameEncoderX1_EncodePercent(int percent)
{
    LastPercent = percent;
    ui->Label8->setText(QStringLiteral("%1% completed").arg(LastPercent));
    ui->Label8->repaint();
    ui->progress->setValue(LastPercent);
    if (leadingNumber(ui->Label8->text()) == complete) {
        ui->progress->setValue(0);
        ui->Label8->setText(QStringLiteral("Done ."));
        tmrFinish->start();
    }
}

void EncodingPanel::tmrFinish_Timer()
{
    ui->Label8->clear();
    tmrFinish->stop();
}

#include "moc_EncodingPanel.cpp"

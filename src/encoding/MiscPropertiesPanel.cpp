#include "encoding/MiscPropertiesPanel.h"

#include "engines/Mp3EncoderEngine.h"
#include "ui_MiscPropertiesPanel.h"

MiscPropertiesPanel::MiscPropertiesPanel(Mp3EncoderEngine& LameEncoderX1, QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::MiscPropertiesPanel>())
{
    ui->setupUi(this);
    const auto write = [&LameEncoderX1](QCheckBox* box, void (Mp3EncoderEngine::*property)(bool)) {
        connect(box, &QCheckBox::toggled, &LameEncoderX1, property);
    };
    write(ui->chkVoiceMode, &Mp3EncoderEngine::VoiceMode);
    write(ui->chkHQ, &Mp3EncoderEngine::HighQuality);
    write(ui->chkFastMode, &Mp3EncoderEngine::FastMode);
    write(ui->chkDisableSFB, &Mp3EncoderEngine::DisableSfb21Cutoff);
    write(ui->chkChanellBlocktype, &Mp3EncoderEngine::MixedBlockTypes);
    write(ui->chkATHmasking, &Mp3EncoderEngine::AthOnlyMasking);
    write(ui->chkShortBlocks, &Mp3EncoderEngine::NoShortBlocks);
    write(ui->chkRaw, &Mp3EncoderEngine::RawInput);
    write(ui->chkByteSwab, &Mp3EncoderEngine::SwapBytes);
    write(ui->chkToMono, &Mp3EncoderEngine::DownmixToMono);
    write(ui->chkAddChecksum, &Mp3EncoderEngine::AddChecksum);
    write(ui->chkCopyright, &Mp3EncoderEngine::MarkCopyrighted);
    write(ui->chkNonOriginal, &Mp3EncoderEngine::MarkNonOriginal);
}

MiscPropertiesPanel::~MiscPropertiesPanel() = default;

#include "moc_MiscPropertiesPanel.cpp"

#include "playback/ConversionStatus.h"

#include "engines/PlayerEngine.h"
#include "support/dialogs/MsgBox.h"
#include "support/modActiveSoundErrDesc.h"

#include <QLabel>

ConversionStatus::ConversionStatus(PlayerEngine& SoundTouch, QLabel& lblWavExportStatus, MsgBox& msgBox)
    : SoundTouch(SoundTouch)
    , lblWavExportStatus(lblWavExportStatus)
    , msgBox(msgBox)
{
    connect(&SoundTouch, &PlayerEngine::ConversionPercent, this, &ConversionStatus::SoundTouch_ConversionPercent);
    connect(&SoundTouch, &PlayerEngine::ConversionDone, this, &ConversionStatus::SoundTouch_ConversionDone);
}

void ConversionStatus::SoundTouch_ConversionPercent(short, short percent)
{
    lblWavExportStatus.setText(QStringLiteral("Exporting audio : %1 %").arg(percent));
}

// After a failure the label keeps the percentage that was reached.
void ConversionStatus::SoundTouch_ConversionDone(short, int success)
{
    if (success != 0) {
        lblWavExportStatus.clear();
        return;
    }
    msgBox.show(
        QStringLiteral("Sound export failed.\n") + modActiveSoundErrDesc::description(SoundTouch.LastError()),
        MsgBox::Look::Critical);
}

#include "moc_ConversionStatus.cpp"

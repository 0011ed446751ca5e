#include "export/SaveAs.h"

#include "engines/EditorEngine.h"
#include "export/SaveFormat.h"
#include "support/controls/Slider.h"
#include "support/dialogs/CommonDialog.h"
#include "support/dialogs/MsgBox.h"
#include "support/modActiveSoundErrDesc.h"
#include "support/modSpecialFolders.h"

#include <QLabel>

namespace {

constexpr int begin = 0;
constexpr int end = -1;
constexpr int exportRate = 44100;
constexpr int exportChannels = 2;
constexpr double unitsPerSemitone = 100;

/// How the status label names an effect; null for one that it does not tell of.
const char* nameOfStep(short effect)
{
    switch (effect) {
    case EditorEffects::Tempo:
        return "tempo";
    case EditorEffects::Speed:
        return "speed";
    case EditorEffects::Pitch:
        return "pitch";
    default:
        return nullptr;
    }
}

}  // namespace

SaveAs::SaveAs(EditorEngine& Editor, const ChangedTrack& track, QLabel& lblWavExportStatus,
               CommonDialog& CommonDialog1, MsgBox& msgBox)
    : Editor(Editor)
    , track(track)
    , lblWavExportStatus(lblWavExportStatus)
    , CommonDialog1(CommonDialog1)
    , msgBox(msgBox)
{
    connect(&Editor, &EditorEngine::LoadPercent, this, &SaveAs::Editor_LoadPercent);
    connect(&Editor, &EditorEngine::LoadDone, this, &SaveAs::Editor_LoadDone);
    connect(&Editor, &EditorEngine::EffectPercent, this, &SaveAs::Editor_EffectPercent);
    connect(&Editor, &EditorEngine::EffectDone, this, &SaveAs::Editor_EffectDone);
    connect(&Editor, &EditorEngine::ExportPercent, this, &SaveAs::Editor_ExportPercent);
    connect(&Editor, &EditorEngine::ExportDone, this, &SaveAs::Editor_ExportDone);
}

void SaveAs::RecordSoundTouch()
{
    if (track.CurrentAudioPath.isEmpty()) {
        msgBox.show(QStringLiteral("Please select file from playlist."), MsgBox::Look::Information);
        return;
    }
    ShowSaveAudioDialog();
    if (SaveCancelled) {
        SaveCancelled = false;
        return;
    }
    chooseSaveFormat(SaveOutputPath, Editor.EncodeFormats());
    if (loadTrack() && applyTempo() && applyPitch() && applyRate())
        exportTrack();
}

// Only a name that was chosen takes the place of the one before: a run that is under way still needs that.
void SaveAs::ShowSaveAudioDialog()
{
    FileDialogSetup setup;
    setup.cancelIsError = true;
    setup.initialFolder = modSpecialFolders::recordingsFolder();
    setup.title = QStringLiteral("Save audio as");
    setup.filter = QStringLiteral(
        "WAV files (*.wav)|*.wav|MP3 files (*.mp3)|*.mp3|WMA files (*.wma)|*.wma|"
        "AAC files (*.aac)|*.aac|MP4 files (*.mp4)|*.mp4|Ogg Vorbis files (*.ogg)|*.ogg");
    setup.filterIndex = 2;  // MP3
    setup.flags = FileDialogSetup::HideReadOnly;
    const FileDialogAnswer answer = CommonDialog1.ShowSave(setup);
    if (answer.error != 0 || answer.fileName.isEmpty())
        SaveCancelled = true;
    else
        SaveOutputPath = answer.fileName;
}

// A track that cannot be loaded does not end the run: its effects and its export are asked for all the same, and
// the editor refuses them.
bool SaveAs::loadTrack()
{
    if (Editor.LoadSound(track.CurrentAudioPath) != 0) {
        showFailure(QStringLiteral("File could not be loaded."));
        return true;
    }
    EditorLoadDone.clear();
    return EditorLoadDone.wait();
}

bool SaveAs::applyTempo()
{
    EditorEffectDone.clear();
    Editor.Effects().ApplyTempo(begin, end, static_cast<float>(track.sldTempo.value()));
    return EditorEffectDone.wait();
}

// The sliders see to it that at most one of the two is not 0.
bool SaveAs::applyPitch()
{
    float semitones = 0;
    if (track.sldPitchSemi.value() == 0)
        semitones = static_cast<float>(track.sldPitchGrad.value() / unitsPerSemitone);
    if (track.sldPitchGrad.value() == 0)
        semitones = static_cast<float>(track.sldPitchSemi.value());
    EditorEffectDone.clear();
    Editor.Effects().ApplyPitch(begin, end, semitones);
    return EditorEffectDone.wait();
}

bool SaveAs::applyRate()
{
    EditorEffectDone.clear();
    Editor.Effects().ApplyRate(begin, end, static_cast<float>(track.sldSpeed.value()));
    return EditorEffectDone.wait();
}

void SaveAs::exportTrack()
{
    if (Editor.ExportToFile(exportRate, exportChannels, 0, begin, end, SaveOutputPath) != 0) {
        showFailure(QStringLiteral("Export to file failed."));
        return;
    }
    EditorExportDone.clear();
    EditorExportDone.wait();
}

void SaveAs::showFailure(const QString& action)
{
    msgBox.show(action + u'\n' + modActiveSoundErrDesc::description(Editor.LastError()), MsgBox::Look::Critical);
}

void SaveAs::Editor_LoadPercent(short percent)
{
    lblWavExportStatus.setText(QStringLiteral("Loading audio, please wait...%1%").arg(percent));
}

void SaveAs::Editor_LoadDone()
{
    EditorLoadDone.set();
    lblWavExportStatus.clear();
}

void SaveAs::Editor_EffectPercent(short effect, short percent)
{
    if (const char* step = nameOfStep(effect))
        lblWavExportStatus.setText(QStringLiteral("Applying %1...%2%").arg(QLatin1String(step)).arg(percent));
}

void SaveAs::Editor_EffectDone()
{
    EditorEffectDone.set();
    lblWavExportStatus.clear();
}

void SaveAs::Editor_ExportPercent(short percent)
{
    lblWavExportStatus.setText(QStringLiteral("Exporting audio, please wait...%1%").arg(percent));
}

// Said whatever the result is.
void SaveAs::Editor_ExportDone()
{
    EditorExportDone.set();
    lblWavExportStatus.clear();
    msgBox.show(QStringLiteral("File successfully created."), MsgBox::Look::Information);
}

#include "moc_SaveAs.cpp"

#pragma once

#include "support/DoneFlag.h"

#include <QObject>
#include <QString>

class CommonDialog;
class EditorEngine;
class MsgBox;
class QLabel;
class Slider;

/// The track that is saved, and the sliders that change it.
struct ChangedTrack
{
    /// Full path of the item last selected in the playlist.
    const QString& CurrentAudioPath;

    const Slider& sldTempo;
    const Slider& sldPitchSemi;
    const Slider& sldPitchGrad;
    const Slider& sldSpeed;
};

/// Writes the current track with its tempo, pitch and rate to a new file: all of it, however the loop is set, and
/// without the gain, the balance and the equalizer, which are the player's.
///
/// The editor does the work, and the player plays on meanwhile. Nothing is locked: each slider is read when its
/// step comes, so one that is moved during the run counts where its step is still to come, and the command may be
/// given again before it has ended. Main thread only.
class SaveAs : public QObject
{
    Q_OBJECT

public:
    /// All of these outlive this object. @p lblWavExportStatus tells how far the editor is, and is empty while it
    /// rests.
    SaveAs(EditorEngine& Editor, const ChangedTrack& track, QLabel& lblWavExportStatus, CommonDialog& CommonDialog1,
           MsgBox& msgBox);

    /// Asks for a file and returns when it is written, or when that has failed and the user knows. Events go on
    /// meanwhile; when the program is closed it returns at once, and the job under way ends with the editor.
    void RecordSoundTouch();

private:
    void ShowSaveAudioDialog();

    // The steps of a run. False when the program was closed meanwhile.
    bool loadTrack();
    bool applyTempo();
    bool applyPitch();
    bool applyRate();
    void exportTrack();
    void showFailure(const QString& action);

    void Editor_LoadPercent(short percent);
    void Editor_LoadDone();
    void Editor_EffectPercent(short effect, short percent);
    void Editor_EffectDone();
    void Editor_ExportPercent(short percent);
    void Editor_ExportDone();

    EditorEngine& Editor;
    const ChangedTrack track;
    QLabel& lblWavExportStatus;
    CommonDialog& CommonDialog1;
    MsgBox& msgBox;

    QString SaveOutputPath;
    bool SaveCancelled = false;
    DoneFlag EditorLoadDone;
    DoneFlag EditorEffectDone;
    DoneFlag EditorExportDone;
};

#pragma once

#include "app/Surroundings.h"

#include <QObject>
#include <memory>

class HelpFile;
class OpenWindows;
class QWidget;
class RecorderEngine;
class frmVocalRemover;

/// Opens the windows that have engines of their own and work without the main window's sound.
///
/// An engine is made with its window and goes with it. Where this build has none for a window, its command does
/// nothing.
class IndependentWindows : public QObject
{
    Q_OBJECT

public:
    /// All of it outlives the windows.
    IndependentWindows(QWidget& mainWindow, const Surroundings& surroundings, const HelpFile& help,
                       OpenWindows& windows);
    ~IndependentWindows() override;

    /// The recorder stands behind its tip: it comes when that is closed, but not when that closes with the main
    /// window.
    void openRecorder();

    void showVocalRemover();
    void execVocalRemover();
    void execMp3Encoder();
    void showDiscWriter();

private:
    bool recorderIsThere();
    void showRecorder();
    std::unique_ptr<frmVocalRemover> makeVocalRemover();

    QWidget& mainWindow;
    const Surroundings surroundings;
    const HelpFile& help;
    OpenWindows& windows;

    /// Of the recorder's window that opens next, which takes it.
    std::unique_ptr<RecorderEngine> Recorder;
};

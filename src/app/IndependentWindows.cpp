#include "app/IndependentWindows.h"

#include "app/HelpFile.h"
#include "app/OpenWindows.h"
#include "encoding/frmAudioCDBurn.h"
#include "encoding/frmMP3Options.h"
#include "engines/DiscEngine.h"
#include "engines/EngineSet.h"
#include "engines/Mp3EncoderEngine.h"
#include "engines/RecorderEngine.h"
#include "recorder/frmRecording.h"
#include "recorder/frmRecordingTip.h"
#include "vocalremover/frmVocalRemover.h"

#include <utility>

IndependentWindows::IndependentWindows(QWidget& mainWindow, const Surroundings& surroundings, const HelpFile& help,
                                       OpenWindows& windows)
    : mainWindow(mainWindow)
    , surroundings(surroundings)
    , help(help)
    , windows(windows)
{
}

IndependentWindows::~IndependentWindows() = default;

/// Whether a recorder's window is open or can be.
bool IndependentWindows::recorderIsThere()
{
    if (windows.isOpen<frmRecording>())
        return true;
    if (!Recorder)
        Recorder = surroundings.engines.createRecorder();
    return Recorder != nullptr;
}

void IndependentWindows::openRecorder()
{
    if (!recorderIsThere())
        return;
    if (!frmRecordingTip::wanted(surroundings.settings)) {
        showRecorder();
        return;
    }
    windows.show<frmRecordingTip>([this] {
        auto* tip = new frmRecordingTip(surroundings.settings, &mainWindow);
        connect(tip, &frmRecordingTip::finished, this, &IndependentWindows::showRecorder);
        return tip;
    });
}

void IndependentWindows::showRecorder()
{
    if (windows.areClosed() || !recorderIsThere())
        return;
    windows.show<frmRecording>([this] {
        const RecorderSurroundings around{surroundings.dialog, surroundings.folderDialog, surroundings.msgBox,
                                          surroundings.settings};
        auto* recorder = new frmRecording(std::move(Recorder), around, mainWindow);
        recorder->Load();
        return recorder;
    });
}

// Null where one stands open already, which then comes to the front, or where this build has none. The load turns
// the event loop, and the command can have been given again there, or the main window closed.
std::unique_ptr<frmVocalRemover> IndependentWindows::makeVocalRemover()
{
    if (windows.toFront<frmVocalRemover>())
        return nullptr;
    VocalRemoverEngines engines = VocalRemoverEngines::from(surroundings.engines);
    if (!engines.areThere())
        return nullptr;
    const VocalRemoverSurroundings around{surroundings.dialog, surroundings.msgBox,
                                          [this](int context) { help.open(context); }};
    auto remover = std::make_unique<frmVocalRemover>(std::move(engines), around, &mainWindow);
    remover->Load();
    if (windows.areClosed() || windows.toFront<frmVocalRemover>())
        return nullptr;
    return remover;
}

void IndependentWindows::showVocalRemover()
{
    if (auto remover = makeVocalRemover())
        windows.show<frmVocalRemover>([&remover] { return remover.release(); });
}

void IndependentWindows::execVocalRemover()
{
    if (const auto remover = makeVocalRemover())
        windows.exec(*remover);
}

void IndependentWindows::execMp3Encoder()
{
    std::unique_ptr<Mp3EncoderEngine> encoder = surroundings.engines.createMp3Encoder();
    if (!encoder)
        return;
    frmMP3Options options(std::move(encoder), surroundings.dialog, &mainWindow);
    windows.exec(options);
}

// The load may show message boxes, and the command can have been given again behind one, or the main window closed.
void IndependentWindows::showDiscWriter()
{
    if (windows.toFront<frmAudioCDBurn>())
        return;
    std::unique_ptr<DiscEngine> engine = surroundings.engines.createDisc();
    if (!engine)
        return;
    const DiscSurroundings around{surroundings.dialog, surroundings.msgBox};
    auto writer = std::make_unique<frmAudioCDBurn>(std::move(engine), around, &mainWindow);
    writer->Load();
    windows.show<frmAudioCDBurn>([&writer] { return writer.release(); });
}

#include "moc_IndependentWindows.cpp"

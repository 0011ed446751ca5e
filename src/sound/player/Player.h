#pragma once

#include "engines/EngineError.h"
#include "engines/PlayerEngine.h"
#include "sound/player/LoadedSound.h"
#include "sound/player/RenderThread.h"
#include "sound/player/Settings.h"
#include "sound/player/Transport.h"
#include "sound/units/OneThread.h"

#include <memory>
#include <vector>

namespace sound {

/// One player as the main thread sees it: the commands, at once answered, and what is heard now.
///
/// A command changes the transport, which the render thread follows; until it has, and until the sound that it made
/// has come through the output, status and position answer as if it had been heard already. Main thread only.
class Player
{
public:
    explicit Player(const RenderThread::MakeOutput& makeOutput);
    ~Player();

    /// Takes a new sound in place of the old one; it stands at its beginning.
    void load(std::shared_ptr<const SampleSource> source);
    void close();
    const SampleSource* source() const;
    std::shared_ptr<const SampleSource> share() const;

    void play();
    /// Plays a window of the sound from its begin; false, and stopped, where it is empty.
    bool playWindow(int begin, int end, bool repeats);
    void pause();
    void resume();
    void stop();
    void seek(int milliseconds);

    PlayerEngine::Status status() const;
    int position() const;
    int duration() const;

    const Settings& settings() const { return wantedSettings; }
    void change(const Settings& settings);

    /// Whether there will be something to take before the next command.
    bool busy() const;

    /// Frees what the render thread has let go, and tells whether the sound came to its end since the last call.
    bool takeFinished();
    Peaks takePeaks();

private:
    void jumpTo(FramePosition place);
    void publish();
    bool isHeard(const Snapshot& snapshot) const;
    double heardFrame() const;

    OneThread mainThread;
    Transport transport;
    Settings wantedSettings;
    std::unique_ptr<LoadedSound> loaded;
    std::vector<std::unique_ptr<LoadedSound>> leaving;  // still in the render thread's hands
    std::uint64_t soundSerial = 0;
    bool atEnd = false;

    // The last member, so that the thread has ended before what it works on goes. Reading a mailbox changes it.
    mutable RenderThread renderThread;
};

}  // namespace sound

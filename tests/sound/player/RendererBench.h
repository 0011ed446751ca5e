#pragma once

#include "sound/Signals.h"
#include "sound/player/LoadedSound.h"
#include "sound/player/Renderer.h"

#include <memory>
#include <vector>

namespace sound::test {

/// A renderer with a sound in it, driven block by block without a thread or a clock.
class RendererBench
{
public:
    explicit RendererBench(MemorySound sound);

    void play(std::int64_t fromFrame = -1);
    void playWindow(PlayWindow window);
    void pause();
    void resume();
    void stop();
    void seek(std::int64_t frame);

    Settings settings;
    void settingsChanged();

    /// Whether the output wants the next block at once behind each.
    bool hurried = false;

    /// Renders at least @p count frames more, in whole blocks.
    void render(std::int64_t count);

    /// Where the next frame to be rendered lies in the sound.
    double position() const;
    Snapshot heard(std::int64_t delay = 0) const { return renderer.heard({delay}); }

    std::int64_t block() const { return loaded->block().value; }
    const MemorySound& sound() const { return *source; }
    MemorySound& sound() { return *source; }

    /// Everything rendered so far, left and right interleaved.
    std::vector<float> output;
    std::vector<float> left() const { return channelOf(output, 2, 0); }
    std::int64_t frames() const { return static_cast<std::int64_t>(output.size() / 2); }

    Renderer renderer;

private:
    void publish();

    std::shared_ptr<MemorySound> source;
    std::unique_ptr<LoadedSound> loaded;
    Transport transport;
};

}  // namespace sound::test

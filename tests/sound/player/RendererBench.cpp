#include "sound/player/RendererBench.h"

namespace sound::test {

RendererBench::RendererBench(MemorySound sound)
    : source(std::make_shared<MemorySound>(std::move(sound)))
    , loaded(std::make_unique<LoadedSound>(source, 1))
{
    transport.sound = loaded.get();
    transport.window = wholeOf(source->length());
    ++transport.jump;
    publish();
}

void RendererBench::publish()
{
    ++transport.serial;
    renderer.update(transport, settings);
}

void RendererBench::play(std::int64_t fromFrame)
{
    if (fromFrame >= 0) {
        ++transport.jump;
        transport.position = {fromFrame};
    }
    transport.window = wholeOf(source->length());
    transport.motion = Transport::Motion::Playing;
    publish();
}

void RendererBench::playWindow(PlayWindow window)
{
    ++transport.jump;
    transport.position = window.begin;
    transport.window = window;
    transport.motion = Transport::Motion::Playing;
    publish();
}

void RendererBench::pause()
{
    transport.motion = Transport::Motion::Paused;
    publish();
}

void RendererBench::resume()
{
    transport.motion = Transport::Motion::Playing;
    publish();
}

void RendererBench::stop()
{
    ++transport.jump;
    transport.position = {0};
    transport.window = wholeOf(source->length());
    transport.motion = Transport::Motion::Stopped;
    publish();
}

void RendererBench::seek(std::int64_t frame)
{
    ++transport.jump;
    transport.position = {frame};
    publish();
}

void RendererBench::settingsChanged()
{
    renderer.update(transport, settings);
}

void RendererBench::render(std::int64_t count)
{
    const auto blockSamples = static_cast<std::size_t>(block() * 2);
    for (std::int64_t done = 0; done < count; done += block()) {
        output.resize(output.size() + blockSamples);
        renderer.render(output.data() + output.size() - blockSamples, hurried);
    }
}

double RendererBench::position() const
{
    const Snapshot snapshot = renderer.heard({0});
    return foldedIn(snapshot.window, snapshot.position);
}

}  // namespace sound::test

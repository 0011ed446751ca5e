#include "sound/editor/ExportJob.h"

#include "sound/units/YieldingThread.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace sound {
namespace {

constexpr std::size_t samplesAtOnce = 32768;  // so that the percent move smoothly

// Of all the time that an export takes; the rest is writing. What has been rendered waits for whole pieces to be
// done, so that by what is written alone the percent would jump.
constexpr double renderingPart = 0.9;

}  // namespace

ExportJob::ExportJob(std::unique_ptr<Rendition> what, std::unique_ptr<SoundFileWriter> where)
    : rendition(std::move(what))
    , writer(std::move(where))
    , worker([this] {
        yieldToOthers();
        result = write();
        writer.reset();  // an unfinished file goes before anyone is told
        done.store(true, std::memory_order_release);
    })
{
}

ExportJob::~ExportJob()
{
    cancelled.store(true);
    rendition->stop();
    worker.join();
}

short ExportJob::percent() const
{
    const std::int64_t inFile = written;
    if (inFile >= samples())
        return 100;
    const double writing = static_cast<double>(inFile) / static_cast<double>(samples());
    return static_cast<short>(100 * (renderingPart * rendition->progress() + (1 - renderingPart) * writing));
}

EngineError ExportJob::write()
{
    std::vector<float> frames;
    while (rendition->next(frames)) {
        for (std::span<const float> rest(frames); !rest.empty();) {
            const std::span<const float> now = rest.first(std::min(samplesAtOnce, rest.size()));
            if (cancelled.load())
                return EngineError::Unknown;
            if (!writer->write(now))
                return EngineError::FileCreationFailed;
            written += static_cast<std::int64_t>(now.size());
            rest = rest.subspan(now.size());
        }
        frames.clear();
    }
    if (cancelled.load())
        return EngineError::Unknown;
    // A source that has vanished is no silence.
    if (rendition->missing() > rendition->bearable())
        return EngineError::InvalidSoundFile;
    return writer->finish();
}

}  // namespace sound

#include "sound/editor/ExportJob.h"

#include "sound/editor/YieldingThread.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace sound {
namespace {

constexpr std::size_t samplesAtOnce = 32768;  // so that the percent move smoothly

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

EngineError ExportJob::write()
{
    const std::int64_t total = std::max<std::int64_t>(1, rendition->length().value) * rendition->channels();
    std::int64_t written = 0;
    std::vector<float> frames;
    while (rendition->next(frames)) {
        for (std::span<const float> rest(frames); !rest.empty();) {
            const std::span<const float> now = rest.first(std::min(samplesAtOnce, rest.size()));
            if (cancelled.load())
                return EngineError::Unknown;
            if (!writer->write(now))
                return EngineError::FileCreationFailed;
            written += static_cast<std::int64_t>(now.size());
            part.store(static_cast<short>(written * 100 / total), std::memory_order_relaxed);
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

#include "sound/mp3/EncodingJob.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace sound {
namespace {

constexpr std::size_t bytesAtOnce = std::size_t{64} * 1024;

/// After so much the disc gets its share, lest a whole long file is on its way there at the end.
constexpr std::int64_t bytesUntilOnDisc = std::int64_t{1024} * 1024;

/// Writes one piece behind the other, large ones.
class Mp3Stream
{
public:
    Mp3Stream(WholeFile& output, const std::stop_token& stopped)
        : file(output)
        , givenUp(stopped)
    {
    }

    /// What is put behind it is written by and by.
    std::vector<std::byte>& waiting() { return bytes; }

    bool writeWhereMuchWaits() { return bytes.size() < bytesAtOnce || writeAll(); }

    bool writeAll()
    {
        if (!file.writeAt(written, bytes))
            return false;
        written += static_cast<std::int64_t>(bytes.size());
        bytes.clear();
        if (written - onDisc < bytesUntilOnDisc)
            return true;
        onDisc = written;
        return file.bringToDisc(givenUp);
    }

private:
    WholeFile& file;
    const std::stop_token& givenUp;
    std::vector<std::byte> bytes;
    std::int64_t written = 0;
    std::int64_t onDisc = 0;
};

}  // namespace

bool EncodingJob::isPossible(const EncodingOrder& order)
{
    return openInput(order) != nullptr;
}

EncodingJob::EncodingJob(EncodingOrder wanted)
    : order(std::move(wanted))
    , worker([this](const std::stop_token& givenUp) {
        takePriority(order.priority);
        outputIsThere = encodeFile(givenUp);
        atEnd.store(true, std::memory_order_release);
    })
{
}

std::unique_ptr<PcmInput> EncodingJob::openInput(const EncodingOrder& order)
{
    auto input = PcmInput::open(order.input, order.reading);
    return input && !input->isNamed(order.output) ? std::move(input) : nullptr;
}

bool EncodingJob::encodeFile(const std::stop_token& givenUp)
{
    const auto input = openInput(order);
    if (!input)
        return false;
    const auto encoder = LameEncoder::create(order.switches, input->rate(), input->channels());
    if (!encoder)
        return false;
    const auto file = WholeFile::create(order.output);
    if (!file || !encodeFrames(*input, *encoder, *file, givenUp))
        return false;
    // The name may have come to mean the input meanwhile.
    return file->bringToDisc(givenUp) && !givenUp.stop_requested() && !input->isNamed(order.output) &&
           file->finish();
}

bool EncodingJob::encodeFrames(PcmInput& input, LameEncoder& encoder, WholeFile& file,
                               const std::stop_token& givenUp)
{
    Mp3Stream stream(file, givenUp);
    while (input.done() < input.length()) {
        // Little at once: a thread of low priority may have to wait long before it finds that it is given up.
        const std::span<const float> frames = input.next(encoder.block());
        if (frames.empty() || givenUp.stop_requested() || !encoder.encode(frames, stream.waiting()) ||
            !stream.writeWhereMuchWaits())
            return false;
        percentDone.store(static_cast<int>(input.done().value * 99 / input.length().value),
                          std::memory_order_relaxed);
    }
    return encoder.finish(stream.waiting()) && stream.writeAll() && file.writeAt(0, encoder.infoTag());
}

}  // namespace sound

#include "sound/media/WrittenSounds.h"

#include "sound/media/OpenedFrames.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <random>
#include <span>

namespace sound::test {
namespace {

double likeness(std::span<const float> one, std::span<const float> other)
{
    double product = 0;
    double ones = 1e-30;
    double others = 1e-30;
    for (std::size_t i = 0; i < one.size(); ++i) {
        product += double{one[i]} * other[i];
        ones += double{one[i]} * one[i];
        others += double{other[i]} * other[i];
    }
    return product / std::sqrt(ones * others);
}

}  // namespace

bool inPieces(const TestSound& sound, const std::function<bool(std::span<const float>)>& write)
{
    std::minstd_rand sizes(3);
    for (std::span<const float> rest(sound.samples); !rest.empty();) {
        const std::size_t frames = 1 + sizes() % 9000;
        const auto piece = rest.first(std::min(rest.size(), frames * static_cast<std::size_t>(sound.channels)));
        if (!write(piece))
            return false;
        rest = rest.subspan(piece.size());
    }
    return true;
}

bool writeAll(SoundFileWriter& writer, const TestSound& sound)
{
    return inPieces(sound, [&writer](std::span<const float> piece) { return writer.write(piece); });
}

EngineError writeSound(const QString& path, const SoundFormat& format, const TestSound& sound)
{
    const auto opened = SoundFileWriter::create(path, format, SampleRate{sound.rate}, sound.channels);
    EXPECT_EQ(opened.writer == nullptr, opened.error != EngineError::None);
    if (!opened.writer)
        return opened.error;
    const bool all = writeAll(*opened.writer, sound);
    const EngineError error = opened.writer->finish();
    EXPECT_TRUE(all || error != EngineError::None);
    return error;
}

TestSound readSound(const QString& path)
{
    const auto opened = openFrames(path);
    if (!opened.stream)
        return {};
    TestSound sound{opened.stream->rate().hertz, opened.stream->channels(), {}};
    while (opened.stream->next(sound.samples)) {
    }
    EXPECT_EQ(opened.stream->length().value, sound.frames()) << path.toStdString();
    return sound;
}

std::int64_t latenessOf(const TestSound& made, const TestSound& heard, std::int64_t from, std::int64_t frames)
{
    constexpr std::int64_t farthest = 2100;
    const auto stretch = [](const TestSound& sound, std::int64_t begin, std::int64_t count) {
        return std::span(sound.samples)
            .subspan(static_cast<std::size_t>(begin * sound.channels),
                     static_cast<std::size_t>(count * sound.channels));
    };
    double best = -1;
    std::int64_t lateness = -farthest;
    const std::int64_t first = std::max(-farthest, -from);
    const std::int64_t last = std::min(farthest, heard.frames() - frames - from);
    for (std::int64_t late = first; late <= last; ++late) {
        const double like = likeness(stretch(made, from, frames), stretch(heard, from + late, frames));
        if (like > best) {
            best = like;
            lateness = late;
        }
    }
    EXPECT_GT(best, 0.98);
    return lateness;
}

}  // namespace sound::test

#include "sound/vocals/WaveLayout.h"

#include "sound/media/WaveForm.h"
#include "sound/media/counting/FileBytes.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <span>

namespace sound {
namespace {

using Bytes = std::span<const std::uint8_t>;

// A file of nothing but tiny chunks must not be walked for ever.
constexpr int mostChunksBeforeSound = 10'000;

constexpr std::uint32_t neverTold = 0xFFFFFFFF;

// No sound of another rate is ever played.
constexpr std::uint32_t lowestRate = 1000;
constexpr std::uint32_t highestRate = 384'000;

struct RiffChunk
{
    std::array<std::uint8_t, 4> name = {};
    std::uint32_t size = 0;
    std::int64_t body = 0;

    bool isCalled(const char* fourCharacters) const { return is(name, fourCharacters); }
};

VocalRemoval faultOf(const WaveForm& form)
{
    if (form.tag != WaveForm::pcmTag && form.tag != WaveForm::floatTag)
        return VocalRemoval::NeitherPcmNorFloat;
    if (form.channels != 2)
        return VocalRemoval::NotStereo;
    if (form.bits != 8 && form.bits != 16 && form.bits != 24 && form.bits != 32)
        return VocalRemoval::UnknownSampleSize;
    const bool agrees = (form.tag == WaveForm::pcmTag || form.bits == 32) && form.usedBits <= form.bits &&
                        form.bytesAFrame == form.bits / 4 && form.rate >= lowestRate && form.rate <= highestRate &&
                        form.bytesASecond == form.rate * static_cast<std::uint32_t>(form.bytesAFrame);
    return agrees ? VocalRemoval::Done : VocalRemoval::NotStandardWave;
}

WaveSamples samplesOf(const WaveForm& form)
{
    if (form.tag == WaveForm::floatTag)
        return WaveSamples::Float32;
    switch (form.bits) {
    case 8:
        return WaveSamples::Pcm8;
    case 16:
        return WaveSamples::Pcm16;
    case 24:
        return WaveSamples::Pcm24;
    default:
        return WaveSamples::Pcm32;
    }
}

/// Goes through a file from its beginning to its sound.
class WaveHeadWalk
{
public:
    explicit WaveHeadWalk(const RegularFile& file)
        : bytes(file)
    {
    }

    ReadWaveLayout walk()
    {
        const VocalRemoval result = walkToSound();
        return {unreadable ? VocalRemoval::CannotReadInput : result, layout};
    }

private:
    static constexpr std::int64_t firstChunk = 12;

    /// Up to so many bytes, fewer at the end of the file.
    Bytes at(std::int64_t offset, std::int64_t count)
    {
        const Bytes got = bytes.at(offset, static_cast<std::size_t>(count));
        const auto there = std::clamp<std::int64_t>(bytes.size() - offset, 0, count);
        unreadable = unreadable || static_cast<std::int64_t>(got.size()) < there;
        return got;
    }

    std::optional<RiffChunk> chunkAt(std::int64_t offset)
    {
        constexpr std::int64_t headSize = 8;
        const Bytes head = at(offset, headSize);
        const auto isCharacter = [](std::uint8_t byte) { return byte >= ' ' && byte <= '~'; };
        if (head.size() < headSize || (riffEnd && offset + headSize > *riffEnd) ||
            !std::ranges::all_of(head.first(4), isCharacter))
            return std::nullopt;
        RiffChunk chunk;
        std::ranges::copy(head.first(4), chunk.name.begin());
        chunk.size = littleEndian32(head.subspan(4));
        chunk.body = offset + headSize;
        return chunk;
    }

    VocalRemoval walkToSound()
    {
        if (const VocalRemoval fault = readOpening(); fault != VocalRemoval::Done)
            return fault;
        bool formKnown = false;
        std::int64_t offset = firstChunk;
        for (int i = 0; i < mostChunksBeforeSound; ++i) {
            const std::optional<RiffChunk> chunk = chunkAt(offset);
            if (!chunk)
                return VocalRemoval::NoChunkHeader;
            if (chunk->isCalled("data"))
                return formKnown ? readSound(*chunk) : VocalRemoval::NoFormHeader;
            if (chunk->isCalled("fmt ")) {
                const VocalRemoval fault = formKnown ? VocalRemoval::NotStandardWave : readForm(*chunk);
                if (fault != VocalRemoval::Done)
                    return fault;
                formKnown = true;
            }
            offset = chunk->body + chunk->size + (chunk->size & 1);
        }
        return VocalRemoval::NoChunkHeader;
    }

    VocalRemoval readOpening()
    {
        const Bytes opening = at(0, firstChunk);
        if (opening.size() < 8 || !(is(opening, "RIFF") || is(opening, "RF64")))
            return VocalRemoval::NotRiff;
        if (!is(opening.subspan(8), "WAVE"))
            return VocalRemoval::NoWaveHeader;
        isLong = is(opening, "RF64");
        if (isLong)
            return readLongSizes();
        const std::uint32_t riffSize = littleEndian32(opening.subspan(4));
        if (riffSize != 0 && riffSize != neverTold)
            riffEnd = 8 + static_cast<std::int64_t>(riffSize);
        return VocalRemoval::Done;
    }

    /// Of a file beyond 4 GiB, whose first chunk they are.
    VocalRemoval readLongSizes()
    {
        constexpr std::int64_t leastSize = 28;
        const std::optional<RiffChunk> chunk = chunkAt(firstChunk);
        if (!chunk || !chunk->isCalled("ds64") || chunk->size < leastSize)
            return VocalRemoval::NoChunkHeader;
        const Bytes sizes = at(chunk->body, leastSize);
        if (sizes.size() < leastSize)
            return VocalRemoval::NoChunkHeader;
        constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max() - 8;
        const std::uint64_t riffSize = littleEndian64(sizes);
        if (riffSize != 0 && riffSize <= largest)
            riffEnd = 8 + static_cast<std::int64_t>(riffSize);
        longSoundSize = littleEndian64(sizes.subspan(8));
        return VocalRemoval::Done;
    }

    VocalRemoval readForm(const RiffChunk& chunk)
    {
        const auto size = std::min<std::int64_t>(chunk.size, WaveForm::largestSize);
        const std::optional<WaveForm> form = WaveForm::read(at(chunk.body, size));
        if (!form)
            return VocalRemoval::NoFormHeader;
        const VocalRemoval fault = faultOf(*form);
        if (fault != VocalRemoval::Done)
            return fault;
        layout.samples = samplesOf(*form);
        layout.rate = {static_cast<int>(form->rate)};
        return VocalRemoval::Done;
    }

    VocalRemoval readSound(const RiffChunk& chunk)
    {
        const auto there = static_cast<std::uint64_t>(bytes.size() - chunk.body);
        const bool toldElsewhere = isLong && chunk.size == neverTold;
        std::uint64_t size = toldElsewhere ? longSoundSize : chunk.size;
        const bool behindIsNothing = !riffEnd || *riffEnd <= chunk.body;
        if ((size == 0 && behindIsNothing) || (size == neverTold && !toldElsewhere))
            size = there;
        else if (riffEnd && size > static_cast<std::uint64_t>(*riffEnd - chunk.body))
            return VocalRemoval::NotStandardWave;
        const int frame = bytesPerFrame(layout.samples);
        layout.begin = chunk.body;
        layout.length = {static_cast<std::int64_t>(std::min(size, there)) / frame};
        return VocalRemoval::Done;
    }

    FileBytes bytes;
    bool unreadable = false;
    bool isLong = false;
    std::optional<std::int64_t> riffEnd;  // nothing where it was never told
    std::uint64_t longSoundSize = 0;
    WaveLayout layout;
};

}  // namespace

ReadWaveLayout readWaveLayout(const RegularFile& file)
{
    return WaveHeadWalk(file).walk();
}

}  // namespace sound

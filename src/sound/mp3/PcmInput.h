#pragma once

#include "sound/media/PcmSamples.h"
#include "sound/media/RegularFile.h"
#include "sound/media/counting/PcmChunks.h"
#include "sound/units/Frames.h"

#include <QString>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace sound {

/// Reads the samples of a WAV or RAW file once, from the beginning to the end.
///
/// WAV is RIFF WAVE and RF64 with integers of 1 to 32 bits, which take whole bytes, or floats of 32 or 64, in one
/// or two channels. The sound begins with its chunk and ends with it, or with the file where that is earlier or the
/// length was never told. A part of a frame at the end is no frame.
///
/// The size of a frame follows from bits and channels, and what the head tells of it is passed over as by other
/// programs, but for one: samples of 24 bits that are told to take four bytes each are the lower three of them,
/// which is what ALSA calls S24_LE. Of 17 to 23 bits in four bytes nothing says where they stand: such a file is
/// refused.
///
/// **Threads.** One.
class PcmInput
{
public:
    struct Reading
    {
        bool raw = false;  ///< No head: 44100 Hz, two channels, 16 bits, the low byte first.
        bool swapBytes = false;
    };

    /// Null where there is no such file, or no frame that could be read so.
    static std::unique_ptr<PcmInput> open(const QString& path, Reading reading);

    SampleRate rate() const { return frameRate; }
    int channels() const { return channelCount; }
    FrameCount length() const { return frames; }

    /// How many frames have been read.
    FrameCount done() const { return read; }

    /// The next frames, interleaved and at most so many; none at the end, and where the file is shorter than it was
    /// when it was opened or its disc fails: then done() is less than length(). Valid until the next call.
    std::span<const float> next(FrameCount most);

    /// Whether this is the file that bears the name.
    bool isNamed(const QString& path) const { return file->isNamed(path); }

private:
    PcmInput(std::shared_ptr<const RegularFile> file, const ByteRange& range, const PcmForm& form, SampleRate rate,
             int channels);

    std::int64_t frameSize() const { return std::int64_t{bytesPerSample(form)} * channelCount; }

    std::shared_ptr<const RegularFile> file;
    std::int64_t begin;
    PcmForm form;
    SampleRate frameRate;
    int channelCount;
    FrameCount frames;
    FrameCount read;
    std::vector<std::uint8_t> packed;
    std::vector<float> samples;
};

}  // namespace sound

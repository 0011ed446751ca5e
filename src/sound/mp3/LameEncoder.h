#pragma once

#include "sound/mp3/Mp3Switches.h"
#include "sound/units/Frames.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

struct lame_global_struct;

namespace sound {

/// Makes an MP3 stream of frames: LAME, fed just as its own program feeds it, so that both make the same bytes.
///
/// **Order.** encode() as often as there are frames, finish(), infoTag().
/// **Threads.** One at a time.
class LameEncoder
{
public:
    /// @p channels are 1 or 2. Null where LAME knows no way to encode this.
    static std::unique_ptr<LameEncoder> create(const Mp3Switches& switches, SampleRate rate, int channels);

    /// What is encoded at a time has this length, or is the last.
    FrameCount block() const { return blockLength; }

    /// Puts what the encoder gives back for the next frames behind @p mp3. They are whole blocks, unless they are
    /// the last. False where LAME fails; then there is nothing more to be done.
    bool encode(std::span<const float> interleaved, std::vector<std::byte>& mp3);

    /// The same for all that it still has in hand.
    bool finish(std::vector<std::byte>& mp3);

    /// What belongs at the beginning of the finished stream, in place of as many bytes; empty where no tag is
    /// wanted.
    std::span<const std::byte> infoTag();

private:
    struct Closes
    {
        void operator()(lame_global_struct* lame) const;
    };

    LameEncoder(std::unique_ptr<lame_global_struct, Closes> lame, int channels);
    bool encodeBlock(std::span<const float> interleaved, std::vector<std::byte>& mp3);
    bool take(int size, std::vector<std::byte>& mp3);

    std::unique_ptr<lame_global_struct, Closes> lame;
    int channelCount;
    FrameCount blockLength;
    int mostAtOnce;
    std::vector<float> left;
    std::vector<float> right;
    std::vector<unsigned char> output;
};

}  // namespace sound

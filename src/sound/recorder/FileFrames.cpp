#include "sound/recorder/FileFrames.h"

namespace sound {

FileFrames::FileFrames(SampleRate captured, SampleRate wanted, int count)
    : from(captured)
    , to(wanted)
    , channels(count)
{
    if (from != to)
        converter.emplace(from.hertz, to.hertz, channels);
}

void FileFrames::convert(std::span<const float> stereo, std::vector<float>& frames)
{
    taken += static_cast<std::int64_t>(stereo.size() / 2);
    std::span<const float> given = stereo;
    if (channels == 1) {
        mixed.clear();
        for (std::size_t sample = 0; sample + 1 < stereo.size(); sample += 2)
            mixed.push_back((stereo[sample] + stereo[sample + 1]) / 2);
        given = mixed;
    }
    if (converter)
        converter->convert(given, frames);
    else
        frames.insert(frames.end(), given.begin(), given.end());
}

void FileFrames::finish(std::vector<float>& frames)
{
    if (converter)
        converter->finish(frames);
}

FrameCount FileFrames::due() const
{
    return {(taken * to.hertz + from.hertz / 2) / from.hertz};
}

}  // namespace sound

#include "recorder/RecordingFormat.h"

#include "engines/RecorderEngine.h"

#include <algorithm>

namespace {

constexpr char bitrate[] = "Bitrate:";
constexpr char quality[] = "Quality:";

Choices notApplicable()
{
    return {{"NA"}, 0};
}

Choices monoOrStereo()
{
    return {{"1", "2"}, 1};
}

Choices stereo()
{
    return {{"2"}, 0};
}

Choices aacQualities()
{
    return {{"10", "20", "30", "40", "50", "60", "70", "80", "90", "100", "110", "120", "130", "140", "150", "200",
             "300", "400", "500"},
            9};
}

}  // namespace

const QList<RecordingFormat>& recordingFormats()
{
    using Codec = RecordingFormat::Codec;
    using Formats = RecorderEncodeFormats;
    static const QList<RecordingFormat> formats{
        {Codec::Wav,
         "WAV",
         Formats::Wav,
         bitrate,
         notApplicable(),
         {{"48000", "44100", "32000", "22500", "11025"}, 1},
         monoOrStereo(),
         "wav"},
        {Codec::Mp3,
         "MP3",
         Formats::Mp3,
         bitrate,
         {{"32", "64", "96", "128", "160", "192", "256"}, 3},
         notApplicable(),
         monoOrStereo(),
         "mp3"},
        {Codec::Ogg,
         "OGG",
         Formats::OggVorbis,
         quality,
         {{"10", "20", "30", "40", "50", "60", "70", "80", "90", "100"}, 2},
         notApplicable(),
         monoOrStereo(),
         "ogg"},
        {Codec::Wma,
         "WMA",
         Formats::Wma,
         bitrate,
         {{"32", "48", "64", "96", "128", "160", "192"}, 2},
         notApplicable(),
         stereo(),
         "wma"},
        {Codec::Aac, "AAC", Formats::Aac, quality, aacQualities(), notApplicable(), stereo(), "aac"},
        {Codec::Mp4, "MP4", Formats::Aac, quality, aacQualities(), notApplicable(), stereo(), "mp4"},
    };
    return formats;
}

const RecordingFormat* recordingFormat(const QString& name)
{
    const QList<RecordingFormat>& formats = recordingFormats();
    const auto found = std::ranges::find(formats, name, &RecordingFormat::name);
    return found == formats.end() ? nullptr : &*found;
}

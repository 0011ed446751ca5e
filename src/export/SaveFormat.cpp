#include "export/SaveFormat.h"

#include "engines/EncodeFormats.h"

namespace {

constexpr int endingLength = 3;
constexpr int bitsPerSecond = 128000;
constexpr int aacQuality = 100;
constexpr int oggQuality = 4;

}  // namespace

void chooseSaveFormat(const QString& path, EncodeFormats& formats)
{
    const QString ending = path.right(endingLength).toLower();
    if (ending == QLatin1String("mp3")) {
        formats.FormatForExport(EncodeFormats::Mp3);
        formats.Mp3Settings().Mode(1);
        formats.Mp3Settings().BitRate(bitsPerSecond);
    } else if (ending == QLatin1String("wma")) {
        formats.FormatForExport(EncodeFormats::Wma);
        formats.WmaSettings().Mode(1);
        formats.WmaSettings().BitRate(bitsPerSecond);
    } else if (ending == QLatin1String("aac") || ending == QLatin1String("mp4")) {
        formats.FormatForExport(EncodeFormats::Aac);
        formats.AacSettings().Mode(0);
        formats.AacSettings().Mp4Container(ending == QLatin1String("mp4"));
        formats.AacSettings().Quality(aacQuality);
    } else if (ending == QLatin1String("ogg")) {
        formats.FormatForExport(EncodeFormats::OggVorbis);
        formats.OggSettings().Mode(0);
        formats.OggSettings().Quality(oggQuality);
    } else {
        formats.FormatForExport(EncodeFormats::Wav);
        formats.WavSettings().Mode(1);
    }
}

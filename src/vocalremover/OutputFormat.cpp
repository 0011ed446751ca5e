#include "vocalremover/OutputFormat.h"

#include "engines/EncodeFormats.h"
#include "export/SaveFormat.h"

namespace {

constexpr int flacMode = 2;

}  // namespace

void SelectOutputFormat(const QString& path, EncodeFormats& formats)
{
    if (path.endsWith(QLatin1String("flac"), Qt::CaseInsensitive)) {
        formats.FormatForExport(EncodeFormats::Flac);
        formats.FlacSettings().Mode(flacMode);
    } else {
        chooseSaveFormat(path, formats);
    }
}

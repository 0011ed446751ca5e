// Encodes a file as the MP3 encoder does: what mp3.py runs beside the program lame.
//
//     encode_mp3 SOURCE TARGET [SWITCH...]
//
// The switches are those of lame that it takes too: -b RATE, -V QUALITY, -m MODE, -h, -f, -r, -t. Ends with 0 when
// the file is there.

#include "sound/mp3/SoundMp3EncoderEngine.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStringList>
#include <cstdio>
#include <cstdlib>

namespace {

/// Whether all of them are known.
bool choose(Mp3EncoderEngine& encoder, QStringList switches)
{
    while (!switches.isEmpty()) {
        const QString name = switches.takeFirst();
        if (name == QLatin1String("-h"))
            encoder.HighQuality(true);
        else if (name == QLatin1String("-f"))
            encoder.FastMode(true);
        else if (name == QLatin1String("-r"))
            encoder.RawInput(true);
        else if (name == QLatin1String("-t"))
            encoder.DisableVbrTag(true);
        else if (switches.isEmpty())
            return false;
        else if (name == QLatin1String("-b"))
            encoder.Bitrate(switches.takeFirst().toInt());
        else if (name == QLatin1String("-m"))
            encoder.Mode(static_cast<short>(QStringLiteral("sjfm").indexOf(switches.takeFirst())));
        else if (name == QLatin1String("-V")) {
            encoder.UseVbr(true);
            encoder.VbrQuality(switches.takeFirst().toInt());
        } else
            return false;
    }
    return true;
}

}  // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    sound::SoundMp3EncoderEngine encoder;
    if (arguments.size() < 3 || !choose(encoder, arguments.mid(3))) {
        std::fputs("encode_mp3 SOURCE TARGET [SWITCH...]\n", stderr);
        return EXIT_FAILURE;
    }
    QObject::connect(&encoder, &Mp3EncoderEngine::EncodePercent, [](int percent) {
        if (percent == 100)
            QCoreApplication::quit();
    });
    encoder.InputFile(QFileInfo(arguments[1]).absoluteFilePath());
    encoder.OutputFile(QFileInfo(arguments[2]).absoluteFilePath());
    return encoder.Encode() ? QCoreApplication::exec() : EXIT_FAILURE;
}

// Saves a changed sound as the player's editor does: what export.py runs beside other programs.
//
//     export_sound SOURCE TARGET TEMPO-PERCENT SEMITONES RATE-PERCENT
//
// The target's ending chooses the format, as when saving. Ends with 0 when the file is there.

#include "engines/EncodeFormats.h"
#include "sound/editor/SoundEditorEngine.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>

namespace {

void choose(EncodeFormats& formats, const QString& ending)
{
    if (ending == QLatin1String("mp3"))
        formats.FormatForExport(EncodeFormats::Mp3);
    else if (ending == QLatin1String("wma"))
        formats.FormatForExport(EncodeFormats::Wma);
    else if (ending == QLatin1String("ogg"))
        formats.FormatForExport(EncodeFormats::OggVorbis);
    else if (ending == QLatin1String("flac"))
        formats.FormatForExport(EncodeFormats::Flac);
    else if (ending == QLatin1String("aac") || ending == QLatin1String("mp4"))
        formats.FormatForExport(EncodeFormats::Aac);
    else
        formats.FormatForExport(EncodeFormats::Wav);
    formats.AacSettings().Mp4Container(ending == QLatin1String("mp4"));
}

}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    if (argc != 6) {
        std::fputs("export_sound SOURCE TARGET TEMPO-PERCENT SEMITONES RATE-PERCENT\n", stderr);
        return EXIT_FAILURE;
    }
    const QString source = QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath();
    const QString target = QFileInfo(QString::fromLocal8Bit(argv[2])).absoluteFilePath();
    const float tempo = std::strtof(argv[3], nullptr);
    const float semitones = std::strtof(argv[4], nullptr);
    const float rate = std::strtof(argv[5], nullptr);

    sound::SoundEditorEngine editor;
    int effects = 0;
    QObject::connect(&editor, &EditorEngine::LoadDone, [&] { editor.Effects().ApplyTempo(0, -1, tempo); });
    QObject::connect(&editor, &EditorEngine::EffectDone, [&] {
        ++effects;
        if (effects == 1)
            editor.Effects().ApplyPitch(0, -1, semitones);
        else if (effects == 2)
            editor.Effects().ApplyRate(0, -1, rate);
        else if (editor.ExportToFile(44100, 2, 0, 0, -1, target) != 0)
            QCoreApplication::exit(editor.LastError());
    });
    QObject::connect(&editor, &EditorEngine::ExportDone, [](int result) { QCoreApplication::exit(result); });

    choose(editor.EncodeFormats(), QFileInfo(target).suffix().toLower());
    editor.InitEditor(0);
    if (editor.LoadSound(source) != 0)
        return EXIT_FAILURE;
    return QCoreApplication::exec() == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

// Takes the voice out of a file as the vocal remover does: what vocals.py runs beside other programs.
//
//     remove_vocals SOURCE TARGET LOW-CUT-OFF HIGH-CUT-OFF PAN
//
// Ends with 0 when the file is there, and with the reason otherwise.

#include "engines/EngineSet.h"
#include "engines/VocalRemoverEngine.h"
#include "sound/engines/SoundEngines.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    if (argc != 6) {
        std::fputs("remove_vocals SOURCE TARGET LOW-CUT-OFF HIGH-CUT-OFF PAN\n", stderr);
        return EXIT_FAILURE;
    }
    const auto engines = sound::makeSoundEngines({}, {});
    const auto remover = engines->createVocalRemoverExtended();
    if (!remover)
        return EXIT_FAILURE;
    remover->InputFile(QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath());
    remover->OutputFile(QFileInfo(QString::fromLocal8Bit(argv[2])).absoluteFilePath());
    remover->LowCutOff(std::atoi(argv[3]));
    remover->HighCutOff(std::atoi(argv[4]));
    remover->VocalPan(std::atoi(argv[5]));
    return static_cast<int>(remover->RemoveVocals());
}

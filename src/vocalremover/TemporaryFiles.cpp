#include "vocalremover/TemporaryFiles.h"

#include "support/modFileExists.h"
#include "support/modSpecialFolders.h"

#include <QFile>

TemporaryFiles::TemporaryFiles()
    : tmpWavIn(modSpecialFolders::recordingsFolder() + QStringLiteral("tmpWavIn.wav"))
    , tmpWavOut(modSpecialFolders::recordingsFolder() + QStringLiteral("tmpWavOut.wav"))
{
}

// Deleting what is not there fails, and nobody is told.
void TemporaryFiles::cleanUp() const
{
    for (const QString& file : {tmpWavIn, tmpWavOut}) {
        if (!modFileExists::FileExists(file))
            QFile::remove(file);
    }
}

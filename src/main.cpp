#include "app/frmMain.h"
#include "engines/EngineSet.h"
#include "sound/player/SoundEngines.h"
#include "support/IconTheme.h"
#include "support/dialogs/QtCommonDialog.h"
#include "support/dialogs/QtMsgBox.h"
#include "support/modSpecialFolders.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("Larkspin");
    QApplication::setDesktopFileName("larkspin");
    const IconTheme icons;

    const std::unique_ptr<EngineSet> engines = sound::makeSoundEngines();
    QtCommonDialog dialog;
    QtMsgBox msgBox;
    frmMain window(*engines, dialog, msgBox, modSpecialFolders::applicationFolder());
    window.Load();
    window.show();
    return QApplication::exec();
}

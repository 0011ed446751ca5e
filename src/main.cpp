#include "app/frmMain.h"
#include "engines/EngineSet.h"
#include "recorder/WindowBarMeters.h"
#include "sound/engines/SoundEngines.h"
#include "support/DesktopShell.h"
#include "support/IconTheme.h"
#include "support/SettingsStore.h"
#include "support/dialogs/QtBrowseForFolder.h"
#include "support/dialogs/QtCommonDialog.h"
#include "support/dialogs/QtMsgBox.h"
#include "support/modSpecialFolders.h"

#include <QApplication>
#include <QSettings>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("Larkspin");
    QApplication::setDesktopFileName("larkspin");
    const IconTheme icons;

    const std::unique_ptr<EngineSet> engines = sound::makeSoundEngines(
        [] { return std::make_unique<WindowBarMeters>(); }, modSpecialFolders::recordingsFolder());
    QtCommonDialog dialog;
    QtBrowseForFolder folderDialog;
    QtMsgBox msgBox;
    QSettings store(SettingsStore::applicationKey, SettingsStore::applicationKey);
    SettingsStore settings(store);
    DesktopShell shell;
    frmMain window({*engines, dialog, folderDialog, msgBox, settings, shell, modSpecialFolders::applicationFolder(),
                    modSpecialFolders::helpFolder(), QStringLiteral(LARKSPIN_WEB_SITE),
                    QStringLiteral(LARKSPIN_SUPPORT_PAGE)});
    window.Load();
    window.show();
    return QApplication::exec();
}

#include <gmock/gmock.h>
#include <QApplication>
#include <QIcon>
#include <QStandardPaths>

// The one main of all tests that need a window system. They run without a display unless one is asked for, and
// never touch the files of the user who runs them.
int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    QApplication::setApplicationName("LarkspinTest");
    QIcon::setThemeSearchPaths({"/usr/share/icons", ":/icons"});  // the offscreen platform knows only the latter
    QIcon::setThemeName("breeze");
    QApplication::setQuitOnLastWindowClosed(false);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}

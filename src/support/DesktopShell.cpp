#include "support/DesktopShell.h"

#include <QDesktopServices>
#include <QMimeDatabase>
#include <QProcess>
#include <QUrl>

namespace {

constexpr int answerTimeout = 3000;

}  // namespace

// A desktop that knows no program for a kind of file may still open it with its web browser, which shows the bytes.
// So the desktop's own table is asked; where it cannot be asked the answer is no.
bool DesktopShell::canOpen(const QString& path) const
{
    const QString kind = QMimeDatabase().mimeTypeForFile(path).name();
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"), kind});
    if (!query.waitForFinished(answerTimeout)) {
        query.kill();
        query.waitForFinished(answerTimeout);
        return false;
    }
    return !query.readAllStandardOutput().trimmed().isEmpty();
}

bool DesktopShell::ShellExecute(const QString& target)
{
    const bool isFile = target.startsWith(u'/');
    return QDesktopServices::openUrl(isFile ? QUrl::fromLocalFile(target) : QUrl(target));
}

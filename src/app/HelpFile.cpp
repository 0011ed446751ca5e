#include "app/HelpFile.h"

#include "support/Shell.h"

#include <QFileInfo>

namespace {

constexpr int vocalRemoverContext = 160;

QString pageOf(int context)
{
    return context == vocalRemoverContext ? QStringLiteral("vocals.html") : QStringLiteral("index.html");
}

}  // namespace

HelpFile::HelpFile(Shell& shell, const QString& folder)
    : shell(shell)
    , folder(folder)
{
}

void HelpFile::open(int context) const
{
    const QString compiled = folder + QStringLiteral("/Larkspin.chm");
    if (QFileInfo::exists(compiled) && shell.canOpen(compiled) && shell.ShellExecute(compiled))
        return;
    for (const QString& name : {pageOf(context), pageOf(0)}) {
        const QString page = folder + QStringLiteral("/manual/") + name;
        if (QFileInfo::exists(page)) {
            shell.ShellExecute(page);
            return;
        }
    }
}

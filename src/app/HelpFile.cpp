#include "app/HelpFile.h"

#include "support/Shell.h"

#include <QFileInfo>

HelpFile::HelpFile(Shell& shell, const QString& folder)
    : shell(shell)
    , folder(folder)
{
}

void HelpFile::open() const
{
    const QString compiled = folder + QStringLiteral("/Larkspin.chm");
    if (QFileInfo::exists(compiled) && shell.canOpen(compiled) && shell.ShellExecute(compiled))
        return;
    const QString pages = folder + QStringLiteral("/manual/index.html");
    if (QFileInfo::exists(pages))
        shell.ShellExecute(pages);
}

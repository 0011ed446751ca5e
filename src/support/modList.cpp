#include "support/modList.h"

#include "support/FieldReader.h"
#include "support/controls/ListBox.h"
#include "support/dialogs/MsgBox.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>
#include <cerrno>

namespace {

constexpr qint64 pieceBytes = 64 * 1024;

// Often enough for the eye and for the position timer, seldom enough to cost nothing in a list of a million lines.
constexpr qint64 messagesEveryMs = 10;

}  // namespace

modList::modList(MsgBox& msgBox)
    : msgBox(msgBox)
{
}

void modList::LoadList(ListBox& list, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        showError(file.errorString());
        return;
    }
    QStringDecoder decode(QStringDecoder::Utf8);
    FieldReader reader;
    QElapsedTimer sinceMessages;
    sinceMessages.start();
    while (true) {
        const QByteArray piece = file.read(pieceBytes);
        if (piece.isEmpty())
            break;
        const QString text = decode(piece);
        reader.feed(text);
        list.addItems(reader.takeFields());
        if (sinceMessages.hasExpired(messagesEveryMs)) {
            QCoreApplication::processEvents();
            sinceMessages.start();
        }
    }
    reader.finish();
    list.addItems(reader.takeFields());
    if (file.error() != QFileDevice::NoError)
        showError(file.errorString());
}

// commit() of Qt 6.4 calls a file complete although the disc was full, and replaces the old one by it: only what
// was written and flushed without an error may be committed.
void modList::SaveList(const ListBox& list, const QString& path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        showError(file.errorString());
        return;
    }
    errno = 0;
    bool written = true;
    for (int index = 0; index < list.count() && written; ++index) {
        const QByteArray line = list.itemText(index).toUtf8() + "\r\n";
        written = file.write(line) == line.size();
    }
    if (!written || !file.flush() || file.error() != QFileDevice::NoError) {
        const QString reason = errno != 0 ? qt_error_string(errno) : file.errorString();
        file.cancelWriting();
        showError(reason);
        return;
    }
    if (!file.commit())
        showError(file.errorString());
}

void modList::showError(const QString& systemText)
{
    msgBox.show(systemText, MsgBox::Look::Exclamation, QStringLiteral("Error"));
}

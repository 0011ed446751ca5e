#include "support/dialogs/QtMsgBox.h"

#include "support/dialogs/DialogOwner.h"

#include <QApplication>
#include <QMessageBox>

namespace {

QMessageBox::Icon icon(MsgBox::Look look)
{
    switch (look) {
    case MsgBox::Look::Plain:
        return QMessageBox::NoIcon;
    case MsgBox::Look::Critical:
        return QMessageBox::Critical;
    case MsgBox::Look::Exclamation:
        return QMessageBox::Warning;
    case MsgBox::Look::Information:
        return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

}  // namespace

void QtMsgBox::show(const QString& text, Look look, const QString& title)
{
    const QString shownTitle = title.isEmpty() ? QApplication::applicationDisplayName() : title;
    QMessageBox box(icon(look), shownTitle, text, QMessageBox::Ok, dialogOwner());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

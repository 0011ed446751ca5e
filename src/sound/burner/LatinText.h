#pragma once

#include <QByteArray>
#include <QString>

namespace sound {

/// A text as the displays of CD players can show it: ISO 8859-1, in one line. What that lacks is written as it is
/// in plain letters ("Dvořák" is "Dvorák"), and what cannot be is a question mark; a text of nothing else is empty.
QByteArray latinText(const QString& text);

}  // namespace sound

#pragma once

#include <QString>
#include <ostream>

// What a failed expectation says of Qt's types. GoogleTest finds these by their argument's namespace.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
QT_END_NAMESPACE

#pragma once

#include <QString>

/// Hands files and addresses over to the user's desktop, which opens them with the program that the user chose.
class Shell
{
public:
    virtual ~Shell();

    /// Whether the desktop has a program for files of this kind. Takes some tens of milliseconds.
    virtual bool canOpen(const QString& path) const = 0;

    /// Opens a file, by its full path, or a web address. The program starts by itself; false where there is none.
    virtual bool ShellExecute(const QString& target) = 0;
};

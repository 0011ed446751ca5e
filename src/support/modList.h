#pragma once

#include <QString>

class ListBox;
class MsgBox;

/// Loads and saves a list box from and to a text file: UTF-8, one item a line, lines ended by CR LF.
///
/// Every failure ends in the same box, with the system's text of the error and the title "Error".
class modList
{
public:
    explicit modList(MsgBox& msgBox);

    /// Adds each field of the file (see FieldReader) at the end of the list. Timers and events go on meanwhile.
    /// After a failure the items read so far stay.
    void LoadList(ListBox& list, const QString& path);

    /// Writes all items in place of what the file held. The file is replaced whole or, on failure, not at all.
    void SaveList(const ListBox& list, const QString& path);

private:
    void showError(const QString& systemText);

    MsgBox& msgBox;
};

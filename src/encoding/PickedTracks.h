#pragma once

#include <QStringList>

/// The files that a dialog's file name stands for: one, with its whole path, or several by their bare names, which
/// lie in the current folder.
QStringList pickedTracks(const QString& fileName);

/// Whether a name ends in the letters of a kind of file that a disc takes. Nothing else of it is looked at.
bool isAllowedOnDisc(const QString& file);

/// The kinds of files that the dialog offers.
QString trackFilter(bool noMp3);

#pragma once

#include "support/dialogs/BrowseForFolderModule.h"

/// The folder dialog of the user's desktop.
class QtBrowseForFolder : public BrowseForFolderModule
{
public:
    QString BrowseForFolder(QWidget& owner, const QString& startFolder) override;

    /// The folder itself where it is there, or the nearest one above it; the user's home for an empty path.
    static QString nearestFolder(const QString& path);
};

#pragma once

#include <QString>

class QWidget;

/// Asks the user for a folder. Returns when the dialog is closed.
class BrowseForFolderModule
{
public:
    /// What the dialog says, whatever the folder is wanted for.
    static constexpr char prompt[] = "Add folder with audio files to playlist";

    virtual ~BrowseForFolderModule();

    /// The folder's full path, without a separator at its end unless it is the root; empty where the user wants
    /// none. The dialog stands in front of @p owner and starts in @p startFolder, or in the nearest folder above it
    /// that is there.
    virtual QString BrowseForFolder(QWidget& owner, const QString& startFolder) = 0;
};

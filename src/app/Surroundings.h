#pragma once

#include <QString>

class BrowseForFolderModule;
class CommonDialog;
class EngineSet;
class MsgBox;
class SettingsStore;
class Shell;

/// What the program finds around it and main gives it: the engines, the user's desktop, and where things lie. All
/// of it outlives the windows.
struct Surroundings
{
    EngineSet& engines;
    CommonDialog& dialog;
    BrowseForFolderModule& folderDialog;
    MsgBox& msgBox;
    SettingsStore& settings;
    Shell& shell;

    /// Holds the playlist files.
    QString applicationFolder;

    /// Holds the manual.
    QString helpFolder;

    /// The maker's pages.
    QString webSite;
    QString supportPage;
};

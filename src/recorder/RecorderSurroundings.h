#pragma once

#include <QDateTime>
#include <QRandomGenerator>
#include <functional>

class BrowseForFolderModule;
class CommonDialog;
class MsgBox;
class SettingsStore;

/// What a recorder's window finds around it. All of it outlives the window.
struct RecorderSurroundings
{
    CommonDialog& dialog;
    BrowseForFolderModule& folderDialog;
    MsgBox& msgBox;
    SettingsStore& settings;

    /// By the user's clock.
    std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); };

    /// Another number each time, from 0 on and below 1.
    std::function<double()> random = [] { return QRandomGenerator::global()->generateDouble(); };
};

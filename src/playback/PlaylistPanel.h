#pragma once

#include <QWidget>
#include <memory>

class CommonDialog;
class ListBox;
class PlayerEngine;
class PositionPanel;
class QMenu;
struct PlaybackState;
namespace Ui {
class PlaylistPanel;
}

/// The playlist: a working list from which the user picks one sound at a time. Nothing is played in sequence.
///
/// It is two list boxes in step: lstAudio shows the labels, lstPath holds the full path of each item and is never
/// shown. The order is that of adding, and a file may stand in it many times.
class PlaylistPanel : public QWidget
{
    Q_OBJECT

public:
    PlaylistPanel(PlayerEngine& SoundTouch, PlaybackState& state, PositionPanel& position,
                  CommonDialog& CommonDialog1, QWidget* parent = nullptr);
    ~PlaylistPanel() override;

    /// The two lists, for the files that keep them from run to run.
    ListBox& lstAudio();
    ListBox& lstPath();

public slots:
    /// Asks for files and adds them at the end. Nothing is selected by that.
    void cmdOpen_Click();

    /// Removes the selected item and closes the player's sound, whichever item that came from.
    void tlbCmdClear_Click();

    /// Empties the list and closes the player's sound, if there is one.
    void tlbCmdClearAll_Click();

signals:
    /// An item was picked and its path is in PlaybackState::CurrentAudioPath.
    void itemPicked();

    /// The context menu's "Play" and "Play loop".
    void playWanted();
    void playLoopWanted();

private:
    void lstAudio_Click();
    void showListMenu(const QPoint& point);

    PlayerEngine& SoundTouch;
    PlaybackState& state;
    PositionPanel& position;
    CommonDialog& CommonDialog1;
    std::unique_ptr<Ui::PlaylistPanel> ui;
    QMenu* mnuList;
};

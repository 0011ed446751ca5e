#pragma once

#include <QWidget>
#include <memory>

class MsgBox;
class PlayerEngine;
class PositionPanel;
namespace Ui {
class MarksPanel;
}

/// Places of the track to go back to at once.
///
/// The texts of the list are the only store: a mark is read back out of its text whenever it is used. Marks keep
/// the order of adding, two may be equal, and no file keeps them. The list and what belongs to it are hidden until
/// there is a first mark, and again once the marks are cleared; hidden, the panel is as high as its add button and
/// leaves the rest of its room to its neighbours.
class MarksPanel : public QWidget
{
    Q_OBJECT

public:
    /// @p position shows the time that a new mark is made of.
    MarksPanel(PlayerEngine& SoundTouch, const PositionPanel& position, MsgBox& msgBox, QWidget* parent = nullptr);
    ~MarksPanel() override;

public slots:
    /// Adds a mark a little before the time shown. Refused with no sound loaded and right at the start of a sound.
    void cmdAddMark_Click();

    /// Removes all marks and hides the list.
    void cmdClearMark_Click();

    /// Play from the mark before the current one, from the current one, and from the one after it. The first and
    /// the last mark are neighbours. The selection of the list is a place of its own and stays.
    void GoToPreviousMark();
    void RepeatCurrentMark();
    void GoToNextMark();

private:
    void cmdDeleteMark_Click();
    void lstMark_Click();
    void setListShown(bool shown);
    void playFrom(int index);

    PlayerEngine& SoundTouch;
    const PositionPanel& position;
    MsgBox& msgBox;
    std::unique_ptr<Ui::MarksPanel> ui;

    /// The mark that the three moves used last. It stays when marks go, and may then lie beyond the list.
    int CurrentMarkIndex = 0;
};

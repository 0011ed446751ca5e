#include "playback/MarksPanel.h"

#include "engines/PlayerEngine.h"
#include "playback/PositionPanel.h"
#include "support/TimeText.h"
#include "support/dialogs/MsgBox.h"
#include "ui_MarksPanel.h"

#include <QApplication>

namespace {

/// How far before the time shown a mark lies: the player reacts after the note, and wants to hear it come.
constexpr int leadMs = 300;

}  // namespace

MarksPanel::MarksPanel(PlayerEngine& SoundTouch, const PositionPanel& position, MsgBox& msgBox, QWidget* parent)
    : QWidget(parent)
    , SoundTouch(SoundTouch)
    , position(position)
    , msgBox(msgBox)
    , ui(std::make_unique<Ui::MarksPanel>())
{
    ui->setupUi(this);
    setListShown(false);
    connect(ui->cmdAddMark, &QToolButton::clicked, this, &MarksPanel::cmdAddMark_Click);
    connect(ui->cmdDeleteMark, &QToolButton::clicked, this, &MarksPanel::cmdDeleteMark_Click);
    connect(ui->cmdClearMark, &QToolButton::clicked, this, &MarksPanel::cmdClearMark_Click);
    connect(ui->lstMark, &ListBox::Click, this, &MarksPanel::lstMark_Click);
}

MarksPanel::~MarksPanel() = default;

void MarksPanel::cmdAddMark_Click()
{
    if (SoundTouch.GetDuration(0) < 1)
        return;
    const int shown = ParseTimeText(position.timeText());
    if (shown < leadMs)
        return;
    setListShown(true);
    ui->lstMark->addItem(FormatPosition(shown - leadMs));
    ui->lstMark->scrollToBottom();
}

void MarksPanel::cmdDeleteMark_Click()
{
    const int index = ui->lstMark->listIndex();
    if (index < 0)
        msgBox.show(QStringLiteral("No mark selected."), MsgBox::Look::Information);
    else
        ui->lstMark->removeItem(index);
}

// Qt would hand the keyboard of a control that goes to the next panel.
void MarksPanel::cmdClearMark_Click()
{
    if (isAncestorOf(QApplication::focusWidget()))
        ui->cmdAddMark->setFocus();
    ui->lstMark->clear();
    setListShown(false);
}

void MarksPanel::GoToPreviousMark()
{
    if (ui->lstMark->count() == 0)
        return;
    --CurrentMarkIndex;
    if (CurrentMarkIndex < 0)
        CurrentMarkIndex = ui->lstMark->count() - 1;
    playFrom(CurrentMarkIndex);
}

void MarksPanel::RepeatCurrentMark()
{
    playFrom(CurrentMarkIndex);
}

void MarksPanel::GoToNextMark()
{
    if (ui->lstMark->count() == 0)
        return;
    ++CurrentMarkIndex;
    if (CurrentMarkIndex >= ui->lstMark->count())
        CurrentMarkIndex = 0;
    playFrom(CurrentMarkIndex);
}

void MarksPanel::lstMark_Click()
{
    playFrom(ui->lstMark->listIndex());
}

void MarksPanel::setListShown(bool shown)
{
    for (QWidget* control :
         std::initializer_list<QWidget*>{ui->lblMark, ui->lstMark, ui->cmdDeleteMark, ui->cmdClearMark})
        control->setVisible(shown);
    setSizePolicy(QSizePolicy::Preferred, shown ? QSizePolicy::Preferred : QSizePolicy::Fixed);
}

/// Nothing, where the list has no such item.
void MarksPanel::playFrom(int index)
{
    if (index < 0 || index >= ui->lstMark->count())
        return;
    SoundTouch.SeekSound(0, ParseTimeText(ui->lstMark->itemText(index)));
    SoundTouch.PlaySound(0);
}

#include "moc_MarksPanel.cpp"

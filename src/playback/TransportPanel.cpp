#include "playback/TransportPanel.h"

#include "engines/PlayerEngine.h"
#include "playback/PlaybackState.h"
#include "playback/PositionPanel.h"
#include "ui_TransportPanel.h"

namespace {

constexpr int jumpMs = 5000;

}  // namespace

TransportPanel::TransportPanel(PlayerEngine& SoundTouch, PlaybackState& state, PositionPanel& position,
                               QWidget* parent)
    : QWidget(parent)
    , SoundTouch(SoundTouch)
    , state(state)
    , position(position)
    , ui(std::make_unique<Ui::TransportPanel>())
{
    ui->setupUi(this);
    connect(ui->cmdPlay, &QToolButton::clicked, this, &TransportPanel::cmdPlay_Click);
    connect(ui->cmdPlayLoop, &QToolButton::clicked, this, &TransportPanel::cmdPlayLoop_Click);
    connect(ui->cmdPause, &QToolButton::clicked, this, &TransportPanel::cmdPause_Click);
    connect(ui->cmdStop, &QToolButton::clicked, this, &TransportPanel::cmdStop_Click);
    connect(ui->cmdRewind, &QToolButton::clicked, this, &TransportPanel::cmdRewind_Click);
    connect(ui->cmdFForward, &QToolButton::clicked, this, &TransportPanel::cmdFForward_Click);
}

TransportPanel::~TransportPanel() = default;

void TransportPanel::cmdPlay_Click()
{
    SoundTouch.PlaySound(0);
    state.PlayLoopActive = false;
    window()->setFocus();
}

void TransportPanel::cmdPlayLoop_Click()
{
    position.playLoopWindow();
    state.PlayLoopActive = true;
}

void TransportPanel::cmdPause_Click()
{
    switch (SoundTouch.GetPlayerStatus(0)) {
    case PlayerEngine::Playing:
        SoundTouch.PauseSound(0);
        break;
    case PlayerEngine::Paused:
        SoundTouch.ResumeSound(0);
        break;
    default:
        break;
    }
}

// The thousandths of the loop's begin do not count here: a stopped loop stands at the whole second.
void TransportPanel::cmdStop_Click()
{
    SoundTouch.StopSound(0);
    if (state.PlayLoopActive) {
        SoundTouch.SeekSound(0, position.loopBegin());
        position.showLoopBegin();
    }
}

void TransportPanel::cmdRewind_Click()
{
    const int wanted = SoundTouch.GetPosition(0) - jumpMs;
    const int first = state.PlayLoopActive ? position.loopBegin() : 0;
    if (wanted >= first)
        SoundTouch.SeekSound(0, wanted);
}

void TransportPanel::cmdFForward_Click()
{
    const int before = SoundTouch.GetPosition(0);
    const int last = state.PlayLoopActive ? position.loopEnd() : SoundTouch.GetDuration(0);
    if (before <= last - jumpMs)
        SoundTouch.SeekSound(0, before + jumpMs);
}

#include "moc_TransportPanel.cpp"

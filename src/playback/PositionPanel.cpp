#include "playback/PositionPanel.h"

#include "engines/PlayerEngine.h"
#include "playback/PlaybackState.h"
#include "support/Numbers.h"
#include "support/TimeText.h"
#include "ui_PositionPanel.h"

#include <QTimer>
#include <algorithm>
#include <limits>

namespace {

constexpr int lastThousandth = 999;

int thousandths(const QLineEdit& text)
{
    return leadingNumber(text.text());
}

void putThousandths(QLineEdit& text, int number)
{
    text.setText(QStringLiteral("%1").arg(number, 3, 10, QLatin1Char('0')));
}

/// The slider of a sound as long as a position can tell ends beyond the last position: its second is rounded up.
int milliseconds(const TimeSlider& slider, int thousandths = 0)
{
    const qint64 sum = qint64{slider.value()} * 1000 + thousandths;
    return static_cast<int>(std::min<qint64>(sum, std::numeric_limits<int>::max()));
}

void nudgeDown(QLineEdit& text, TimeSlider& slider)
{
    const int number = thousandths(text);
    if (number != 0) {
        putThousandths(text, number - 1);
    } else if (slider.value() > slider.minimum()) {
        putThousandths(text, lastThousandth);
        slider.setValue(slider.value() - 1);
    }
}

void carryUp(QLineEdit& text, TimeSlider& slider)
{
    if (slider.value() < slider.maximum()) {
        putThousandths(text, 0);
        slider.setValue(slider.value() + 1);
    }
}

}  // namespace

PositionPanel::PositionPanel(PlayerEngine& SoundTouch, PlaybackState& state, QWidget* parent)
    : QWidget(parent)
    , SoundTouch(SoundTouch)
    , state(state)
    , ui(std::make_unique<Ui::PositionPanel>())
    , tmrPosition(new QTimer(this))
{
    ui->setupUi(this);
    ui->display->setBackgroundRole(QPalette::Base);
    ui->display->setAutoFillBackground(true);
    // The row without a text box is as high as those with one.
    ui->sliders->setRowMinimumHeight(
        0, std::max(ui->txtBeginLoop->sizeHint().height(), ui->cmdBeginLoopDown->sizeHint().height()));
    tmrPosition->setObjectName("tmrPosition");
    tmrPosition->setInterval(30);
    tmrPosition->setTimerType(Qt::PreciseTimer);

    connect(tmrPosition, &QTimer::timeout, this, &PositionPanel::tmrPosition_Timer);
    connect(ui->sldAudioPosition, &TimeSlider::MouseDown, this, &PositionPanel::sldAudioPosition_MouseDown);
    connect(ui->sldAudioPosition, &TimeSlider::MouseUp, this, &PositionPanel::sldAudioPosition_MouseUp);
    connect(ui->sldBeginLoop, &Slider::Change, this, &PositionPanel::sldBeginLoop_Change);
    connect(ui->sldEndLoop, &Slider::Change, this, &PositionPanel::sldEndLoop_Change);
    connect(ui->cmdBeginLoopDown, &QToolButton::clicked, this, &PositionPanel::cmdBeginLoopDown_Click);
    connect(ui->cmdBeginLoopUp, &QToolButton::clicked, this, &PositionPanel::cmdBeginLoopUp_Click);
    connect(ui->cmdEndLoopDown, &QToolButton::clicked, this, &PositionPanel::cmdEndLoopDown_Click);
    connect(ui->cmdEndLoopUp, &QToolButton::clicked, this, &PositionPanel::cmdEndLoopUp_Click);
}

PositionPanel::~PositionPanel() = default;

void PositionPanel::prepareForSound()
{
    if (const int duration = SoundTouch.GetDuration(0); duration > 0)
        ui->sldAudioPosition->setMaximum(roundHalfToEven(duration / 1000.0));
    ui->sldAudioPosition->setValue(roundHalfToEven(SoundTouch.GetPosition(0) / 1000.0));
    ui->sldBeginLoop->setMaximum(ui->sldAudioPosition->maximum());
    ui->sldBeginLoop->setValue(0);
    ui->sldEndLoop->setMaximum(ui->sldAudioPosition->maximum());
    ui->sldEndLoop->setValue(ui->sldEndLoop->maximum());
    tmrPosition->start();
}

void PositionPanel::resetDisplay()
{
    tmrPosition->stop();
    for (TimeSlider* slider : {ui->sldAudioPosition, ui->sldBeginLoop, ui->sldEndLoop})
        slider->setValue(slider->maximum() / 2);
}

void PositionPanel::playLoopWindow()
{
    const int begin = milliseconds(*ui->sldBeginLoop, thousandths(*ui->txtBeginLoop));
    const int end = milliseconds(*ui->sldEndLoop, thousandths(*ui->txtEndLoop));
    SoundTouch.PlaySoundRange(0, begin, end, -1);
}

int PositionPanel::loopBegin() const
{
    return milliseconds(*ui->sldBeginLoop);
}

int PositionPanel::loopEnd() const
{
    return milliseconds(*ui->sldEndLoop);
}

void PositionPanel::placeBesideTime(QWidget* widget)
{
    ui->displayRow->addWidget(widget, 1);
}

QString PositionPanel::timeText() const
{
    return ui->lblTime->text();
}

void PositionPanel::showLoopBegin()
{
    ui->sldAudioPosition->setValue(ui->sldBeginLoop->value());
}

// A player that stands is stopped again at each tick. That ends a sound that ran out, and holds a stopped loop at
// its begin; there is no other notice of the end of a sound.
void PositionPanel::tmrPosition_Timer()
{
    showPosition();
    if (SoundTouch.GetPlayerStatus(0) == PlayerEngine::Stopped) {
        SoundTouch.StopSound(0);
        if (state.PlayLoopActive)
            SoundTouch.SeekSound(0, loopBegin());
    }
    ui->lblTime->setText(FormatPosition(SoundTouch.GetPosition(0)));
}

void PositionPanel::sldAudioPosition_MouseDown()
{
    tmrPosition->stop();
}

// The position of a loop cannot be moved by hand: the slider goes back to where the loop is.
void PositionPanel::sldAudioPosition_MouseUp()
{
    if (state.PlayLoopActive)
        showPosition();
    else
        SoundTouch.SeekSound(0, milliseconds(*ui->sldAudioPosition));
    tmrPosition->start();
}

void PositionPanel::showPosition()
{
    ui->sldAudioPosition->setValue(SoundTouch.GetPosition(0) / 1000);
}

void PositionPanel::sldBeginLoop_Change()
{
    if (state.PlayLoopActive)
        playLoopWindow();
}

void PositionPanel::sldEndLoop_Change()
{
    if (state.PlayLoopActive)
        playLoopWindow();
}

// Each nudge ends with the change of its slider, moved or not, so that a running loop takes up the new thousandths.
void PositionPanel::cmdBeginLoopDown_Click()
{
    nudgeDown(*ui->txtBeginLoop, *ui->sldBeginLoop);
    sldBeginLoop_Change();
}

void PositionPanel::cmdBeginLoopUp_Click()
{
    const int number = thousandths(*ui->txtBeginLoop);
    if (number < lastThousandth)
        putThousandths(*ui->txtBeginLoop, number + 1);
    else
        carryUp(*ui->txtBeginLoop, *ui->sldBeginLoop);
    sldBeginLoop_Change();
}

void PositionPanel::cmdEndLoopDown_Click()
{
    nudgeDown(*ui->txtEndLoop, *ui->sldEndLoop);
    sldEndLoop_Change();
}

// Unlike the begin, the end is never nudged past the last whole second of the sound.
void PositionPanel::cmdEndLoopUp_Click()
{
    const int number = thousandths(*ui->txtEndLoop);
    if (number >= lastThousandth)
        carryUp(*ui->txtEndLoop, *ui->sldEndLoop);
    else if (ui->sldEndLoop->value() < ui->sldEndLoop->maximum())
        putThousandths(*ui->txtEndLoop, number + 1);
    sldEndLoop_Change();
}

void PositionPanel::cmdLoopWindowBack_Click()
{
    if (ui->sldBeginLoop->value() - 1 < ui->sldEndLoop->minimum())
        return;
    ui->sldEndLoop->setValue(ui->sldEndLoop->value() - 1);
    ui->sldBeginLoop->setValue(ui->sldBeginLoop->value() - 1);
}

void PositionPanel::cmdLoopWindowForward_Click()
{
    if (ui->sldEndLoop->value() + 1 > ui->sldEndLoop->maximum())
        return;
    ui->sldEndLoop->setValue(ui->sldEndLoop->value() + 1);
    ui->sldBeginLoop->setValue(ui->sldBeginLoop->value() + 1);
}

#include "moc_PositionPanel.cpp"

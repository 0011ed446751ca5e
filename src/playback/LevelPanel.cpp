#include "playback/LevelPanel.h"

#include "engines/PlayerEngine.h"
#include "support/Numbers.h"
#include "ui_LevelPanel.h"

#include <QTimer>

namespace {

constexpr int balanceStep = 2;
constexpr int shortestFade = 1;
constexpr int longestFade = 9;

/// The whole range of the gain, in units of its slider.
constexpr int fadeSteps = 100;

/// Divides the range of the system's volume into ten.
constexpr double volumeTenth = 6553.0;

}  // namespace

LevelPanel::LevelPanel(PlayerEngine& SoundTouch, QWidget* parent)
    : QWidget(parent)
    , SoundTouch(SoundTouch)
    , ui(std::make_unique<Ui::LevelPanel>())
    , tmrFade(new QTimer(this))
{
    ui->setupUi(this);
    tmrFade->setObjectName("tmrFade");
    tmrFade->setInterval(100);
    tmrFade->setTimerType(Qt::PreciseTimer);

    connect(ui->sldGain, &Slider::Change, this, &LevelPanel::sldGain_Change);
    connect(ui->sldBalance, &Slider::Change, this, &LevelPanel::sldBalance_Change);
    connect(ui->sldVolume, &Slider::Change, this, &LevelPanel::sldVolume_Change);
    connect(ui->cmdGainDown, &QToolButton::clicked, ui->sldGain, [this] { ui->sldGain->stepOrRefuse(-1); });
    connect(ui->cmdBalanceLeft, &QToolButton::clicked, this, &LevelPanel::cmdBalanceLeft_Click);
    connect(ui->cmdBalanceRight, &QToolButton::clicked, this, &LevelPanel::cmdBalanceRight_Click);
    connect(ui->cmdBalanceReset, &QToolButton::clicked, ui->sldBalance, [this] { ui->sldBalance->setValue(0); });
    connect(ui->cmdFadeIntUp, &QToolButton::clicked, this, &LevelPanel::cmdFadeIntUp_Click);
    connect(ui->cmdFadeIntDown, &QToolButton::clicked, this, &LevelPanel::cmdFadeIntDown_Click);
    connect(ui->cmdFadeIn, &QToolButton::clicked, this, &LevelPanel::cmdFadeIn_Click);
    connect(ui->cmdFadeOut, &QToolButton::clicked, this, &LevelPanel::cmdFadeOut_Click);
    connect(tmrFade, &QTimer::timeout, this, &LevelPanel::tmrFade_Timer);
}

LevelPanel::~LevelPanel() = default;

void LevelPanel::FadingVisible()
{
    for (QWidget* control : std::initializer_list<QWidget*>{ui->Label18, ui->Label19, ui->cmdFadeOut, ui->cmdFadeIn,
                                                            ui->cmdFadeIntUp, ui->cmdFadeIntDown, ui->txtFadeInt})
        control->show();
    layout()->activate();  // the window measures the panel before it is seen
}

Slider& LevelPanel::sldVolume()
{
    return *ui->sldVolume;
}

int LevelPanel::masterVolume() const
{
    return MasterVolume;
}

void LevelPanel::sldGain_Change()
{
    SoundTouch.SetGain(0, static_cast<short>(ui->sldGain->value()));
}

void LevelPanel::sldBalance_Change()
{
    SoundTouch.SetBalance(0, static_cast<short>(ui->sldBalance->value()));
}

void LevelPanel::sldVolume_Change()
{
    MasterVolume = ui->sldVolume->value();
    ui->sldVolume->setToolTip(QString::number(MasterVolume / volumeTenth, 'f', 3));
    sldBalance_Change();
}

// Only a slider at its very end refuses the step: from one unit before it, the slider cuts the step to its range.
void LevelPanel::cmdBalanceLeft_Click()
{
    if (ui->sldBalance->value() > ui->sldBalance->minimum())
        ui->sldBalance->setValue(ui->sldBalance->value() - balanceStep);
}

void LevelPanel::cmdBalanceRight_Click()
{
    if (ui->sldBalance->value() < ui->sldBalance->maximum())
        ui->sldBalance->setValue(ui->sldBalance->value() + balanceStep);
}

void LevelPanel::cmdFadeIntUp_Click()
{
    if (fadingInterval() < longestFade)
        ui->txtFadeInt->setText(QString::number(fadingInterval() + 1));
}

void LevelPanel::cmdFadeIntDown_Click()
{
    if (fadingInterval() > shortestFade)
        ui->txtFadeInt->setText(QString::number(fadingInterval() - 1));
}

void LevelPanel::cmdFadeIn_Click()
{
    if (ui->sldGain->value() != ui->sldGain->maximum())
        startFade(FadeInActive);
}

void LevelPanel::cmdFadeOut_Click()
{
    if (ui->sldGain->value() != ui->sldGain->minimum())
        startFade(FadeOutActive);
}

// The flag of the other fade stays as it is, and a timer that runs keeps its beat.
void LevelPanel::startFade(bool& wanted)
{
    wanted = true;
    if (!tmrFade->isActive())
        tmrFade->start();
}

// The wait that is under way was begun with the interval held before; only another one is set, as setting it begins
// the wait anew and would make each step late by the time that a tick takes.
void LevelPanel::tmrFade_Timer()
{
    const int stepMs = fadingInterval() * 1000 / fadeSteps;
    if (tmrFade->interval() != stepMs)
        tmrFade->setInterval(stepMs);

    const int gain = ui->sldGain->value();
    if ((gain == ui->sldGain->minimum() && FadeOutActive) || (gain == ui->sldGain->maximum() && FadeInActive)) {
        tmrFade->stop();
        FadeInActive = false;
        FadeOutActive = false;
    }
    if (FadeInActive)
        ui->sldGain->setValue(gain + 1);
    else if (FadeOutActive)
        ui->sldGain->setValue(gain - 1);
}

int LevelPanel::fadingInterval() const
{
    return leadingNumber(ui->txtFadeInt->text());
}

#include "moc_LevelPanel.cpp"

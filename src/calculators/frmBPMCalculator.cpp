#include "calculators/frmBPMCalculator.h"

#include "support/Numbers.h"
#include "support/Pictures.h"
#include "support/controls/Slider.h"
#include "support/dialogs/MsgBox.h"
#include "ui_frmBPMCalculator.h"

#include <QKeyEvent>
#include <QTimer>
#include <limits>

namespace {

constexpr short measuredSeconds = 5;
constexpr int measurementsInAMinute = 12;

}  // namespace

// The window itself begins with the focus; otherwise Qt would give it to the first control.
frmBPMCalculator::frmBPMCalculator(Slider& sldTempo, MsgBox& msgBox, QWidget* parent)
    : QWidget(parent, Qt::Dialog)
    , sldTempo(sldTempo)
    , msgBox(msgBox)
    , ui(std::make_unique<Ui::frmBPMCalculator>())
    , tmrBpm(new QTimer(this))
    , tmrStop(new QTimer(this))
{
    ui->setupUi(this);
    setWindowIcon(programIcon());
    QFont large = ui->lblBpm->font();
    large.setPointSizeF(QFontInfo(large).pointSizeF() * 1.4);
    large.setBold(true);
    ui->lblBpm->setFont(large);
    tmrBpm->setObjectName("tmrBpm");
    tmrBpm->setInterval(1000);
    tmrBpm->setTimerType(Qt::PreciseTimer);
    tmrStop->setObjectName("tmrStop");
    tmrStop->setInterval(4000);
    connect(tmrBpm, &QTimer::timeout, this, &frmBPMCalculator::tmrBpm_Timer);
    connect(tmrStop, &QTimer::timeout, this, &frmBPMCalculator::tmrStop_Timer);
    connect(ui->cmdDetermineBpm, &QPushButton::clicked, this, &frmBPMCalculator::cmdDetermineBpm_Click);
    connect(ui->cmdApplyBpm, &QPushButton::clicked, this, &frmBPMCalculator::cmdApplyBpm_Click);
    setFocus();
}

frmBPMCalculator::~frmBPMCalculator() = default;

// Keys that a control does not use come here too.
void frmBPMCalculator::keyPressEvent(QKeyEvent* event)
{
    if (focusWidget() != this) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    if (event->isAutoRepeat())
        return;
    countTap();
    setWindowTitle(QString::number(TapCount));
}

void frmBPMCalculator::countTap()
{
    if (TapCount < std::numeric_limits<short>::max())
        ++TapCount;
}

void frmBPMCalculator::cmdDetermineBpm_Click()
{
    if (!tmrBpm->isActive())
        tmrBpm->start();
    countTap();
    setWindowTitle(tr("Determining Bpm..."));
}

// A locked button would hand its focus on to the list, and the taps that come too late would open that. The result
// takes them instead.
void frmBPMCalculator::tmrBpm_Timer()
{
    if (++BpmSeconds < measuredSeconds)
        return;
    tmrBpm->stop();
    if (focusWidget() == ui->cmdDetermineBpm)
        ui->lblBpm->setFocus();
    ui->cmdDetermineBpm->setEnabled(false);
    tmrStop->start();
    ui->lblBpm->setText(tr("%1 Bpm").arg(TapCount * measurementsInAMinute));
    setWindowTitle(tr("Beats per minute calculator"));
    TapCount = 0;
    BpmSeconds = 0;
}

void frmBPMCalculator::tmrStop_Timer()
{
    ui->cmdDetermineBpm->setEnabled(true);
    tmrStop->stop();
    if (focusWidget() == ui->lblBpm)
        ui->cmdDetermineBpm->setFocus();
}

// What was measured was measured at the slider's present tempo. The window may be gone after its close.
void frmBPMCalculator::cmdApplyBpm_Click()
{
    const int current = leadingNumber(ui->lblBpm->text());
    const int preferred = leadingNumber(ui->cboBpm->currentText());
    if (preferred == 0 || current == 0)
        return;
    const double tempo = static_cast<double>((sldTempo.value() + 100) * preferred) / current - 100.0;
    if (tempo <= sldTempo.maximum() && tempo >= sldTempo.minimum())
        sldTempo.setValue(roundHalfToEven(tempo));
    else
        msgBox.show(tr("Tempo change is out of slider range."), MsgBox::Look::Exclamation);
    close();
}

#include "moc_frmBPMCalculator.cpp"

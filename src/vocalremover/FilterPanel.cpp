#include "vocalremover/FilterPanel.h"

#include "ui_FilterPanel.h"
#include "vocalremover/pictures/GainPicture.h"
#include "vocalremover/pictures/HighCutPicture.h"
#include "vocalremover/pictures/LowCutPicture.h"

namespace {

constexpr int usualCutOffLow = 200;
constexpr int usualCutOffHigh = 8000;
constexpr int usualGain = 100;

template <typename Picture>
void follow(Picture& picture, const Slider& slider)
{
    picture.showValue(slider.value(), slider.minimum(), slider.maximum());
}

}  // namespace

FilterPanel::FilterPanel(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::FilterPanel>())
    , lowPicture(new LowCutPicture(this))
    , highPicture(new HighCutPicture(this))
    , gainPicture(new GainPicture(this))
{
    ui->setupUi(this);
    ui->placeOfLowPicture->addWidget(lowPicture);
    ui->placeOfHighPicture->addWidget(highPicture);
    ui->placeOfGainPicture->addWidget(gainPicture);
    for (QWidget* picture : std::initializer_list<QWidget*>{lowPicture, highPicture, gainPicture})
        picture->setFixedWidth(lowPicture->sizeHint().width());
    for (QLabel* readOut : {ui->lblCutOffLow, ui->lblCutOffHigh, ui->lblGain})
        readOut->setMinimumWidth(readOut->fontMetrics().horizontalAdvance(QStringLiteral("16000 Hz")));
    connect(ui->sldCutOffLow, &Slider::Change, this, &FilterPanel::sldCutOffLow_Change);
    connect(ui->sldCutOffHigh, &Slider::Change, this, &FilterPanel::sldCutOffHigh_Change);
    connect(ui->sldGain, &Slider::Change, this, &FilterPanel::sldGain_Change);
    connect(ui->cmdResetAllFrequences, &QToolButton::clicked, this, &FilterPanel::cmdResetAllFrequences_Click);
    connect(ui->cmdResetGain, &QToolButton::clicked, this, &FilterPanel::cmdResetGain_Click);
}

FilterPanel::~FilterPanel() = default;

int FilterPanel::cutOffLow() const
{
    return ui->sldCutOffLow->value();
}

int FilterPanel::cutOffHigh() const
{
    return ui->sldCutOffHigh->value();
}

int FilterPanel::gain() const
{
    return ui->sldGain->value();
}

void FilterPanel::sldCutOffLow_Change()
{
    follow(*lowPicture, *ui->sldCutOffLow);
    ui->lblCutOffLow->setText(QStringLiteral("%1 Hz").arg(cutOffLow()));
}

void FilterPanel::sldCutOffHigh_Change()
{
    follow(*highPicture, *ui->sldCutOffHigh);
    ui->lblCutOffHigh->setText(QStringLiteral("%1 Hz").arg(cutOffHigh()));
}

void FilterPanel::sldGain_Change()
{
    follow(*gainPicture, *ui->sldGain);
    ui->lblGain->setText(QStringLiteral("%1 %").arg(gain()));
}

void FilterPanel::cmdResetAllFrequences_Click()
{
    ui->sldCutOffLow->setValue(usualCutOffLow);
    ui->sldCutOffHigh->setValue(usualCutOffHigh);
}

void FilterPanel::cmdResetGain_Click()
{
    ui->sldGain->setValue(usualGain);
}

#include "moc_FilterPanel.cpp"

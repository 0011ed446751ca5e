#include "vocalremover/PreviewPanel.h"

#include "engines/PlayerEngine.h"
#include "support/Numbers.h"
#include "ui_PreviewPanel.h"
#include "vocalremover/RemoverPlayers.h"

namespace {

constexpr int shortestPreview = 10;
constexpr int longestPreview = 20;
constexpr int millisecondsPerSecond = 1000;

int wholeSeconds(int milliseconds)
{
    return roundHalfToEven(static_cast<double>(milliseconds) / millisecondsPerSecond);
}

}  // namespace

PreviewPanel::PreviewPanel(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::PreviewPanel>())
{
    ui->setupUi(this);
    connect(ui->cmdConvertPlayPreview, &QToolButton::clicked, this, &PreviewPanel::playResultWanted);
    connect(ui->cmdConvertStopPreview, &QToolButton::clicked, this, &PreviewPanel::stopWanted);
    connect(ui->cmdPlayOriginal, &QToolButton::clicked, this, &PreviewPanel::playSourceWanted);
    connect(ui->cmdPreviewDurationUp, &QToolButton::clicked, this, &PreviewPanel::cmdPreviewDurationUp_Click);
    connect(ui->cmdPreviewDurationDown, &QToolButton::clicked, this, &PreviewPanel::cmdPreviewDurationDown_Click);
}

PreviewPanel::~PreviewPanel() = default;

void PreviewPanel::enableControls()
{
    for (QWidget* control : std::initializer_list<QWidget*>{
             ui->cmdConvertPlayPreview, ui->cmdPlayOriginal, ui->cmdConvertStopPreview, ui->cmdPreviewDurationUp,
             ui->cmdPreviewDurationDown, ui->sldPreviewPosition, ui->lblPreviewPosition, ui->lblDurationCaption,
             ui->lblPreviewDuration, ui->lblSeconds})
        control->setEnabled(true);
}

void PreviewPanel::setUpPosition(const PlayerEngine& Player)
{
    constexpr int longest = longestPreview * millisecondsPerSecond;
    const int duration = Player.GetDuration(SourcePlayer);
    if (duration > longest)
        ui->sldPreviewPosition->setMaximum(wholeSeconds(duration - longest));
    ui->sldPreviewPosition->setValue(wholeSeconds(Player.GetPosition(SourcePlayer)));
}

PreviewPanel::Stretch PreviewPanel::stretch() const
{
    const int begin = ui->sldPreviewPosition->value() * millisecondsPerSecond;
    return {begin, duration() * millisecondsPerSecond + begin};
}

void PreviewPanel::cmdPreviewDurationUp_Click()
{
    const int longer = duration() + 1;
    putDuration(longer > longestPreview ? shortestPreview : longer);
}

void PreviewPanel::cmdPreviewDurationDown_Click()
{
    const int shorter = duration() - 1;
    putDuration(shorter < shortestPreview ? longestPreview : shorter);
}

int PreviewPanel::duration() const
{
    return leadingNumber(ui->lblPreviewDuration->text());
}

void PreviewPanel::putDuration(int seconds)
{
    ui->lblPreviewDuration->setText(QStringLiteral("%1").arg(seconds, 2, 10, QLatin1Char('0')));
}

#include "moc_PreviewPanel.cpp"

#include "support/TipOfDay.h"

#include "support/CentreOnScreen.h"
#include "support/Numbers.h"
#include "support/Pictures.h"
#include "support/SettingsStore.h"
#include "ui_TipOfDay.h"

#include <QFontMetrics>
#include <algorithm>
#include <array>

namespace {

constexpr int firstPlace = 2;
constexpr int lastPlace = 8;

constexpr std::array tips = {
    QT_TRANSLATE_NOOP("TipOfDay",
                      "Use keyboard left and right arrow to change tempo without affecting pitch, while "
                      "audio is played ."),
    QT_TRANSLATE_NOOP("TipOfDay",
                      "Use keyboard up and down arrow to change pitch by semitones without affecting "
                      "tempo, while audio is played ."),
    QT_TRANSLATE_NOOP("TipOfDay", "Press PageUp and PageDown keys to change both tempo and pitch together ."),
    QT_TRANSLATE_NOOP("TipOfDay", "Press Enter to play selected audio from the list ."),
    QT_TRANSLATE_NOOP("TipOfDay", "Press Alt-Enter for looping the played audio ."),
    QT_TRANSLATE_NOOP("TipOfDay", "Use spacebar to pause played audio ."),
    QT_TRANSLATE_NOOP("TipOfDay",
                      "You can record modified audio by choosing Output mode-Sound and recording or "
                      "Output mode-Soundless recording from main menu ."),
};

QString tip(int place)
{
    return TipOfDay::tr(tips.at(static_cast<std::size_t>(place - firstPlace)));
}

int showTipsAtStartup(const SettingsStore& settings)
{
    return leadingNumber(settings.GetSetting("Options", "Show Tips at Startup", "1"));
}

}  // namespace

TipOfDay::TipOfDay(SettingsStore& settings, TipPlace& place, QWidget* parent)
    : QDialog(parent)
    , settings(settings)
    , place(place)
    , ui(std::make_unique<Ui::TipOfDay>())
{
    ui->setupUi(this);
    setWindowIcon(programIcon());
    QFont heading = ui->Label1->font();
    heading.setPointSizeF(QFontInfo(heading).pointSizeF() * 1.4);
    heading.setBold(true);
    ui->Label1->setFont(heading);
    ui->Label2->setForegroundRole(QPalette::PlaceholderText);
    ui->picture->setPixmap(QIcon::fromTheme("help-hint").pixmap(QSize(32, 32), devicePixelRatioF()));
    makeRoomForAllTips();
    Load();
    connect(ui->chkLoadTipsAtStartup, &QCheckBox::toggled, this, &TipOfDay::chkLoadTipsAtStartup_Click);
    connect(ui->MyButton1, &QPushButton::clicked, this, &TipOfDay::MyButton1_Click);
    connect(ui->MyButton2, &QPushButton::clicked, this, &TipOfDay::close);
    // A key pressed for the player just as the window appears must not uncheck the box.
    ui->MyButton2->setFocus();
}

TipOfDay::~TipOfDay() = default;

bool TipOfDay::wantedAtStartup(const SettingsStore& settings)
{
    return showTipsAtStartup(settings) == 1;
}

int TipOfDay::exec()
{
    return hidden ? static_cast<int>(Rejected) : QDialog::exec();
}

void TipOfDay::Load()
{
    const int wanted = showTipsAtStartup(settings);
    if (wanted == 0) {
        hidden = true;
        return;
    }
    ui->chkLoadTipsAtStartup->setChecked(true);
    centreOnScreen(*this);
    MyButton1_Click();
}

// The longest tip decides, so that the buttons stay under the pointer while tips go by.
void TipOfDay::makeRoomForAllTips()
{
    const int width = ui->LblTip->minimumWidth();
    const QFontMetrics metrics(ui->LblTip->font());
    int height = 0;
    for (int i = firstPlace; i <= lastPlace; ++i)
        height = std::max(height, metrics.boundingRect(0, 0, width, 0, Qt::TextWordWrap, tip(i)).height());
    ui->LblTip->setMinimumHeight(height);
}

void TipOfDay::chkLoadTipsAtStartup_Click()
{
    const bool wanted = ui->chkLoadTipsAtStartup->isChecked();
    settings.SaveSetting("Options", "Show Tips at Startup", wanted ? "1" : "0");
}

// The places of the tips begin at 2: 1 has none.
void TipOfDay::MyButton1_Click()
{
    ++place.number;
    if (place.number > lastPlace)
        place.number = 1;
    if (place.number == 1)
        place.number = firstPlace;
    ui->Label2->setText(QString::number(place.number));
    ui->LblTip->setText(tip(place.number));
}

#include "moc_TipOfDay.cpp"

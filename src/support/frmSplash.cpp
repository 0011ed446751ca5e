#include "support/frmSplash.h"

#include "support/CentreOnScreen.h"
#include "support/Pictures.h"
#include "ui_frmSplash.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <QWindow>

namespace {

// The window system shows a window in its own time, and the load that follows leaves the event loop no turn: what
// is drawn before the window is there is lost. A window that nobody can see is not waited for.
void waitUntilExposed(const QWidget& window)
{
    constexpr int longest = 200;
    const QDeadlineTimer deadline(longest);
    QEventLoop events;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &events, [&] {
        if (window.windowHandle()->isExposed() || deadline.hasExpired())
            events.quit();
    });
    look.start(1);
    events.exec(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace

frmSplash::frmSplash(QWidget* owner)
    : QWidget(owner, Qt::SplashScreen | Qt::FramelessWindowHint)
    , ui(std::make_unique<Ui::frmSplash>())
    , Timer1(new QTimer(this))
{
    ui->setupUi(this);
    setWindowIcon(programIcon());
    centreOnScreen(*this);
    Timer1->setObjectName("Timer1");
    Timer1->setInterval(10);
    connect(Timer1, &QTimer::timeout, this, &frmSplash::Timer1_Timer);
}

frmSplash::~frmSplash() = default;

void frmSplash::end()
{
    hide();
    Timer1->stop();
}

void frmSplash::setVisible(bool visible)
{
    const bool appears = visible && !isVisible();
    QWidget::setVisible(visible);
    if (!appears)
        return;
    waitUntilExposed(*this);
    Load();
}

void frmSplash::Load()
{
    ui->ProgressBar->setScrolling(XP_ProgressBar::Searching);
    for (int i = 1; i <= 100; ++i)
        ui->ProgressBar->setValue(i);
    Timer1->start();
}

// The value is the same at each tick: the bar stands still and is drawn again.
void frmSplash::Timer1_Timer()
{
    constexpr int standstill = 10;
    ui->ProgressBar->setValue(standstill > ui->ProgressBar->Max() ? ui->ProgressBar->Min() : standstill);
}

#include "moc_frmSplash.cpp"

#include "encoding/frmMP3Options.h"

#include "encoding/BitratePanel.h"
#include "encoding/EncodingModePanel.h"
#include "encoding/EncodingPanel.h"
#include "encoding/MiscPropertiesPanel.h"
#include "encoding/VariableBitratePanel.h"
#include "engines/Mp3EncoderEngine.h"
#include "support/Pictures.h"
#include "ui_frmMP3Options.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>
#include <QToolButton>
#include <algorithm>
#include <utility>

namespace {

constexpr int twipsPerPixel = 15;
constexpr int smallHeight = 2400 / twipsPerPixel;
constexpr int largeHeight = 8300 / twipsPerPixel;

}  // namespace

frmMP3Options::frmMP3Options(std::unique_ptr<Mp3EncoderEngine> encoder, CommonDialog& dialog, QWidget* parent)
    : QDialog(parent)
    , LameEncoderX1(std::move(encoder))
    , ui(std::make_unique<Ui::frmMP3Options>())
    , encoding(new EncodingPanel(*LameEncoderX1, dialog, this))
    , mode(new EncodingModePanel(*LameEncoderX1, this))
    , bitrate(new BitratePanel(*LameEncoderX1, this))
    , variableBitrate(new VariableBitratePanel(*LameEncoderX1, this))
    , misc(new MiscPropertiesPanel(*LameEncoderX1, this))
{
    ui->setupUi(this);
    setWindowIcon(programIcon());
    placePanels();
    orderTabs();
    connect(&encoding->cmdOptions(), &QToolButton::clicked, this, &frmMP3Options::cmdOptions_Click);
    ui->options->hide();
    setHeight(smallHeight);
    encoding->focusOnBrowse();
}

frmMP3Options::~frmMP3Options() = default;

void frmMP3Options::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel))
        event->ignore();
    else
        QDialog::keyPressEvent(event);
}

void frmMP3Options::placePanels()
{
    ui->placeOfEncoding->addWidget(encoding);
    ui->leftColumn->addWidget(mode);
    ui->leftColumn->addWidget(bitrate);
    ui->leftColumn->addWidget(variableBitrate);
    ui->rightColumn->addWidget(misc);
}

// Down the left column, then down the right one, and to what lies below both. Inside a panel its form tells the
// order.
void frmMP3Options::orderTabs()
{
    QWidgetList order;
    for (QWidget* panel : std::initializer_list<QWidget*>{encoding, mode, bitrate, variableBitrate, misc}) {
        for (QWidget* next = panel->nextInFocusChain(); panel->isAncestorOf(next);
             next = next->nextInFocusChain()) {
            if (next->focusPolicy() & Qt::TabFocus)
                order << next;
        }
    }
    order << ui->Text1 << ui->Text2;
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

// Qt would hand the keyboard of a control that goes to the next one.
void frmMP3Options::cmdOptions_Click()
{
    QToolButton& cmdOptions = encoding->cmdOptions();
    if (OptionsShown && ui->options->isAncestorOf(focusWidget()))
        cmdOptions.setFocus();
    OptionsShown = !OptionsShown;
    ui->options->setVisible(OptionsShown);
    setHeight(OptionsShown ? largeHeight : smallHeight);
    cmdOptions.setText(OptionsShown ? tr("<< Hide options") : tr("Options >>"));
    cmdOptions.setAccessibleName(OptionsShown ? tr("Hide options") : tr("Options"));
}

// The size at which nothing has to be scrolled, or, where there is no room for that, with a bar beside what
// scrolls.
QSize frmMP3Options::sizeOfAll(const QSize& room) const
{
    const QMargins margins = ui->rows->contentsMargins();
    const QSize content = ui->optionsContent->minimumSizeHint();
    const int beside = minimumSizeHint().height() - ui->options->minimumSizeHint().height();
    QSize all(content.width() + margins.left() + margins.right(), content.height() + beside);
    if (all.width() > room.width())
        all.rheight() += ui->options->horizontalScrollBar()->sizeHint().height();
    if (all.height() > room.height())
        all.rwidth() += ui->options->verticalScrollBar()->sizeHint().width();
    return all.expandedTo(minimumSizeHint());
}

// The window is as high as it should be, larger where its letters need that, and no larger than the screen: on a
// small one the options scroll. One that fills the screen stays as it is.
void frmMP3Options::setHeight(int wanted)
{
    if (isMaximized() || isFullScreen())
        return;
    // What was shown or hidden just now counts, and what changed while it was hidden.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    const QRect room = screen()->availableGeometry();
    const QSize needed = OptionsShown ? sizeOfAll(room.size()) : minimumSizeHint();
    resize(QSize(width(), wanted).expandedTo(needed).boundedTo(room.size()));
    if (isVisible() && frameGeometry().bottom() > room.bottom())
        move(x(), std::max(room.bottom() + 1 - frameGeometry().height(), room.top()));
}

#include "moc_frmMP3Options.cpp"

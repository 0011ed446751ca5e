#include "vocalremover/VocalPositionPanel.h"

#include "support/WindowLife.h"
#include "ui_VocalPositionPanel.h"
#include "vocalremover/pictures/PanDial.h"

namespace {

constexpr int usualPan = 0;

}  // namespace

VocalPositionPanel::VocalPositionPanel(WindowLife& life, QWidget* parent)
    : QWidget(parent)
    , life(life)
    , ui(std::make_unique<Ui::VocalPositionPanel>())
    , dial(new PanDial(this))
{
    ui->setupUi(this);
    ui->placeOfDial->addWidget(dial);
    ui->lblVocalPan->setMinimumWidth(ui->lblVocalPan->fontMetrics().horizontalAdvance(QStringLiteral("-100")));
    connect(ui->sldVocalPan, &Slider::Change, this, &VocalPositionPanel::sldVocalPan_Change);
    connect(ui->cmdResetPan, &QToolButton::clicked, this, &VocalPositionPanel::cmdResetPan_Click);
}

VocalPositionPanel::~VocalPositionPanel() = default;

int VocalPositionPanel::pan() const
{
    return ui->sldVocalPan->value();
}

void VocalPositionPanel::sldVocalPan_Change()
{
    const WindowLife::Routine routine(life);
    ui->lblVocalPan->setNum(pan());
    dial->showAngleOf(pan());
}

void VocalPositionPanel::cmdResetPan_Click()
{
    ui->sldVocalPan->setValue(usualPan);
}

#include "moc_VocalPositionPanel.cpp"

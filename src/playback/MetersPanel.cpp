#include "playback/MetersPanel.h"

#include "engines/PlayerEngine.h"
#include "support/controls/LevelBar.h"
#include "ui_MetersPanel.h"

MetersPanel::MetersPanel(PlayerEngine& SoundTouch, QWidget* parent)
    : QWidget(parent)
    , SoundTouch(SoundTouch)
    , ui(std::make_unique<Ui::MetersPanel>())
{
    ui->setupUi(this);
}

MetersPanel::~MetersPanel() = default;

void MetersPanel::startMeters()
{
    SoundTouch.VuMeter().SetVuMeterMode(0, 0);
    SoundTouch.VuMeter().EnableVuMeter(0, 1);
    VuBarLeft = CreateVuBar(*ui->PictureVuMeterLeft);
    VuBarRight = CreateVuBar(*ui->PictureVuMeterRight);
    connect(&SoundTouch, &PlayerEngine::VuPeaks, this, &MetersPanel::VuPeaks);
}

LevelBar* MetersPanel::CreateVuBar(QWidget& picture)
{
    auto* bar = new LevelBar(&picture);
    bar->SetBarRange(0, 32767);
    // The name that the form gives the place is the bar's: a reader would find both.
    bar->setAccessibleName(picture.accessibleName());
    picture.setAccessibleName({});
    picture.layout()->addWidget(bar);
    return bar;
}

void MetersPanel::VuPeaks(short, short left, short right)
{
    VuBarLeft->SetBarValue(left);
    VuBarRight->SetBarValue(right);
}

#include "moc_MetersPanel.cpp"

#include "playback/EqualizerPanel.h"

#include "engines/PlayerEngine.h"
#include "support/Numbers.h"
#include "support/dialogs/CommonDialog.h"
#include "support/dialogs/MsgBox.h"
#include "ui_EqualizerPanel.h"

namespace {

constexpr float bandwidth = 12;  // semitones
constexpr double unitsPerDecibel = 100;

FileDialogSetup presetDialog(const QString& title)
{
    FileDialogSetup setup;
    setup.title = title;
    setup.filter = QStringLiteral("Equalizer files (*.edj)|*.edj|");
    return setup;
}

}  // namespace

EqualizerPanel::EqualizerPanel(PlayerEngine& SoundTouch, CommonDialog& dlgEQ, MsgBox& msgBox, QWidget* parent)
    : QWidget(parent)
    , SoundTouch(SoundTouch)
    , dlgEQ(dlgEQ)
    , msgBox(msgBox)
    , ui(std::make_unique<Ui::EqualizerPanel>())
{
    ui->setupUi(this);
    bands = {{{ui->Slider80Hz, 80},
              {ui->Slider170Hz, 170},
              {ui->Slider310Hz, 310},
              {ui->Slider600Hz, 600},
              {ui->Slider1000Hz, 1000},
              {ui->Slider3000Hz, 3000},
              {ui->Slider6000Hz, 6000},
              {ui->Slider12000Hz, 12000},
              {ui->Slider14000Hz, 14000},
              {ui->Slider16000Hz, 16000}}};
    for (const Band& band : bands)
        connect(band.slider, &Slider::Change, this, [this, &band] { sliderChanged(band); });
    connect(ui->cmbEQPresets, &ComboBox::Click, this, &EqualizerPanel::cmbEQPresets_Click);
    connect(ui->cmdResetEQ, &QToolButton::clicked, this, &EqualizerPanel::cmdResetEQ_Click);
    connect(ui->cmdLoadEQPreset, &QToolButton::clicked, this, &EqualizerPanel::cmdLoadEQPreset_Click);
    connect(ui->cmdSaveEQPreset, &QToolButton::clicked, this, &EqualizerPanel::cmdSaveEQPreset_Click);
    connect(&SoundTouch, &PlayerEngine::EqualizerChanged, this, &EqualizerPanel::ReadEqualizerBands);
}

EqualizerPanel::~EqualizerPanel() = default;

void EqualizerPanel::EnableEqualizerPanel()
{
    for (const Band& band : bands)
        band.slider->setEnabled(true);
    for (QToolButton* button : {ui->cmdResetEQ, ui->cmdLoadEQPreset, ui->cmdSaveEQPreset})
        button->setEnabled(true);

    // The selection already resets an equalizer that has no bands yet.
    ui->cmbEQPresets->show();
    ui->cmbEQPresets->setListIndex(0);

    SoundTouch.EnableEqualizer(true);
    for (const Band& band : bands)
        SoundTouch.AddEqualizerBand(0, band.frequency, bandwidth, 0);
}

void EqualizerPanel::ReadEqualizerBands()
{
    const short count = SoundTouch.GetEqualizerBandCount(0);
    for (int index = 0; index < count; ++index) {
        float frequency = SoundTouch.GetEqualizerBandFrequency(0, index);
        float width = 0;
        float gain = 0;
        SoundTouch.GetEqualizerBand(0, frequency, width, gain);
        const auto place = static_cast<std::size_t>(index);
        if (place < bands.size())
            bands[place].slider->setValue(roundHalfToEven(gain * unitsPerDecibel));
    }
}

void EqualizerPanel::sliderChanged(const Band& band)
{
    const auto gain = static_cast<float>(band.slider->value() / unitsPerDecibel);
    SoundTouch.ChangeEqualizerBand(0, band.frequency, gain);
}

void EqualizerPanel::cmbEQPresets_Click()
{
    const int index = ui->cmbEQPresets->listIndex();
    if (index == 0)
        cmdResetEQ_Click();
    else
        SoundTouch.LoadEqualizerPreset(0, index - 1);
}

// Where the list stood elsewhere its selection comes back here once more, which changes nothing further.
void EqualizerPanel::cmdResetEQ_Click()
{
    SoundTouch.ResetEqualizer(0);
    ReadEqualizerBands();
    ui->cmbEQPresets->setListIndex(0);
}

void EqualizerPanel::cmdLoadEQPreset_Click()
{
    const QString path = dlgEQ.ShowOpen(presetDialog(QStringLiteral("Load equalizer preset"))).fileName;
    if (path.isEmpty())
        return;
    if (SoundTouch.LoadEqualizerFile(0, path) != 0)
        msgBox.show(QStringLiteral("Cannot load file ") + path, MsgBox::Look::Plain);
}

void EqualizerPanel::cmdSaveEQPreset_Click()
{
    const QString path = dlgEQ.ShowSave(presetDialog(QStringLiteral("Save equalizer preset"))).fileName;
    if (path.isEmpty())
        return;
    if (SoundTouch.SaveEqualizerFile(0, path) != 0)
        msgBox.show(QStringLiteral("Cannot save file ") + path, MsgBox::Look::Plain);
}

#include "moc_EqualizerPanel.cpp"

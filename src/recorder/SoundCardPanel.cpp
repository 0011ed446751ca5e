#include "recorder/SoundCardPanel.h"

#include "engines/RecorderEngine.h"
#include "support/dialogs/MsgBox.h"
#include "ui_SoundCardPanel.h"

#include <QAbstractItemView>
#include <QStyle>
#include <algorithm>

namespace {

constexpr short fullScale = 32767;

/// Device names are long: the list that drops down has room for them where the box has not.
void makeRoomForNames(ComboBox& list)
{
    int widest = 0;
    for (int i = 0; i < list.count(); ++i)
        widest = std::max(widest, list.fontMetrics().horizontalAdvance(list.itemText(i)));
    const int margins = 2 * list.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &list);
    list.view()->setMinimumWidth(widest + margins);
}

}  // namespace

SoundCardPanel::SoundCardPanel(RecorderEngine& Recorder, MsgBox& msgBox, QWidget* parent)
    : QWidget(parent)
    , Recorder(Recorder)
    , msgBox(msgBox)
    , ui(std::make_unique<Ui::SoundCardPanel>())
{
    ui->setupUi(this);
    connect(ui->ComboRecordingDevices, &ComboBox::Click, this, &SoundCardPanel::ComboRecordingDevices_Click);
    connect(ui->ComboRecordingInput, &ComboBox::Click, this, &SoundCardPanel::ComboRecordingInput_Click);
    connect(ui->SliderRecordingInputVolume, &Slider::Change, this,
            &SoundCardPanel::SliderRecordingInputVolume_Change);
    connect(ui->chkAutoGain, &QCheckBox::toggled, this, &SoundCardPanel::passAntiClipping);
}

SoundCardPanel::~SoundCardPanel() = default;

// The selection of the first device runs twice: by the put, and once more whatever the put has run.
void SoundCardPanel::FillSoundCardCombos()
{
    Recorder.InitRecorder(static_cast<int>(window()->winId()), 0, -1);
    ui->ComboRecordingDevices->clear();
    const short count = Recorder.GetRecordingDeviceCount();
    for (short i = 0; i < count; ++i)
        ui->ComboRecordingDevices->addItem(Recorder.GetRecordingDeviceName(i));
    if (ui->ComboRecordingDevices->count() == 0)
        return;
    makeRoomForNames(*ui->ComboRecordingDevices);
    ui->ComboRecordingDevices->setListIndex(0);
    ComboRecordingDevices_Click();
}

void SoundCardPanel::passAntiClipping()
{
    Recorder.EnableAntiClipping(ui->chkAutoGain->isChecked() ? 1 : 0);
}

void SoundCardPanel::lowerInputIfClipped(short left, short right)
{
    if (ui->chkAutoGain->isChecked() && (left == fullScale || right == fullScale))
        ui->SliderRecordingInputVolume->stepOrRefuse(-1);
}

// A device that cannot be opened stays selected in the list; lines and level go on showing the one before.
void SoundCardPanel::ComboRecordingDevices_Click()
{
    if (Recorder.OpenRecordingDevice(device()) != 0) {
        msgBox.show(tr("The selected device is not accessible"), MsgBox::Look::Plain);
        return;
    }
    Recorder.SelectRecordingInput(device(), input());
    const short count = Recorder.GetRecordingInputCount(device());
    ui->ComboRecordingInput->clear();
    for (short i = 0; i < count; ++i)
        ui->ComboRecordingInput->addItem(Recorder.GetRecordingInputName(device(), i));
    makeRoomForNames(*ui->ComboRecordingInput);
    ui->ComboRecordingInput->setListIndex(Recorder.GetCurrentRecordingInput(device()));
    readInputVolume();
    ComboRecordingInput_Click();
}

void SoundCardPanel::ComboRecordingInput_Click()
{
    Recorder.SelectRecordingInput(device(), input());
    readInputVolume();
}

void SoundCardPanel::SliderRecordingInputVolume_Change()
{
    Recorder.SetRecordingInputVolume(device(), input(),
                                     static_cast<short>(ui->SliderRecordingInputVolume->value()));
}

// Where the slider moves, its change writes the same level back.
void SoundCardPanel::readInputVolume()
{
    ui->SliderRecordingInputVolume->setValue(Recorder.GetRecordingInputVolume(device(), input()));
}

short SoundCardPanel::device() const
{
    return static_cast<short>(ui->ComboRecordingDevices->listIndex());
}

short SoundCardPanel::input() const
{
    return static_cast<short>(ui->ComboRecordingInput->listIndex());
}

#include "moc_SoundCardPanel.cpp"

#include "recorder/AudioFormatPanel.h"

#include "engines/RecorderEngine.h"
#include "recorder/RecordingFormat.h"
#include "support/Numbers.h"
#include "ui_AudioFormatPanel.h"

namespace {

using Codec = RecordingFormat::Codec;

constexpr int usualCodec = 1;
constexpr int compressedRate = 44100;

int number(const ComboBox& list)
{
    return leadingNumber(list.currentText());
}

void fill(ComboBox& list, const Choices& choices)
{
    list.addItems(choices.texts);
    list.setListIndex(choices.usual);
}

}  // namespace

AudioFormatPanel::AudioFormatPanel(RecorderEngine& Recorder, QWidget* parent)
    : QWidget(parent)
    , Recorder(Recorder)
    , ui(std::make_unique<Ui::AudioFormatPanel>())
{
    ui->setupUi(this);
    connect(ui->ComboCodec, &ComboBox::Click, this, &AudioFormatPanel::ComboCodec_Click);
    connect(ui->ComboBitrate, &ComboBox::Click, this, &AudioFormatPanel::ComboBitrate_Click);
    connect(ui->ComboSamplerate, &ComboBox::Click, this, &AudioFormatPanel::ComboSamplerate_Click);
    connect(ui->ComboChannel, &ComboBox::Click, this, &AudioFormatPanel::ComboChannel_Click);
}

AudioFormatPanel::~AudioFormatPanel() = default;

void AudioFormatPanel::FillCodecCombo()
{
    for (const RecordingFormat& format : recordingFormats())
        ui->ComboCodec->addItem(format.name);
    ui->ComboCodec->setListIndex(usualCodec);
}

ComboBox& AudioFormatPanel::ComboCodec()
{
    return *ui->ComboCodec;
}

QString AudioFormatPanel::extension() const
{
    const RecordingFormat* format = chosenFormat();
    return format ? format->extension : QString();
}

void AudioFormatPanel::ComboCodec_Click()
{
    ui->ComboBitrate->clear();
    ui->ComboSamplerate->clear();
    ui->ComboChannel->clear();
    const RecordingFormat* format = chosenFormat();
    if (!format)
        return;
    ui->LabelBitrate->setText(format->bitrateCaption);
    fill(*ui->ComboBitrate, format->bitrates);
    fill(*ui->ComboSamplerate, format->sampleRates);
    fill(*ui->ComboChannel, format->channels);
    writeFormat(*format);
}

void AudioFormatPanel::ComboBitrate_Click()
{
    if (const RecordingFormat* format = chosenFormat())
        writeBitrate(*format);
}

// While the lists are being filled the one of channels is still empty: the engine is told 0, and the right number
// behind it.
void AudioFormatPanel::ComboSamplerate_Click()
{
    const RecordingFormat* format = chosenFormat();
    if (!format || format->codec != Codec::Wav)
        return;
    Recorder.EncodeFormats().SampleRate(number(*ui->ComboSamplerate));
    Recorder.EncodeFormats().Channels(number(*ui->ComboChannel));
}

void AudioFormatPanel::ComboChannel_Click()
{
    const int channels = number(*ui->ComboChannel);
    if (channels >= 1 && channels < 3)
        Recorder.EncodeFormats().Channels(channels);
}

const RecordingFormat* AudioFormatPanel::chosenFormat() const
{
    return recordingFormat(ui->ComboCodec->currentText());
}

void AudioFormatPanel::writeFormat(const RecordingFormat& format)
{
    RecorderEncodeFormats& formats = Recorder.EncodeFormats();
    formats.FormatForRecording(format.number);
    formats.EncodeMode(0);
    if (format.codec == Codec::Wav) {
        formats.WavSettings().Mode(1);
        formats.SampleRate(number(*ui->ComboSamplerate));
        formats.Channels(number(*ui->ComboChannel));
        return;
    }
    formats.SampleRate(compressedRate);
    formats.Channels(number(*ui->ComboChannel));
    switch (format.codec) {
    case Codec::Wav:
        break;
    case Codec::Mp3:
        formats.Mp3Settings().Mode(1);
        break;
    case Codec::Ogg:
        formats.OggSettings().Mode(0);
        break;
    case Codec::Wma:
        formats.WmaSettings().Mode(1);
        break;
    case Codec::Aac:
    case Codec::Mp4:
        formats.AacSettings().Mp4Container(format.codec == Codec::Mp4);
        formats.AacSettings().Mode(0);
        break;
    }
    writeBitrate(format);
}

// The list holds thousands of bits a second, tenths of a quality of Ogg Vorbis, or the percent of AAC.
void AudioFormatPanel::writeBitrate(const RecordingFormat& format)
{
    RecorderEncodeFormats& formats = Recorder.EncodeFormats();
    const int chosen = number(*ui->ComboBitrate);
    switch (format.codec) {
    case Codec::Wav:
        break;
    case Codec::Mp3:
        formats.Mp3Settings().Bitrate(chosen * 1000.0);
        break;
    case Codec::Ogg:
        formats.OggSettings().Quality(static_cast<float>(chosen) / 10.0F);
        break;
    case Codec::Wma:
        formats.WmaSettings().Bitrate(chosen * 1000.0);
        break;
    case Codec::Aac:
    case Codec::Mp4:
        formats.AacSettings().Quality(static_cast<float>(chosen));
        break;
    }
}

#include "moc_AudioFormatPanel.cpp"

#include "recorder/AudioFormatPanel.h"

#include "recorder/RecorderTest.h"

#include <QLabel>
#include <functional>

using ::testing::InSequence;

namespace {

const QStringList aacQualities{"10",  "20",  "30",  "40",  "50",  "60",  "70",  "80",  "90", "100",
                               "110", "120", "130", "140", "150", "200", "300", "400", "500"};
const QStringList notApplicable{"NA"};
const QStringList monoOrStereo{"1", "2"};
const QStringList stereo{"2"};

class AudioFormats : public ::testing::Test
{
protected:
    void start()
    {
        {
            const InSequence order;
            Recorder.expectMp3();
        }
        panel.FillCodecCombo();
    }

    void prepare(const QString& codec)
    {
        start();
        Recorder.unwatched([&] { pick(panel, "ComboCodec", codec); });
    }

    StrictRecorder Recorder;
    AudioFormatPanel panel{Recorder};
};

TEST_F(AudioFormats, TellTheEngineNothingBeforeTheyAreFilled)
{
    EXPECT_EQ(textOf(panel, "LabelBitrate"), "Bitrate :");
    EXPECT_TRUE(itemsOf(panel, "ComboCodec").isEmpty());
}

TEST_F(AudioFormats, AreSixAndBeginWithMp3)
{
    start();
    EXPECT_EQ(itemsOf(panel, "ComboCodec"), QStringList({"WAV", "MP3", "OGG", "WMA", "AAC", "MP4"}));
    EXPECT_EQ(textOf(panel, "ComboCodec"), "MP3");
    EXPECT_EQ(textOf(panel, "ComboBitrate"), "128");
    EXPECT_EQ(textOf(panel, "ComboSamplerate"), "NA");
    EXPECT_EQ(textOf(panel, "ComboChannel"), "2");
}

struct FormatRow
{
    const char* codec;
    const char* label;
    QStringList bitrates;
    const char* bitrate;
    QStringList sampleRates;
    const char* sampleRate;
    QStringList channels;
    const char* extension;

    /// What the engine is told, in order.
    std::function<void(StrictRecorder&)> expectWrites;
};

void PrintTo(const FormatRow& row, std::ostream* out)
{
    *out << row.codec;
}

class EachFormat : public AudioFormats, public ::testing::WithParamInterface<FormatRow>
{
protected:
    /// Selects the format, coming from another one.
    void select()
    {
        prepare(QString(GetParam().codec) == "MP3" ? "WAV" : "MP3");
        {
            const InSequence order;
            GetParam().expectWrites(Recorder);
        }
        pick(panel, "ComboCodec", GetParam().codec);
    }
};

TEST_P(EachFormat, WritesItsSettingsInItsOrder)
{
    select();
}

TEST_P(EachFormat, OffersItsOwnChoices)
{
    select();
    EXPECT_EQ(textOf(panel, "LabelBitrate"), GetParam().label);
    EXPECT_EQ(itemsOf(panel, "ComboBitrate"), GetParam().bitrates);
    EXPECT_EQ(textOf(panel, "ComboBitrate"), GetParam().bitrate);
    EXPECT_EQ(itemsOf(panel, "ComboSamplerate"), GetParam().sampleRates);
    EXPECT_EQ(textOf(panel, "ComboSamplerate"), GetParam().sampleRate);
    EXPECT_EQ(itemsOf(panel, "ComboChannel"), GetParam().channels);
    EXPECT_EQ(textOf(panel, "ComboChannel"), "2");
    EXPECT_EQ(panel.extension(), GetParam().extension);
}

const FormatRow formatRows[] = {
    {"WAV",
     "Bitrate:",
     notApplicable,
     "NA",
     {"48000", "44100", "32000", "22500", "11025"},
     "44100",
     monoOrStereo,
     "wav",
     [](StrictRecorder& Recorder) {
         EXPECT_CALL(Recorder.formats, SampleRate(44100));
         EXPECT_CALL(Recorder.formats, Channels(0));  // from the list of channels, which is still empty
         EXPECT_CALL(Recorder.formats, Channels(2));
         EXPECT_CALL(Recorder.formats, FormatForRecording(1));
         EXPECT_CALL(Recorder.formats, EncodeMode(0));
         EXPECT_CALL(Recorder.wav, Mode(1));
         EXPECT_CALL(Recorder.formats, SampleRate(44100));
         EXPECT_CALL(Recorder.formats, Channels(2));
     }},
    {"MP3",
     "Bitrate:",
     {"32", "64", "96", "128", "160", "192", "256"},
     "128",
     notApplicable,
     "NA",
     monoOrStereo,
     "mp3",
     [](StrictRecorder& Recorder) { Recorder.expectMp3(); }},
    {"OGG",
     "Quality:",
     {"10", "20", "30", "40", "50", "60", "70", "80", "90", "100"},
     "30",
     notApplicable,
     "NA",
     monoOrStereo,
     "ogg",
     [](StrictRecorder& Recorder) {
         EXPECT_CALL(Recorder.ogg, Quality(3.0F));
         EXPECT_CALL(Recorder.formats, Channels(2));
         EXPECT_CALL(Recorder.formats, FormatForRecording(4));
         EXPECT_CALL(Recorder.formats, EncodeMode(0));
         EXPECT_CALL(Recorder.formats, SampleRate(44100));
         EXPECT_CALL(Recorder.formats, Channels(2));
         EXPECT_CALL(Recorder.ogg, Mode(0));
         EXPECT_CALL(Recorder.ogg, Quality(3.0F));
     }},
    {"WMA",
     "Bitrate:",
     {"32", "48", "64", "96", "128", "160", "192"},
     "64",
     notApplicable,
     "NA",
     stereo,
     "wma",
     [](StrictRecorder& Recorder) {
         EXPECT_CALL(Recorder.wma, Bitrate(64000.0));
         EXPECT_CALL(Recorder.formats, Channels(2));
         EXPECT_CALL(Recorder.formats, FormatForRecording(3));
         EXPECT_CALL(Recorder.formats, EncodeMode(0));
         EXPECT_CALL(Recorder.formats, SampleRate(44100));
         EXPECT_CALL(Recorder.formats, Channels(2));
         EXPECT_CALL(Recorder.wma, Mode(1));
         EXPECT_CALL(Recorder.wma, Bitrate(64000.0));
     }},
    {"AAC", "Quality:", aacQualities, "100", notApplicable, "NA", stereo, "aac",
     [](StrictRecorder& Recorder) {
         EXPECT_CALL(Recorder.aac, Quality(100.0F));
         EXPECT_CALL(Recorder.formats, Channels(2));
         EXPECT_CALL(Recorder.formats, FormatForRecording(6));
         EXPECT_CALL(Recorder.formats, EncodeMode(0));
         EXPECT_CALL(Recorder.formats, SampleRate(44100));
         EXPECT_CALL(Recorder.formats, Channels(2));
         EXPECT_CALL(Recorder.aac, Mp4Container(false));
         EXPECT_CALL(Recorder.aac, Mode(0));
         EXPECT_CALL(Recorder.aac, Quality(100.0F));
     }},
    {"MP4", "Quality:", aacQualities, "100", notApplicable, "NA", stereo, "mp4",
     [](StrictRecorder& Recorder) {
         EXPECT_CALL(Recorder.aac, Quality(100.0F));
         EXPECT_CALL(Recorder.formats, Channels(2));
         EXPECT_CALL(Recorder.formats, FormatForRecording(6));
         EXPECT_CALL(Recorder.formats, EncodeMode(0));
         EXPECT_CALL(Recorder.formats, SampleRate(44100));
         EXPECT_CALL(Recorder.formats, Channels(2));
         EXPECT_CALL(Recorder.aac, Mp4Container(true));
         EXPECT_CALL(Recorder.aac, Mode(0));
         EXPECT_CALL(Recorder.aac, Quality(100.0F));
     }},
};

INSTANTIATE_TEST_SUITE_P(Formats, EachFormat, ::testing::ValuesIn(formatRows),
                         [](const auto& info) { return std::string(info.param.codec); });

TEST_F(AudioFormats, SelectedAgainComeBackToTheirUsualChoices)
{
    prepare("WAV");
    Recorder.unwatched([this] {
        pick(panel, "ComboSamplerate", "11025");
        pick(panel, "ComboChannel", "1");
        emit control<ComboBox>(panel, "ComboCodec").Click();  // a pick of the item that is selected already
    });
    EXPECT_EQ(textOf(panel, "ComboSamplerate"), "44100");
    EXPECT_EQ(textOf(panel, "ComboChannel"), "2");
}

TEST_F(AudioFormats, LeaveNoMonoBehindWhereThereIsOnlyStereo)
{
    for (const char* codec : {"WMA", "AAC", "MP4"}) {
        Recorder.unwatched([&] {
            AudioFormatPanel fresh(Recorder);
            fresh.FillCodecCombo();
            pick(fresh, "ComboChannel", "1");
            pick(fresh, "ComboCodec", codec);
            EXPECT_EQ(itemsOf(fresh, "ComboChannel"), stereo) << codec;
            EXPECT_EQ(textOf(fresh, "ComboChannel"), "2") << codec;
        });
    }
}

TEST_F(AudioFormats, WriteABitRateOfMp3InBitsASecond)
{
    prepare("MP3");
    EXPECT_CALL(Recorder.mp3, Bitrate(256000.0));
    pick(panel, "ComboBitrate", "256");
}

TEST_F(AudioFormats, WriteABitRateOfWindowsMediaInBitsASecond)
{
    prepare("WMA");
    EXPECT_CALL(Recorder.wma, Bitrate(48000.0));
    pick(panel, "ComboBitrate", "48");
}

TEST_F(AudioFormats, WriteTheQualityOfOggVorbisInTenths)
{
    prepare("OGG");
    EXPECT_CALL(Recorder.ogg, Quality(10.0F));
    pick(panel, "ComboBitrate", "100");
    EXPECT_CALL(Recorder.ogg, Quality(1.0F));
    pick(panel, "ComboBitrate", "10");
}

TEST_F(AudioFormats, WriteTheQualityOfAacAsItStandsInBothContainers)
{
    for (const char* codec : {"AAC", "MP4"}) {
        Recorder.unwatched([&] {
            if (itemsOf(panel, "ComboCodec").isEmpty())
                panel.FillCodecCombo();
            pick(panel, "ComboCodec", codec);
        });
        EXPECT_CALL(Recorder.aac, Quality(500.0F));
        pick(panel, "ComboBitrate", "500");
        ::testing::Mock::VerifyAndClearExpectations(&Recorder.aac);
    }
}

TEST_F(AudioFormats, IgnoreTheBitRateOfWav)
{
    prepare("WAV");
    emit control<ComboBox>(panel, "ComboBitrate").Click();
}

TEST_F(AudioFormats, WriteASampleRateOfWavAndTheChannelsBehindIt)
{
    prepare("WAV");
    {
        const InSequence order;
        EXPECT_CALL(Recorder.formats, SampleRate(22500));
        EXPECT_CALL(Recorder.formats, Channels(2));
    }
    pick(panel, "ComboSamplerate", "22500");
    EXPECT_CALL(Recorder.formats, Channels(1));
    pick(panel, "ComboChannel", "1");
    {
        const InSequence order;
        EXPECT_CALL(Recorder.formats, SampleRate(48000));
        EXPECT_CALL(Recorder.formats, Channels(1));
    }
    pick(panel, "ComboSamplerate", "48000");
}

TEST_F(AudioFormats, IgnoreTheSampleRateOfWhatIsCompressed)
{
    for (const char* codec : {"MP3", "OGG", "WMA", "AAC", "MP4"}) {
        Recorder.unwatched([&] {
            if (itemsOf(panel, "ComboCodec").isEmpty())
                panel.FillCodecCombo();
            pick(panel, "ComboCodec", codec);
        });
        emit control<ComboBox>(panel, "ComboSamplerate").Click();
    }
}

TEST_F(AudioFormats, WriteOneOrTwoChannelsAndNothingElse)
{
    prepare("MP3");
    EXPECT_CALL(Recorder.formats, Channels(1));
    pick(panel, "ComboChannel", "1");
    auto& channels = control<ComboBox>(panel, "ComboChannel");
    for (const char* text : {"0", "3", "", "stereo"}) {
        channels.addItem(text);
        channels.setListIndex(channels.count() - 1);
    }
}

TEST_F(AudioFormats, AreTitledAndNamedForScreenReaders)
{
    EXPECT_EQ(control<QWidget>(panel, "Frame2").property("title").toString(), "Audio format settings");
    for (const char* name : {"ComboCodec", "ComboBitrate", "ComboSamplerate", "ComboChannel"})
        EXPECT_NE(control<ComboBox>(panel, name).accessibleName(), "") << name;
    for (QLabel* label : panel.findChildren<QLabel*>())
        EXPECT_NE(label->buddy(), nullptr) << qPrintable(label->text());
}

}  // namespace

#pragma once

#include "Controls.h"
#include "QtPrinters.h"
#include "engines/MockRecorderEngine.h"
#include "support/controls/ComboBox.h"
#include "support/controls/Slider.h"

#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QTimer>

/// A strict recorder with its sub-objects, which may be reached at any time.
class StrictRecorder : public ::testing::StrictMock<MockRecorderEngine>
{
public:
    StrictRecorder()
    {
        using ::testing::ReturnRef;
        EXPECT_CALL(*this, EncodeFormats).WillRepeatedly(ReturnRef(formats));
        EXPECT_CALL(*this, BarMeters).WillRepeatedly(ReturnRef(bars));
        EXPECT_CALL(*this, VuMeter).WillRepeatedly(ReturnRef(meter));
        EXPECT_CALL(*this, RecordedSound).WillRepeatedly(ReturnRef(sound));
        EXPECT_CALL(formats, Mp3Settings).WillRepeatedly(ReturnRef(mp3));
        EXPECT_CALL(formats, OggSettings).WillRepeatedly(ReturnRef(ogg));
        EXPECT_CALL(formats, WavSettings).WillRepeatedly(ReturnRef(wav));
        EXPECT_CALL(formats, WmaSettings).WillRepeatedly(ReturnRef(wma));
        EXPECT_CALL(formats, AacSettings).WillRepeatedly(ReturnRef(aac));
    }

    ::testing::StrictMock<MockRecorderEncodeFormats> formats;
    ::testing::StrictMock<MockRecorderMp3Settings> mp3;
    ::testing::StrictMock<MockRecorderOggSettings> ogg;
    ::testing::StrictMock<MockRecorderWavSettings> wav;
    ::testing::StrictMock<MockRecorderWmaSettings> wma;
    ::testing::StrictMock<MockRecorderAacSettings> aac;
    ::testing::StrictMock<MockRecorderBarMeters> bars;
    ::testing::StrictMock<MockRecorderVuMeter> meter;
    ::testing::StrictMock<MockRecordedSound> sound;

    /// What the list of formats writes when MP3 is selected in it, which is what each window begins with. To be
    /// called within a sequence.
    void expectMp3()
    {
        EXPECT_CALL(mp3, Bitrate(128000.0));
        EXPECT_CALL(formats, Channels(2));
        EXPECT_CALL(formats, FormatForRecording(2));
        EXPECT_CALL(formats, EncodeMode(0));
        EXPECT_CALL(formats, SampleRate(44100));
        EXPECT_CALL(formats, Channels(2));
        EXPECT_CALL(mp3, Mode(1));
        EXPECT_CALL(mp3, Bitrate(128000.0));
    }

    /// Does @p action without looking at what the engine is told.
    template <typename Action>
    void unwatched(Action action)
    {
        using ::testing::AnyNumber;
        EXPECT_CALL(formats, FormatForRecording).Times(AnyNumber());
        EXPECT_CALL(formats, EncodeMode).Times(AnyNumber());
        EXPECT_CALL(formats, SampleRate).Times(AnyNumber());
        EXPECT_CALL(formats, Channels).Times(AnyNumber());
        EXPECT_CALL(mp3, Mode).Times(AnyNumber());
        EXPECT_CALL(mp3, Bitrate).Times(AnyNumber());
        EXPECT_CALL(ogg, Mode).Times(AnyNumber());
        EXPECT_CALL(ogg, Quality).Times(AnyNumber());
        EXPECT_CALL(wav, Mode).Times(AnyNumber());
        EXPECT_CALL(wma, Mode).Times(AnyNumber());
        EXPECT_CALL(wma, Bitrate).Times(AnyNumber());
        EXPECT_CALL(aac, Mode).Times(AnyNumber());
        EXPECT_CALL(aac, Quality).Times(AnyNumber());
        EXPECT_CALL(aac, Mp4Container).Times(AnyNumber());
        action();
        forgetFormats();
    }

private:
    void forgetFormats()
    {
        using ::testing::Mock;
        using ::testing::ReturnRef;
        Mock::VerifyAndClearExpectations(&formats);
        Mock::VerifyAndClearExpectations(&mp3);
        Mock::VerifyAndClearExpectations(&ogg);
        Mock::VerifyAndClearExpectations(&wav);
        Mock::VerifyAndClearExpectations(&wma);
        Mock::VerifyAndClearExpectations(&aac);
        EXPECT_CALL(formats, Mp3Settings).WillRepeatedly(ReturnRef(mp3));
        EXPECT_CALL(formats, OggSettings).WillRepeatedly(ReturnRef(ogg));
        EXPECT_CALL(formats, WavSettings).WillRepeatedly(ReturnRef(wav));
        EXPECT_CALL(formats, WmaSettings).WillRepeatedly(ReturnRef(wma));
        EXPECT_CALL(formats, AacSettings).WillRepeatedly(ReturnRef(aac));
    }
};

inline void click(const QWidget& window, const char* button)
{
    control<QAbstractButton>(window, button).click();
}

inline void pick(const QWidget& window, const char* list, const QString& text)
{
    auto& box = control<ComboBox>(window, list);
    const int index = box.findText(text);
    if (index < 0)
        qFatal("%s does not offer %s", list, qPrintable(text));
    box.setListIndex(index);
}

inline QStringList itemsOf(const QWidget& window, const char* list)
{
    const auto& box = control<ComboBox>(window, list);
    QStringList items;
    for (int i = 0; i < box.count(); ++i)
        items << box.itemText(i);
    return items;
}

inline QString textOf(const QWidget& window, const char* name)
{
    const QWidget& shown = control<QWidget>(window, name);
    const auto* list = qobject_cast<const ComboBox*>(&shown);
    const QVariant text = list ? list->currentText() : shown.property("text");
    if (!text.isValid())
        qFatal("%s shows no text", name);
    return text.toString();
}

inline QTimer& timerOf(const QObject& owner)
{
    auto* timer = owner.findChild<QTimer*>("tmrRecording");
    if (!timer)
        qFatal("there is no tmrRecording");
    return *timer;
}

/// One tick, whether the timer runs or not.
inline void tick(const QObject& owner)
{
    QMetaObject::invokeMethod(&timerOf(owner), "timeout");
}

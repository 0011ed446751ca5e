#pragma once

#include "recorder/AudioFormatPanel.h"
#include "recorder/RecorderTest.h"
#include "recorder/RecordingNames.h"
#include "recorder/RecordingSession.h"
#include "recorder/SilencePanel.h"
#include "support/SettingsStore.h"
#include "support/controls/ReadOut.h"

#include <QSettings>
#include <QTemporaryDir>

/// The panel round a strict engine, with a session, settings and a clock of its own.
class SilenceOptions : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Recorder.unwatched([this] { format.FillCodecCombo(); });
        names.setOutputFolder("/music");
    }

    bool isEnabled(const char* name) const { return control<QWidget>(panel, name).isEnabled(); }
    bool isChecked(const char* name) const { return control<QAbstractButton>(panel, name).isChecked(); }
    QString pause() const { return textOf(panel, "lblSilenceActions"); }
    QString stored() const { return settings.GetSetting("Options", "DetectionValue", "none"); }
    bool clockRuns() const { return timerOf(session).isActive(); }

    void expectWatch(int threshold, int milliseconds)
    {
        EXPECT_CALL(Recorder, EnableSilenceDetection(true));
        EXPECT_CALL(Recorder, SilenceThreshold(threshold));
        EXPECT_CALL(Recorder, SilenceMinimumDuration(milliseconds));
    }

    void use()
    {
        const ::testing::InSequence order;
        expectWatch(3000, 2000);
        click(panel, "chkSilenceActions");
    }

    void useToRemove()
    {
        use();
        const ::testing::InSequence order;
        expectWatch(3000, 0);
        click(panel, "optRemoveSilence");
    }

    void unuse()
    {
        const ::testing::InSequence order;
        EXPECT_CALL(Recorder, EnableSilenceDetection(false));
        EXPECT_CALL(Recorder, SilenceMinimumDuration(0));
        click(panel, "chkSilenceActions");
    }

    void record(const QString& file = "/music/Recording Mar-05-2007 14-03-30.mp3")
    {
        EXPECT_CALL(Recorder, StartRecordingToFile(file));
        session.cmdRecord_Click();
    }

    void stop()
    {
        EXPECT_CALL(Recorder, StopRecording());
        session.cmdStop_Click();
    }

    void waitForASignal(const QString& file = "/music/Recording Mar-05-2007 14-03-30.mp3")
    {
        const ::testing::InSequence order;
        expectWatch(3000, 0);
        EXPECT_CALL(Recorder, StartRecordingToFile(file));
        click(panel, "cmdDetect");
    }

    void giveUp()
    {
        const ::testing::InSequence order;
        EXPECT_CALL(Recorder, EnableSilenceDetection(false));
        EXPECT_CALL(Recorder, StopRecording());
        click(panel, "cmdDetect");
    }

    QTemporaryDir folder;
    QSettings backing{folder.filePath("Larkspin.conf"), QSettings::IniFormat};
    SettingsStore settings{backing};
    StrictRecorder Recorder;
    AudioFormatPanel format{Recorder};
    QDateTime now{QDate(2007, 3, 5), QTime(14, 3, 37)};
    RecordingNames names{format, [this] { return now; }};
    ReadOut lblTime;
    RecordingSession session{Recorder, names, lblTime, [] { return 0.5; }};
    SilencePanel panel{Recorder, session, names, settings};
};

#include "recorder/RecordingSession.h"

#include "engines/RecorderEngine.h"
#include "recorder/RecordingNames.h"
#include "support/controls/ReadOut.h"

#include <QTimer>
#include <utility>

namespace {

constexpr int tickMs = 100;

QString twoDigits(int count)
{
    return QStringLiteral("%1").arg(count, 2, 10, QLatin1Char('0'));
}

}  // namespace

RecordingSession::RecordingSession(RecorderEngine& Recorder, const RecordingNames& names, ReadOut& lblTime,
                                   std::function<double()> random, QObject* parent)
    : QObject(parent)
    , Recorder(Recorder)
    , names(names)
    , lblTime(lblTime)
    , random(std::move(random))
    , tmrRecording(new QTimer(this))
{
    tmrRecording->setObjectName("tmrRecording");
    tmrRecording->setInterval(tickMs);
    tmrRecording->setTimerType(Qt::PreciseTimer);
    connect(tmrRecording, &QTimer::timeout, this, &RecordingSession::tmrRecording_Timer);
    connect(&Recorder, &RecorderEngine::RecorderSessionDone, this, &RecordingSession::cmdStop_Click);
}

void RecordingSession::cmdRecord_Click()
{
    if (playbackActive)
        return;
    recordingActive = true;
    Recorder.StartRecordingToFile(names.ComposeRecordingName());
    runClock();
}

void RecordingSession::cmdStop_Click()
{
    if (recordingActive) {
        Recorder.StopRecording();
        recordingActive = false;
    } else if (playbackActive) {
        Recorder.RecordedSound().StopRecordedSound();
        playbackActive = false;
    } else {
        return;
    }
    stopClock();
    lblTime.setText(QStringLiteral("00:00:00"));
    elapsedMs = 0;
}

void RecordingSession::cmdPlay_Click()
{
    if (recordingActive)
        return;
    Recorder.RecordedSound().PlayRecordedSound();
    playbackActive = true;
    runClock();
}

void RecordingSession::startNextPart()
{
    Recorder.ContinueRecordingToFile(names.nextPartName());
    elapsedMs = 0;
}

void RecordingSession::stopClock()
{
    tmrRecording->stop();
}

// A timer that runs keeps its beat.
void RecordingSession::runClock()
{
    if (!tmrRecording->isActive())
        tmrRecording->start();
}

void RecordingSession::tmrRecording_Timer()
{
    elapsedMs += tickMs;
    lblTime.setText(FormatElapsed(elapsedMs));
}

QString RecordingSession::FormatElapsed(int milliseconds) const
{
    const int minutes = milliseconds / 60000;
    const int seconds = milliseconds % 60000 / 1000;
    const int tenths = milliseconds % 1000 / 100;
    const int running = static_cast<int>(random() * 9);
    return twoDigits(minutes) + u':' + twoDigits(seconds) + u':' + QString::number(tenths) +
           QString::number(running);
}

#include "moc_RecordingSession.cpp"

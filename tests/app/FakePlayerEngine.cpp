#include "app/FakePlayerEngine.h"

#include <algorithm>

// Levels of loud music, for the eye.
void FakePlayerEngine::EnableVuMeter(short, short enabled)
{
    if (enabled == 0)
        return;
    connect(&metering, &QTimer::timeout, this, [this] {
        if (status == Playing)
            emit VuPeaks(0, 31800, 26000);
    });
    metering.start(50);
}

int FakePlayerEngine::LoadSound(short, const QString&)
{
    status = Stopped;
    startedAt = 0;
    looping = false;
    return 0;
}

int FakePlayerEngine::ExportSoundRange(short player, const QString&, int, const int&)
{
    QTimer::singleShot(0, this, [this, player] { emit ConversionDone(player, 1); });
    return 0;
}

void FakePlayerEngine::CloseSound(short)
{
    status = Empty;
    startedAt = 0;
}

void FakePlayerEngine::PlaySound(short player)
{
    if (status == Empty)
        return;
    startedAt = GetPosition(player);
    looping = false;
    status = Playing;
    sinceStart.start();
}

void FakePlayerEngine::PlaySoundRange(short, int begin, int end, int)
{
    if (status == Empty || begin >= end)
        return;
    startedAt = begin;
    loopBegin = begin;
    loopEnd = end;
    looping = true;
    status = Playing;
    sinceStart.start();
}

void FakePlayerEngine::PauseSound(short player)
{
    startedAt = GetPosition(player);
    status = Paused;
}

void FakePlayerEngine::ResumeSound(short)
{
    status = Playing;
    sinceStart.start();
}

void FakePlayerEngine::StopSound(short)
{
    startedAt = 0;
    status = status == Empty ? Empty : Stopped;
}

void FakePlayerEngine::SeekSound(short, int position)
{
    startedAt = position;
    sinceStart.start();
}

int FakePlayerEngine::GetPosition(short) const
{
    if (status != Playing)
        return startedAt;
    const int played = startedAt + static_cast<int>(sinceStart.elapsed());
    return looping ? loopBegin + (played - loopBegin) % (loopEnd - loopBegin) : std::min(played, duration);
}

int FakePlayerEngine::GetDuration(short) const
{
    return status == Empty ? 0 : duration;
}

int FakePlayerEngine::GetPlayerStatus(short player) const
{
    return status == Playing && !looping && GetPosition(player) == duration ? Stopped : status;
}

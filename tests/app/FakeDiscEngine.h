#pragma once

#include "engines/AudioProject.h"
#include "engines/DiscDevice.h"
#include "engines/DiscEngine.h"

#include <QString>
#include <QStringList>
#include <QTimer>
#include <algorithm>
#include <array>
#include <functional>

/// A drive with a blank disc of 80 minutes in it.
class FakeDiscDevice : public DiscDevice
{
public:
    FakeDiscDevice(const QString& name, const QList<int>& speeds)
        : name(name)
        , speeds(speeds)
    {
    }

    QString GetDeviceName() override { return name; }
    bool GetCapability(int code) override { return code == underrunProtection && !speeds.isEmpty(); }
    bool IsDeviceUsable() override { return true; }
    short GetWriteSpeedCount() override { return static_cast<short>(speeds.size()); }
    int GetWriteSpeedCode(short index) override { return speeds.value(index); }
    double GetWriteSpeedRate(int code) override { return code; }
    void ReleaseDisc(bool) override {}
    void RefreshDisc(int) override {}
    DiscInfo GetDiscInfo() override { return {true, true, 0}; }
    qint64 GetFreeSpace(int) override { return 359849; }

private:
    const QString name;
    const QList<int> speeds;
};

/// Takes every file for a song of four minutes.
class FakeAudioProject : public AudioProject
{
public:
    void SetWriteMode(int) override {}
    void SetWriteSpeed(int) override {}
    bool GetTestMode() override { return test; }
    void SetTestMode(bool wanted) override { test = wanted; }
    void SetBurnProof(bool) override {}
    void SetCacheFiles(bool) override {}
    void AbortWrite() override { aborted = true; }

    void StartWrite(DiscDevice*, bool& ok) override
    {
        aborted = false;
        ok = !files.isEmpty();
        if (ok)
            write();
    }

    void AddTrack(const QString& file, int position, bool& ok) override
    {
        files.insert(std::min(qsizetype{position} - 1, files.size()), file);
        ok = true;
    }

    void RemoveTrack(int position) override
    {
        if (position >= 1 && position <= files.size())
            files.removeAt(position - 1);
    }

    int GetTrackCount() override { return static_cast<int>(files.size()); }
    QString GetTrackFile(int position) override { return files.value(position - 1); }
    int GetTrackFormat(int position) override { return GetTrackFile(position).endsWith("mp3") ? Mp3 : Wav; }
    qint64 GetTrackLength(int) override { return lengthOfAll; }
    void ClearTracks() override { files.clear(); }
    qint64 GetRequiredSpace() override { return files.size() * lengthOfAll; }
    void SetProjectKind(int) override {}

    QStringList files;
    bool aborted = false;

    /// What the engine does when a write begins.
    std::function<void()> write;

private:
    static constexpr qint64 lengthOfAll = qint64{4} * 60 * 75;
    bool test = false;
};

/// A drive and a disc image, a few songs, and writes that take half a minute and write nothing: for looking at the
/// window.
class FakeDiscEngine : public DiscEngine
{
public:
    FakeDiscEngine()
    {
        const QString recordings = "/home/anna/Documents/Larkspin Recordings/";
        for (const char* song : {"Autumn Leaves.wav", "Blue Bossa, slow.mp3", "Czardas.wav", "Etude No. 3.mp3"})
            project.files << recordings + song;
        project.write = [this] {
            done = 0;
            progress.start(100);
        };
        connect(&progress, &QTimer::timeout, this, &FakeDiscEngine::goOn);
    }

    bool InitDevices(bool) override { return true; }
    short GetDeviceCount() override { return static_cast<short>(devices.size()); }
    DiscDevice* GetDevice(short index) override { return &devices.at(static_cast<std::size_t>(index)); }
    AudioProject* GetAudioProject() override { return &project; }

private:
    void goOn()
    {
        constexpr int all = 300;
        if (++done < all && !project.aborted) {
            const int inTracks = static_cast<int>(project.files.size()) * 100 * done / all;
            emit WriteProgress(100 * done / all, inTracks / 100 + 1, inTracks % 100, DiscStage::Writing);
            return;
        }
        progress.stop();
        emit WriteProgress(0, 0, 0, project.aborted ? DiscStage::Cancelled : DiscStage::Completed);
    }

    std::array<FakeDiscDevice, 2> devices{FakeDiscDevice("MATSHITA DVD-RAM UJ8E2", {24, 16, 8}),
                                          FakeDiscDevice("Disc image in the recordings folder", {})};
    FakeAudioProject project;
    QTimer progress;
    int done = 0;
};

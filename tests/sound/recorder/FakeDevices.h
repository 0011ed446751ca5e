#pragma once

#include "engines/RecorderEngine.h"
#include "sound/device/Capture.h"
#include "sound/device/CaptureRing.h"
#include "sound/device/Wakeup.h"

#include <QStringList>
#include <algorithm>
#include <atomic>
#include <memory>
#include <span>
#include <vector>

namespace sound::test {

/// Devices with ports, which capture what the test gives them, as fast as it goes.
struct FakeDevices
{
    std::vector<CaptureDevice> present;
    QString unusable;     ///< The device that cannot be captured.
    QStringList changes;  ///< What was done to them.

    CaptureRing* ring = nullptr;  ///< Of the capture that is under way.
    Wakeup* reader = nullptr;
    std::atomic<bool> gone = false;

    void give(std::span<const float> stereo) const
    {
        ring->push(stereo);
        reader->notify();
    }
};

class FakeCapture : public Capture
{
public:
    FakeCapture(FakeDevices& all, CaptureRing& ring)
        : devices(all)
        , own(&ring)
    {
        devices.ring = &ring;
    }
    ~FakeCapture() override
    {
        if (devices.ring == own)
            devices.ring = nullptr;
    }
    FakeCapture(const FakeCapture&) = delete;
    FakeCapture& operator=(const FakeCapture&) = delete;

    bool ended() const override { return devices.gone; }

private:
    FakeDevices& devices;
    CaptureRing* own;
};

class FakeCaptureDevices : public CaptureDevices
{
public:
    explicit FakeCaptureDevices(FakeDevices& those)
        : all(those)
    {
    }

    std::vector<CaptureDevice> devices() override { return all.present; }

    CaptureDevice device(const QString& key) override
    {
        const auto found = std::find_if(all.present.begin(), all.present.end(),
                                        [&](const CaptureDevice& device) { return device.key == key; });
        return found != all.present.end() ? *found : CaptureDevice{};
    }

    void selectLine(const QString& key, const QString& line) override { all.changes << key + " line " + line; }

    void setVolume(const QString& key, int volume) override
    {
        all.changes << key + QString(" volume %1").arg(volume);
    }

    void setMuted(const QString& key, bool muted) override { all.changes << key + (muted ? " muted" : " heard"); }

    std::unique_ptr<Capture> capture(const CaptureDevice& device, CaptureRing& ring, Wakeup& reader) override
    {
        if (device.key == all.unusable)
            return nullptr;
        all.changes << "capture " + device.key;
        all.gone = false;
        all.reader = &reader;
        return std::make_unique<FakeCapture>(all, ring);
    }

private:
    FakeDevices& all;
};

/// Bars that nobody sees.
class NoBarMeters : public RecorderBarMeters
{
public:
    int CreateBar(int, int, int, int, int) override { return 0; }
    void SetBarRange(const int&, int, int) override {}
    void SetBarValue(const int&, int) override {}
    void GetBarSettings(const int&, BarSettings*) override {}
    void SetBarSettings(const int&, const BarSettings*) override {}
};

}  // namespace sound::test

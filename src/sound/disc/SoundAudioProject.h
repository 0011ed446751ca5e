#pragma once

#include "engines/AudioProject.h"
#include "sound/disc/DiscWrite.h"

namespace sound {

/// What a project has written, and whom it asks to.
class DiscWriter
{
public:
    virtual ~DiscWriter();

    virtual bool isWriting() const = 0;

    /// False where it is no device that can write.
    virtual bool begin(DiscDevice* device, const WriteOrder& order) = 0;

    virtual void giveUp() = 0;
};

/// The tracks as they were when they were added. A write has its own copy of them.
class SoundAudioProject : public AudioProject
{
public:
    /// @p writer outlives this. @p reserve is that of a WriteOrder.
    SoundAudioProject(DiscWriter& writer, std::int64_t reserve);

    void SetWriteMode(int mode) override { order.discAtOnce = mode == discAtOnce; }
    void SetWriteSpeed(int code) override { order.speed = code; }
    bool GetTestMode() override { return order.test; }
    void SetTestMode(bool test) override { order.test = test; }
    void SetBurnProof(bool on) override { order.underrunProtection = on; }
    void SetCacheFiles(bool on) override { order.cacheFiles = on; }
    void AbortWrite() override { writer.giveUp(); }
    void StartWrite(DiscDevice* device, bool& ok) override;
    void AddTrack(const QString& file, int position, bool& ok) override;
    void RemoveTrack(int position) override;
    int GetTrackCount() override { return static_cast<int>(order.tracks.size()); }
    QString GetTrackFile(int position) override;
    int GetTrackFormat(int position) override;
    qint64 GetTrackLength(int position) override;
    void ClearTracks() override { order.tracks.clear(); }
    qint64 GetRequiredSpace() override;
    void SetProjectKind(int) override {}

private:
    const DiscTrack* trackAt(int position) const;
    std::optional<DiscTrack> countedBefore(const QString& file) const;

    DiscWriter& writer;
    WriteOrder order;
    std::optional<DiscTrack> lastRemoved;
};

}  // namespace sound

#pragma once

#include "sound/disc/DiscDrive.h"

#include <atomic>
#include <functional>
#include <string>
#include <vector>

/// Notes what a write tells, each stage once and of each track the last number of sectors.
class NotedWrite : public sound::WriteWatch
{
public:
    void stage(DiscStage stage, int track) override
    {
        stages.push_back({stage, track});
        onStage(stage);
    }

    void written(int track, std::int64_t sectors) override
    {
        const auto index = static_cast<std::size_t>(track);
        if (tracks.size() <= index)
            tracks.resize(index + 1);
        wentBack |= sectors <= tracks[index];
        tracks[index] = sectors;
        onWritten(track, sectors);
    }

    bool givenUp() const override { return gaveUp; }

    struct Stage
    {
        DiscStage stage;
        int track;

        bool operator==(const Stage&) const = default;
    };

    std::vector<Stage> stages;
    std::vector<std::int64_t> tracks;
    bool wentBack = false;
    std::atomic<bool> gaveUp = false;
    std::function<void(DiscStage)> onStage = [](DiscStage) {};
    std::function<void(int, std::int64_t)> onWritten = [](int, std::int64_t) {};
};

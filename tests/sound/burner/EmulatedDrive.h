#pragma once

#include "sound/burner/BurnerDrives.h"
#include "sound/burner/EmulatedWriter.h"
#include "sound/burner/NotedWrite.h"
#include "sound/burner/PatternFeed.h"

#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <string>

namespace sound::test {

// Commands of the multimedia command set.
constexpr std::uint8_t inquiry = 0x12;
constexpr std::uint8_t startStop = 0x1b;
constexpr std::uint8_t write10 = 0x2a;
constexpr std::uint8_t readToc = 0x43;
constexpr std::uint8_t readDiscInformation = 0x51;
constexpr std::uint8_t modeSelect = 0x55;
constexpr std::uint8_t closeSession = 0x5b;
constexpr std::uint8_t sendCueSheet = 0x5d;
constexpr std::uint8_t setSpeed = 0xbb;

inline DiscPlan::Track track(std::int64_t sectors, const char* title = "", const char* performer = "")
{
    return {sectors, {QString::fromUtf8(title), QString::fromUtf8(performer)}};
}

inline DiscPlan threeTracks()
{
    DiscPlan plan;
    plan.tracks = {track(300), track(301), track(460)};
    return plan;
}

constexpr int sectorsOfThreeTracks = 300 + 301 + 460;

/// Written one by one: the pauses between them, and the run-out of each.
constexpr int sectorsOfThreeTracksOneByOne = sectorsOfThreeTracks + 2 * 150 + 3 * 2;

inline std::string textOf(const DiscWriteError& error)
{
    return error.description.toStdString();
}

/// Real libburn, with the emulated writer as the one drive of the machine.
class EmulatedDrive : public ::testing::Test
{
protected:
    DiscDrive& drive()
    {
        if (!found)
            found = burnerDrives()();
        if (!found || found->size() != 1)
            throw std::runtime_error("The emulated drive was not found");
        return *found->front();
    }

    WriteOutcome write(const DiscPlan& plan) { return drive().write(plan, feed, watch); }

    void expectGivenBack() const
    {
        EXPECT_EQ(writer.openHandles(), 0);
        EXPECT_FALSE(writer.isLocked());
    }

    EmulatedWriter writer;
    PatternFeed feed;
    NotedWrite watch;

private:
    std::optional<DiscDrives> found;
};

}  // namespace sound::test

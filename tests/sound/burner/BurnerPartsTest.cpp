#include "sound/burner/BurnerDrives.h"
#include "sound/burner/CdText.h"
#include "sound/burner/DriveReport.h"
#include "sound/burner/FeedBytes.h"
#include "sound/burner/LatinText.h"
#include "sound/burner/LibburnTurn.h"
#include "sound/burner/NotedWrite.h"
#include "sound/burner/PatternFeed.h"
#include "sound/burner/WriteFailure.h"
#include "sound/burner/WriteSteps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

using namespace sound;

namespace {

DiscPlan planOf(const std::vector<std::int64_t>& lengths, bool atOnce)
{
    DiscPlan plan;
    plan.discAtOnce = atOnce;
    for (const std::int64_t sectors : lengths)
        plan.tracks.push_back({sectors, {}});
    return plan;
}

using Stages = std::vector<NotedWrite::Stage>;

constexpr std::int64_t noEnd = std::int64_t{1} << 40;

std::vector<std::uint8_t> readBytes(FeedBytes& bytes, std::size_t count, std::int64_t end = noEnd)
{
    std::vector<std::uint8_t> read(count);
    read.resize(bytes.read(std::as_writable_bytes(std::span(read)), end).value_or(0));
    return read;
}

}  // namespace

TEST(BurnerDrives, AreNoneWhereThereIsNoDriveAndNothingIsPrinted)
{
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    for (int i = 0; i < 2; ++i) {
        const std::optional<DiscDrives> drives = burnerDrives()();
        ASSERT_TRUE(drives);
        EXPECT_TRUE(drives->empty());
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(BurnerDrives, AreNotLookedForWhileLibburnIsInUse)
{
    {
        const LibburnTurn other;
        ASSERT_TRUE(other.isGranted());
        EXPECT_FALSE(LibburnTurn().isGranted());
        EXPECT_FALSE(burnerDrives()());
    }
    EXPECT_TRUE(burnerDrives()());
}

TEST(DriveReport, MusicGoesOnlyOntoABlankRecordableCd)
{
    constexpr int room = 333000;
    const auto report = [](DiscReport::State state, bool cd) { return DiscReport{state, cd, -11000, room, 0}; };
    EXPECT_EQ(loadedDisc(report(DiscReport::Blank, true)), (LoadedDisc{true, true, 0, room}));
    EXPECT_EQ(loadedDisc(report(DiscReport::Blank, false)), (LoadedDisc{true, false, 0, 0}));
    EXPECT_EQ(loadedDisc(report(DiscReport::Unusable, false)), (LoadedDisc{true, false, 0, 0}));
    EXPECT_EQ(loadedDisc(report(DiscReport::NoDisc, false)), LoadedDisc{});
    EXPECT_EQ(loadedDisc({DiscReport::Written, true, 0, 0, 777}), (LoadedDisc{true, false, 777, 0}));
}

TEST(DriveReport, SpeedsComeOnceEachAndTheFastestFirst)
{
    const DiscReport blank{DiscReport::Blank, true, -11000, 333000, 0};
    const std::vector<SpeedReport> reports{{706, true}, {7056, true}, {7053, true}, {1764, true},
                                           {706, true}, {0, true},    {9999, false}};
    const std::vector<WriteSpeed> speeds = writeSpeeds(blank, reports);
    ASSERT_EQ(speeds.size(), 3U);
    EXPECT_EQ(speeds[0], (WriteSpeed{7056, 40}));
    EXPECT_EQ(speeds[1], (WriteSpeed{1764, 10}));
    EXPECT_EQ(speeds[2].code, 706);
}

TEST(DriveReport, WhatADriveCanAtMostCountsWhereItHasMeasuredNothing)
{
    const DiscReport blank{DiscReport::Blank, true, -11000, 333000, 0};
    EXPECT_EQ(writeSpeeds(blank, {{1764, false}, {0, true}}), (std::vector<WriteSpeed>{{1764, 10}}));
    EXPECT_TRUE(writeSpeeds({}, {{1764, false}}).empty());
}

TEST(FeedBytes, ComeInPiecesOfAnySize)
{
    PatternFeed feed(3);
    FeedBytes bytes(feed);
    std::vector<std::uint8_t> all;
    for (const std::size_t size : {1U, 2351U, 2352U, 0U, 1000U, 1352U}) {
        const std::vector<std::uint8_t> piece = readBytes(bytes, size);
        ASSERT_EQ(piece.size(), size);
        all.insert(all.end(), piece.begin(), piece.end());
    }
    EXPECT_TRUE(all == PatternFeed::bytes(3));
    EXPECT_EQ(feed.calls, 3);
    EXPECT_FALSE(bytes.hasEnded());
}

TEST(FeedBytes, StopWhereATrackEndsAndGoOnWithTheNext)
{
    PatternFeed feed(2);
    FeedBytes bytes(feed);
    EXPECT_EQ(readBytes(bytes, 3000, 2352).size(), 2352U);
    EXPECT_EQ(bytes.read({}, 2352), std::size_t{0});
    std::byte one{};
    EXPECT_EQ(bytes.read({&one, 1}, 2352), std::size_t{0});
    EXPECT_EQ(feed.calls, 1);
    const std::vector<std::uint8_t> both = PatternFeed::bytes(2);
    EXPECT_TRUE(readBytes(bytes, 2352, 4704) == std::vector<std::uint8_t>(both.begin() + 2352, both.end()));
    EXPECT_FALSE(bytes.hasEnded());
}

TEST(FeedBytes, AskNoMoreOfAFeedThatHasEnded)
{
    PatternFeed feed(1);
    FeedBytes bytes(feed);
    EXPECT_TRUE(readBytes(bytes, 2353).empty());
    EXPECT_TRUE(bytes.hasEnded());
    EXPECT_TRUE(readBytes(bytes, 1).empty());
    EXPECT_EQ(feed.calls, 2);
}

TEST(FeedBytes, AreNoMoreWhenTheFeedIsWithdrawn)
{
    PatternFeed feed(5);
    FeedBytes bytes(feed);
    EXPECT_EQ(readBytes(bytes, 100).size(), 100U);
    bytes.withdraw();
    EXPECT_TRUE(readBytes(bytes, 1).empty());
    EXPECT_EQ(feed.calls, 1);
    EXPECT_FALSE(bytes.hasEnded());
}

TEST(LatinText, WritesWhatItLacksInPlainLetters)
{
    struct Case
    {
        const char* text;
        const char* latin;
    };
    const Case cases[] = {
        {"", ""},
        {"Blue Bossa", "Blue Bossa"},
        {"Für Élise (½)", "F\xfcr \xc9lise (\xbd)"},
        {"e\xcc\x81tude", "\xe9tude"},
        {"Dvořák", "Dvor\xe1k"},
        {"Łódź Œuvre ĳ",
         "L\xf3"
         "dz OEuvre ij"},
        {"“Don’t” – stop…", "\"Don't\" - stop..."},
        {"F♯ minor, B♭", "F# minor, Bb"},
        {" two\tlines\n of it ", "two lines of it"},
        {"ｆｕｌｌ", "full"},
        {"Live 東京", "Live ??"},
        {"東京", ""},
        {"何?", "??"},
        {"𝄞 key", "? key"},
        {"zero\xe2\x80\x8bwidth", "zerowidth"},
    };
    for (const Case& one : cases)
        EXPECT_EQ(latinText(QString::fromUtf8(one.text)).toStdString(), one.latin) << one.text;
}

TEST(CdText, LeavesOutWhatNobodyHas)
{
    DiscPlan plan = planOf({300, 300}, true);
    EXPECT_TRUE(cdText(plan).isEmpty());
    plan.tracks[1].texts.title = QStringLiteral("Two");
    const CdText text = cdText(plan);
    EXPECT_EQ(text.titles, (std::vector<QByteArray>{"", "", "Two"}));
    EXPECT_TRUE(text.performers.empty());
}

TEST(CdText, CutsTheLongestWhereTheRoomDoesNotSuffice)
{
    DiscPlan plan = planOf(std::vector<std::int64_t>(99, 300), true);
    for (DiscPlan::Track& track : plan.tracks)
        track.texts = {QStringLiteral("Nineteen characters"), QStringLiteral("Somebody")};
    plan.tracks[7].texts.title = QString(200, QLatin1Char('y'));
    const CdText text = cdText(plan);

    // There are 253 packs of 12 bytes. The performers need 1 + 99 * 9 bytes, which are 75 packs; the titles, with
    // one of the longest that there may be, 1 + 98 * 20 + 161, which are 177.
    EXPECT_EQ(text.performers[1], "Somebody");
    EXPECT_EQ(text.titles[1], "Nineteen characters");
    EXPECT_EQ(text.titles[8].size(), 160);

    for (DiscPlan::Track& track : plan.tracks)
        track.texts = {QString(30, QLatin1Char('t')), QString(30, QLatin1Char('p'))};
    const CdText crowded = cdText(plan);
    // With 14 bytes each list needs 1 + 99 * 15, which are 124 packs; with 15 it would be 133, and 266 are too
    // many.
    EXPECT_EQ(crowded.titles[99].size(), 14);
    EXPECT_EQ(crowded.performers[99].size(), 14);
}

TEST(WriteFailure, IsTheDrivesWhereTheDriveSpokeFirst)
{
    const std::vector<LibburnMessage> messages{
        {0x2017f, QStringLiteral("Failed. SCSI error : [0 00 00] (No error)"), 0},
        {0x2011d, QStringLiteral("SCSI error on write(391,13): [B 4A 02] Command aborted. Out of it."), 0},
        {0x2010c, QStringLiteral("Failed to transfer command to drive"), ENODEV},
        {0x2010b, QStringLiteral("Burn run failed"), 0},
    };
    const DiscWriteError error = writeFailure(messages, QStringLiteral("MAKER"), QStringLiteral("MODEL"));
    EXPECT_EQ(error.kind, DiscWriteError::device);
    EXPECT_EQ(error.deviceError, (DiscDeviceError{0x0b4a02, QStringLiteral("Command aborted. Out of it."),
                                                  QStringLiteral("MAKER"), QStringLiteral("MODEL")}));
}

TEST(WriteFailure, IsTheSystemsWhereTheSystemSpokeFirst)
{
    const DiscWriteError error =
        writeFailure({{1, QStringLiteral("Failed"), EIO}, {2, QStringLiteral("[3 0C 00] Write error"), 0}}, {}, {});
    EXPECT_EQ(error.kind, DiscWriteError::system);
    EXPECT_EQ(error.systemCode, EIO);
    EXPECT_EQ(error.description.toStdString(), "Input/output error");
}

TEST(WriteFailure, IsLibburnsOwnSentenceElse)
{
    const LibburnMessage end{0x2010b, QStringLiteral("Burn run failed"), 0};
    const DiscWriteError told = writeFailure({end, {3, QStringLiteral("Why not"), 0}}, {}, {});
    EXPECT_EQ(told.kind, 4);
    EXPECT_EQ(told.description, QStringLiteral("Why not"));
    EXPECT_EQ(writeFailure({end}, {}, {}).description, QStringLiteral("The drive could not write the disc."));
}

TEST(WriteSteps, OfADiscAtOnceHaveOneLeadOutAtTheEnd)
{
    const DiscPlan plan = planOf({300, 400}, true);
    NotedWrite watch;
    WriteSteps steps(plan, watch);
    steps.follow({});
    steps.follow({WriteMoment::Tracks, 0, 0, 0});
    steps.follow({WriteMoment::Tracks, 0, 300, 10});
    steps.follow({WriteMoment::Tracks, 0, 300, 300});
    steps.follow({WriteMoment::LeadIn, 1, 300, 300});
    steps.follow({WriteMoment::Tracks, 1, 400, 0});
    steps.follow({WriteMoment::Tracks, 1, 400, 400});
    steps.follow({WriteMoment::Tracks, 1, 0, 0});
    EXPECT_EQ(watch.stages, (Stages{{DiscStage::LeadIn, 0},
                                    {DiscStage::Writing, 0},
                                    {DiscStage::Writing, 1},
                                    {DiscStage::LeadOut, 1},
                                    {DiscStage::UpdatingVolume, 1}}));
    EXPECT_EQ(watch.tracks, (std::vector<std::int64_t>{300, 400}));
    EXPECT_FALSE(watch.wentBack);
}

TEST(WriteSteps, TrackByTrackCloseEachTrackAndThenTheDisc)
{
    const DiscPlan plan = planOf({300, 400}, false);
    NotedWrite watch;
    WriteSteps steps(plan, watch);
    steps.follow({WriteMoment::Tracks, 0, 300, 299});
    steps.follow({WriteMoment::Tracks, 0, 300, 300});
    steps.follow({WriteMoment::Tracks, 1, 400, 1});
    steps.follow({WriteMoment::Tracks, 1, 400, 400});
    steps.follow({WriteMoment::ClosingDisc, 1, 400, 400});
    EXPECT_EQ(watch.stages, (Stages{{DiscStage::Writing, 0},
                                    {DiscStage::ClosingTrack, 0},
                                    {DiscStage::Writing, 1},
                                    {DiscStage::ClosingTrack, 1},
                                    {DiscStage::LeadOut, 1}}));
}

TEST(WriteSteps, TellOfTracksThatNoLookHasMet)
{
    const DiscPlan plan = planOf({300, 400, 500}, true);
    NotedWrite watch;
    WriteSteps steps(plan, watch);
    steps.follow({WriteMoment::Tracks, 2, 500, 7});
    EXPECT_EQ(watch.tracks, (std::vector<std::int64_t>{300, 400, 7}));
    EXPECT_EQ(watch.stages.back(), (NotedWrite::Stage{DiscStage::Writing, 2}));
    steps.follow({WriteMoment::Tracks, 1, 400, 400});
    steps.follow({WriteMoment::Tracks, 2, 500, 3});
    EXPECT_EQ(watch.tracks.back(), 7);
    EXPECT_FALSE(watch.wentBack);
    steps.finishTracks();
    EXPECT_EQ(watch.tracks.back(), 500);
}

TEST(WriteSteps, OfAFailedTrackTellNoMoreThanWasWritten)
{
    const DiscPlan plan = planOf({300, 400}, false);
    NotedWrite watch;
    WriteSteps steps(plan, watch);
    steps.follow({WriteMoment::Tracks, 0, 300, 100});
    steps.follow({WriteMoment::ClosingDisc, 0, 300, 120});
    EXPECT_EQ(watch.tracks, (std::vector<std::int64_t>{120}));
}

#include "sound/burner/EmulatedDrive.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <string>
#include <thread>

using namespace sound;
using namespace sound::test;

namespace {

using Bytes = EmulatedWriter::Bytes;

// Of the page of write parameters, behind the head of eight bytes.
constexpr std::size_t writeType = 8 + 2;
constexpr int trackAtOnce = 1;
constexpr int sessionAtOnce = 2;
constexpr int testWrite = 0x10;
constexpr int underrunFree = 0x40;

}  // namespace

TEST_F(EmulatedDrive, SaysWhoItIsAndWhatItCanBeforeAnybodyLooksAtItsDisc)
{
    EXPECT_EQ(drive().name(), "LARKTEST EMULATED WRITER (/dev/sr0)");
    EXPECT_TRUE(drive().usable());
    EXPECT_TRUE(drive().hasUnderrunProtection());
    EXPECT_EQ(drive().disc(), LoadedDisc{});
    EXPECT_TRUE(drive().speeds().empty());

    for (const std::uint8_t touching : {startStop, write10, readToc, readDiscInformation, modeSelect})
        EXPECT_EQ(writer.commandsOf(touching), 0) << std::hex << int{touching};
    expectGivenBack();
}

TEST_F(EmulatedDrive, ThatOnlyReadsIsNotUsable)
{
    writer.abilities.writesCds = false;
    writer.abilities.protectsFromUnderrun = false;
    EXPECT_FALSE(drive().usable());
    EXPECT_FALSE(drive().hasUnderrunProtection());
}

TEST_F(EmulatedDrive, FindsRoomAndSpeedsOfABlankDisc)
{
    drive().refresh();
    EXPECT_EQ(drive().disc(), (LoadedDisc{true, true, 0, EmulatedWriter::latestLeadOut}));
    const std::vector<WriteSpeed> speeds = drive().speeds();
    ASSERT_EQ(speeds.size(), 4U);
    const double rates[] = {48, 40, 24, 4};
    for (std::size_t i = 0; i < speeds.size(); ++i) {
        EXPECT_EQ(speeds[i].code, writer.abilities.measuredSpeeds[i]);
        EXPECT_NEAR(speeds[i].rate, rates[i], 0.005);
    }
    expectGivenBack();
    EXPECT_FALSE(writer.isOpen());
}

TEST_F(EmulatedDrive, HasNoRoomOnADiscThatHasMusicOnIt)
{
    writer.fillDisc(123456);
    drive().refresh();
    EXPECT_EQ(drive().disc(), (LoadedDisc{true, false, 123456, 0}));
    EXPECT_TRUE(drive().speeds().empty());
    expectGivenBack();
}

TEST_F(EmulatedDrive, HasNoRoomForMusicOnADvd)
{
    writer.insert(EmulatedWriter::Disc::BlankDvd);
    drive().refresh();
    EXPECT_EQ(drive().disc(), (LoadedDisc{true, false, 0, 0}));
    EXPECT_TRUE(drive().speeds().empty());
}

TEST_F(EmulatedDrive, WithoutADiscIsEmpty)
{
    writer.insert(EmulatedWriter::Disc::None);
    drive().refresh();
    EXPECT_EQ(drive().disc(), LoadedDisc{});
    EXPECT_TRUE(drive().speeds().empty());
    expectGivenBack();
}

TEST_F(EmulatedDrive, ThatAnotherProgramUsesIsFoundAndLeftAlone)
{
    writer.letAnotherProgramUseIt(true);
    drive().refresh();
    EXPECT_EQ(drive().disc(), LoadedDisc{});
    const WriteOutcome outcome = write(threeTracks());
    EXPECT_EQ(outcome.end, WriteOutcome::Failed);
    EXPECT_EQ(outcome.error.kind, DiscWriteError::system);
    EXPECT_EQ(outcome.error.systemCode, EBUSY);
    drive().eject();
    EXPECT_EQ(writer.commandsOf(startStop), 0);
    EXPECT_EQ(feed.calls, 0);
}

TEST_F(EmulatedDrive, WritesTheWholeDiscAtOnceWithoutGaps)
{
    DiscPlan plan = threeTracks();
    plan.discAtOnce = true;
    plan.underrunProtection = true;
    plan.speed = 4234;
    EXPECT_EQ(write(plan).end, WriteOutcome::Written);

    const std::uint8_t parameters = writer.writeParameters().at(writeType);
    EXPECT_EQ(parameters & 0x0f, sessionAtOnce);
    EXPECT_EQ(parameters & testWrite, 0);
    EXPECT_EQ(parameters & underrunFree, underrunFree);
    EXPECT_EQ(writer.writeSpeed(), 4234);

    // Control and address, track, index, form, and minute, second and frame: the lead-in; the first track with its
    // pause of two seconds; the others, at once; the lead-out.
    const Bytes cues{
        0x01, 0,    0, 0x01, 0, 0, 0,  0,  // at the beginning
        0x01, 1,    0, 0x00, 0, 0, 0,  0,  // the pause before the first track
        0x01, 1,    1, 0x00, 0, 0, 2,  0,  // 150
        0x01, 2,    1, 0x00, 0, 0, 6,  0,  // 150 + 300
        0x01, 3,    1, 0x00, 0, 0, 10, 1,  // 150 + 300 + 301
        0x01, 0xaa, 1, 0x01, 0, 0, 16, 11  // 150 + 300 + 301 + 460
    };
    EXPECT_EQ(writer.cueSheet(), cues);
    EXPECT_EQ(writer.firstWritten(), -150);
    EXPECT_EQ(writer.endOfWritten(), sectorsOfThreeTracks);
    EXPECT_EQ(writer.written(-150, 150, 2352), Bytes(150 * 2352));
    EXPECT_TRUE(writer.written(0, sectorsOfThreeTracks, 2352) == PatternFeed::bytes(sectorsOfThreeTracks));
    EXPECT_EQ(writer.disc(), EmulatedWriter::Disc::WrittenCd);
    EXPECT_EQ(feed.calls, sectorsOfThreeTracks);
    expectGivenBack();
}

TEST_F(EmulatedDrive, WritesTrackAfterTrackAndClosesTheDisc)
{
    EXPECT_EQ(write(threeTracks()).end, WriteOutcome::Written);

    const std::uint8_t parameters = writer.writeParameters().at(writeType);
    EXPECT_EQ(parameters & 0x0f, trackAtOnce);
    EXPECT_EQ(parameters & underrunFree, 0);
    EXPECT_TRUE(writer.cueSheet().empty());
    EXPECT_EQ(writer.firstWritten(), 0);
    EXPECT_EQ(writer.endOfWritten(), sectorsOfThreeTracks + 2 * EmulatedWriter::sectorsBetweenTracks);
    EXPECT_TRUE(writer.written(0, writer.endOfWritten(), 2352) == PatternFeed::bytes(sectorsOfThreeTracks));
    EXPECT_EQ(writer.commandsOf(closeSession), 1);
    EXPECT_EQ(writer.disc(), EmulatedWriter::Disc::WrittenCd);
    EXPECT_EQ(writer.writeSpeed(), writer.abilities.measuredSpeeds.front());
    expectGivenBack();
}

TEST_F(EmulatedDrive, TellsHowFarEachTrackIs)
{
    writer.writeSlowly(4);
    DiscPlan plan = threeTracks();
    plan.discAtOnce = true;
    EXPECT_EQ(write(plan).end, WriteOutcome::Written);
    EXPECT_EQ(watch.tracks, (std::vector<std::int64_t>{300, 301, 460}));
    EXPECT_FALSE(watch.wentBack);
    ASSERT_GE(watch.stages.size(), 4U);
    EXPECT_EQ(watch.stages.front(), (NotedWrite::Stage{DiscStage::LeadIn, 0}));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(watch.stages[static_cast<std::size_t>(i) + 1], (NotedWrite::Stage{DiscStage::Writing, i}));
}

TEST_F(EmulatedDrive, LeavesTheDiscBlankInATest)
{
    for (const bool atOnce : {true, false}) {
        DiscPlan plan = threeTracks();
        plan.test = true;
        plan.discAtOnce = atOnce;
        EXPECT_EQ(write(plan).end, WriteOutcome::Written);
        EXPECT_EQ(writer.writeParameters().at(writeType) & testWrite, testWrite);
        EXPECT_EQ(writer.disc(), EmulatedWriter::Disc::BlankCd);
    }
}

TEST_F(EmulatedDrive, ThatCannotTestIsNotGivenATestThatWouldWrite)
{
    writer.abilities.writesTests = false;
    DiscPlan plan = threeTracks();
    plan.test = true;
    const WriteOutcome outcome = write(plan);
    EXPECT_EQ(outcome.end, WriteOutcome::Failed);
    EXPECT_EQ(textOf(outcome.error), "The drive cannot write a test.");
    EXPECT_EQ(writer.commandsOf(write10), 0);
    EXPECT_EQ(feed.calls, 0);
    expectGivenBack();
}

TEST_F(EmulatedDrive, WritesTextsIntoTheLeadIn)
{
    DiscPlan plan;
    plan.discAtOnce = true;
    plan.texts = {QStringLiteral("Études"), QStringLiteral("Lark")};
    plan.tracks = {track(300, "Erste"), track(300, "Zweite", "Spin")};
    EXPECT_EQ(write(plan).end, WriteOutcome::Written);

    EXPECT_EQ(writer.cueSheet().at(3), 0x41);
    EXPECT_EQ(writer.firstWritten(), EmulatedWriter::leadInStart);
    const Bytes packs = writerreplies::textPacks(writer.written(EmulatedWriter::leadInStart, 2, 96));
    ASSERT_GE(packs.size(), 18U * 5);

    // Three bytes say what it is, of which track and which pack; twelve are text, and two check it.
    const auto pack = [&](std::size_t index) {
        return std::string(packs.begin() + static_cast<std::ptrdiff_t>(index * 18),
                           packs.begin() + static_cast<std::ptrdiff_t>(index * 18 + 16));
    };
    using namespace std::string_literals;
    EXPECT_EQ(pack(0), "\x80\x00\x00\x00"s + "\xc9tudes\0Erste"s);
    EXPECT_EQ(pack(1), "\x80\x01\x01\x05"s + "\0Zweite\0\0\0\0\0"s);
    EXPECT_EQ(pack(2), "\x81\x00\x02\x00"s + "Lark\0\0Spin\0\0"s);
    EXPECT_EQ(pack(3).substr(0, 8), "\x8f\x00\x03\x00"s + "\x00\x01\x02\x03"s);  // ISO 8859-1, tracks 1 to 2, (c)
    EXPECT_EQ(pack(5).substr(8, 8).find('\x09') != std::string::npos, true);     // English
}

TEST_F(EmulatedDrive, ThatDoesNotWriteSubchannelsIsGivenNoTexts)
{
    writer.abilities.writesSubchannels = false;
    DiscPlan plan = threeTracks();
    plan.discAtOnce = true;
    plan.texts.title = QStringLiteral("Title");
    EXPECT_EQ(write(plan).end, WriteOutcome::Written);
    EXPECT_EQ(writer.cueSheet().at(3), 0x01);
    EXPECT_EQ(writer.firstWritten(), -150);
}

TEST_F(EmulatedDrive, WritesTheMostTracksWithTheLongestTexts)
{
    DiscPlan plan;
    plan.discAtOnce = true;
    const QString longText(300, QLatin1Char('x'));
    plan.texts = {longText, longText};
    plan.tracks.assign(Sectors::mostTracks, {Sectors::shortestTrack, {longText, longText}});
    EXPECT_EQ(write(plan).end, WriteOutcome::Written);
    EXPECT_EQ(writer.cueSheet().at(3), 0x41);
    EXPECT_EQ(writer.endOfWritten(), 99 * 300);
    EXPECT_EQ(watch.tracks, std::vector<std::int64_t>(99, 300));
}

TEST_F(EmulatedDrive, StopsWhenItIsGivenUp)
{
    writer.writeSlowly(5);
    watch.onWritten = [this](int, std::int64_t) { watch.gaveUp = true; };
    for (const bool atOnce : {true, false}) {
        writer.insert(EmulatedWriter::Disc::BlankCd);
        watch.gaveUp = false;
        DiscPlan plan;
        plan.discAtOnce = atOnce;
        plan.tracks = {track(100000)};
        EXPECT_EQ(write(plan).end, WriteOutcome::GivenUp);
        EXPECT_LT(writer.endOfWritten(), 1000);
        expectGivenBack();
    }
}

TEST_F(EmulatedDrive, FinishesADiscThatIsGivenUpWhenNothingOfItIsLeftToSend)
{
    writer.beforeFinishing([this] {
        for (int i = 0; i < 20000 && !watch.gaveUp; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        EXPECT_TRUE(watch.gaveUp);
    });
    watch.onStage = [this](DiscStage stage) { watch.gaveUp = watch.gaveUp || stage == DiscStage::LeadOut; };
    for (const bool atOnce : {true, false}) {
        writer.insert(EmulatedWriter::Disc::BlankCd);
        watch.gaveUp = false;
        DiscPlan plan = threeTracks();
        plan.discAtOnce = atOnce;
        EXPECT_EQ(write(plan).end, WriteOutcome::Written);
        EXPECT_EQ(writer.disc(), EmulatedWriter::Disc::WrittenCd);
    }
}

TEST_F(EmulatedDrive, KeepsItsDiscBlankWhenItIsGivenUpBeforeTheFirstSector)
{
    watch.gaveUp = true;
    EXPECT_EQ(write(threeTracks()).end, WriteOutcome::GivenUp);
    EXPECT_EQ(writer.commandsOf(write10), 0);
    EXPECT_EQ(feed.calls, 0);
    expectGivenBack();
}

TEST_F(EmulatedDrive, StopsWhenTheFeedHasNoMore)
{
    writer.writeSlowly(5);
    PatternFeed shortFeed(350);
    DiscPlan plan;
    plan.discAtOnce = true;
    plan.tracks = {track(300), track(100000)};
    EXPECT_EQ(drive().write(plan, shortFeed, watch).end, WriteOutcome::FeedFailed);
    EXPECT_EQ(shortFeed.calls, 351);
    EXPECT_LT(writer.endOfWritten(), 1000);
    expectGivenBack();
}

TEST_F(EmulatedDrive, IsReadyForTheNextDiscAfterOneThatFailed)
{
    writer.failWriteAt(400, {3, 0x0c, 0x00});
    for (const bool atOnce : {true, false}) {
        writer.insert(EmulatedWriter::Disc::BlankCd);
        DiscPlan plan = threeTracks();
        plan.discAtOnce = atOnce;
        const WriteOutcome outcome = write(plan);
        EXPECT_EQ(outcome.end, WriteOutcome::Failed);
        EXPECT_EQ(outcome.error.kind, DiscWriteError::device);
        EXPECT_EQ(outcome.error.deviceError.code, 0x030c00);
        EXPECT_EQ(outcome.error.deviceError.description, "Medium error. Write error.");
        EXPECT_EQ(outcome.error.deviceError.maker, "LARKTEST");
        EXPECT_EQ(outcome.error.deviceError.model, "EMULATED WRITER");
        expectGivenBack();
    }
    writer.failWriteAt(-1, {});
    writer.insert(EmulatedWriter::Disc::BlankCd);
    EXPECT_EQ(write(threeTracks()).end, WriteOutcome::Written);
}

TEST_F(EmulatedDrive, ThatIsPulledOutIsAFailureOfTheSystem)
{
    writer.pullOutAt(350);
    DiscPlan plan = threeTracks();
    plan.discAtOnce = true;
    const WriteOutcome outcome = write(plan);
    EXPECT_EQ(outcome.end, WriteOutcome::Failed);
    EXPECT_EQ(outcome.error.kind, DiscWriteError::system);
    EXPECT_EQ(outcome.error.systemCode, ENODEV);
    EXPECT_EQ(writer.openHandles(), 0);

    drive().refresh();
    EXPECT_EQ(drive().disc(), LoadedDisc{});
}

TEST_F(EmulatedDrive, DoesNotBeginOnADiscThatDoesNotTakeIt)
{
    struct Case
    {
        EmulatedWriter::Disc disc;
        int capacity;
        const char* why;
    };
    const Case cases[] = {
        {EmulatedWriter::Disc::None, 5000, "There is no disc in the drive."},
        {EmulatedWriter::Disc::WrittenCd, 5000, "The disc in the drive is not a blank CD."},
        {EmulatedWriter::Disc::BlankDvd, 5000, "The disc in the drive is not a blank CD."},
        {EmulatedWriter::Disc::BlankCd, sectorsOfThreeTracksOneByOne - 1,
         "The disc in the drive is too small for these tracks."},
    };
    for (const Case& one : cases) {
        writer.insert(one.disc);
        writer.setCapacity(one.capacity);
        const WriteOutcome outcome = write(threeTracks());
        EXPECT_EQ(outcome.end, WriteOutcome::Failed);
        EXPECT_EQ(outcome.error.kind, 4);
        EXPECT_EQ(textOf(outcome.error), one.why);
    }
    EXPECT_EQ(writer.commandsOf(write10), 0);
    EXPECT_EQ(feed.calls, 0);
    expectGivenBack();
}

TEST_F(EmulatedDrive, FillsADiscToItsLastSector)
{
    DiscPlan plan = threeTracks();
    for (const bool atOnce : {true, false}) {
        writer.insert(EmulatedWriter::Disc::BlankCd);
        writer.setCapacity(atOnce ? sectorsOfThreeTracks : sectorsOfThreeTracksOneByOne);
        plan.discAtOnce = atOnce;
        EXPECT_EQ(write(plan).end, WriteOutcome::Written);
    }
}

TEST_F(EmulatedDrive, OpensItsTray)
{
    drive().eject();
    EXPECT_TRUE(writer.isOpen());
    expectGivenBack();
}

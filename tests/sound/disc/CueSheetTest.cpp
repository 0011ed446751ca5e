#include "sound/disc/CueSheet.h"

#include <gtest/gtest.h>

using namespace sound;

namespace {

DiscPlan planOf(const std::vector<std::int64_t>& lengths)
{
    DiscPlan plan;
    for (const std::int64_t sectors : lengths)
        plan.tracks.push_back({sectors, {}});
    return plan;
}

TEST(CueSheet, OfTracksOneByOneTellsWhereThePausesBegin)
{
    EXPECT_EQ(cueSheet(planOf({300, 60 * 75 + 1, 400}), "a.bin"),
              "FILE \"a.bin\" BINARY\n"
              "  TRACK 01 AUDIO\n"
              "    INDEX 01 00:00:00\n"
              "  TRACK 02 AUDIO\n"
              "    INDEX 00 00:04:00\n"
              "    INDEX 01 00:06:00\n"
              "  TRACK 03 AUDIO\n"
              "    INDEX 00 01:06:01\n"
              "    INDEX 01 01:08:01\n");
    EXPECT_EQ(imageSectors(planOf({300, 60 * 75 + 1, 400})), 300 + 150 + 4501 + 150 + 400);
}

TEST(CueSheet, OfADiscAtOnceHasNoPauses)
{
    DiscPlan plan = planOf({300, 301, 302});
    plan.discAtOnce = true;
    EXPECT_EQ(cueSheet(plan, "a.bin"),
              "FILE \"a.bin\" BINARY\n"
              "  TRACK 01 AUDIO\n"
              "    INDEX 01 00:00:00\n"
              "  TRACK 02 AUDIO\n"
              "    INDEX 01 00:04:00\n"
              "  TRACK 03 AUDIO\n"
              "    INDEX 01 00:08:01\n");
    EXPECT_EQ(imageSectors(plan), 903);
}

TEST(CueSheet, TextsAreToldWhereThereAreSome)
{
    DiscPlan plan = planOf({300, 300});
    plan.texts = {"Songs", "Band"};
    plan.tracks[0].texts = {"One", {}};
    plan.tracks[1].texts = {{}, "Zoë 漢字"};
    EXPECT_EQ(cueSheet(plan, "a.bin"),
              "TITLE \"Songs\"\n"
              "PERFORMER \"Band\"\n"
              "FILE \"a.bin\" BINARY\n"
              "  TRACK 01 AUDIO\n"
              "    TITLE \"One\"\n"
              "    INDEX 01 00:00:00\n"
              "  TRACK 02 AUDIO\n"
              "    PERFORMER \"Zoë 漢字\"\n"
              "    INDEX 00 00:04:00\n"
              "    INDEX 01 00:06:00\n");
}

QByteArray titleLine(const QString& title)
{
    DiscPlan plan = planOf({300});
    plan.texts.title = title;
    const QByteArray sheet = cueSheet(plan, "a.bin");
    return sheet.left(sheet.indexOf('\n'));
}

TEST(CueSheet, WhatCannotBeWrittenWithinQuotationMarksIsReplaced)
{
    EXPECT_EQ(titleLine("The \"one\" song"), "TITLE \"The 'one' song\"");
    EXPECT_EQ(titleLine("two\r\nlines\tand\x01 more "), "TITLE \"two lines and more\"");
    EXPECT_EQ(titleLine("\"\nFILE \"/etc/passwd\" BINARY"), "TITLE \"' FILE '/etc/passwd' BINARY\"");
}

TEST(CueSheet, LongTextsEndAfterEightyCharacters)
{
    EXPECT_EQ(titleLine(QString(81, 'a')), "TITLE \"" + QByteArray(80, 'a') + "\"");
    // A sign of two halves is not cut in the middle.
    const QString notes = QString(79, 'a') + QString::fromUtf8("\xF0\x9D\x84\x9E") + "b";
    EXPECT_EQ(titleLine(notes), "TITLE \"" + QByteArray(79, 'a') + "\"");
}

TEST(CueSheet, ALongDiscHasMinutesOfTwoDigits)
{
    EXPECT_TRUE(
        cueSheet(planOf({79 * 60 * 75, 300}), "a.bin").contains("INDEX 00 79:00:00\n    INDEX 01 79:02:00\n"));
}

}  // namespace

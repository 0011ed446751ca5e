#include "vocalremover/VocalRemoverTest.h"

#include "support/controls/TimeSlider.h"

#include <climits>

using ::testing::InSequence;
using ::testing::Return;

namespace {

class StretchOfThePreview : public VocalRemoverWindow
{
protected:
    void enable() { chooseSource(); }

    void chooseAnotherSource(int duration, int position)
    {
        const InSequence order;
        EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(answering("/music/song.mp3")));
        expectMp3();
        EXPECT_CALL(*player, LoadSoundForExport).WillOnce(Return(0));
        EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(duration));
        EXPECT_CALL(*player, GetPosition(0)).WillOnce(Return(position));
        click("cmdInput");
    }

    int lastPosition() const { return control<Slider>(*window, "sldPreviewPosition").maximum(); }
};

TEST_F(StretchOfThePreview, IsFifteenSecondsLongAtFirst)
{
    EXPECT_EQ(labelOf("lblPreviewDuration"), "15");
}

TEST_F(StretchOfThePreview, GoesRoundFromTwentySecondsToTen)
{
    enable();
    QStringList shown;
    for (int i = 0; i < 7; ++i) {
        click("cmdPreviewDurationUp");
        shown << labelOf("lblPreviewDuration");
    }
    EXPECT_EQ(shown.join(' ').toStdString(), "16 17 18 19 20 10 11");
}

TEST_F(StretchOfThePreview, GoesRoundFromTenSecondsToTwenty)
{
    enable();
    QStringList shown;
    for (int i = 0; i < 7; ++i) {
        click("cmdPreviewDurationDown");
        shown << labelOf("lblPreviewDuration");
    }
    EXPECT_EQ(shown.join(' ').toStdString(), "14 13 12 11 10 20 19");
}

TEST_F(StretchOfThePreview, IsKeptInTheTextOfItsLabel)
{
    enable();
    control<QLabel>(*window, "lblPreviewDuration").setText("12");
    click("cmdPreviewDurationUp");
    EXPECT_EQ(labelOf("lblPreviewDuration"), "13");
}

TEST_F(StretchOfThePreview, IsShownWithTwoDigits)
{
    enable();
    control<QLabel>(*window, "lblPreviewDuration").setText("7");
    click("cmdPreviewDurationUp");
    EXPECT_EQ(labelOf("lblPreviewDuration"), "08");
}

TEST_F(StretchOfThePreview, HasATipThatShowsItsBeginAsATime)
{
    control<Slider>(*window, "sldPreviewPosition").setValue(425);
    EXPECT_EQ(control<TimeSlider>(*window, "sldPreviewPosition").valueTip(), "7:05");
}

struct DurationRow
{
    const char* name;
    int duration;
    int position;
    int lastPosition;
    int value;
};

class RangeOfThePreview : public StretchOfThePreview, public ::testing::WithParamInterface<DurationRow>
{
};

TEST_P(RangeOfThePreview, FollowsTheSource)
{
    chooseAnotherSource(GetParam().duration, GetParam().position);
    EXPECT_EQ(lastPosition(), GetParam().lastPosition);
    EXPECT_EQ(valueOf("sldPreviewPosition"), GetParam().value);
}

// 20 s less than the source, to the nearest second, halves to the even one. The position likewise.
INSTANTIATE_TEST_SUITE_P(Sources, RangeOfThePreview,
                         ::testing::Values(DurationRow{"OfThreeMinutes", 180000, 0, 160, 0},
                                           DurationRow{"OfNoLength", 0, 0, 1000, 0},
                                           DurationRow{"OfTwentySeconds", 20000, 0, 1000, 0},
                                           DurationRow{"OfAThousandthMore", 20001, 0, 0, 0},
                                           DurationRow{"OfHalfASecondMore", 20500, 0, 0, 0},
                                           DurationRow{"OfMoreThanHalfASecondMore", 20501, 0, 1, 0},
                                           DurationRow{"OfASecondAndAHalfMore", 21500, 0, 2, 0},
                                           DurationRow{"OfTwoSecondsAndAHalfMore", 22500, 0, 2, 0},
                                           DurationRow{"AtItsFirstHalfSecond", 180000, 500, 160, 0},
                                           DurationRow{"AtASecondAndAHalf", 180000, 1500, 160, 2},
                                           DurationRow{"AtItsEnd", 180000, 180000, 160, 160},
                                           DurationRow{"OfManyDays", INT_MAX, 0, 2147464, 0}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(StretchOfThePreview, KeepsTheRangeOfALongerSourceForAShortOne)
{
    chooseAnotherSource(180000, 0);
    chooseAnotherSource(20000, 0);
    EXPECT_EQ(lastPosition(), 160);
    chooseAnotherSource(5000, 3000);
    EXPECT_EQ(lastPosition(), 160);
    EXPECT_EQ(valueOf("sldPreviewPosition"), 3);
}

}  // namespace

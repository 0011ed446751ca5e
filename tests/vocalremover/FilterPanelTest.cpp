#include "vocalremover/VocalRemoverTest.h"

#include <QApplication>

namespace {

struct SliderOfTheRemover
{
    const char* name;
    int minimum;
    int maximum;
    int value;
};

class EachSliderOfTheVocalRemover : public VocalRemoverWindow,
                                    public ::testing::WithParamInterface<SliderOfTheRemover>
{
};

TEST_P(EachSliderOfTheVocalRemover, HasItsRangeAndItsDefault)
{
    const auto& slider = control<Slider>(*window, GetParam().name);
    EXPECT_EQ(slider.minimum(), GetParam().minimum);
    EXPECT_EQ(slider.maximum(), GetParam().maximum);
    EXPECT_EQ(slider.value(), GetParam().value);
    EXPECT_NE(slider.accessibleName(), "");
}

INSTANTIATE_TEST_SUITE_P(Sliders, EachSliderOfTheVocalRemover,
                         ::testing::Values(SliderOfTheRemover{"sldCutOffLow", 50, 400, 200},
                                           SliderOfTheRemover{"sldCutOffHigh", 6000, 16000, 8000},
                                           SliderOfTheRemover{"sldGain", 0, 200, 100},
                                           SliderOfTheRemover{"sldVocalPan", -100, 100, 0},
                                           SliderOfTheRemover{"sldPreviewPosition", 0, 1000, 500}),
                         [](const auto& info) { return std::string(info.param.name); });

class ValuesOfTheVocalRemover : public VocalRemoverWindow
{
protected:
    void SetUp() override
    {
        load();
        window->show();
        QApplication::processEvents();
    }

    QWidget& picture(const char* name) const { return control<QWidget>(*window, name); }
};

TEST_F(ValuesOfTheVocalRemover, AreShownBesideTheirSlidersWithTheirUnits)
{
    put("sldCutOffLow", 317);
    put("sldCutOffHigh", 12050);
    put("sldGain", 0);
    put("sldVocalPan", -42);
    EXPECT_EQ(labelOf("lblCutOffLow"), "317 Hz");
    EXPECT_EQ(labelOf("lblCutOffHigh"), "12050 Hz");
    EXPECT_EQ(labelOf("lblGain"), "0 %");
    EXPECT_EQ(labelOf("lblVocalPan"), "-42");
}

TEST_F(ValuesOfTheVocalRemover, AreResetByTheirButtons)
{
    for (const auto& [slider, other] : {std::pair("sldCutOffLow", 60), std::pair("sldCutOffHigh", 15000),
                                        std::pair("sldGain", 150), std::pair("sldVocalPan", 33)})
        put(slider, other);
    click("cmdResetAllFrequences");
    EXPECT_EQ(valueOf("sldCutOffLow"), 200);
    EXPECT_EQ(valueOf("sldCutOffHigh"), 8000);
    EXPECT_EQ(valueOf("sldGain"), 150);
    EXPECT_EQ(valueOf("sldVocalPan"), 33);
    click("cmdResetGain");
    EXPECT_EQ(valueOf("sldGain"), 100);
    EXPECT_EQ(valueOf("sldVocalPan"), 33);
    click("cmdResetPan");
    EXPECT_EQ(valueOf("sldVocalPan"), 0);
    EXPECT_EQ(labelOf("lblCutOffLow"), "200 Hz");
    EXPECT_EQ(labelOf("lblGain"), "100 %");
}

TEST_F(ValuesOfTheVocalRemover, OfTheLowCutOffShortenItsPictureFromBelow)
{
    const QRect whole = picture("picFilterLowInactive").geometry();
    ASSERT_GT(whole.height(), 20);
    for (const auto& [value, share] : {std::pair(200, 0.5), std::pair(300, 0.25), std::pair(400, 0.0)}) {
        put("sldCutOffLow", value);
        const QRect active = picture("picFilterLowActive").geometry();
        EXPECT_EQ(active.top(), whole.top()) << value;
        EXPECT_NEAR(active.height(), whole.height() * share, 0.51) << value;
    }
}

TEST_F(ValuesOfTheVocalRemover, OfTheHighCutOffShortenItsPictureFromAbove)
{
    const QRect whole = picture("picFilterHighInactive").geometry();
    ASSERT_GT(whole.height(), 20);
    for (const auto& [value, share] : {std::pair(12000, 0.5), std::pair(8000, 0.25), std::pair(6000, 0.0)}) {
        put("sldCutOffHigh", value);
        const QRect active = picture("picFilterHighActive").geometry();
        EXPECT_NEAR(active.height(), whole.height() * share, 0.51) << value;
        EXPECT_EQ(active.top() + active.height(), whole.top() + whole.height()) << value;
    }
}

TEST_F(ValuesOfTheVocalRemover, OfTheGainShortenItsPictureFromTheLeft)
{
    const QRect whole = picture("picGainInactive").geometry();
    ASSERT_GT(whole.width(), 20);
    for (const auto& [value, share] : {std::pair(0, 1.0), std::pair(50, 0.75), std::pair(200, 0.0)}) {
        put("sldGain", value);
        EXPECT_NEAR(picture("picGainActive").width(), whole.width() * share, 1.01) << value;
    }
}

TEST_F(ValuesOfTheVocalRemover, OfThePanTurnTheDialBehindOneTurnOfTheEventLoop)
{
    const auto seen = [this] { return picture("Picture2").grab().toImage(); };
    const QImage before = seen();
    QImage meanwhile;
    QTimer::singleShot(0, window, [&] { meanwhile = seen(); });
    put("sldVocalPan", 60);
    EXPECT_EQ(meanwhile, before);
    EXPECT_NE(seen(), before);
    put("sldVocalPan", 0);
    EXPECT_EQ(seen(), before);
}

TEST_F(VocalRemoverWindow, InitsItsPlayersThenItsEditorAndThenMatchesThePicturesToTheSliders)
{
    window->show();
    QApplication::processEvents();
    put("sldCutOffLow", 201);
    {
        const ::testing::InSequence order;
        const auto handle = static_cast<int>(window->winId());
        EXPECT_CALL(*player, InitPlayers(2, handle, 0, 0, 0, 0));
        EXPECT_CALL(*editor, InitEditor(handle));
    }
    window->Load();
    for (const auto& [active, inactive] : {std::pair("picFilterLowActive", "picFilterLowInactive"),
                                           std::pair("picFilterHighActive", "picFilterHighInactive")}) {
        const QSize part = control<QWidget>(*window, active).size();
        EXPECT_GT(part.height(), 0) << active;
        EXPECT_LT(part.height(), control<QWidget>(*window, inactive).height()) << active;
    }
    EXPECT_LT(control<QWidget>(*window, "picGainActive").width(),
              control<QWidget>(*window, "picGainInactive").width());
    EXPECT_FALSE(control<QWidget>(*window, "Picture2").grab().isNull());
}

}  // namespace

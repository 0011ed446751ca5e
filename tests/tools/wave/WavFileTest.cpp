#include "wave/WavFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <string>

namespace {

class WavFileTest : public ::testing::Test
{
protected:
    WavFileTest() { std::filesystem::create_directories(folder); }
    ~WavFileTest() override { std::filesystem::remove_all(folder); }

    std::filesystem::path fileOf(const std::string& bytes) const
    {
        std::ofstream(folder / "made.wav", std::ios::binary) << bytes;
        return folder / "made.wav";
    }

    std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("wavfiletest-" + std::to_string(::getpid()));
};

TEST_F(WavFileTest, WhatIsWrittenComesBackToTheStepOfSixteenBits)
{
    const StereoSound sound{48000, {0, .5F, -.5F, 1.5F}, {.25F, -1, 1, -1.5F}};
    ASSERT_TRUE(writeWav(folder / "a.wav", sound));

    const std::optional<StereoSound> read = readWav(folder / "a.wav");
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->rate, 48000);
    constexpr float kTop = 32767.0F / 32768;
    EXPECT_EQ(read->left, (std::vector<float>{0, .5F, -.5F, kTop}));
    EXPECT_EQ(read->right, (std::vector<float>{.25F, -1, kTop, -1}));
}

TEST_F(WavFileTest, WhatIsWrittenAsFloatsComesBackToTheBit)
{
    const StereoSound sound{44100, {0, .1F, -1.5F}, {1e-9F, -.3F, 2}};
    ASSERT_TRUE(writeFloatWav(folder / "a.wav", sound));

    const std::optional<StereoSound> read = readWav(folder / "a.wav");
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->rate, 44100);
    EXPECT_EQ(read->left, sound.left);
    EXPECT_EQ(read->right, sound.right);
}

TEST_F(WavFileTest, FloatsOfOneChannelBehindAForeignChunkAreRead)
{
    using namespace std::string_literals;
    const std::string file = "RIFF\0\0\0\0WAVE"s + "LIST\3\0\0\0abc\0"s +
                             "fmt \x10\0\0\0\3\0\1\0\x44\xAC\0\0\x10\xB1\2\0\4\0\x20\0"s +
                             "data\x08\0\0\0\0\0\0\x3F\0\0\x80\xBE"s;
    const std::optional<StereoSound> read = readWav(fileOf(file));
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->rate, 44100);
    EXPECT_EQ(read->left, (std::vector<float>{.5F, -.25F}));
    EXPECT_EQ(read->right, read->left);
}

TEST_F(WavFileTest, ALengthThatWasNeverWrittenMeansToTheEnd)
{
    using namespace std::string_literals;
    const std::string file = "RIFF\0\0\0\0WAVE"s + "fmt \x10\0\0\0\1\0\2\0\x44\xAC\0\0\x10\xB1\2\0\4\0\x10\0"s +
                             "data\0\0\0\0\0\x40\0\xC0"s;
    const std::optional<StereoSound> read = readWav(fileOf(file));
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->left, std::vector<float>{.5F});
    EXPECT_EQ(read->right, std::vector<float>{-.5F});
}

TEST_F(WavFileTest, WhatIsNoWavFileIsRefused)
{
    EXPECT_FALSE(readWav(folder / "missing.wav").has_value());
    EXPECT_FALSE(readWav(fileOf("")).has_value());
    EXPECT_FALSE(readWav(fileOf("RIFF and nothing that follows from it")).has_value());
}

}  // namespace

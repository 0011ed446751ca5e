#include "sound/editor/PieceReader.h"

#include "sound/editor/MemoryStream.h"

#include <gtest/gtest.h>
#include <cmath>
#include <numbers>
#include <ostream>

using namespace sound;
using namespace sound::test;

namespace {

constexpr SampleRate lowRate{8000};

struct Cut
{
    const char* name;
    double tempo;
    std::int64_t sourceFrames;
    std::int64_t piece;
    std::int64_t common;
    std::int64_t around;
    int channels;
};

void PrintTo(const Cut& cut, std::ostream* out)
{
    *out << cut.name;
}

Cutting cuttingFor(const Cut& cut)
{
    return {cut.tempo,
            {std::llround(static_cast<double>(cut.sourceFrames) / cut.tempo)},
            {cut.piece},
            {cut.common},
            {cut.around}};
}

std::vector<Piece> piecesOf(const MemorySound& sound, const Cutting& cutting)
{
    const auto source = wholeOf(sound);
    PieceReader reader(*source, cutting);
    std::vector<Piece> pieces;
    while (!reader.atEnd())
        pieces.push_back(reader.next());
    return pieces;
}

class PieceReaderTest : public ::testing::TestWithParam<Cut>
{
};

TEST_P(PieceReaderTest, PiecesCoverTheOutputAndOverlapByWhatTheyHaveInCommon)
{
    const Cut cut = GetParam();
    const Cutting cutting = cuttingFor(cut);
    const std::vector<Piece> pieces = piecesOf(noiseSound(lowRate, cut.channels, {cut.sourceFrames}), cutting);
    ASSERT_FALSE(pieces.empty());
    EXPECT_EQ(pieces.front().begin.value, 0);
    for (std::size_t index = 0; index + 1 < pieces.size(); ++index) {
        EXPECT_FALSE(pieces[index].last);
        EXPECT_EQ((pieces[index].begin + pieces[index].length).value,
                  (pieces[index + 1].begin + cutting.common).value);
        // Each is about as long as asked for, and never so short that three pieces sound at once.
        const std::int64_t search = cutting.piece.value / 12;
        EXPECT_GE(pieces[index].length.value, cutting.piece.value - 2 * search + cut.common);
        EXPECT_LE(pieces[index].length.value, cutting.piece.value + 2 * search + cut.common);
    }
    EXPECT_TRUE(pieces.back().last);
    EXPECT_EQ((pieces.back().begin + pieces.back().length).value, cutting.length.value);
    if (pieces.size() > 1) {
        EXPECT_GE(pieces.back().length.value, 2 * cut.common);
    }
}

TEST_P(PieceReaderTest, EachPieceHoldsTheFramesThatItsRenderingReadsAndSilenceWhereThereAreNone)
{
    const Cut cut = GetParam();
    const Cutting cutting = cuttingFor(cut);
    const MemorySound sound = noiseSound(lowRate, cut.channels, {cut.sourceFrames});
    for (const Piece& piece : piecesOf(sound, cutting)) {
        EXPECT_EQ(piece.source.value, std::llround(static_cast<double>(piece.begin.value) * cut.tempo));
        EXPECT_EQ(piece.inputBegin.value, piece.source.value - cut.around);
        const double needed = static_cast<double>((piece.begin + piece.length).value) * cut.tempo;
        std::vector<float> wanted(piece.input.size());
        const FrameCount frames{static_cast<std::int64_t>(piece.input.size()) / cut.channels};
        EXPECT_GE(static_cast<double>((piece.inputBegin + frames).value) + 0.5,
                  needed + static_cast<double>(cut.around));
        sound.read(piece.inputBegin, frames, wanted.data());
        ASSERT_EQ(piece.input, wanted) << "the piece from frame " << piece.begin.value;
    }
}

INSTANTIATE_TEST_SUITE_P(Cuts, PieceReaderTest,
                         ::testing::Values(Cut{"half", 0.5, 100'000, 24'000, 1600, 2000, 2},
                                           Cut{"slow", 0.2, 50'000, 24'000, 1600, 900, 1},
                                           Cut{"odd", 0.8123, 123'457, 9999, 1601, 1234, 2},
                                           Cut{"same", 1, 100'000, 24'000, 1600, 2000, 1},
                                           Cut{"fast", 1.6, 300'001, 24'000, 1600, 2000, 2},
                                           Cut{"fastest", 5, 500'003, 9000, 1600, 2000, 1},
                                           Cut{"onePiece", 0.7, 20'000, 24'000, 1600, 2000, 2},
                                           Cut{"shorterThanAJoin", 1.3, 500, 24'000, 1600, 2000, 2},
                                           Cut{"oneFrame", 0.9, 1, 24'000, 1600, 2000, 1}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(PieceReaderTest, ASoundWithoutFramesHasNoPieces)
{
    const auto source = wholeOf(MemorySound(lowRate, 2, {}));
    const PieceReader reader(*source, {1, {0}, {24'000}, {1600}, {2000}});
    EXPECT_TRUE(reader.atEnd());
}

// Twice a second a beat that dies away. What two pieces have in common is a fifth of a second of the output.
TEST(PieceReaderTest, NoBeatIsWithinOrNearWhatTwoPiecesHaveInCommon)
{
    const std::int64_t everyFrames = 4000;
    const std::int64_t near = 320;  // four hundredths of a second
    const MemorySound beats = MemorySound::of(lowRate, 1, {240'000}, [](std::int64_t frame, int) {
        const double since = static_cast<double>(frame % everyFrames) / lowRate.hertz;
        return 0.7 * std::exp(-since * 9) * std::sin(2 * std::numbers::pi * 220 * since);
    });
    for (const double tempo : {0.5, 0.8, 1.25}) {
        const Cutting cutting{tempo, {std::llround(240'000 / tempo)}, {30'000}, {1600}, {2000}};
        const std::vector<Piece> pieces = piecesOf(beats, cutting);
        ASSERT_GT(pieces.size(), 5U);
        for (const Piece& piece : pieces) {
            if (piece.begin.value == 0)
                continue;
            const auto since = static_cast<double>(piece.source.value % everyFrames);
            EXPECT_GE(since, near) << "tempo " << tempo << ", output frame " << piece.begin.value;
            EXPECT_LE(since + 1600 * tempo, everyFrames - near) << "tempo " << tempo;
        }
    }
}

}  // namespace

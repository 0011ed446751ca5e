#include "sound/Comparison.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

namespace sound::test {
namespace {

void put(std::ofstream& file, std::uint32_t number, int bytes)
{
    for (int byte = 0; byte < bytes; ++byte)
        file.put(static_cast<char>(number >> (8 * byte) & 0xff));
}

void writeWave(const std::string& name, std::span<const float> interleaved, int channels, SampleRate rate)
{
    const auto bytes = static_cast<std::uint32_t>(interleaved.size_bytes());
    const auto frameBytes = static_cast<std::uint32_t>(channels) * 4;
    const auto hertz = static_cast<std::uint32_t>(rate.hertz);
    std::ofstream file(name, std::ios::binary);
    file << "RIFF";
    put(file, 36 + bytes, 4);
    file << "WAVEfmt ";
    put(file, 16, 4);
    put(file, 3, 2);  // floating point
    put(file, static_cast<std::uint32_t>(channels), 2);
    put(file, hertz, 4);
    put(file, hertz * frameBytes, 4);
    put(file, frameBytes, 2);
    put(file, 32, 2);
    file << "data";
    put(file, bytes, 4);
    for (const float sample : interleaved)
        put(file, std::bit_cast<std::uint32_t>(sample), 4);
}

std::string nameOfTest()
{
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test->test_suite_name()) + '.' + test->name();
    std::replace(name.begin(), name.end(), '/', '-');
    return name;
}

void leaveSounds(std::span<const float> actual, std::span<const float> wanted, int channels, SampleRate rate)
{
    std::vector<float> difference(std::min(actual.size(), wanted.size()));
    std::transform(actual.begin(), actual.begin() + static_cast<std::ptrdiff_t>(difference.size()), wanted.begin(),
                   difference.begin(), std::minus());
    const std::string name = nameOfTest();
    writeWave(name + ".actual.wav", actual, channels, rate);
    writeWave(name + ".wanted.wav", wanted, channels, rate);
    writeWave(name + ".difference.wav", difference, channels, rate);
}

template <typename Agrees>
void expectAgreement(std::span<const float> actual, std::span<const float> wanted, int channels, SampleRate rate,
                     const Agrees& agrees)
{
    EXPECT_EQ(actual.size(), wanted.size());
    const auto end = actual.begin() + static_cast<std::ptrdiff_t>(std::min(actual.size(), wanted.size()));
    const auto [first, other] = std::mismatch(actual.begin(), end, wanted.begin(), agrees);
    if (first != end) {
        ADD_FAILURE() << "first differs in frame " << (first - actual.begin()) / channels << " channel "
                      << (first - actual.begin()) % channels << ": " << *first << " instead of " << *other;
    }
    if (first != end || actual.size() != wanted.size())
        leaveSounds(actual, wanted, channels, rate);
}

}  // namespace

void expectSame(std::span<const float> actual, std::span<const float> wanted, int channels, SampleRate rate)
{
    expectAgreement(actual, wanted, channels, rate, [](float one, float other) {
        return std::bit_cast<std::uint32_t>(one) == std::bit_cast<std::uint32_t>(other);
    });
}

void expectClose(std::span<const float> actual, std::span<const float> wanted, double tolerance, int channels,
                 SampleRate rate)
{
    // A sample that is no number agrees with nothing.
    expectAgreement(actual, wanted, channels, rate, [tolerance](float one, float other) {
        return std::abs(static_cast<double>(one) - other) <= tolerance;
    });
}

}  // namespace sound::test

#include "sound/player/EqualizerFile.h"

#include "sound/media/RegularFile.h"
#include "sound/media/WholeFile.h"
#include "sound/player/Settings.h"

#include <QUtf8StringView>
#include <array>
#include <charconv>
#include <cmath>
#include <span>
#include <vector>

namespace sound {
namespace {

constexpr std::string_view firstLine = "Larkspin equalizer, version 1";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view blanks = " \t\r";
constexpr std::int64_t longestFile = std::int64_t{64} * 1024;

QByteArray shortest(float number)
{
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    return {digits.data(), static_cast<qsizetype>(end - digits.data())};
}

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

/// Cuts the next line off @p text, without the blanks around it.
std::string_view takeLine(std::string_view& text)
{
    const auto end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return trimmed(line);
}

/// The next line that says something; empty behind the last.
std::string_view takeStatement(std::string_view& text)
{
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (!line.empty() && line.front() != '#')
            return line;
    }
    return {};
}

bool takeNumber(std::string_view& line, float& number)
{
    line = trimmed(line);
    if (line.starts_with('+') && !line.starts_with("+-"))
        line.remove_prefix(1);
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    return error == std::errc() && std::isfinite(number);
}

bool takeWord(std::string_view& line, std::string_view word)
{
    line = trimmed(line);
    if (!line.starts_with(word))
        return false;
    line.remove_prefix(word.size());
    return true;
}

/// "80 Hz: 3.5 dB".
bool readBand(std::string_view line, float& frequency, float& gain)
{
    return takeNumber(line, frequency) && takeWord(line, "Hz") && takeWord(line, ":") && takeNumber(line, gain) &&
           takeWord(line, "dB") && trimmed(line).empty() && std::abs(gain) <= EqualizerBand::greatestGain;
}

}  // namespace

QByteArray equalizerText(const EqualizerBands& bands)
{
    QByteArray text(firstLine.data(), static_cast<qsizetype>(firstLine.size()));
    text += '\n';
    for (const EqualizerBand& band : std::span(bands.band).first(bands.count))
        text += shortest(band.frequency) + " Hz: " + shortest(band.gain) + " dB\n";
    return text;
}

bool readEqualizerText(std::string_view text, EqualizerBands& bands)
{
    if (!QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8())
        return false;
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    if (takeStatement(text) != firstLine)
        return false;

    EqualizerBands read = bands;
    std::array<bool, EqualizerBands::capacity> given{};
    std::size_t count = 0;
    while (true) {
        const std::string_view line = takeStatement(text);
        if (line.empty())
            break;
        float frequency = 0;
        float gain = 0;
        if (!readBand(line, frequency, gain))
            return false;
        EqualizerBand* band = findBand(read, frequency);
        if (band == nullptr)
            return false;
        bool& alreadyGiven = given[static_cast<std::size_t>(band - read.band.data())];
        if (alreadyGiven)
            return false;
        alreadyGiven = true;
        band->gain = gain;
        ++count;
    }
    if (count != bands.count)
        return false;
    bands = read;
    return true;
}

EngineError saveEqualizerFile(const QString& path, const EqualizerBands& bands)
{
    const auto file = WholeFile::create(path);
    const QByteArray text = equalizerText(bands);
    const bool whole =
        file && file->writeAt(0, std::as_bytes(std::span(text.data(), text.size()))) && file->finish();
    return whole ? EngineError::None : EngineError::FileCreationFailed;
}

EngineError loadEqualizerFile(const QString& path, EqualizerBands& bands)
{
    const auto file = RegularFile::open(path);
    if (!file || file->size() > longestFile)
        return EngineError::InvalidEqualizerFile;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(file->size()));
    if (file->readAt(0, bytes) != bytes.size())
        return EngineError::InvalidEqualizerFile;
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return readEqualizerText(text, bands) ? EngineError::None : EngineError::InvalidEqualizerFile;
}

}  // namespace sound

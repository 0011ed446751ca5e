#include "sound/recorder/FileSequence.h"

#include "sound/media/RecordingFile.h"

#include <QFileInfo>
#include <algorithm>
#include <limits>

namespace sound {

struct FileSequence::Part
{
    QString path;
    std::unique_ptr<RecordingFile> file;
    FrameCount end{std::numeric_limits<std::int64_t>::max()};  // of the conversion's frames
};

FileSequence::FileSequence(SampleRate rate)
    : captured(rate)
{
}

FileSequence::~FileSequence()
{
    finish();
}

bool FileSequence::begin(const QString& path, const RecordingFormat& format)
{
    // A file that takes the place of an open one must not be written by both.
    const bool replaces = std::any_of(parts.begin(), parts.end(),
                                      [&](const Part& part) { return QFileInfo(part.path) == QFileInfo(path); });
    if (isOpen() && (replaces || format != current) && !finish())
        return false;
    if (isOpen())
        parts.back().end = conversion->due();
    OpenedRecordingFile opened;
    if (closeComplete())
        opened = RecordingFile::create(path, format.format, format.rate, format.channels);
    if (!opened.file) {
        finish();
        return false;
    }
    if (!conversion) {
        conversion.emplace(captured, format.rate, format.channels);
        given = {0};
        current = format;
    }
    parts.push_back({path, std::move(opened.file)});
    return true;
}

bool FileSequence::write(std::span<const float> stereo)
{
    if (!isOpen())
        return true;
    conversion->convert(stereo, converted);
    return distribute();
}

bool FileSequence::distribute()
{
    std::span<const float> left(converted);
    const auto perFrame = static_cast<std::size_t>(current.channels);
    bool good = true;
    while (!left.empty() && !parts.empty() && good) {
        Part& part = parts.front();
        const auto room = static_cast<std::size_t>((part.end - given).value);
        const std::size_t frames = std::min(left.size() / perFrame, room);
        good = part.file->write(left.first(frames * perFrame));
        given = given + FrameCount{static_cast<std::int64_t>(frames)};
        left = left.subspan(frames * perFrame);
        good = closeComplete() && good;
    }
    converted.clear();
    if (!good)
        finish();
    return good;
}

/// Closes the files that have got all their frames.
bool FileSequence::closeComplete()
{
    bool good = true;
    for (; !parts.empty() && parts.front().end == given; parts.pop_front())
        good = parts.front().file->finish() == EngineError::None && good;
    return good;
}

bool FileSequence::changeRate(SampleRate rate)
{
    if (rate == captured)
        return true;
    const bool good = endConversion();
    captured = rate;
    if (isOpen())
        conversion.emplace(captured, current.rate, current.channels);
    return good;
}

// What is still inside belongs to the files that are open.
bool FileSequence::endConversion()
{
    if (!conversion)
        return true;
    conversion->finish(converted);
    conversion.reset();
    const bool good = !isOpen() || distribute();
    given = {0};
    return good;
}

bool FileSequence::finish()
{
    bool good = endConversion();
    for (Part& part : parts)
        good = part.file->finish() == EngineError::None && good;
    parts.clear();
    return good;
}

}  // namespace sound

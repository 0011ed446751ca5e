#include "sound/media/WaveWriter.h"

#include "sound/media/UnnamedFile.h"

#include <fcntl.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace sound {
namespace {

constexpr std::size_t gatheredBytes = std::size_t{256} * 1024;

/// A new file in @p folder under a name that nothing bears. Its descriptor, or -1.
int makeGrowingFile(const QByteArray& folder, QByteArray& name)
{
    constexpr int attempts = 100;
    for (int i = 0; i < attempts; ++i) {
        name = folder + "/.larkspin-" + QByteArray::number(QRandomGenerator::global()->generate64(), 16) + ".part";
        const int file = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (file >= 0 || errno != EEXIST)
            return file;
    }
    return -1;
}

/// So that the new name outlives a sudden end of the machine. A folder that cannot be told so still holds the file.
void bringFolderToDisc(const QByteArray& folder)
{
    const int opened = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        return;
    ::fsync(opened);
    ::close(opened);
}

QByteArray folderOf(const QString& path)
{
    return QFile::encodeName(QFileInfo(path).absolutePath());
}

}  // namespace

std::unique_ptr<WaveWriter> WaveWriter::create(const QString& path, SampleRate rate, int channels,
                                               WaveSamples samples)
{
    const QByteArray name = QFile::encodeName(QFileInfo(path).absoluteFilePath());
    if (path.isEmpty() || name.contains('\0') || channels < 1 || channels > 2 || rate.hertz <= 0)
        return nullptr;
    if (QFileInfo(path).isDir() || !QDir().mkpath(QFileInfo(path).absolutePath()))
        return nullptr;
    QByteArray growingName;
    const int file = makeGrowingFile(folderOf(path), growingName);
    if (file < 0)
        return nullptr;
    std::unique_ptr<WaveWriter> writer(new WaveWriter(file, name, growingName, rate, channels, samples));
    return writer->flush() ? std::move(writer) : nullptr;
}

WaveWriter::WaveWriter(int openFile, QByteArray finalName, QByteArray nameUntilThen, SampleRate frameRate,
                       int channelCount, WaveSamples kind)
    : file(openFile)
    , name(std::move(finalName))
    , growingName(std::move(nameUntilThen))
    , rate(frameRate)
    , channels(channelCount)
    , samples(kind)
{
    const auto head = waveHead(rate, channels, samples, {0});
    const auto bytes = std::as_bytes(std::span(head));
    gathered.assign(bytes.begin(), bytes.end());
}

WaveWriter::~WaveWriter()
{
    if (file >= 0)
        ::close(file);
    if (!growingName.isEmpty())
        ::unlink(growingName.constData());
}

bool WaveWriter::write(std::span<const float> interleaved)
{
    for (const float sample : interleaved) {
        gather(sample);
        if (gathered.size() >= gatheredBytes && !flush())
            return false;
    }
    samplesWritten += static_cast<std::int64_t>(interleaved.size());
    return !failed;
}

void WaveWriter::gather(float sample)
{
    if (samples == WaveSamples::Float32) {
        const auto bytes = std::as_bytes(std::span(&sample, 1));
        gathered.insert(gathered.end(), bytes.begin(), bytes.end());
        return;
    }
    // What is no number is silence.
    const float steps = std::isnan(sample) ? 0.0F : std::clamp(sample * 32768.0F, -32768.0F, 32767.0F);
    const auto step = static_cast<std::int16_t>(std::lrint(steps));
    const auto bytes = std::as_bytes(std::span(&step, 1));
    gathered.insert(gathered.end(), bytes.begin(), bytes.end());
}

bool WaveWriter::flush()
{
    failed = failed || !writeAt(file, end, gathered);
    end += static_cast<std::int64_t>(gathered.size());
    gathered.clear();
    return !failed;
}

EngineError WaveWriter::finish()
{
    const std::int64_t frames = samplesWritten / channels;
    if ((samplesWritten * bytesPerSample(samples) & 1) != 0)
        gathered.push_back(std::byte{0});
    const auto head = waveHead(rate, channels, samples, {frames});
    const bool written = flush() && writeAt(file, 0, std::as_bytes(std::span(head))) && ::fsync(file) == 0;
    const bool closed = ::close(file) == 0;
    file = -1;
    if (!written || !closed || std::rename(growingName.constData(), name.constData()) != 0)
        return EngineError::FileCreationFailed;
    growingName.clear();
    bringFolderToDisc(name.left(name.lastIndexOf('/') + 1));
    return EngineError::None;
}

}  // namespace sound

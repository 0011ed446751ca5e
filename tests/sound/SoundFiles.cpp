#include "sound/SoundFiles.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QProcess>
#include <cmath>
#include <cstring>
#include <numbers>
#include <random>

namespace sound::test {
namespace {

constexpr int longestRunInMilliseconds = 100'000;

}  // namespace

TestSound slideWithNoise(int rate, int channels, std::int64_t frames)
{
    TestSound sound{rate, channels, {}};
    sound.samples.reserve(static_cast<std::size_t>(frames * channels));
    std::minstd_rand noise(1);
    for (std::int64_t i = 0; i < frames; ++i) {
        const double t = static_cast<double>(i) / rate;
        for (int channel = 0; channel < channels; ++channel) {
            const double hertz = 150.0 + 90.0 * channel + 20.0 * t;
            const double grain = static_cast<double>(noise() % 2001) / 1000.0 - 1.0;
            const double value = 0.4 * std::sin(2.0 * std::numbers::pi * hertz * t) + 0.05 * grain;
            sound.samples.push_back(static_cast<float>(value));
        }
    }
    return sound;
}

TestSound sine(double hertz, int rate, int channels, std::int64_t frames, double amplitude)
{
    TestSound sound{rate, channels, {}};
    sound.samples.reserve(static_cast<std::size_t>(frames * channels));
    for (std::int64_t i = 0; i < frames; ++i) {
        const double angle = 2.0 * std::numbers::pi * hertz * static_cast<double>(i) / rate;
        sound.samples.insert(sound.samples.end(), static_cast<std::size_t>(channels),
                             static_cast<float>(amplitude * std::sin(angle)));
    }
    return sound;
}

SoundFiles::SoundFiles()
{
    EXPECT_TRUE(directory.isValid()) << directory.errorString().toStdString();
}

QString SoundFiles::path(const QString& name) const
{
    return directory.filePath(name);
}

QString SoundFiles::make(const QString& name, const TestSound& sound, const QStringList& arguments) const
{
    const QByteArray samples(reinterpret_cast<const char*>(sound.samples.data()),
                             static_cast<qsizetype>(sound.samples.size() * sizeof(float)));
    const QString made = path(name);
    QStringList all{
        "-y", "-f",    "f32le", "-ar", QString::number(sound.rate), "-ac", QString::number(sound.channels),
        "-i", "pipe:0"};
    all << arguments << "file:" + made;
    runFfmpeg(all, samples);
    return made;
}

QString SoundFiles::write(const QString& name, const QByteArray& bytes) const
{
    const QString made = path(name);
    QFile file(made);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << made.toStdString();
    EXPECT_EQ(file.write(bytes), bytes.size()) << made.toStdString();
    return made;
}

bool runFfmpeg(const QStringList& arguments, const QByteArray& input, QByteArray* output)
{
    QProcess ffmpeg;
    ffmpeg.start("ffmpeg", QStringList{"-v", "error", "-nostdin"} + arguments);
    ffmpeg.write(input);
    ffmpeg.closeWriteChannel();
    const bool ended = ffmpeg.waitForFinished(longestRunInMilliseconds);
    const bool content = ended && ffmpeg.exitStatus() == QProcess::NormalExit && ffmpeg.exitCode() == 0;
    EXPECT_TRUE(content) << "ffmpeg " << arguments.join(' ').toStdString() << '\n'
                         << ffmpeg.readAllStandardError().toStdString();
    if (output != nullptr)
        *output = ffmpeg.readAllStandardOutput();
    return content;
}

std::vector<float> decodedByFfmpeg(const QString& path, int channels)
{
    QByteArray bytes;
    runFfmpeg({"-i", "file:" + path, "-map", "0:a:0", "-ac", QString::number(channels), "-f", "f32le", "pipe:1"},
              {}, &bytes);
    std::vector<float> samples(static_cast<std::size_t>(bytes.size()) / sizeof(float));
    std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(float));
    return samples;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

}  // namespace sound::test

#include "sound/SoundFiles.h"

#include "sound/ChildProcess.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <cmath>
#include <cstring>
#include <numbers>
#include <random>

namespace sound::test {
namespace {

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
    const QTemporaryDir streams;
    QFile in(streams.filePath("in"));
    const bool given = in.open(QIODevice::WriteOnly) && in.write(input) == input.size();
    in.close();
    ChildProcess ffmpeg("ffmpeg", QStringList{"-v", "error", "-nostdin"} + arguments, {}, streams.filePath("in"),
                        streams.filePath("out"), streams.filePath("err"));
    const bool content = ffmpeg.succeeds() && given;
    EXPECT_TRUE(content) << "ffmpeg " << arguments.join(' ').toStdString() << '\n'
                         << contentOf(streams.filePath("err")).toStdString();
    if (output != nullptr)
        *output = contentOf(streams.filePath("out"));
    return content;
}

std::vector<float> decodedByFfmpeg(const QString& path, int channels)
{
    QByteArray bytes;
    runFfmpeg({"-i", "file:" + path, "-map", "0:a:0", "-ac", QString::number(channels), "-f", "f32le", "pipe:1"},
              {}, &bytes);
    std::vector<float> samples(static_cast<std::size_t>(bytes.size()) / sizeof(float));
    if (!samples.empty())
        std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(float));
    return samples;
}

QStringList everythingIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

}  // namespace sound::test

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <span>
#include <vector>

namespace sound::test {

/// Samples with what it takes to make sense of them.
struct TestSound
{
    int rate = 44100;
    int channels = 2;
    std::vector<float> samples;  // interleaved

    std::int64_t frames() const { return static_cast<std::int64_t>(samples.size()) / channels; }
};

/// A sound in which no two places are alike: in each channel another rising tone, with a little noise over it. The
/// same for the same arguments.
TestSound slideWithNoise(int rate, int channels, std::int64_t frames);

/// A steady sine of the same phase in every channel.
TestSound sine(double hertz, int rate, int channels, std::int64_t frames, double amplitude = 0.5);

/// A folder of sound files that are made on the spot and go with this object.
///
/// The files are made and decoded by the ffmpeg program, so that what is expected of this program's decoding comes
/// from elsewhere. A program that fails to run makes the test fail.
class SoundFiles
{
public:
    SoundFiles();

    QString folder() const { return directory.path(); }

    /// Path of a file of this name in the folder.
    QString path(const QString& name) const;

    /// Writes @p sound in the format that the name's extension says, or as the ffmpeg arguments say. Returns the
    /// path.
    QString make(const QString& name, const TestSound& sound, const QStringList& arguments = {}) const;

    /// Writes bytes as they are. Returns the path.
    QString write(const QString& name, const QByteArray& bytes) const;

private:
    QTemporaryDir directory;
};

/// Whether the ffmpeg program has run and been content. What it says otherwise becomes a failure of the test.
bool runFfmpeg(const QStringList& arguments, const QByteArray& input = {}, QByteArray* output = nullptr);

/// What the ffmpeg program makes of the file from its beginning to its end, as interleaved floats.
std::vector<float> decodedByFfmpeg(const QString& path, int channels);

QByteArray contentOf(const QString& path);

/// The names of all that is in the folder, be it hidden.
QStringList everythingIn(const QString& folder);

}  // namespace sound::test

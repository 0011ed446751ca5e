// How long a ten-minute sound takes to open and to decode, format by format.

#include "sound/SoundFiles.h"
#include "sound/media/DecodedSound.h"

#include <benchmark/benchmark.h>
#include <QFile>
#include <array>
#include <map>

namespace {

struct Format
{
    const char* name;
    const char* file;
    QStringList arguments;
};

const std::array formats = {
    Format{"Wav16", "s16.wav", {}},
    Format{"Wav24", "s24.wav", {"-c:a", "pcm_s24le"}},
    Format{"Aiff", "a.aiff", {}},
    Format{"Flac", "a.flac", {}},
    Format{"WavPack", "a.wv", {}},
    Format{"Mp3Constant", "cbr.mp3", {"-b:a", "192k"}},
    Format{"Mp3VariableWithoutTag", "vbr.mp3", {"-q:a", "2", "-write_xing", "0"}},
    Format{"Mp2", "a.mp2", {"-b:a", "256k"}},
    Format{"M4aAac", "aac.m4a", {"-b:a", "192k"}},
    Format{"M4aAlac", "alac.m4a", {"-c:a", "alac"}},
    Format{"AacAdts", "a.aac", {"-b:a", "192k"}},
    Format{"OggVorbis", "a.ogg", {"-c:a", "libvorbis", "-q:a", "5"}},
    Format{"OggOpus", "a.opus", {"-c:a", "libopus", "-b:a", "128k"}},
    Format{"Wma", "a.wma", {"-c:a", "wmav2", "-b:a", "192k"}},
    Format{"Ac3", "a.ac3", {"-b:a", "448k"}},
};

/// Ten minutes of sound in the format, made when it is first asked for.
QString fileOf(const Format& format)
{
    static const sound::test::SoundFiles files;
    static const sound::test::TestSound sound = sound::test::slideWithNoise(44100, 2, 600 * 44100);
    const QString path = files.path(format.file);
    return QFile::exists(path) ? path : files.make(format.file, sound, format.arguments);
}

void openSound(benchmark::State& state, const Format& format)
{
    const QString path = fileOf(format);
    for (auto step : state) {
        auto opened = sound::DecodedSound::open(path);
        if (!opened.sound)
            state.SkipWithError("cannot be opened");
        state.PauseTiming();
        opened.sound.reset();
        state.ResumeTiming();
    }
}

void decodeSound(benchmark::State& state, const Format& format)
{
    const QString path = fileOf(format);
    for (auto step : state) {
        const auto opened = sound::DecodedSound::open(path);
        if (!opened.sound || !opened.sound->waitFor(opened.sound->length()))
            state.SkipWithError("cannot be decoded");
    }
    state.counters["times_real_time"] =
        benchmark::Counter(600.0 * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

}  // namespace

int main(int argc, char** argv)
{
    for (const Format& format : formats) {
        const std::string name = format.name;
        benchmark::RegisterBenchmark(("Open/" + name).c_str(), openSound, format)->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("Decode/" + name).c_str(), decodeSound, format)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

#pragma once

#include "sound/Eventually.h"
#include "sound/SoundFiles.h"
#include "sound/mp3/SoundMp3EncoderEngine.h"

#include <gmock/gmock.h>
#include <QDir>
#include <QFile>
#include <QStringList>
#include <algorithm>
#include <memory>
#include <vector>

namespace sound::test {

/// An encoder in a folder of its own, and the percents that it tells.
class EncoderOnFiles : public ::testing::Test
{
protected:
    EncoderOnFiles()
        : engine(std::make_unique<SoundMp3EncoderEngine>())
    {
        QObject::connect(engine.get(), &Mp3EncoderEngine::EncodePercent,
                         [this](int percent) { percents.push_back(percent); });
    }

    void choose(const QString& input, const QString& output)
    {
        engine->InputFile(files.path(input));
        engine->OutputFile(files.path(output));
    }

    auto done() const { return std::count(percents.begin(), percents.end(), 100); }

    /// Whether so many encodings in all come to a good end.
    bool waitFor(int encodings)
    {
        return eventually([&] { return done() >= encodings; });
    }

    /// What a whole encoding with the properties as they are makes of the input; empty where it fails.
    QByteArray encoded()
    {
        const auto before = static_cast<int>(done());
        if (!engine->Encode() || !waitFor(before + 1))
            return {};
        return contentOf(output);
    }

    QByteArray encoded(const QString& input)
    {
        engine->InputFile(input);
        engine->OutputFile(output);
        return encoded();
    }

    QStringList everything() const
    {
        return QDir(files.folder())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    const SoundFiles files;
    const QString output = files.path("out.mp3");
    std::unique_ptr<SoundMp3EncoderEngine> engine;
    std::vector<int> percents;
};

}  // namespace sound::test

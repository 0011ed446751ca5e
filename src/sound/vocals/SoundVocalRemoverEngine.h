#pragma once

#include "engines/VocalRemoverEngine.h"
#include "sound/vocals/RemovalsUnderWay.h"

#include <algorithm>
#include <memory>

namespace sound {

/// What the two engines have in common. A removal uses all cores, and yields to all that plays or is worked on
/// meanwhile.
///
/// Samples that are no finite numbers are silence. A file may be its own output, and is then left alone where the
/// job fails.
///
/// An engine may be destroyed by a slot of ProcessPercent: its removals then return as GivenUp as soon as they can,
/// and tell nothing more.
template <typename Contract>
class SoundVocalRemover : public Contract
{
public:
    ~SoundVocalRemover() override { removals->abandon(); }

    void InputFile(const QString& path) override { settings.input = path; }
    void OutputFile(const QString& path) override { settings.output = path; }
    void LowCutOff(int frequency) override { settings.place.lowCutOff = frequency; }
    void HighCutOff(int frequency) override { settings.place.highCutOff = frequency; }

    VocalRemoval RemoveVocals() override
    {
        const auto kept = removals;  // beyond this engine's end
        return kept->run(settings, [this](short percent) { emit this->ProcessPercent(percent); });
    }

    void GiveUp() override { removals->giveUp(); }

protected:
    RemovalSettings settings;

private:
    std::shared_ptr<RemovalsUnderWay> removals = std::make_shared<RemovalsUnderWay>();
};

class SoundVocalRemoverEngine : public SoundVocalRemover<VocalRemoverEngine>
{
};

class SoundVocalRemoverExtendedEngine : public SoundVocalRemover<VocalRemoverExtendedEngine>
{
public:
    void VocalPan(int pan) override { settings.place.pan = std::clamp(pan, -100, 100); }
};

}  // namespace sound

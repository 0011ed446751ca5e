#pragma once

#include "engines/VocalRemoverEngine.h"

#include <QElapsedTimer>

/// A remover that takes its time and removes nothing: for looking at the window.
template <typename Engine>
class SlowRemover : public Engine
{
public:
    void InputFile(const QString&) override {}
    void OutputFile(const QString&) override {}
    void LowCutOff(int) override {}
    void HighCutOff(int) override {}

    VocalRemoval RemoveVocals() override
    {
        constexpr int milliseconds = 5000;
        givenUp = false;
        QElapsedTimer sinceStart;
        sinceStart.start();
        while (!givenUp && sinceStart.elapsed() < milliseconds)
            emit this->ProcessPercent(static_cast<short>(100 * sinceStart.elapsed() / milliseconds));
        return givenUp ? VocalRemoval::GivenUp : VocalRemoval::Done;
    }

    void GiveUp() override { givenUp = true; }

private:
    bool givenUp = false;
};

using FakeVocalRemoverEngine = SlowRemover<VocalRemoverEngine>;

class FakeVocalRemoverExtendedEngine : public SlowRemover<VocalRemoverExtendedEngine>
{
public:
    void VocalPan(int) override {}
};

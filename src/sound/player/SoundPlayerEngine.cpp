#include "sound/player/SoundPlayerEngine.h"

#include "sound/media/DecodedSound.h"
#include "sound/player/EqualizerFile.h"
#include "sound/player/EqualizerPresets.h"
#include "sound/player/Player.h"
#include "sound/player/RangeExport.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace sound {
namespace {

using namespace std::chrono_literals;

constexpr auto pollInterval = 20ms;

short percentOf(FrameCount part, FrameCount whole)
{
    return whole.value > 0 ? static_cast<short>(part.value * 100 / whole.value) : short{100};
}

}  // namespace

struct SoundPlayerEngine::Slot
{
    explicit Slot(const RenderThread::MakeOutput& makeOutput)
        : player(makeOutput)
    {
    }

    Player player;
    std::shared_ptr<DecodedSound> sound;
    bool metered = false;
    bool metering = false;  // levels above 0 were reported last
    bool reportsDecoding = false;
    short decodedPercent = -1;
    std::unique_ptr<RangeExport> rangeExport;
    short exportedPercent = -1;
};

SoundPlayerEngine::SoundPlayerEngine(RenderThread::MakeOutput make)
    : makeOutput(std::move(make))
{
    pollTimer.setInterval(pollInterval);
    pollTimer.setTimerType(Qt::PreciseTimer);
    connect(&pollTimer, &QTimer::timeout, this, &SoundPlayerEngine::poll);
}

SoundPlayerEngine::~SoundPlayerEngine() = default;

int SoundPlayerEngine::fail(EngineError error) const
{
    lastError = error;
    return code(error);
}

int SoundPlayerEngine::succeed() const
{
    return fail(EngineError::None);
}

SoundPlayerEngine::Slot* SoundPlayerEngine::slotOf(short player) const
{
    if (player >= 0 && static_cast<size_t>(player) < players.size()) {
        succeed();
        return players[static_cast<size_t>(player)].get();
    }
    fail(players.empty() ? EngineError::NotInitialized : EngineError::InvalidPlayer);
    return nullptr;
}

SoundPlayerEngine::Slot* SoundPlayerEngine::loadedSlotOf(short player) const
{
    Slot* slot = slotOf(player);
    if (slot == nullptr || slot->sound)
        return slot;
    fail(EngineError::NoSoundLoaded);
    return nullptr;
}

void SoundPlayerEngine::InitPlayers(short count, int /*owner*/, short, short, short, short)
{
    if (!players.empty()) {
        fail(EngineError::AlreadyInitialized);
        return;
    }
    if (count < 1) {
        fail(EngineError::ParameterOutOfRange);
        return;
    }
    for (short player = 0; player < count; ++player)
        players.push_back(std::make_unique<Slot>(makeOutput));
    succeed();
}

int SoundPlayerEngine::LoadSound(short player, const QString& path)
{
    return load(player, path, false);
}

int SoundPlayerEngine::LoadSoundForExport(short player, const QString& path)
{
    return load(player, path, true);
}

int SoundPlayerEngine::load(short player, const QString& path, bool report)
{
    Slot* slot = slotOf(player);
    if (slot == nullptr)
        return code(lastError);
    OpenedSound opened = DecodedSound::open(path);
    if (!opened.sound)
        return fail(opened.error);

    const auto before = static_cast<Status>(GetPlayerStatus(player));
    slot->sound = std::move(opened.sound);
    slot->player.load(slot->sound);
    slot->reportsDecoding = report && !slot->rangeExport;
    slot->decodedPercent = -1;
    endedByCommand(player, before);
    watch();
    return succeed();
}

void SoundPlayerEngine::CloseSound(short player)
{
    Slot* slot = loadedSlotOf(player);
    if (slot == nullptr)
        return;
    const Status before = slot->player.status();
    slot->player.close();
    slot->sound.reset();
    slot->reportsDecoding = false;
    endedByCommand(player, before);
    watch();
}

// Events never come out of the call that causes them, but through the event loop.
void SoundPlayerEngine::started(short player, Status before)
{
    players[static_cast<size_t>(player)]->reportsDecoding = false;
    watch();
    if (before != Playing)
        QMetaObject::invokeMethod(
            this, [this, player] { emit SoundPlaying(player); }, Qt::QueuedConnection);
}

void SoundPlayerEngine::endedByCommand(short player, Status before)
{
    if (before == Playing || before == Paused)
        QMetaObject::invokeMethod(
            this, [this, player] { emit SoundStopped(player); }, Qt::QueuedConnection);
}

void SoundPlayerEngine::PlaySound(short player)
{
    Slot* slot = loadedSlotOf(player);
    if (slot == nullptr)
        return;
    const Status before = slot->player.status();
    slot->player.play();
    started(player, before);
}

void SoundPlayerEngine::PlaySoundRange(short player, int begin, int end, int repeat)
{
    Slot* slot = loadedSlotOf(player);
    if (slot == nullptr)
        return;
    const Status before = slot->player.status();
    if (slot->player.playWindow(begin, end, repeat != 0)) {
        started(player, before);
    } else {
        fail(EngineError::InvalidPosition);
        endedByCommand(player, before);
    }
}

int SoundPlayerEngine::PlaySoundSegment(short player, const int& begin, int end)
{
    Slot* slot = loadedSlotOf(player);
    if (slot == nullptr)
        return code(lastError);
    const Status before = slot->player.status();
    if (!slot->player.playWindow(begin, end, false)) {
        endedByCommand(player, before);
        return fail(EngineError::InvalidPosition);
    }
    started(player, before);
    return succeed();
}

void SoundPlayerEngine::PauseSound(short player)
{
    Slot* slot = loadedSlotOf(player);
    if (slot != nullptr && slot->player.status() == Playing)
        slot->player.pause();
}

void SoundPlayerEngine::ResumeSound(short player)
{
    Slot* slot = loadedSlotOf(player);
    if (slot == nullptr || slot->player.status() != Paused)
        return;
    slot->player.resume();
    started(player, Paused);
}

void SoundPlayerEngine::StopSound(short player)
{
    Slot* slot = loadedSlotOf(player);
    if (slot == nullptr)
        return;
    // A sound that has just come to its end finished; this call did not end it.
    if (slot->player.takeFinished())
        QMetaObject::invokeMethod(
            this, [this, player] { emit SoundFinished(player); }, Qt::QueuedConnection);
    const Status before = slot->player.status();
    slot->player.stop();
    endedByCommand(player, before);
}

void SoundPlayerEngine::SeekSound(short player, int position)
{
    if (Slot* slot = loadedSlotOf(player))
        slot->player.seek(position);
}

int SoundPlayerEngine::GetPosition(short player) const
{
    const Slot* slot = slotOf(player);
    return slot != nullptr ? slot->player.position() : 0;
}

int SoundPlayerEngine::GetDuration(short player) const
{
    const Slot* slot = slotOf(player);
    return slot != nullptr ? slot->player.duration() : 0;
}

int SoundPlayerEngine::GetPlayerStatus(short player) const
{
    const Slot* slot = slotOf(player);
    return slot != nullptr ? slot->player.status() : Empty;
}

template <typename Change>
void SoundPlayerEngine::changeSettings(short player, Change change)
{
    Slot* slot = slotOf(player);
    if (slot == nullptr)
        return;
    Settings settings = slot->player.settings();
    change(settings);
    slot->player.change(settings);
}

void SoundPlayerEngine::ChangeTempo(short player, float percent)
{
    changeSettings(player, [&](Settings& settings) { settings.changes.tempo = speedFactor(percent); });
}

void SoundPlayerEngine::ChangeRate(short player, float percent)
{
    changeSettings(player, [&](Settings& settings) { settings.changes.rate = speedFactor(percent); });
}

void SoundPlayerEngine::ChangePitchSemitones(short player, short semitones)
{
    ChangePitchCents(player, semitones);
}

void SoundPlayerEngine::ChangePitchCents(short player, float semitones)
{
    changeSettings(player, [&](Settings& settings) { settings.changes.pitch = pitchFactor(semitones); });
}

void SoundPlayerEngine::SetGain(short player, short gain)
{
    changeSettings(player, [&](Settings& settings) { settings.gain = gain; });
}

void SoundPlayerEngine::SetBalance(short player, short balance)
{
    changeSettings(player, [&](Settings& settings) { settings.balance = balance; });
}

void SoundPlayerEngine::EnableEqualizer(bool enabled)
{
    for (size_t player = 0; player < players.size(); ++player)
        changeSettings(static_cast<short>(player),
                       [&](Settings& settings) { settings.equalizer.enabled = enabled; });
}

void SoundPlayerEngine::AddEqualizerBand(short player, float frequency, float bandwidth, float gain)
{
    changeSettings(player, [&](Settings& settings) {
        if (!addBand(settings.equalizer, {frequency, bandwidth, gain}))
            fail(EngineError::ParameterOutOfRange);
    });
}

void SoundPlayerEngine::ChangeEqualizerBand(short player, float frequency, const float& gain)
{
    changeSettings(player, [&](Settings& settings) {
        if (EqualizerBand* band = findBand(settings.equalizer, frequency))
            band->gain = bandGain(gain);
        else
            fail(EngineError::EqualizerBandNotAvailable);
    });
}

short SoundPlayerEngine::GetEqualizerBandCount(short player) const
{
    const Slot* slot = slotOf(player);
    return slot != nullptr ? static_cast<short>(slot->player.settings().equalizer.count) : short{0};
}

float SoundPlayerEngine::GetEqualizerBandFrequency(short player, int band) const
{
    const Slot* slot = slotOf(player);
    if (slot == nullptr || band < 0 || static_cast<size_t>(band) >= slot->player.settings().equalizer.count)
        return 0;
    return slot->player.settings().equalizer.band[static_cast<size_t>(band)].frequency;
}

void SoundPlayerEngine::GetEqualizerBand(short player, float& frequency, float& bandwidth, float& gain) const
{
    const Slot* slot = slotOf(player);
    if (slot == nullptr)
        return;
    EqualizerBands bands = slot->player.settings().equalizer;
    if (const EqualizerBand* band = findBand(bands, frequency)) {
        bandwidth = band->bandwidth;
        gain = band->gain;
    } else {
        fail(EngineError::EqualizerBandNotAvailable);
    }
}

void SoundPlayerEngine::ResetEqualizer(short player)
{
    changeSettings(player, [](Settings& settings) {
        for (EqualizerBand& band : settings.equalizer.band)
            band.gain = 0;
    });
}

void SoundPlayerEngine::LoadEqualizerPreset(short player, int preset)
{
    changeSettings(player, [&](Settings& settings) {
        if (preset < 0 || preset >= equalizerPresets) {
            fail(EngineError::ParameterOutOfRange);
            return;
        }
        for (EqualizerBand& band : std::span(settings.equalizer.band).first(settings.equalizer.count))
            band.gain = presetGain(preset, band.frequency);
        equalizerChanged(player);
    });
}

int SoundPlayerEngine::LoadEqualizerFile(short player, const QString& path)
{
    changeSettings(player, [&](Settings& settings) {
        if (fail(loadEqualizerFile(path, settings.equalizer)) == code(EngineError::None))
            equalizerChanged(player);
    });
    return code(lastError);
}

int SoundPlayerEngine::SaveEqualizerFile(short player, const QString& path)
{
    const Slot* slot = slotOf(player);
    return slot != nullptr ? fail(saveEqualizerFile(path, slot->player.settings().equalizer)) : code(lastError);
}

void SoundPlayerEngine::equalizerChanged(short player)
{
    QMetaObject::invokeMethod(
        this, [this, player] { emit EqualizerChanged(player); }, Qt::QueuedConnection);
}

int SoundPlayerEngine::ExportSoundRange(short player, const QString& path, int begin, const int& end)
{
    Slot* slot = loadedSlotOf(player);
    if (slot == nullptr)
        return code(lastError);
    if (slot->rangeExport)
        return fail(EngineError::PlayerBusy);

    const FramePosition soundEnd = endOf(slot->sound->length());
    const SampleRate rate = slot->sound->rate();
    const FramePosition first = std::clamp(frameAt(Milliseconds{begin}, rate), FramePosition{0}, soundEnd);
    const FramePosition last =
        end == -1 ? soundEnd : std::clamp(frameAt(Milliseconds{end}, rate), FramePosition{0}, soundEnd);
    if (last <= first)
        return fail(EngineError::InvalidPosition);
    slot->reportsDecoding = false;
    slot->exportedPercent = -1;
    slot->rangeExport = std::make_unique<RangeExport>(slot->sound, first, last, path);
    watch();
    return succeed();
}

int SoundPlayerEngine::LastError() const
{
    return code(lastError);
}

VuMeterControl& SoundPlayerEngine::VuMeter()
{
    return *this;
}

void SoundPlayerEngine::SetVuMeterMode(short player, short mode)
{
    if (slotOf(player) != nullptr && mode != 0)
        fail(EngineError::ParameterOutOfRange);
}

void SoundPlayerEngine::EnableVuMeter(short player, short enabled)
{
    if (Slot* slot = slotOf(player))
        slot->metered = enabled != 0;
}

// Polled while there is something to tell; otherwise the engine sleeps.
void SoundPlayerEngine::watch()
{
    if (!pollTimer.isActive())
        pollTimer.start();
}

void SoundPlayerEngine::poll()
{
    bool busy = false;
    for (size_t index = 0; index < players.size(); ++index) {
        const auto player = static_cast<short>(index);
        Slot& slot = *players[index];
        if (slot.player.takeFinished())
            emit SoundFinished(player);
        pollMeter(player, slot);
        pollDecoding(player, slot);
        pollExport(player, slot);
        busy = busy || slot.player.busy() || slot.metering || slot.reportsDecoding || slot.rangeExport;
    }
    if (!busy)
        pollTimer.stop();
}

void SoundPlayerEngine::pollMeter(short player, Slot& slot)
{
    const Peaks peaks = slot.player.takePeaks();
    const short left = meterLevel(peaks.left);
    const short right = meterLevel(peaks.right);
    const bool sounds = left != 0 || right != 0;
    const bool playing = slot.player.status() == Playing;
    if (slot.metered && (playing || sounds || slot.metering))
        emit VuPeaks(player, left, right);
    slot.metering = sounds;
}

void SoundPlayerEngine::pollDecoding(short player, Slot& slot)
{
    if (!slot.reportsDecoding)
        return;
    const short percent = percentOf(slot.sound->available(), slot.sound->length());
    if (percent != slot.decodedPercent) {
        slot.decodedPercent = percent;
        emit ConversionPercent(player, percent);
    }
    if (!slot.reportsDecoding || !slot.sound || !slot.sound->finished())
        return;
    slot.reportsDecoding = false;
    const EngineError error = slot.sound->decodeError();
    lastError = error;
    emit ConversionDone(player, error == EngineError::None ? 1 : 0);
}

void SoundPlayerEngine::pollExport(short player, Slot& slot)
{
    if (!slot.rangeExport)
        return;
    const bool done = slot.rangeExport->finished();
    const short percent = slot.rangeExport->percent();
    if (percent != slot.exportedPercent) {
        slot.exportedPercent = percent;
        emit ConversionPercent(player, percent);
    }
    if (!done || !slot.rangeExport)
        return;
    const EngineError error = slot.rangeExport->error();
    slot.rangeExport.reset();
    lastError = error;
    emit ConversionDone(player, error == EngineError::None ? 1 : 0);
}

}  // namespace sound

#include "moc_SoundPlayerEngine.cpp"

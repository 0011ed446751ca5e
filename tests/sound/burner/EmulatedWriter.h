#pragma once

#include "sound/burner/KernelNews.h"
#include "sound/burner/WriterReplies.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <span>
#include <string>
#include <vector>

/// A CD writer that is none: while there is one, /dev/sr0 leads to it, for this process and what is linked to it.
/// It answers the commands that libburn sends to drives (those of the multimedia command set that concern CDs), and
/// keeps what is written.
///
/// **Threads.** Any.
class EmulatedWriter
{
public:
    using Bytes = writerreplies::Bytes;

    struct Sense
    {
        std::uint8_t key = 0;
        std::uint8_t code = 0;
        std::uint8_t qualifier = 0;
    };

    enum class Disc
    {
        None,
        BlankCd,
        WrittenCd,
        BlankDvd,
    };

    static constexpr const char* address = "/dev/sr0";
    static constexpr int latestLeadOut = (79 * 60 + 59) * 75 + 74 - 150;
    static constexpr int leadInStart = -11077;  // 97:34:23

    /// The pause of two seconds, and the run-out of the track before it.
    static constexpr int sectorsBetweenTracks = 150 + 2;

    EmulatedWriter();
    ~EmulatedWriter();
    EmulatedWriter(const EmulatedWriter&) = delete;
    EmulatedWriter& operator=(const EmulatedWriter&) = delete;

    /// To be changed only while nobody asks.
    WriterAbilities abilities;

    // What is done to it.
    void insert(Disc disc);  // another one; the tray is closed behind it
    void moveTray(bool open);
    void fillDisc(int sectors);
    void setCapacity(int sectors);
    void letAnotherProgramUseIt(bool used);
    void letAnotherProgramTakeItAfter(int openings);
    void letKernelTell(KernelNews::Kind kind);
    void letKernelTellStatus(int status);  // -1 is a failure
    void failWriteAt(int sector, Sense sense);
    void pullOutAt(int sector);
    void pullOutAfter(int commands);
    void plugInAgain();
    void writeSlowly(int millisecondsPerCommand);
    void beforeFinishing(std::function<void()> call);

    // What has become of it.
    Disc disc() const;
    int openHandles() const;
    int openings() const;  // until now, without those that were refused
    bool isLocked() const;
    bool isOpen() const;
    int commandsOf(std::uint8_t operation) const;
    int commandsOfAll() const;
    Bytes cueSheet() const;

    /// The page of write parameters, its head included, that was in force when the last sector was written.
    Bytes writeParameters() const;
    int writeSpeed() const;

    /// All sectors that were written from this one on.
    Bytes written(int fromSector, int sectors, std::size_t bytesPerSector) const;
    int firstWritten() const;
    int endOfWritten() const;

    // For the system calls that lead here.
    static EmulatedWriter* current();
    int open(int flags);
    static bool owns(int file);
    int control(unsigned long request, void* argument);

private:
    struct Command
    {
        std::span<const std::uint8_t> words;
        std::span<std::uint8_t> in;         // from the drive
        std::span<const std::uint8_t> out;  // to it
    };

    bool hasDisc() const { return loaded != Disc::None && !trayOpen; }
    int status() const;
    bool execute(const Command& command, Sense& sense);
    int profile() const;
    int nextSector() const;
    bool write(const Command& command, Sense& sense);
    void finishSession();
    bool isTest() const;

    mutable std::mutex lock;
    Disc loaded = Disc::BlankCd;
    int room = latestLeadOut;
    int filled = 0;
    bool usedElsewhere = false;
    int openingsUntilTaken = -1;
    int opened = 0;
    KernelNews news;
    bool gone = false;
    bool locked = false;
    bool trayOpen = false;
    int failingSector = -1;
    Sense failure;
    int pulledSector = -1;
    int commandsUntilPulled = -1;
    int delay = 0;
    std::function<void()> atEnd = [] {};
    int speed = -1;
    std::map<int, int> commands;
    Bytes cues;
    Bytes parameters;
    Bytes usedParameters;
    std::map<int, Bytes> sectors;
};

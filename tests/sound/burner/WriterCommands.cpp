// What the emulated writer does when it is sent a command.

#include "sound/burner/EmulatedWriter.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

using Bytes = EmulatedWriter::Bytes;

constexpr EmulatedWriter::Sense unknownCommand{5, 0x20, 0};
constexpr EmulatedWriter::Sense noDisc{2, 0x3a, 0};

std::int32_t number(std::span<const std::uint8_t> bytes, std::size_t at)
{
    return static_cast<std::int32_t>((bytes[at] << 24U) | (bytes[at + 1] << 16U) | (bytes[at + 2] << 8U) |
                                     bytes[at + 3]);
}

}  // namespace

bool EmulatedWriter::isTest() const
{
    return parameters.size() > 10 && (parameters[10] & 0x10) != 0;
}

int EmulatedWriter::profile() const
{
    constexpr int cdR = 0x09;
    constexpr int dvdR = 0x11;
    return !hasDisc() ? 0 : loaded == Disc::BlankDvd ? dvdR : cdR;
}

int EmulatedWriter::nextSector() const
{
    return sectors.empty() ? 0 : std::max(sectors.rbegin()->first + 1 + sectorsBetweenTracks, 0);
}

bool EmulatedWriter::write(const Command& command, Sense& sense)
{
    const int first = number(command.words, 2);
    const int count = (command.words[7] << 8) | command.words[8];
    if (delay > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(delay));
    if (pulledSector >= 0 && first + count > pulledSector) {
        gone = true;
        return false;
    }
    if (failingSector >= 0 && first + count > failingSector) {
        sense = failure;
        return false;
    }
    const std::size_t size = command.out.size() / static_cast<std::size_t>(count);
    for (int i = 0; i < count; ++i) {
        const auto sector = command.out.subspan(static_cast<std::size_t>(i) * size, size);
        sectors[first + i] = Bytes(sector.begin(), sector.end());
    }
    usedParameters = parameters;
    return true;
}

// The disc is as it was before, when all was a test.
void EmulatedWriter::finishSession()
{
    atEnd();
    if (isTest() || sectors.empty())
        return;
    loaded = Disc::WrittenCd;
    filled = sectors.rbegin()->first + 1;
}

bool EmulatedWriter::execute(const Command& command, Sense& sense)
{
    using namespace writerreplies;
    const auto& words = command.words;
    const std::uint8_t operation = words[0];
    ++commands[operation];
    const auto reply = [&](const Bytes& bytes) {
        std::copy_n(bytes.begin(), std::min(bytes.size(), command.in.size()), command.in.begin());
        if (bytes.empty())
            sense = {5, 0x24, 0};
        return !bytes.empty();
    };
    const auto onlyWithDisc = [&] {
        if (!hasDisc())
            sense = noDisc;
        return hasDisc();
    };
    switch (operation) {
    case 0x00:  // test unit ready
        return onlyWithDisc();
    case 0x12:
        return reply(writerreplies::inquiry());
    case 0x1b:  // start or stop, open or close
        if ((words[4] & 2) != 0) {
            trayOpen = (words[4] & 1) == 0;
            news.noteChange();
        }
        return true;
    case 0x1e:  // prevent or allow removal
        locked = (words[4] & 1) != 0;
        return true;
    case 0x25:  // read capacity
        return onlyWithDisc() && reply(capacity(filled));
    case 0x2a:
        return onlyWithDisc() && write(command, sense);
    case 0x35:  // synchronize cache
        if (parameters.size() > 10 && (parameters[10] & 0x0f) == 2)
            finishSession();
        return true;
    case 0x43:
        return onlyWithDisc() && reply(tableOfContents(words[2] & 0x0f, filled));
    case 0x46:
        return reply(configuration(profile(), abilities));
    case 0x51:
        return onlyWithDisc() && reply(discInformation(loaded != Disc::WrittenCd, leadInStart, room));
    case 0x52:
        return onlyWithDisc() && reply(trackInformation(nextSector(), room - nextSector()));
    case 0x55:  // mode select
        parameters.assign(command.out.begin(), command.out.end());
        return true;
    case 0x5a:
        return reply(modeSense(words[2] & 0x3f, abilities));
    case 0x5b:  // close track or session
        if ((words[2] & 7) == 2)
            finishSession();
        return true;
    case 0x5c:  // buffer capacity
        return reply(emptyBuffer());
    case 0x5d:  // cue sheet
        cues.assign(command.out.begin(), command.out.end());
        return true;
    case 0xac:
        return reply(performance(words[10], room, abilities));
    case 0xbb:  // speed
        speed = (words[4] << 8) | words[5];
        return true;
    default:
        sense = unknownCommand;
        return false;
    }
}

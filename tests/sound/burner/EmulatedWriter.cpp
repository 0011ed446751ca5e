#include "sound/burner/EmulatedWriter.h"

#include <fcntl.h>
#include <linux/cdrom.h>
#include <scsi/sg.h>
#include <sys/mman.h>
#include <unistd.h>
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>
#include <utility>

namespace {

using Bytes = EmulatedWriter::Bytes;

std::atomic<EmulatedWriter*> existing = nullptr;

constexpr const char* handleName = "emulated-writer";
constexpr EmulatedWriter::Sense unknownCommand{5, 0x20, 0};
constexpr EmulatedWriter::Sense noDisc{2, 0x3a, 0};
constexpr unsigned long placeOnBus = 0x5382;
constexpr unsigned long numberOfBus = 0x5386;

std::int32_t number(std::span<const std::uint8_t> bytes, std::size_t at)
{
    return static_cast<std::int32_t>((bytes[at] << 24U) | (bytes[at + 1] << 16U) | (bytes[at + 2] << 8U) |
                                     bytes[at + 3]);
}

std::string linkOf(const std::filesystem::path& file)
{
    std::error_code failed;
    return std::filesystem::read_symlink(file, failed).string();
}

bool leadsToWriter(const std::string& link)
{
    return link.find(handleName) != std::string::npos;
}

}  // namespace

EmulatedWriter::EmulatedWriter()
{
    existing = this;
}

EmulatedWriter::~EmulatedWriter()
{
    existing = nullptr;
}

EmulatedWriter* EmulatedWriter::current()
{
    return existing;
}

bool EmulatedWriter::owns(int file)
{
    return leadsToWriter(linkOf("/proc/self/fd/" + std::to_string(file)));
}

void EmulatedWriter::insert(Disc disc)
{
    const std::lock_guard<std::mutex> alone(lock);
    loaded = disc;
    sectors.clear();
    cues.clear();
}

void EmulatedWriter::fillDisc(int count)
{
    const std::lock_guard<std::mutex> alone(lock);
    loaded = Disc::WrittenCd;
    filled = count;
}

void EmulatedWriter::setCapacity(int count)
{
    const std::lock_guard<std::mutex> alone(lock);
    room = count;
}

void EmulatedWriter::letAnotherProgramUseIt(bool used)
{
    const std::lock_guard<std::mutex> alone(lock);
    usedElsewhere = used;
}

void EmulatedWriter::failWriteAt(int sector, Sense sense)
{
    const std::lock_guard<std::mutex> alone(lock);
    failingSector = sector;
    failure = sense;
}

void EmulatedWriter::pullOutAt(int sector)
{
    const std::lock_guard<std::mutex> alone(lock);
    pulledSector = sector;
}

void EmulatedWriter::writeSlowly(int millisecondsPerCommand)
{
    const std::lock_guard<std::mutex> alone(lock);
    delay = millisecondsPerCommand;
}

void EmulatedWriter::beforeFinishing(std::function<void()> call)
{
    const std::lock_guard<std::mutex> alone(lock);
    atEnd = std::move(call);
}

EmulatedWriter::Disc EmulatedWriter::disc() const
{
    const std::lock_guard<std::mutex> alone(lock);
    return loaded;
}

int EmulatedWriter::openHandles() const
{
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator("/proc/self/fd"))
        count += leadsToWriter(linkOf(file.path())) ? 1 : 0;
    return count;
}

bool EmulatedWriter::isLocked() const
{
    const std::lock_guard<std::mutex> alone(lock);
    return locked;
}

bool EmulatedWriter::isOpen() const
{
    const std::lock_guard<std::mutex> alone(lock);
    return trayOpen;
}

int EmulatedWriter::commandsOf(std::uint8_t operation) const
{
    const std::lock_guard<std::mutex> alone(lock);
    const auto found = commands.find(operation);
    return found == commands.end() ? 0 : found->second;
}

Bytes EmulatedWriter::cueSheet() const
{
    const std::lock_guard<std::mutex> alone(lock);
    return cues;
}

Bytes EmulatedWriter::writeParameters() const
{
    const std::lock_guard<std::mutex> alone(lock);
    return usedParameters;
}

int EmulatedWriter::writeSpeed() const
{
    const std::lock_guard<std::mutex> alone(lock);
    return speed;
}

Bytes EmulatedWriter::written(int fromSector, int count, std::size_t bytesPerSector) const
{
    const std::lock_guard<std::mutex> alone(lock);
    Bytes bytes;
    for (int sector = fromSector; sector < fromSector + count; ++sector) {
        const auto found = sectors.find(sector);
        if (found != sectors.end() && found->second.size() == bytesPerSector)
            bytes.insert(bytes.end(), found->second.begin(), found->second.end());
    }
    return bytes;
}

int EmulatedWriter::firstWritten() const
{
    const std::lock_guard<std::mutex> alone(lock);
    return sectors.empty() ? 0 : sectors.begin()->first;
}

int EmulatedWriter::endOfWritten() const
{
    const std::lock_guard<std::mutex> alone(lock);
    return sectors.empty() ? 0 : sectors.rbegin()->first + 1;
}

int EmulatedWriter::open(int flags)
{
    const std::lock_guard<std::mutex> alone(lock);
    if (gone || (usedElsewhere && (flags & O_EXCL) != 0)) {
        errno = gone ? ENXIO : EBUSY;
        return -1;
    }
    return memfd_create(handleName, MFD_CLOEXEC);
}

int EmulatedWriter::control(unsigned long request, void* argument)
{
    if (request == CDROM_DRIVE_STATUS)
        return CDS_DISC_OK;
    if (request == placeOnBus || request == numberOfBus) {
        *static_cast<int*>(argument) = 0;
        return 0;
    }
    if (request != SG_IO) {
        errno = ENOTTY;
        return -1;
    }
    auto& io = *static_cast<sg_io_hdr_t*>(argument);
    auto* const data = static_cast<std::uint8_t*>(io.dxferp);
    Command command{{io.cmdp, io.cmd_len}, {}, {}};
    if (io.dxfer_direction == SG_DXFER_FROM_DEV)
        command.in = {data, io.dxfer_len};
    else if (io.dxfer_direction == SG_DXFER_TO_DEV)
        command.out = {data, io.dxfer_len};

    const std::lock_guard<std::mutex> alone(lock);
    Sense sense;
    const bool good = !gone && execute(command, sense);
    if (gone) {
        errno = ENODEV;
        return -1;
    }
    io.status = good ? 0 : 2;
    io.host_status = 0;
    io.driver_status = good ? 0 : 8;
    io.sb_len_wr = 0;
    io.resid = 0;
    if (!good && io.mx_sb_len >= 18) {
        const std::uint8_t told[18] = {0x70, 0,          sense.key,       0, 0, 0, 0, 10, 0, 0, 0,
                                       0,    sense.code, sense.qualifier, 0, 0, 0, 0};
        std::copy(std::begin(told), std::end(told), io.sbp);
        io.sb_len_wr = sizeof(told);
    }
    return 0;
}

bool EmulatedWriter::isTest() const
{
    return parameters.size() > 10 && (parameters[10] & 0x10) != 0;
}

int EmulatedWriter::profile() const
{
    constexpr int cdR = 0x09;
    constexpr int dvdR = 0x11;
    return loaded == Disc::None ? 0 : loaded == Disc::BlankDvd ? dvdR : cdR;
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
        if (loaded == Disc::None)
            sense = noDisc;
        return loaded != Disc::None;
    };
    switch (operation) {
    case 0x00:  // test unit ready
        return onlyWithDisc();
    case 0x12:
        return reply(inquiry());
    case 0x1b:  // start or stop, open or close
        if ((words[4] & 3) == 2)
            trayOpen = true;
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

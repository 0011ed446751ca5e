#include "sound/burner/EmulatedWriter.h"

#include <fcntl.h>
#include <linux/cdrom.h>
#include <scsi/sg.h>
#include <sys/mman.h>
#include <unistd.h>
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <utility>

namespace {

using Bytes = EmulatedWriter::Bytes;

std::atomic<EmulatedWriter*> existing = nullptr;

constexpr const char* handleName = "emulated-writer";
constexpr unsigned long placeOnBus = 0x5382;
constexpr unsigned long numberOfBus = 0x5386;

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
    trayOpen = false;
    news.noteChange();
    sectors.clear();
    cues.clear();
}

void EmulatedWriter::moveTray(bool open)
{
    const std::lock_guard<std::mutex> alone(lock);
    trayOpen = open;
    news.noteChange();
}

void EmulatedWriter::fillDisc(int count)
{
    const std::lock_guard<std::mutex> alone(lock);
    loaded = Disc::WrittenCd;
    filled = count;
    news.noteChange();
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

void EmulatedWriter::letAnotherProgramTakeItAfter(int count)
{
    const std::lock_guard<std::mutex> alone(lock);
    openingsUntilTaken = count;
}

void EmulatedWriter::letKernelTell(KernelNews::Kind kind)
{
    const std::lock_guard<std::mutex> alone(lock);
    news.set(kind);
}

void EmulatedWriter::letKernelTellStatus(int told)
{
    const std::lock_guard<std::mutex> alone(lock);
    news.setStatus(told);
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

void EmulatedWriter::pullOutAfter(int count)
{
    const std::lock_guard<std::mutex> alone(lock);
    commandsUntilPulled = count;
}

void EmulatedWriter::plugInAgain()
{
    const std::lock_guard<std::mutex> alone(lock);
    gone = false;
    locked = false;
    commandsUntilPulled = -1;
    news.noteChange();
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

int EmulatedWriter::openings() const
{
    const std::lock_guard<std::mutex> alone(lock);
    return opened;
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

int EmulatedWriter::commandsOfAll() const
{
    const std::lock_guard<std::mutex> alone(lock);
    int all = 0;
    for (const auto& [operation, count] : commands)
        all += count;
    return all;
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
    if (openingsUntilTaken == 0)
        usedElsewhere = true;
    if (gone || (usedElsewhere && (flags & O_EXCL) != 0)) {
        errno = gone ? ENXIO : EBUSY;
        return -1;
    }
    ++opened;
    if (openingsUntilTaken > 0)
        --openingsUntilTaken;
    return memfd_create(handleName, MFD_CLOEXEC);
}

int EmulatedWriter::status() const
{
    return trayOpen ? CDS_TRAY_OPEN : loaded == Disc::None ? CDS_NO_DISC : CDS_DISC_OK;
}

int EmulatedWriter::control(unsigned long request, void* argument)
{
    const std::lock_guard<std::mutex> alone(lock);
    if (request == CDROM_DRIVE_STATUS)
        return news.tellStatus(status());
    if (request == CDROM_TIMED_MEDIA_CHANGE || request == CDROM_MEDIA_CHANGED)
        return news.tellChange(request, argument);
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

    if (commandsUntilPulled == 0)
        gone = true;
    else if (commandsUntilPulled > 0)
        --commandsUntilPulled;
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

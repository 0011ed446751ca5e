#include "sound/media/AvHandles.h"

namespace sound {

AvIo makeAvIo(void* self, AvTransfer read, AvTransfer write, AvSeek seek)
{
    constexpr int bufferSize = 64 * 1024;
    auto* buffer = static_cast<unsigned char*>(av_malloc(bufferSize));
    if (buffer == nullptr)
        return nullptr;
    AvIo io(avio_alloc_context(buffer, bufferSize, write != nullptr ? 1 : 0, self, read, write, seek));
    if (!io)
        av_free(buffer);
    return io;
}

int refuseToOpen(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**)
{
    return AVERROR(EACCES);
}

void silenceAvLibrary()
{
    static const bool silenced = [] {
        av_log_set_level(AV_LOG_QUIET);
        return true;
    }();
    static_cast<void>(silenced);
}

}  // namespace sound

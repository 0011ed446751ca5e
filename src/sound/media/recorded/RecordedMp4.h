#pragma once

#include "sound/media/AvHandles.h"
#include "sound/media/AvOutput.h"
#include "sound/media/recorded/RecordedContainer.h"

#include <cstdint>
#include <vector>

namespace sound {

/// An MP4 file that is made of fragments of half a second while it grows, each with its own index, and has one
/// index of the whole once it is finished. Inside this folder only.
///
/// The index is written behind the fragments, and then, with a single write, all between it and the file's first
/// box is declared to be media. So there is no moment in which the file is neither the one nor the other; and
/// players that make little of fragments get a file like any other.
class RecordedMp4 : public RecordedContainer
{
public:
    static std::unique_ptr<RecordedMp4> begin(GrowingFile& file, const AVCodecContext& codec);

    bool add(AVPacket& packet) override;
    bool finish() override;

private:
    /// Lets through to the file what is written from a place on, and drops all before it.
    class Behind : public OutputFile
    {
    public:
        explicit Behind(GrowingFile& file);
        void from(std::int64_t place) { begin = place; }
        bool writeAt(std::int64_t offset, std::span<const std::byte> bytes) override;

    private:
        GrowingFile& file;
        std::int64_t begin;
    };

    RecordedMp4(GrowingFile& file, const AVCodecContext& codec);

    bool writeHeads();
    bool endFragment();
    bool enterIntoIndex(std::int64_t end);
    bool writeEmpty();
    bool writeIndex();
    bool declareMedia();
    bool goBack();

    GrowingFile& file;
    const AVCodecContext& codec;
    std::unique_ptr<AvOutput> fragments;
    Behind behindFragments;
    std::unique_ptr<AvOutput> index;  // is given all packets too, but only its index is kept
    std::vector<AvPacket> fragment;   // under way
    std::int64_t framesInFragment = 0;
    std::int64_t kept = 0;  // bytes of the file, up to the end of a fragment
    bool failed = false;
};

}  // namespace sound

#pragma once

#include <cstdint>
#include <vector>

/// What a CD writer can.
struct WriterAbilities
{
    bool writesCds = true;
    bool writesTests = true;
    bool protectsFromUnderrun = true;
    bool writesSubchannels = true;
    std::vector<int> measuredSpeeds{8467, 7056, 4234, 706};
};

/// What drives answer to commands of the multimedia command set, as bytes.
namespace writerreplies {

using Bytes = std::vector<std::uint8_t>;

Bytes inquiry();

/// Nothing for pages that it does not have.
Bytes modeSense(int page, const WriterAbilities& writer);

/// @p profile is what is in it: 0x09 for a CD-R, 0x11 for a DVD-R, 0 for nothing.
Bytes configuration(int profile, const WriterAbilities& writer);

// Places on a disc are in sectors from the begin of its program.
Bytes discInformation(bool blank, int leadIn, int latestLeadOut);
Bytes trackInformation(int next, int room);
Bytes tableOfContents(int format, int leadOut);
Bytes performance(int type, int sectors, const WriterAbilities& writer);
Bytes capacity(int sectors);
Bytes emptyBuffer();

/// The text packs that are in the subchannels of a lead-in.
Bytes textPacks(const Bytes& subchannels);

}  // namespace writerreplies

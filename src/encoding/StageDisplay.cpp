#include "encoding/StageDisplay.h"

#include "encoding/DiscWriteTexts.h"
#include "engines/DiscEngine.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr StageDisplay displays[] = {
    {DiscStage::Preparing, "Preparing Image....", false, false, false},
    {DiscStage::CachingImage, "Caching Image... Track# ", true, true, true},
    {DiscStage::Caching, "Caching... Track# ", true, true, false},
    {DiscStage::Writing, "Writing Image... Track# ", true, true, true},
    {DiscStage::ClosingTrack, "Closing Track....", false, false, false},
    {DiscStage::LeadIn, "Writing Lead-in....", false, true, false},
    {DiscStage::LeadOut, "Writing Lead-out....", false, true, false},
    {DiscStage::UpdatingVolume, "Updating Volume....", false, false, false},
    {DiscStage::Completed, "Write Completed!", false, false, false},
    {DiscStage::Cancelled, "Write Cancelled....", false, false, false},
    {DiscStage::Failed, "Write Error!", false, false, false},
};

}  // namespace

QString StageDisplay::status(int track) const
{
    const QString shown = QString::fromLatin1(text);
    return endsInTrackNumber ? shown + trackNumberText(track) : shown;
}

const StageDisplay* StageDisplay::of(DiscStage stage)
{
    const auto* found = std::ranges::find(displays, stage, &StageDisplay::stage);
    return found == std::end(displays) ? nullptr : found;
}

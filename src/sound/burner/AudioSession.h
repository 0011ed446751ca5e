#pragma once

#include "sound/disc/DiscPlan.h"

#include <memory>

namespace burn {
struct burn_disc;
struct burn_session;
}  // namespace burn

namespace sound {

class FeedBytes;
struct CdText;

/// A plan as libburn takes it: a disc of one session, whose tracks all come from one feed, one after the other.
///
/// Between the tracks is what the way of writing puts there: nothing when the disc is written at once, and the
/// drive's own two seconds when the tracks are written one by one.
class AudioSession
{
public:
    AudioSession(const DiscPlan& plan, const std::shared_ptr<FeedBytes>& bytes);

    /// False where libburn does not take it, and there is no text then. Only for discs that are written at once.
    bool addText(const CdText& text);

    burn::burn_disc* disc() const { return wholeDisc.get(); }
    burn::burn_session* session() const { return onlySession.get(); }

private:
    struct Free
    {
        void operator()(burn::burn_disc* disc) const;
        void operator()(burn::burn_session* session) const;
    };

    std::unique_ptr<burn::burn_disc, Free> wholeDisc;
    std::unique_ptr<burn::burn_session, Free> onlySession;
};

}  // namespace sound

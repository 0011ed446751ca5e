#pragma once

#include "sound/disc/DiscPlan.h"

#include <QByteArray>
#include <vector>

namespace sound {

/// The texts of a disc as its lead-in has room for: first that of the disc, then those of the tracks. A list that
/// would tell nothing is empty.
struct CdText
{
    std::vector<QByteArray> titles;
    std::vector<QByteArray> performers;

    bool isEmpty() const { return titles.empty() && performers.empty(); }
};

/// ISO 8859-1. Where there is not enough room, the longest texts are cut, all to the same length.
CdText cdText(const DiscPlan& plan);

}  // namespace sound

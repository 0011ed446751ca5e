#include "sound/burner/CdText.h"

#include "sound/burner/LatinText.h"

#include <algorithm>

namespace sound {

namespace {

using Lines = std::vector<QByteArray>;

// The lead-in counts its packs in a byte, and three of them tell of the others.
constexpr int mostPacks = 256 - 3;
constexpr int bytesOfPack = 12;

// No display shows more, and no standard allows it.
constexpr int longestText = 160;

int packsOf(const Lines& lines, int longest)
{
    int bytes = 0;
    for (const QByteArray& line : lines)
        bytes += std::min(static_cast<int>(line.size()), longest) + 1;
    return (bytes + bytesOfPack - 1) / bytesOfPack;
}

Lines linesOf(const DiscPlan& plan, QString DiscTexts::*text)
{
    Lines lines{latinText(plan.texts.*text)};
    for (const DiscPlan::Track& track : plan.tracks)
        lines.push_back(latinText(track.texts.*text));
    if (std::all_of(lines.begin(), lines.end(), [](const QByteArray& line) { return line.isEmpty(); }))
        lines.clear();
    return lines;
}

void cut(Lines& lines, int longest)
{
    for (QByteArray& line : lines)
        line.truncate(longest);
}

}  // namespace

CdText cdText(const DiscPlan& plan)
{
    CdText text{linesOf(plan, &DiscTexts::title), linesOf(plan, &DiscTexts::performer)};
    int longest = longestText;
    while (packsOf(text.titles, longest) + packsOf(text.performers, longest) > mostPacks)
        --longest;
    cut(text.titles, longest);
    cut(text.performers, longest);
    return text;
}

}  // namespace sound

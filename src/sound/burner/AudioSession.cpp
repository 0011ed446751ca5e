#include "sound/burner/AudioSession.h"

#include "sound/burner/CdText.h"
#include "sound/burner/FeedBytes.h"

#include <libburn/libburn.h>

#include <cstdlib>
#include <new>
#include <optional>
#include <span>

namespace sound {

namespace {

/// What stands behind the source of a track: its part of all the bytes.
struct TrackBytes
{
    const std::shared_ptr<FeedBytes> bytes;
    const std::int64_t begin;
    const std::int64_t end;
};

const TrackBytes& trackOf(burn::burn_source* source)
{
    return *static_cast<const TrackBytes*>(source->data);
}

template <typename Thing>
Thing* made(Thing* thing)
{
    if (thing == nullptr)
        throw std::bad_alloc();
    return thing;
}

int readTrack(burn::burn_source* source, unsigned char* buffer, int size)
{
    const TrackBytes& track = trackOf(source);
    const std::span<unsigned char> wanted(buffer, static_cast<std::size_t>(size));
    const std::optional<std::size_t> count = track.bytes->read(std::as_writable_bytes(wanted), track.end);
    return count ? static_cast<int>(*count) : -1;
}

off_t sizeOfTrack(burn::burn_source* source)
{
    return trackOf(source).end - trackOf(source).begin;
}

// Only tracks that are too short are given another one.
int setSizeOfTrack(burn::burn_source*, off_t)
{
    return 0;
}

void freeTrack(burn::burn_source* source)
{
    delete static_cast<const TrackBytes*>(source->data);
}

int cancelTrack(burn::burn_source*)
{
    return 1;
}

// libburn frees what it is given, with free().
burn::burn_source* sourceOf(const TrackBytes& track)
{
    auto* const source = static_cast<burn::burn_source*>(made(std::calloc(1, sizeof(burn::burn_source))));
    source->refcount = 1;
    source->get_size = sizeOfTrack;
    source->set_size = setSizeOfTrack;
    source->free_data = freeTrack;
    source->data = new TrackBytes(track);
    source->version = 1;
    source->read_xt = readTrack;
    source->cancel = cancelTrack;
    return source;
}

void addTrack(burn::burn_session* session, burn::burn_source* source)
{
    constexpr int nothingBefore = 0;
    constexpr int nothingBehind = 0;
    constexpr int wholeSectors = 1;
    burn::burn_track* const track = made(burn::burn_track_create());
    burn::burn_track_define_data(track, nothingBefore, nothingBehind, wholeSectors, BURN_AUDIO);
    burn::burn_track_set_source(track, source);
    burn::burn_source_free(source);
    burn::burn_session_add_track(session, track, BURN_POS_END);
    burn::burn_track_free(track);
}

constexpr int title = 0x80;
constexpr int performer = 0x81;
constexpr int firstLanguage = 0;

// libburn takes plain bytes, with the one behind the text.
unsigned char* payload(QByteArray& text)
{
    return reinterpret_cast<unsigned char*>(text.data());
}

bool addLines(burn::burn_session* session, int kind, std::vector<QByteArray> lines)
{
    int count = 0;
    burn::burn_track** const tracks = burn::burn_session_get_tracks(session, &count);
    if (lines.size() != static_cast<std::size_t>(count) + 1)
        return lines.empty();
    bool good = burn::burn_session_set_cdtext(session, firstLanguage, kind, nullptr, payload(lines[0]),
                                              static_cast<int>(lines[0].size()) + 1, 0) > 0;
    for (int track = 0; track < count && good; ++track) {
        QByteArray& line = lines[static_cast<std::size_t>(track) + 1];
        good = burn::burn_track_set_cdtext(tracks[track], firstLanguage, kind, nullptr, payload(line),
                                           static_cast<int>(line.size()) + 1, 0) > 0;
    }
    return good;
}

bool setCharacters(burn::burn_session* session)
{
    constexpr int latin1 = 0x00;
    constexpr int copyrighted = 0x03;
    constexpr int english = 0x09;
    constexpr int same = -1;
    int characters[8] = {latin1, same, same, same, same, same, same, same};
    int copyrights[8] = {copyrighted, same, same, same, same, same, same, same};
    int languages[8] = {english, same, same, same, same, same, same, same};
    return burn::burn_session_set_cdtext_par(session, characters, copyrights, languages, 0) > 0;
}

void removeText(burn::burn_session* session)
{
    constexpr int all = -1;
    int count = 0;
    burn::burn_track** const tracks = burn::burn_session_get_tracks(session, &count);
    for (int track = 0; track < count; ++track)
        burn::burn_track_dispose_cdtext(tracks[track], all);
    burn::burn_session_dispose_cdtext(session, all);
}

}  // namespace

void AudioSession::Free::operator()(burn::burn_disc* disc) const
{
    burn::burn_disc_free(disc);
}

void AudioSession::Free::operator()(burn::burn_session* session) const
{
    burn::burn_session_free(session);
}

AudioSession::AudioSession(const DiscPlan& plan, const std::shared_ptr<FeedBytes>& bytes)
    : wholeDisc(made(burn::burn_disc_create()))
    , onlySession(made(burn::burn_session_create()))
{
    burn::burn_disc_add_session(disc(), session(), BURN_POS_END);
    std::int64_t begin = 0;
    for (const DiscPlan::Track& track : plan.tracks) {
        const std::int64_t end = begin + track.sectors * Sectors::bytes;
        addTrack(session(), sourceOf({bytes, begin, end}));
        begin = end;
    }
}

bool AudioSession::addText(const CdText& text)
{
    constexpr int onlyTry = 1;
    const bool good = setCharacters(session()) && addLines(session(), title, text.titles) &&
                      addLines(session(), performer, text.performers) &&
                      burn::burn_cdtext_from_session(session(), nullptr, nullptr, onlyTry) >= 0;
    if (!good)
        removeText(session());
    return good;
}

}  // namespace sound

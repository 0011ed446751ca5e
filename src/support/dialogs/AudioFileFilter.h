#pragma once

#include <QLatin1StringView>

/// What a dialog that opens a sound offers: all that the player reads, then each kind of it.
inline constexpr QLatin1StringView audioFileFilter(
    "All supported audio formats|"
    "*.mp3;*.mp2;*.wav;*.ogg;*.cda;*.aiff;*.wma;*.wmv;*.asx;*.asf;"
    "*.m4a;*.mp4;*.flac;*.aac;*.ac3;*.wv|"
    "MP3 and MP2 sounds (*.mp3;*.mp2)|*.mp3;*.mp2|"
    "AAC and MP4 sounds (*.aac;*.mp4)|*.aac;*.mp4|"
    "WAV sounds (*.wav)|*.wav|"
    "OGG Vorbis sounds (*.ogg)|*.ogg|"
    "Audio CD tracks (*.cda)|*.cda|"
    "AIFF sounds (*.aiff)|*.aiff|"
    "Windows Media sounds (*.wma;*.wmv;*.asx;*.asf)|*.wma;*.wmv;*.asx;*.asf|"
    "AC3 sounds (*.ac3)|*.ac3|"
    "ALAC sounds (*.m4a)|*.m4a|"
    "FLAC sounds (*.flac)|*.flac|"
    "WavPack sounds (*.wv)|*.wv|");

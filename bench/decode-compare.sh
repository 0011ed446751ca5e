#!/bin/bash
# Decodes ten minutes of sound in every format with this program and with ffmpeg, in turn, and prints the best time of
# each and their ratio. Above 1.00 this program is the faster one.
#
# usage: decode-compare.sh MEDIA_DECODE [RUNS]
set -euo pipefail
decode=$(realpath -e "$1")
runs=${2:-5}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

ffmpeg -v error -f lavfi -i \
    "aevalsrc=0.4*sin(2*PI*(200+10*t)*t)+0.1*random(0)|0.3*sin(2*PI*330*t)+0.1*random(1):s=44100:d=600" source.wav

# Puts the time that a command takes into $time; a command that fails ends the comparison.
milliseconds() {
    local begin
    begin=$(date +%s%N)
    "$@" > /dev/null || { echo "failed: $*" >&2; exit 1; }
    time=$((($(date +%s%N) - begin) / 1000000))
}

compare() {
    local file=$1
    shift
    ffmpeg -v error -i source.wav "$@" "$file"
    local ours=999999 theirs=999999 time
    for ((run = 0; run < runs; ++run)); do
        milliseconds ffmpeg -v error -i "$file" -f null -
        theirs=$((time < theirs ? time : theirs))
        milliseconds "$decode" "$file"
        ours=$((time < ours ? time : ours))
    done
    awk -v file="$file" -v ours="$ours" -v theirs="$theirs" \
        'BEGIN { printf "%-12s %6d ms   ffmpeg %6d ms   ratio %.2f\n", file, ours, theirs, theirs / ours }'
    rm "$file"
}

compare s16.wav
compare s24.wav -c:a pcm_s24le
compare a.aiff
compare a.flac
compare a.wv
compare cbr.mp3 -b:a 192k
compare vbr.mp3 -q:a 2 -write_xing 0
compare a.mp2 -b:a 256k
compare aac.m4a -b:a 192k
compare alac.m4a -c:a alac
compare a.aac -b:a 192k
compare a.ogg -c:a libvorbis -q:a 5
compare a.opus -c:a libopus -b:a 128k
compare a.wma -c:a wmav2 -b:a 192k
compare a.ac3 -b:a 448k

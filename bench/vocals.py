"""How much of a voice is taken out of mixes whose parts are known, and how much of the music is left: by this program
and by others.

    PYTHONPATH=tools/vocalmixes python3 bench/vocals.py build/release [MINUTES...]

Prints for each song and voice how many decibels nearer to the music without the voice each result is than the mix was,
with the voice at five places, and in the centre of a room. With the voice in the centre it also prints how much of the
voice is left, the largest change of level of an instrument at a side, how much more alike the channels are than those
of the music, and what has changed a third of an octave beyond the cut-offs. Then, for mixes of so many minutes (1, 5
and 20), how many times faster than its sound each is, and the most memory that it took.

All others are told the place of the voice too: the channels are balanced for it before, and back afterwards.
"""

import math
import os
import subprocess
import sys
import tempfile
import time

import stems

LOW, HIGH = 200, 8000
PLACES = [0, -60, -30, 30, 60]
FROM, SECONDS = 1, 20
SIDE = 50  # where an instrument stands that is one of a side's
# The first two want the channels balanced for the voice, the others as they were afterwards.
DIFFERENCES = {
    "left - right": "pan=stereo|c0=c0-c1|c1=c0-c1",
    "left - right, halved": "pan=stereo|c0=.5*c0-.5*c1|c1=.5*c0-.5*c1",
}
OTHERS = {
    "ffmpeg stereotools, mlev least": "stereotools=mlev=0.015625",
    "ffmpeg stereotools, slev 2": "stereotools=mlev=0.015625:slev=2",
    "ffmpeg extrastereo": "extrastereo=c=0",
    "ffmpeg surround, no centre": "surround=chl_out=5.1:lfe=0,pan=stereo|c0=FL+BL|c1=FR+BR",
    "ffmpeg dialoguenhance, taken off": "dialoguenhance=original=0:enhance=1,pan=stereo|c0=FL-.5*FC|c1=FR-.5*FC",
}
COLUMNS = [f"{place:6}" for place in PLACES] + ["  room", " | ", " voice", " sides", " alike", "  null"]


def run(command):
    """Its output; seconds and MiB."""
    begin = time.monotonic()
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
    output = process.stdout.read()
    _, status, used = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise RuntimeError(f"failed with {process.returncode}: {command}")
    return output, time.monotonic() - begin, used.ru_maxrss / 1024


def filters_of(place):
    """Of each of the others its name and what ffmpeg calls it."""
    turn = (place + 100) / 200 * math.pi / 2
    cosine, sine = math.cos(turn), math.sin(turn)
    left, right = min(1, sine / cosine), min(1, cosine / sine)
    balance = f"pan=stereo|c0={left}*c0|c1={right}*c1,"
    back = f",pan=stereo|c0={1 / left}*c0|c1={1 / right}*c1"
    # Of every sound that part which a voice at that place has nothing of.
    across = f"pan=stereo|c0={sine * sine}*c0-{sine * cosine}*c1|c1={cosine * cosine}*c1-{sine * cosine}*c0"
    return ({name: balance + filters for name, filters in DIFFERENCES.items()}
            | {"ffmpeg pan, across the voice": across}
            | {name: balance + filters + back for name, filters in OTHERS.items()})


def removers(build, place):
    """Of each its name and its command for a source, a target and the coding of the sound."""
    def ours(source, target, _):
        return [os.path.join(build, "bench", "remove_vocals"), source, target, str(LOW), str(HIGH), str(place)]

    def ffmpeg(filters):
        return lambda source, target, coding: ["ffmpeg", "-v", "error", "-y", "-i", source, "-af", filters,
                                               "-c:a", coding, target]

    return {"this program": ours, **{name: ffmpeg(filters) for name, filters in filters_of(place).items()}}


def judge(build, folder, mix, place):
    """Of each remover the measures, by name."""
    vocalmix = os.path.join(build, "tools", "vocalmixes", "vocalmix")
    made = os.path.join(build, "vocal-stems")
    source = os.path.join(folder, "source.wav")
    run([vocalmix, "make", made, *mix, source])
    results = {"untouched": source, "who knows the parts": os.path.join(folder, "ideal.wav")}
    run([vocalmix, "ideal", made, *mix, str(LOW), str(HIGH), results["who knows the parts"]])
    for number, (name, command) in enumerate(removers(build, place).items()):
        results[name] = os.path.join(folder, f"{number}.wav")
        run(command(source, results[name], "pcm_f32le"))
    lines = run([vocalmix, "judge", made, *mix, str(LOW), str(HIGH), *results.values()])[0].splitlines()
    return {name: dict(pair.split("=") for pair in line.split()) for name, line in zip(results, lines)}


def sides(measures):
    """The largest change of level of those who stand there."""
    changes = [float(value) for key, value in measures.items()
               if key.startswith("level:") and abs(int(key.split(":")[2])) >= SIDE]
    return max(changes, key=abs)


def print_quality(build, folder, song, voice):
    rows = {}
    for place, room in [*((place, "dry") for place in PLACES), (0, "room")]:
        mix = [song, voice, str(place), room, str(FROM), str(SECONDS)]
        for name, measures in judge(build, folder, mix, place).items():
            rows.setdefault(name, []).append(measures)
    print(f"{song}, {voice}: of the mix {float(rows['untouched'][0]['sdr']):.1f} dB".ljust(34), *COLUMNS)
    for name, row in rows.items():
        centre = row[0]
        alike = float(centre["correlation"]) - float(centre["wanted_correlation"])
        print(f"  {name:32}", *(f"{float(measures['improvement']):6.1f}" for measures in row), " | ",
              f"{float(centre['voice']):6.1f} {sides(centre):6.1f} {alike:6.2f} {float(centre['null_there']):6.0f}",
              flush=True)


def print_speed(build, folder, minutes):
    once, source = os.path.join(folder, "once.wav"), os.path.join(folder, "long.wav")
    run([os.path.join(build, "tools", "vocalmixes", "vocalmix"), "make", os.path.join(build, "vocal-stems"),
         "ballad", "singer", "0", "dry", "0", "24", once])
    run(["ffmpeg", "-v", "error", "-y", "-stream_loop", "-1", "-i", once, "-t", str(60 * minutes), "-c:a", "pcm_s16le",
         source])
    print(f"{minutes:g} minutes, {os.cpu_count()} cores")
    for name, command in removers(build, 0).items():
        _, seconds, memory = run(command(source, os.path.join(folder, "result.wav"), "pcm_s16le"))
        print(f"  {name:32} {60 * minutes / seconds:6.0f} times {memory:6.0f} MiB", flush=True)


def main():
    build = os.path.abspath(sys.argv[1])
    stems.ensure(os.path.join(build, "vocal-stems"))
    with tempfile.TemporaryDirectory() as folder:
        for song in ["ballad", "folk-song"]:
            for voice in ["singer", "speaker"]:
                print_quality(build, folder, song, voice)
        for minutes in map(float, sys.argv[2:] or [1, 5, 20]):
            print_speed(build, folder, minutes)


if __name__ == "__main__":
    main()

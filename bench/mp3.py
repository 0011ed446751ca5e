"""Encodes music into MP3, with this program's encoder and with the program lame, by turns and with the same switches.

    python3 bench/mp3.py build/release [RUNS [MINUTES]]

Prints the median of the seconds of each, of the processor's and on the clock, how many times as long this program took
(the median of the pairs' quotients), and whether both made the same bytes. The practice track is repeated to five
minutes. Wants the program lame.
"""

import os
import statistics
import subprocess
import sys
import tempfile
import time

SWITCHES = [[], ["-b", "320", "-h"], ["-f"], ["-m", "m", "-b", "64"], ["-V", "0"], ["-V", "4"]]


def run(command):
    """Seconds of the processor and on the clock."""
    begin = time.monotonic()
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL)
    _, status, used = os.wait4(process.pid, 0)
    if status != 0:
        raise RuntimeError(f"failed: {command}")
    return used.ru_utime + used.ru_stime, time.monotonic() - begin


def content(path):
    with open(path, "rb") as file:
        return file.read()


def compare(build, folder, source, switches, runs):
    ours, theirs = os.path.join(folder, "ours.mp3"), os.path.join(folder, "theirs.mp3")
    commands = [[os.path.join(build, "bench", "encode_mp3"), source, ours, *switches],
                ["lame", "--quiet", *switches, source, theirs]]
    pairs = []
    for number in range(runs):
        # Who comes first is changed, for whoever is second finds the machine warm.
        order = [0, 1] if number % 2 == 0 else [1, 0]
        taken = {who: run(commands[who]) for who in order}
        pairs.append((taken[0], taken[1]))
    columns = []
    for kind in range(2):
        medians = [statistics.median(pair[who][kind] for pair in pairs) for who in range(2)]
        quotient = statistics.median(pair[0][kind] / pair[1][kind] for pair in pairs)
        columns.append(f"{medians[0]:7.2f} {medians[1]:7.2f} {quotient:6.3f} times")
    same = "the same bytes" if content(ours) == content(theirs) else "OTHER BYTES"
    print(f"  {' '.join(switches) or 'no switches':14}", " | ".join(columns), "|", same, flush=True)


def main():
    build = os.path.abspath(sys.argv[1])
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 5
    minutes = float(sys.argv[3]) if len(sys.argv) > 3 else 5
    track = os.path.join(build, "practice", "before-the-lesson.wav")
    with tempfile.TemporaryDirectory() as folder:
        source = os.path.join(folder, "source.wav")
        subprocess.run(["ffmpeg", "-v", "error", "-stream_loop", "-1", "-i", track, "-t", str(60 * minutes),
                        "-c:a", "pcm_s16le", source], stdin=subprocess.DEVNULL, check=True)
        print(f"{minutes:g} minutes, {runs} pairs: processor (ours, lame, quotient) | clock (the same)")
        for switches in SWITCHES:
            compare(build, folder, source, switches, runs)


if __name__ == "__main__":
    main()

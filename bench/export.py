"""Saves music slower by a fifth and two semitones higher, with this program's editor and with others, by turns.

    python3 bench/export.py build/release [RUNS [MINUTES]]

Prints the best time of each in seconds, how many times as long as this program's, and the most memory that it took. The
practice track is repeated to five minutes. Wants the program rubberband, and an ffmpeg with the filter of that name.
"""

import os
import subprocess
import sys
import tempfile
import time

MP3 = ["-c:a", "libmp3lame", "-b:a", "128k"]
WAV = ["-c:a", "pcm_s16le"]


def run(command):
    """Seconds and MiB."""
    begin = time.monotonic()
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, used = os.wait4(process.pid, 0)
    if status != 0:
        raise RuntimeError(f"failed: {command}")
    return time.monotonic() - begin, used.ru_maxrss / 1024


def compare(ours, others, runs):
    best = {name: (float("inf"), 0.0) for name in ["this program", *others]}
    for _ in range(runs):
        for name, command in [("this program", ours), *others.items()]:
            seconds, memory = run(command)
            best[name] = min(best[name][0], seconds), max(best[name][1], memory)
    for name, (seconds, memory) in best.items():
        print(f"  {name:26} {seconds:8.2f} s {seconds / best['this program'][0]:6.2f} times {memory:6.0f} MiB", flush=True)


def main():
    build = os.path.abspath(sys.argv[1])
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    minutes = float(sys.argv[3]) if len(sys.argv) > 3 else 5
    track = os.path.join(build, "practice", "before-the-lesson.wav")
    with tempfile.TemporaryDirectory() as folder:
        source = os.path.join(folder, "source.wav")
        subprocess.run(["ffmpeg", "-v", "error", "-stream_loop", "-1", "-i", track, "-t", str(60 * minutes), *WAV, source],
                       stdin=subprocess.DEVNULL, check=True)
        for ending, coding in [("wav", WAV), ("mp3", MP3)]:
            theirs = os.path.join(folder, "theirs." + ending)
            filters = {
                "ffmpeg, rubberband filter": "rubberband=tempo=0.8:pitch=1.122462",
                "ffmpeg, atempo (no pitch)": "atempo=0.8",
            }
            others = {name: ["ffmpeg", "-v", "error", "-y", "-i", source, "-af", text, *coding, theirs]
                      for name, text in filters.items()}
            if ending == "wav":
                others |= {f"rubberband -{engine}": ["rubberband", "-q", f"-{engine}", "-t", "1.25", "-p", "2", source, theirs]
                           for engine in (2, 3)}
            ours = [os.path.join(build, "bench", "export_sound"), source, os.path.join(folder, "ours." + ending),
                    "-20", "2", "0"]
            print(f"{ending}, {minutes:g} minutes:", flush=True)
            compare(ours, others, runs)


if __name__ == "__main__":
    main()

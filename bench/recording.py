"""What recording costs: the recorder with its meters and an MP3 file, beside the bare encoder on the same sound.

    PYTHONPATH=tools/stage python3 bench/recording.py build/release [SECONDS]

In a sound server of its own that plays the practice track. Prints the part of a core that each takes: of the encoder,
the processor time for so much sound.
"""

import os
import resource
import subprocess
import sys

from processes import end_on_signals
from stage import RATE, Stage


def encoder_share(source, target, seconds):
    """ffmpeg's, on one thread as the recorder's."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-threads", "1", "-i", source, "-t", str(seconds), "-c:a", "libmp3lame",
                    "-b:a", "128k", "-compression_level", "2", target], stdin=subprocess.DEVNULL, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return (after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime) / seconds


def main():
    build = os.path.abspath(sys.argv[1])
    seconds = int(sys.argv[2]) if len(sys.argv) > 2 else 20
    end_on_signals()
    with Stage() as stage:
        source = os.path.join(stage.folder, "source.wav")
        subprocess.run(["ffmpeg", "-v", "error", "-stream_loop", "-1", "-i", os.path.join(build, "practice", "before-the-lesson.wav"),
                        "-ar", str(RATE), "-ac", "2", "-t", str(3 * seconds + 60), source], stdin=subprocess.DEVNULL, check=True)
        stage.processes.start("music", ["paplay", "--latency-msec=1000", source], stage.environment)
        stage.record().wait_for_sound()
        command = [os.path.join(build, "bench", "record_sound"), str(seconds), os.path.join(stage.folder, "ours.mp3")]
        subprocess.run(command, env=stage.environment, stdin=subprocess.DEVNULL, check=True)
        shares = [encoder_share(source, os.path.join(stage.folder, "theirs.mp3"), 3 * seconds) for _ in range(3)]
        print(f"ffmpeg, the same sound {100 * min(shares):6.2f}%")


if __name__ == "__main__":
    main()

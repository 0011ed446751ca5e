"""A short demonstration without a screen: plays the practice track with keys and mouse in a virtual display, records
the speakers, and tells what was heard.

Usage: demo.py BUILD-FOLDER RESULT-FOLDER
"""

import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "stage"))

from measure import measure
from player import Player
from processes import end_on_signals, wait_until
from stage import RATE, Stage

LOOP_BEGIN = 16
LOOP_END = 20
SETTLED = 0.5  # seconds after an action until all that is heard is its result


def perform(stage, build, results):
    """Plays the demonstration; returns the stretches of the recording to measure."""
    player = Player(stage, os.path.join(build, "larkspin"))
    recording = stage.record()
    stretches = []

    def listen(name, seconds, measures):
        recording.wait(SETTLED)
        begin = recording.seconds()
        recording.wait(seconds)
        stretches.append((name, begin, recording.seconds(), measures))

    print("Starting the player and adding the practice track through the Open dialog ...", flush=True)
    player.start()
    player.wait_for_window("^Tip of the Day$")
    player.press("Escape")
    player.wait_for_no_window("^Tip of the Day$")
    player.activate()
    player.add(os.path.join(build, "practice", "before-the-lesson.mp3"))
    player.pick("before-the-lesson (MP3 file)")
    wait_until(lambda: player.value("End loop position") == 34, "the track to load")

    print("Playing it as it is ...", flush=True)
    player.click("Play", "push button")
    recording.wait_for_sound("the track")
    listen("unchanged", 4, "pitch gaps")

    print("Slowing it down by 20% while it plays ...", flush=True)
    player.click("Tempo down by 10 percent", "push button", times=2)
    wait_until(lambda: player.value("Tempo in percent") == -20, "the tempo slider")
    listen("slower", 7, "pitch gaps")

    print("Two semitones up ...", flush=True)
    player.click("Pitch up by a semitone", "push button", times=2)
    wait_until(lambda: player.value("Pitch in semitones") == 2, "the pitch slider")
    listen("higher", 7, "pitch gaps")

    print(f"Looping it from {LOOP_BEGIN} to {LOOP_END} s ...", flush=True)
    player.slide("Begin loop position", LOOP_BEGIN)
    player.slide("End loop position", LOOP_END)
    player.click("Play loop", "push button")
    listen("looped", 18, "period gaps")

    stage.screenshot(os.path.join(results, "larkspin.png"))
    recording.save(os.path.join(results, "heard.wav"))
    recording.stop()
    code = player.close()
    if code != 0:
        raise RuntimeError(f"the player ended with {code}")
    return stretches


def report(heard):
    """Prints what was measured beside what was asked for. Returns whether they agree."""
    agree = True

    def line(what, wanted, measured, right):
        nonlocal agree
        agree = agree and right
        print(f"  {what:<34} asked {wanted:<22} heard {measured:<30} {'ok' if right else 'WRONG'}")

    for name, title, tempo, cents in (("unchanged", "as it is", 1.0, 0), ("slower", "slower by 20%", 0.8, 0),
                                      ("higher", "and two semitones up", 0.8, 200)):
        found = heard[name]
        ratio = found.get("tempo", 0)
        line(title + ": tempo", f"{tempo:.3f}", f"{ratio:.4f}", abs(ratio - tempo) < 0.004)
        pitch = found.get("cents", 9999)
        line(title + ": pitch", f"{cents / 100:+.2f} semitones", f"{pitch / 100:+.3f} semitones ({pitch:+.1f} cents)",
             abs(pitch - cents) < 5)
    period = heard["looped"].get("period_frames", 0)
    wanted = (LOOP_END - LOOP_BEGIN) / 0.8 * RATE
    line("looped at that speed: period", f"{wanted:.0f} frames", f"{period:.1f} frames ({period * 1000 / RATE:.2f} ms)",
         abs(period - wanted) < 22)
    gaps = sum(int(found["gaps"]) for found in heard.values())
    line("gaps in all of it", "none", str(gaps or "none"), gaps == 0)
    return agree


def main():
    build, results = map(os.path.abspath, sys.argv[1:3])
    os.makedirs(results, exist_ok=True)
    end_on_signals()
    with Stage(logs=os.path.join(results, "logs")) as stage:
        stretches = perform(stage, build, results)
    print("Measuring what was heard ...\n", flush=True)
    heard = measure(os.path.join(build, "tools", "heard", "heard"),
                    os.path.join(build, "practice", "before-the-lesson.wav"), os.path.join(results, "heard.wav"),
                    stretches)
    agree = report(heard)
    print(f"\nSeen: {results}/larkspin.png\nHeard: {results}/heard.wav")
    return 0 if agree else 1


if __name__ == "__main__":
    sys.exit(main())

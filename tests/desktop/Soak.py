"""Works a playing program with random commands for as long as is asked, and listens whether the sound ever breaks off.

    PYTHONPATH=tools/stage python3 tests/desktop/Soak.py build/asan/larkspin build/release 600 [SEED]

Takes the program, the build folder with the practice track, and seconds. A loop of the track plays all the time: commands
that would silence it are left out. A gap while the machine itself stood still is told and does not count. Best with a
program that the address sanitizer watches; its reports end it, and are in the log that is named then.
"""

import os
import random
import sys
import time

from gaps import Gaps
from player import Player
from processes import end_on_signals, wait_until
from stage import Stage

TRACK = "before-the-lesson.wav"
LABEL = "before-the-lesson (Wav file)"
LOOP = (2, 30)  # seconds
LATEST_BEGIN = 26

KEYS = [
    "Right", "Left", "ctrl+Right", "ctrl+Left", "Up", "Down", "shift+Up", "shift+Down", "ctrl+Up", "ctrl+Down", "alt+Up",
    "alt+Down", "Prior", "Next", "ctrl+Prior", "ctrl+Next", "End", "Home", "Escape", "90", "87", "89", "shift+Right",
    "shift+Left", "F5", "F6", "F7", "F8", "ctrl+l", "Tab", "shift+Tab", "ctrl+shift+Right", "ctrl+shift+Left",
]
SLIDERS = ["Tempo in percent", "Pitch in semitones", "Pitch in hundredths of a semitone", "Tempo and pitch in percent",
           "Balance", "80 Hz", "600 Hz", "3 kHz", "16 kHz", "Begin loop position"]
BUTTONS = ["Collapse sound options", "Expand sound options", "Reset all", "Reset all bands", "Balance to left",
           "Reset balance", "Begin loop one thousandth on", "End loop one thousandth back", "Increase fading interval",
           "Decrease fading interval", "Add mark"]


class Soak:
    def __init__(self, player, chance):
        self.player = player
        self.chance = chance
        self.done = 0

    def step(self):
        action = self.chance.choices([self.keys, self.slider, self.button, self.preset, self.calculator, self.loop],
                                     [10, 6, 4, 1, 0.5, 2])[0]
        action()
        self.done += 1

    def keys(self):
        keys = self.chance.choices(KEYS, k=self.chance.randint(1, 6))
        self.player.press(*keys)
        if {"F6", "F7", "F8"} & set(keys):
            self.loop()  # a mark plays on to the end of the track

    def slider(self):
        name = self.chance.choice(SLIDERS)
        if not self.player.shows(name, "slider"):
            return
        slider = self.player.find(name, "slider")
        low, high = slider.get_minimum_value(), slider.get_maximum_value()
        if name == "Begin loop position":
            high = LATEST_BEGIN
        slider.set_current_value(round(self.chance.uniform(low, high)))

    def button(self):
        name = self.chance.choice(BUTTONS)
        if self.player.shows(name, "push button"):
            self.player.act(name, "push button")

    def preset(self):
        if self.player.shows("Load preset", "push button"):
            self.player.choose(0, self.chance.choice(["Club", "Dance", "Rock", "Techno", "None"]))

    def calculator(self):
        self.player.press("ctrl+b")
        self.player.wait_for_window("^Beats per minute calculator$")
        self.player.press(*"aaaa")
        self.player.press("alt+F4")
        self.player.wait_for_no_window("^Beats per minute calculator$|^[0-9]+$")
        self.player.activate()

    def loop(self):
        """Has the loop played again, near the end of the track at the most. A window that was moved on can begin behind
        that end: nothing would be played of it."""
        if self.player.value("Begin loop position") > LATEST_BEGIN:
            self.player.set_value("Begin loop position", LOOP[0])
        self.player.set_value("End loop position", self.chance.randint(LOOP[1] - 3, LOOP[1] + 2))
        self.player.act("Play loop", "push button")


def main():
    program, build, seconds = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2]), float(sys.argv[3])
    seed = int(sys.argv[4]) if len(sys.argv) > 4 else random.randrange(1 << 32)
    results = os.path.join(build, "desktop", "soak")
    os.makedirs(results, exist_ok=True)
    print(f"seed {seed}", flush=True)
    end_on_signals()
    with Stage(logs=results) as stage:
        stage.choose(Show_Tips_at_Startup=0)
        player = Player(stage, program)
        recording = stage.record()
        gaps = Gaps(stage, recording)
        player.start()
        player.add(os.path.join(build, "practice", TRACK))
        player.pick(LABEL)
        wait_until(lambda: player.value("End loop position") == 34, "the track to load")
        player.slide("Begin loop position", LOOP[0])
        player.slide("End loop position", LOOP[1])
        player.click("Play loop", "push button")
        recording.wait_for_sound("the loop")
        begin = recording.seconds()

        soak = Soak(player, random.Random(seed))
        end = time.monotonic() + seconds
        looped = time.monotonic()
        while time.monotonic() < end:
            soak.step()
            player.check_alive()
            gaps.compare_clocks()
            if time.monotonic() > looped + 3:
                soak.loop()
                looped = time.monotonic()

        stage.screenshot(os.path.join(results, "screen.png"))
        until = recording.seconds()
        recording.save(os.path.join(results, "heard.wav"))
        found = gaps.between(begin, until)
        code = player.close()
        for gap in found:
            print(gap)
        unexplained = [gap for gap in found if not gap.explained()]
        print(f"{soak.done} steps in {seconds:.0f} s: {len(found)} gaps, {len(unexplained)} of them unexplained; the program "
              f"ended with {code}")
        return 0 if code == 0 and not unexplained else 1


if __name__ == "__main__":
    sys.exit(main())

"""Records with the real program what the real program plays, and what a musician's other sources bring.

Run by ctest with the build folder and the project's stage on the path; see CMakeLists.txt beside this.
"""

import json
import os
import re
import signal
import subprocess
import time
import unittest

from DesktopTest import BUILD, WAV, DesktopTest
from gaps import Gaps
from measure import measure
from processes import end_on_signals, wait_until

RECORDER = "^Sound card recorder$"
NAMED = r"Recording (Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec)-\d\d-\d{4} \d\d-\d\d-\d0\."


class RecordTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.start(Show_Tips_at_Startup=0, Show_RecordingTip=0)
        self.folder = os.path.join(self.stage.environment["HOME"], "Documents", "Larkspin Recordings")

    def open_recorder(self):
        self.player.press("ctrl+r")
        self.player.wait_for_window(RECORDER)

    def recordings(self):
        return sorted(os.listdir(self.folder)) if os.path.isdir(self.folder) else []

    def the_recording(self):
        self.assertEqual(len(self.recordings()), 1)
        return os.path.join(self.folder, self.recordings()[0])

    def record(self, seconds):
        """Presses Record, and returns when so much is on the disc."""
        self.player.press("alt+r")
        wait_until(self.recordings, "the file")
        wait_until(lambda: self.length(self.the_recording()) >= seconds, f"{seconds} s of recording", seconds + 20)

    def length(self, path):
        """In seconds, as another program tells it; 0 for a file that holds nothing yet."""
        told = subprocess.run(["ffprobe", "-v", "quiet", "-of", "json", "-show_format", path],
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, check=False).stdout
        return float(json.loads(told or b"{}").get("format", {}).get("duration", 0))

    def decode(self, path):
        decoded = os.path.join(self.results, "decoded.wav")
        subprocess.run(["ffmpeg", "-v", "error", "-y", "-i", path, "-ar", "44100", "-c:a", "pcm_f32le", decoded],
                       stdin=subprocess.DEVNULL, check=True)
        return decoded

    def test_the_changed_sound_that_the_player_plays_is_recorded_as_mp3(self):
        self.load()
        self.player.set_value("Tempo in percent", -20)
        heard = self.stage.record()
        self.player.click("Play", "push button")
        heard.wait_for_sound("the track")
        self.open_recorder()
        gaps = Gaps(self.stage, heard)
        begin = heard.seconds()
        self.record(9)
        broken_off = gaps.between(begin, heard.seconds())
        gaps.end()
        self.stage.screenshot(os.path.join(self.results, "recording.png"))
        self.player.press("alt+s")
        display = self.player.status("00:00:00")
        self.assertRegex(self.recordings()[0], "^" + NAMED + "mp3$")
        found = measure(os.path.join(BUILD, "tools", "heard", "heard"), WAV, self.decode(self.the_recording()),
                        [("it", 0.5, 8.5, "pitch gaps")])["it"]
        self.assertEqual([str(gap) for gap in broken_off if not gap.explained()], [])
        self.assertLessEqual(found["gaps"], len(broken_off), "a gap that was not heard")
        self.assertAlmostEqual(found["tempo"], 0.8, delta=0.003)
        self.assertAlmostEqual(found["cents"], 0, delta=4)

        # And it is replayed: the player itself is silent by then.
        self.player.press("alt+p")
        wait_until(lambda: display() != "00:00:00", "the display to run")
        wait_until(lambda: display() == "00:00:00", "the end of the replay", 20)

    def test_killed_it_leaves_what_was_recorded(self):
        self.open_recorder()
        begun = time.monotonic()
        self.record(4)
        before = time.monotonic()
        os.kill(self.player.process.pid, signal.SIGKILL)
        self.player.process.wait()
        self.assertGreater(self.length(self.the_recording()), 4)
        self.assertLess(self.length(self.the_recording()), before - begun + 0.5)
        subprocess.run(["ffmpeg", "-v", "error", "-xerror", "-i", self.the_recording(), "-f", "null", "-"],
                       stdin=subprocess.DEVNULL, check=True)

    def test_a_source_that_is_unplugged_ends_the_recording_and_not_the_program(self):
        module = self.stage.run("pactl", "load-module", "module-null-sink", "sink_name=mic", "norewinds=1").strip()
        self.stage.run("pactl", "set-default-source", "mic.monitor")
        self.open_recorder()
        self.record(1)
        self.stage.run("pactl", "unload-module", module)
        wait_until(lambda: self.player.says("00:00:00"), "the display to stop")
        whole = self.length(self.the_recording())
        self.assertGreater(whole, 1)
        self.player.press("alt+r")  # the source is still away
        wait_until(lambda: self.player.says("00:00:00"), "the display to stop")
        self.assertEqual(self.length(self.the_recording()), whole)

    def test_the_tip_stands_before_the_recorder_until_it_is_switched_off(self):
        self.player.end()
        self.start(Show_Tips_at_Startup=0)
        self.player.press("ctrl+r")
        self.player.wait_for_window("^Recorder initial settings$")
        self.assertFalse(self.player.windows(RECORDER))
        self.player.act("Show this screen in the future", "check box")
        self.player.act("Close", "push button")
        self.player.wait_for_window(RECORDER)
        self.player.press("alt+F4")
        self.player.wait_for_no_window(RECORDER)
        self.player.activate()
        self.open_recorder()
        self.assertFalse(self.player.windows("^Recorder initial settings$"))


if __name__ == "__main__":
    end_on_signals()
    unittest.main(verbosity=2)

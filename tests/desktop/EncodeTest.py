"""Encodes recordings with the real program, and compares them with what another encoder program makes of them.

Run by ctest with the build folder and the project's stage on the path; see CMakeLists.txt beside this.
"""

import os
import shutil
import subprocess
import unittest

from DesktopTest import WAV, DesktopTest
from processes import end_on_signals, wait_until

ENCODER = "^MP3 encoder$"
DIALOG = "^Select a file to encode$"


class EncodeTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.start_without_tips()
        self.home = self.stage.environment["HOME"]
        self.source = self.path("lesson.wav")
        self.result = self.path("lesson.mp3")
        shutil.copy(WAV, self.source)

    def path(self, name):
        return os.path.join(self.home, name)

    def open_encoder(self):
        self.player.press("ctrl+e")
        self.player.wait_for_window(ENCODER)

    def browse(self, path):
        self.player.click("Browse", "push button")
        self.player.answer_file_dialog(DIALOG, path, ENCODER)

    def encode(self):
        self.player.click("Encode to MP3", "push button")
        wait_until(lambda: self.player.shows("Done ."), "the end", 60)

    def content(self, path):
        with open(path, "rb") as file:
            return file.read()

    def as_lame_has_it(self, *switches, source=None):
        wanted = self.path("wanted.mp3")
        subprocess.run(["lame", "--quiet", *switches, source or self.source, wanted], stdin=subprocess.DEVNULL, check=True)
        return self.content(wanted)

    def test_an_untouched_window_leaves_everything_to_the_encoder(self):
        self.open_encoder()
        self.browse(self.source)
        self.assertEqual(self.player.text("Output file"), self.result)
        self.encode()
        wait_until(lambda: not self.player.shows("Done ."), "the text to go after three seconds")
        self.assertEqual(self.content(self.result), self.as_lame_has_it())

    def test_what_is_switched_is_in_force_and_stays_so_for_the_next_file(self):
        self.open_encoder()
        self.browse(self.source)
        self.player.click("Options", "push button")
        self.player.find("Use variable bitrate", "check box")
        self.stage.screenshot(os.path.join(self.results, "options.png"))
        for name in ["Use variable bitrate", "High quality", "Add 16-bit checksum (error protection)",
                     "Mark all as copyrighted"]:
            self.player.click(name, "check box")
        self.player.click("Joint", "radio button")
        self.encode()
        switches = ["-v", "-h", "-p", "-c", "-m", "j"]
        self.assertEqual(self.content(self.result), self.as_lame_has_it(*switches))

        raw = self.path("take.raw")
        subprocess.run(["ffmpeg", "-v", "error", "-i", self.source, "-t", "5", "-f", "s16le", raw],
                       stdin=subprocess.DEVNULL, check=True)
        self.player.enter("Input file", raw)
        self.player.enter("Output file", self.result)
        self.player.click("All input is raw PCM", "check box")
        wait_until(lambda: not self.player.shows("Done ."), "the text of the first one to go")
        self.encode()
        self.assertEqual(self.content(self.result), self.as_lame_has_it(*switches, "-r", source=raw))

    def test_closed_in_the_middle_it_leaves_the_old_file_and_nothing_else(self):
        long = self.path("long.wav")
        subprocess.run(["ffmpeg", "-v", "error", "-stream_loop", "25", "-i", self.source, "-c", "copy", long],
                       stdin=subprocess.DEVNULL, check=True)
        old = self.path("long.mp3")
        with open(old, "wb") as file:
            file.write(b"what was there before")
        before = sorted(os.listdir(self.home))
        self.open_encoder()
        self.browse(long)
        self.player.click("Encode to MP3", "push button")
        wait_until(lambda: any(item.get_name().endswith("% completed") for item in self.player.showing()), "the progress")
        self.player.press("alt+F4")
        self.player.wait_for_no_window(ENCODER)
        self.assertEqual(self.content(old), b"what was there before")
        self.assertEqual(sorted(os.listdir(self.home)), before)
        heard = self.stage.record()
        self.player.activate()
        self.load()
        self.player.click("Play", "push button")
        heard.wait_for_sound("the track")
        heard.stop()


if __name__ == "__main__":
    end_on_signals()
    unittest.main(verbosity=2)

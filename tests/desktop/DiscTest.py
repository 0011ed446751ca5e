"""Writes audio CDs with the real program, as disc images, and reads them with others.

Run by ctest with the build folder and the project's stage on the path; see CMakeLists.txt beside this.
"""

import os
import re
import struct
import subprocess
import unittest

from DesktopTest import WAV, DesktopTest
from processes import end_on_signals, wait_until

WRITER = "^Audio CD Writer$"
DIALOG = "^Open audio"
SECTOR = 2352
NAMED = r"Disc image (Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec)-\d\d-\d{4} \d\d-\d\d\."


def stub(track):
    """A file that names a track of an audio CD, as other systems show them."""
    return b"RIFF" + struct.pack("<I", 36) + b"CDDAfmt " + struct.pack("<IHHIII", 24, 1, track, 0, 0, 0) + bytes(8)


class DiscTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.start_without_tips()
        self.home = self.stage.environment["HOME"]
        self.folder = os.path.join(self.home, "Documents", "Larkspin Recordings")

    def make(self, name, seconds, *options, source=WAV):
        path = os.path.join(self.home, name)
        subprocess.run(["ffmpeg", "-v", "error", "-stream_loop", "-1", "-i", source, "-t", str(seconds), *options, path],
                       stdin=subprocess.DEVNULL, check=True)
        return path

    def make_slow(self, name):
        """A quarter of an hour that takes some seconds to be brought to the rate of a disc."""
        return self.make(name, 900, "-ar", "192000", "-ac", "1", "-c:a", "pcm_u8")

    def samples(self, path):
        """As they are on a disc."""
        return subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-f", "s16le", "-"], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, check=True).stdout

    def open_writer(self):
        self.player.click_in_tool_bar("Burn Audio CD")
        self.player.wait_for_window(WRITER)

    def add(self, *names, back_to=WRITER):
        """Picks files of the home folder, all at once."""
        self.player.click("Add audio track", "push button")
        self.player.wait_for_window(DIALOG)
        self.player.type(self.home)
        self.player.press("Return")
        self.player.answer_file_dialog(DIALOG, " ".join(f'"{name}"' for name in names), back_to)

    def confirm(self, text):
        self.player.await_box(text, 60)
        self.stage.screenshot(os.path.join(self.results, "told.png"))
        self.player.answer_box(text)
        self.player.wait_for_window(WRITER)

    def write(self):
        self.player.click("Write audio disc", "push button")
        self.confirm("Writing is complete!")
        wait_until(lambda: self.player.says("Status : Idle"), "the last status")

    def begin_slow_write(self):
        self.add("slow.wav")
        status = self.player.status("Status : Idle")
        self.player.click("Write audio disc", "push button")
        wait_until(lambda: status().startswith("Caching Image... Track# 01"), "the write")

    def written(self):
        return sorted(os.listdir(self.folder)) if os.path.isdir(self.folder) else []

    def test_files_of_all_formats_become_a_disc_that_is_played_again(self):
        one = self.make("one.wav", 6)
        self.make("two.mp3", 9, "-b:a", "192k", "-metadata", "title=The second", "-metadata", "artist=The Band")
        self.make("three.wma", 7)
        last = self.make("last.wav", 5.5, "-af", "volume=0.5")
        self.open_writer()
        self.add("two.mp3", "three.wma", "last.wav")
        self.add("one.wav")  # nothing is selected: to the top
        wait_until(lambda: self.player.says("4 Audio Tracks"), "the tracks")
        self.stage.screenshot(os.path.join(self.results, "tracks.png"))
        self.write()

        bin_name, cue_name = self.written()
        self.assertRegex(bin_name, "^" + NAMED + "bin$")
        self.assertEqual(cue_name, bin_name[:-3] + "cue")
        with open(os.path.join(self.folder, cue_name), encoding="utf-8") as file:
            cue = file.read()
        begins = [(int(m) * 60 + int(s)) * 75 + int(f) for m, s, f in re.findall(r"INDEX 01 (\d\d):(\d\d):(\d\d)", cue)]
        self.assertEqual(begins[:2], [0, 8 * 75])  # two seconds of silence lie between
        self.assertEqual(len(begins), 4)
        self.assertIn('TITLE "The second"', cue)
        with open(os.path.join(self.folder, bin_name), "rb") as file:
            sectors = file.read()
        self.assertEqual(len(sectors) % SECTOR, 0)
        for path, begin in [(one, begins[0]), (last, begins[3])]:
            wanted = self.samples(path)
            self.assertEqual(sectors[begin * SECTOR:begin * SECTOR + len(wanted)], wanted, path)
        self.assertFalse(any(sectors[(begins[1] - 150) * SECTOR:begins[1] * SECTOR]))

        track = os.path.join(self.folder, "Track02.cda")
        with open(track, "wb") as file:
            file.write(stub(2))
        self.player.press("alt+F4")
        self.player.wait_for_no_window(WRITER)
        self.player.activate()
        heard = self.stage.record()
        self.player.add(track)
        self.player.pick(self.player.items()[0])
        wait_until(lambda: self.player.value("End loop position") == 11, "the track, and the pause behind it")
        self.player.click("Play", "push button")
        heard.wait_for_sound("the track of the disc")
        heard.stop()

    def test_a_test_writes_nothing_and_a_cancelled_write_leaves_nothing(self):
        self.make("song.wav", 6)
        self.make_slow("slow.wav")
        self.open_writer()
        self.add("song.wav")
        self.player.click("Test mode", "check box")
        self.write()
        self.assertEqual(self.written(), [])
        wait_until(lambda: not self.player.shows("song.wav"), "the list to be empty")

        self.player.click("Test mode", "check box")
        self.begin_slow_write()
        self.player.press("alt+F4")  # is refused
        self.player.click("Cancel", "push button")
        self.confirm("Write Cancelled!")
        self.assertEqual(self.written(), [])
        wait_until(lambda: self.player.says("1 Audio Tracks"), "the track to be still there")

    def test_a_write_goes_on_when_the_main_window_is_closed(self):
        self.make_slow("slow.wav")
        self.open_writer()
        self.begin_slow_write()
        self.player.activate()
        self.player.press("alt+F4")
        wait_until(lambda: not self.player.windows("^Larkspin$"), "the main window to go")
        self.assertTrue(self.player.is_running())
        self.player.wait_for_window("^Larkspin$")  # the message has the program's name
        self.confirm("Writing is complete!")
        self.assertEqual(len(self.written()), 2)
        self.player.press("alt+F4")
        wait_until(lambda: not self.player.is_running(), "the end of the program")
        self.assertEqual(self.player.process.returncode, 0)

    def test_a_source_that_is_gone_and_one_that_is_too_little_are_told(self):
        self.make("gone.wav", 5)
        self.make("little.wav", 5, "-ar", "22050")
        self.open_writer()
        self.add("little.wav", back_to=None)
        self.confirm("Invalid Audio Format...High quality audio files only!")
        self.add("gone.wav")
        os.remove(os.path.join(self.home, "gone.wav"))
        self.player.click("Write audio disc", "push button")
        self.confirm("Source File Error: (")
        wait_until(lambda: self.player.says("Write Error!"), "the last status")
        self.assertEqual(self.written(), [])


if __name__ == "__main__":
    end_on_signals()
    unittest.main(verbosity=2)

"""Removes a voice with the real program, from a song whose parts are known.

Run by ctest with the build folder and the project's stage on the path; see CMakeLists.txt beside this.
"""

import os
import subprocess
import unittest

from DesktopTest import BUILD, DesktopTest
from processes import end_on_signals, wait_until

REMOVER = "^Vocal Remover$"
VOCALMIX = os.path.join(BUILD, "tools", "vocalmixes", "vocalmix")
STEMS = os.path.join(BUILD, "vocal-stems")
DONE = "Audio successfuly created."
LOW, HIGH = "200", "8000"


class VocalTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.start_without_tips()
        home = self.stage.environment["HOME"]
        self.song = os.path.join(home, "song.wav")
        self.result = os.path.join(home, "songNoVocal.wav")
        self.recordings = os.path.join(home, "Documents", "Larkspin Recordings")
        self.mix = ["ballad", "singer", "0", "dry", "1", "14"]
        subprocess.run([VOCALMIX, "make", STEMS, *self.mix, self.song], check=True)

    def open_remover(self):
        self.player.press("ctrl+v")
        self.player.wait_for_window(REMOVER)

    def choose_song(self, path=None):
        self.player.click("Browse input", "push button")
        self.player.answer_file_dialog("^Open audio", path or self.song, REMOVER)

    def process(self):
        self.player.click("Process audio", "push button")
        self.player.await_box(DONE, 60)
        self.stage.screenshot(os.path.join(self.results, "done.png"))
        self.player.answer_box(DONE)
        wait_until(lambda: self.player.says("Status: Idle"), "the last status")

    def judge(self, result):
        told = subprocess.run([VOCALMIX, "judge", STEMS, *self.mix, LOW, HIGH, result], check=True,
                              stdout=subprocess.PIPE, text=True).stdout
        return {key: float(value) for key, value in (pair.split("=") for pair in told.split())}

    def test_a_song_becomes_a_backing_track(self):
        self.open_remover()
        self.choose_song()
        self.assertEqual(self.player.text("Output file"), self.result)
        self.process()
        found = self.judge(self.result)
        self.assertGreater(found["improvement"], 7)
        self.assertLess(abs(found["correlation"] - found["wanted_correlation"]), 0.2)
        self.assertEqual(found["delay"], 0)
        self.assertEqual(sorted(os.listdir(self.recordings)), ["tmpWavIn.wav", "tmpWavOut.wav"])

    def test_a_voice_at_the_side_is_taken_out_there(self):
        self.mix[2] = "-60"
        subprocess.run([VOCALMIX, "make", STEMS, *self.mix, self.song], check=True)
        self.open_remover()
        self.choose_song()
        self.player.set_value("Vocal pan", -60)
        self.process()
        self.assertGreater(self.judge(self.result)["improvement"], 6)

    def test_a_stretch_is_heard_without_the_voice_and_with_it(self):
        self.open_remover()
        self.choose_song()
        self.player.set_value("Position in seconds", 2)
        heard = self.stage.record()
        self.player.click("Play result", "push button")
        heard.wait_for_sound("the result")
        wait_until(lambda: self.player.says("Status : Playing modified audio "), "the status")
        self.player.click("Stop", "push button")
        heard.wait_for_silence("the stop")
        self.player.click("Play source", "push button")
        heard.wait_for_sound("the source")
        status = self.player.status("Status : Playing source audio ")
        wait_until(lambda: status().startswith("Status : Idle"), "the end of the stretch", 20)
        heard.wait_for_silence("the end of the stretch")
        heard.stop()

    def test_closed_in_the_middle_it_leaves_no_file_and_the_player_goes_on(self):
        long = os.path.join(os.path.dirname(self.song), "long.wav")
        subprocess.run(["ffmpeg", "-v", "error", "-stream_loop", "40", "-i", self.song, "-c", "copy", long],
                       stdin=subprocess.DEVNULL, check=True)
        temporary = [os.path.join(self.recordings, name) for name in ["tmpWavIn.wav", "tmpWavOut.wav"]]
        moments = {
            "loading": lambda: status().startswith("Status : Loading"),
            "processing": lambda: os.path.exists(temporary[0]),
            "preparing": lambda: os.path.exists(temporary[1]),
            "exporting": lambda: status().startswith("Status : Exporting"),
        }
        for moment, has_come in moments.items():
            for path in filter(os.path.exists, temporary):
                os.remove(path)
            self.open_remover()
            self.choose_song(long)
            status = self.player.status("Status")
            self.player.click("Process audio", "push button")
            wait_until(has_come, moment, 60)
            self.player.press("alt+F4")
            self.player.wait_for_no_window(REMOVER)
            self.player.activate()
        self.assertFalse(os.path.exists(long.replace(".wav", "NoVocal.wav")))
        heard = self.stage.record()
        self.load()
        self.player.click("Play", "push button")
        heard.wait_for_sound("the track")
        heard.stop()

    def test_a_song_that_is_gone_or_mono_is_refused(self):
        mono = os.path.join(os.path.dirname(self.song), "mono.wav")
        subprocess.run(["ffmpeg", "-v", "error", "-i", self.song, "-ac", "1", mono], stdin=subprocess.DEVNULL, check=True)
        self.open_remover()
        self.choose_song(mono)
        self.player.click("Process audio", "push button")
        self.player.answer_box("File could not be prepared for export.", 60)

        self.choose_song()
        os.remove(self.song)
        for button in ["Process audio", "Play result"]:
            self.player.act(button, "push button")  # returns when the command has
        self.assertFalse(self.player.box_says("File could"))
        self.assertFalse(os.path.exists(self.result))
        self.assertTrue(self.player.is_running())


if __name__ == "__main__":
    end_on_signals()
    unittest.main(verbosity=2)

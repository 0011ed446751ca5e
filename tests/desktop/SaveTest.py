"""Saves the changed sound as a user does, and has other programs judge the files.

Run by ctest with the build folder and the project's stage on the path; see CMakeLists.txt beside this.
"""

import json
import os
import re
import subprocess
import unittest
import wave

from DesktopTest import BUILD, SECONDS, WAV, DesktopTest
from gaps import Gaps
from measure import measure
from processes import end_on_signals, wait_until
from stage import RATE

EXPORTING = "Exporting audio, please wait..."
DONE = "File successfully created."
LONG = 3 * SECONDS  # takes some seconds to save
EXCERPT = 12  # seconds of the track, enough to tell tempo and pitch
FRAMES = round(EXCERPT * 44100 / 0.8)  # at -20 percent

# The name that is typed, the container and the coding that it stands for, and how many frames the file may hold beyond
# those of the sound: WMA and AAC tell nothing of what their encoders add, and ffmpeg plays what MP4 tells to leave out.
NAMES = [
    ("slow.wav", "wav", "pcm_s16le", 0),
    ("slow.mp3", "mp3", "mp3", 0),
    ("slow.wma", "asf", "wmav2", 4096),
    ("slow.aac", "aac", "aac", 3072),
    ("slow.mp4", "mp4", "aac", 1024),
    ("slow.ogg", "ogg", "vorbis", 0),
    ("LOUD.MP3", "mp3", "mp3", 0),
    ("slow.flac", "wav", "pcm_s16le", 0),
    ("slow.m4a", "wav", "pcm_s16le", 0),
    ("take", "mp3", "mp3", 0),  # the dialog offers MP3 first
]


class Saving(DesktopTest):
    def setUp(self):
        super().setUp()
        self.start_without_tips()
        self.folder = os.path.join(self.stage.environment["HOME"], "saved")
        os.makedirs(self.folder)

    def load_changed(self, seconds):
        """Loads so much of the track, in rounds, slower by a fifth and two semitones higher."""
        path = os.path.join(self.stage.environment["HOME"], "track.wav")
        with wave.open(WAV, "rb") as track, wave.open(path, "wb") as copy:
            copy.setparams(track.getparams())
            frames = track.readframes(min(seconds, SECONDS) * RATE)
            for _ in range(max(1, seconds // SECONDS)):
                copy.writeframes(frames)
        self.player.add(path)
        self.player.pick("track (Wav file)")
        wait_until(lambda: self.player.value("End loop position") == seconds, "the track to load")
        self.player.set_value("Tempo in percent", -20)
        self.player.set_value("Pitch in semitones", 2)

    def start_saving(self, name):
        self.player.activate()
        self.player.press("ctrl+s")
        self.player.answer_file_dialog("^Save audio as", os.path.join(self.folder, name), back_to=None)


class SaveTest(Saving):
    def probe(self, path):
        done = subprocess.run(["ffprobe", "-v", "error", "-of", "json", "-show_streams", "-show_format", path],
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, check=True)
        return json.loads(done.stdout)

    def decode(self, path):
        decoded = os.path.join(self.folder, "decoded.wav")
        subprocess.run(["ffmpeg", "-v", "error", "-y", "-i", path, "-c:a", "pcm_f32le", decoded],
                       stdin=subprocess.DEVNULL, check=True)
        return decoded

    def judge(self, path, container, coding, beyond):
        found = self.probe(path)
        self.assertIn(container, found["format"]["format_name"].split(","))
        stream = found["streams"][0]
        self.assertEqual((stream["codec_name"], stream["sample_rate"], stream["channels"]), (coding, "44100", 2))
        decoded = self.decode(path)
        frames = int(self.probe(decoded)["streams"][0]["duration_ts"])
        self.assertGreaterEqual(frames, FRAMES)
        self.assertLessEqual(frames, FRAMES + beyond)
        heard = measure(os.path.join(BUILD, "tools", "heard", "heard"), WAV, decoded,
                        [("it", 1, 14, "pitch gaps")])["it"]
        self.assertAlmostEqual(heard["tempo"], 0.8, delta=0.003)
        self.assertAlmostEqual(heard["cents"], 200, delta=4)
        self.assertEqual(heard["gaps"], 0)

    def test_each_name_gets_its_format_and_the_changed_sound(self):
        self.load_changed(EXCERPT)
        for name, container, coding, beyond in NAMES:
            with self.subTest(name):
                self.start_saving(name)
                self.player.answer_box(DONE, 60)
                self.judge(os.path.join(self.folder, name if "." in name else name + ".mp3"), container, coding, beyond)

    def test_a_folder_that_may_not_be_written_is_told(self):
        self.load_changed(EXCERPT)
        self.start_saving("/sys/slow.wav")  # not even an administrator makes files there
        self.player.answer_box("Export to file failed.")
        self.start_saving("slow.wav")
        self.player.answer_box(DONE, 60)
        self.assertEqual(os.listdir(self.folder), ["slow.wav"])

    def test_closing_the_program_in_the_middle_leaves_nothing(self):
        self.load_changed(LONG)
        self.start_saving("slow.wav")
        wait_until(lambda: self.player.says(EXPORTING), "the export")
        self.assertEqual(self.player.close(), 0)
        self.assertEqual(os.listdir(self.folder), [])

    def test_without_a_track_the_message_comes_before_any_dialog(self):
        self.player.press("ctrl+s")
        self.player.answer_box("Please select file from playlist.")


class SaveWhilePlayingTest(Saving):
    def test_playing_goes_on_while_the_file_is_written_and_the_window_tells_how_far_it_is(self):
        self.load_changed(LONG)
        recording = self.stage.record()
        self.player.click("Play", "push button")
        recording.wait_for_sound("the track")
        gaps = Gaps(self.stage, recording)
        begin = recording.seconds()
        self.start_saving("slow.mp3")
        status = self.player.status(EXPORTING)
        told = [status()]

        def finished():
            gaps.compare_clocks()
            text = status()
            if text.startswith(EXPORTING) and text != told[-1]:
                told.append(text)
            return self.player.box_says(DONE)

        wait_until(finished, "the file", 60)
        end = recording.seconds()
        self.player.answer_box(DONE)
        percents = [int(re.fullmatch(r"Exporting audio, please wait\.\.\.(\d{1,3})%", text)[1]) for text in told]
        self.assertGreater(len(percents), 5)
        self.assertEqual(percents, sorted(percents))
        recording.save(os.path.join(self.results, "heard.wav"))
        self.assertEqual([str(gap) for gap in gaps.between(begin, end) if not gap.explained()], [])


if __name__ == "__main__":
    end_on_signals()
    unittest.main(verbosity=2)

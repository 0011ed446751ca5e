"""Drives the real program as a user does, and listens to its speakers.

Run by ctest with the build folder and the project's stage on the path; see CMakeLists.txt beside this.
"""

import os
import unittest

from DesktopTest import BUILD, LABEL_OF_WAV, SECONDS, WAV, DesktopTest
from gaps import Gaps
from measure import measure
from processes import end_on_signals, wait_until

MP3 = os.path.join(BUILD, "practice", "before-the-lesson.mp3")
LABEL_OF_MP3 = "before-the-lesson (MP3 file)"
SETTLED = 0.5


class PlayerTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.start_without_tips()

    def play(self):
        self.player.click("Play", "push button")

    def heard(self, recording, begin, end, measures):
        path = os.path.join(self.results, "heard.wav")
        recording.save(path)
        program = os.path.join(BUILD, "tools", "heard", "heard")
        return measure(program, WAV, path, [("it", begin, end, measures)])["it"]

    def listen(self, recording, seconds, measures):
        """Measures so much of what is heard from now on: where the machine stood still meanwhile, what comes after that."""
        gaps = Gaps(self.stage, recording)
        self.addCleanup(gaps.end)
        for _ in range(3):
            recording.wait(SETTLED)
            begin = recording.seconds()
            recording.wait(seconds)
            found = gaps.between(begin, begin + seconds)
            self.assertEqual([str(gap) for gap in found if not gap.explained()], [])
            if not found:
                return self.heard(recording, begin, begin + seconds, measures)
        raise self.failureException("the machine stands still again and again")

    def test_unchanged_sound_is_heard_to_the_bit(self):
        recording = self.stage.record()
        self.load(WAV, LABEL_OF_WAV)
        self.play()
        recording.wait_for_sound("the track")
        found = self.listen(recording, 4, "difference")
        self.assertEqual(found["difference"], 0)

    def test_the_tempo_buttons_change_the_speed_and_not_the_pitch(self):
        recording = self.stage.record()
        self.load(MP3, LABEL_OF_MP3)
        self.play()
        self.player.click("Tempo down by 10 percent", "push button", times=2)
        self.player.click("Tempo down by 1 percent", "push button", times=5)
        wait_until(lambda: self.player.value("Tempo in percent") == -25, "the tempo slider")
        recording.wait_for_sound("the track")
        found = self.listen(recording, 8, "pitch")
        self.assertAlmostEqual(found["tempo"], 0.75, delta=0.003)
        self.assertAlmostEqual(found["cents"], 0, delta=4)

    def test_the_pitch_buttons_change_the_pitch_and_not_the_speed(self):
        recording = self.stage.record()
        self.load(MP3, LABEL_OF_MP3)
        self.play()
        self.player.click("Pitch down by a semitone", "push button", times=3)
        wait_until(lambda: self.player.value("Pitch in semitones") == -3, "the pitch slider")
        recording.wait_for_sound("the track")
        found = self.listen(recording, 8, "pitch")
        self.assertAlmostEqual(found["tempo"], 1, delta=0.004)
        self.assertAlmostEqual(found["cents"], -300, delta=4)

    def test_a_loop_comes_back_to_the_frame(self):
        recording = self.stage.record()
        self.load(WAV, LABEL_OF_WAV)
        self.player.slide("Begin loop position", 4)
        self.player.slide("End loop position", 6)
        self.player.enter("Thousandths of the begin loop position", "250")
        self.player.enter("Thousandths of the end loop position", "595")
        self.player.click("Play loop", "push button")
        recording.wait_for_sound("the loop")
        found = self.listen(recording, 12, "period")
        self.assertAlmostEqual(found["period_frames"], 103415, delta=0.05)  # frames 187425 to 290840
        self.assertEqual(found["by"], "waves")

    def test_pause_and_stop_are_silent_and_play_goes_on(self):
        recording = self.stage.record()
        self.load(MP3, LABEL_OF_MP3)
        self.play()
        recording.wait_for_sound("the track")
        self.player.click("Pause", "push button")
        recording.wait_for_silence("the pause")
        self.player.click("Pause", "push button")
        recording.wait_for_sound("the track after the pause")
        self.player.click("Stop", "push button")
        recording.wait_for_silence("the stop")
        self.assertEqual(self.player.value("Audio position"), 0)

    def test_the_playlist_is_there_again_at_the_next_start(self):
        self.player.add(MP3)
        self.player.add(WAV)
        self.assertEqual(self.player.close(), 0)
        self.player.start()
        self.assertEqual(self.player.items(), [LABEL_OF_MP3, LABEL_OF_WAV])
        recording = self.stage.record()
        self.player.pick(LABEL_OF_WAV)
        wait_until(lambda: self.player.value("End loop position") == SECONDS, "the track to load")
        self.play()
        recording.wait_for_sound("a track of the kept list")

    def test_closing_while_it_plays_ends_the_program_and_the_sound(self):
        recording = self.stage.record()
        self.load(MP3, LABEL_OF_MP3)
        self.play()
        recording.wait_for_sound("the track")
        self.assertEqual(self.player.close(), 0)
        recording.wait_for_silence("the end of the program")

    def test_sound_comes_back_after_the_sound_server_was_restarted(self):
        recording = self.stage.record()
        self.load(MP3, LABEL_OF_MP3)
        self.play()
        recording.wait_for_sound("the track")
        self.stage.kill_sound_server()
        before = self.player.value("Audio position")
        wait_until(lambda: self.player.value("Audio position") >= before + 2, "the position to go on without a server")

        self.stage.start_sound_server()
        self.stage.record().wait_for_sound("the track on the new server", 15)
        self.assertEqual(self.player.close(), 0)


if __name__ == "__main__":
    end_on_signals()
    unittest.main(verbosity=2)

"""Works the real program by keys alone: every accelerator, on a real display."""

import os
import unittest

from DesktopTest import BUILD, LABEL_OF_WAV, SECONDS, WAV, DesktopTest
from processes import end_on_signals, wait_until

TEMPO = "Tempo in percent"
SEMITONES = "Pitch in semitones"
GRADUAL = "Pitch in hundredths of a semitone"
RATE = "Tempo and pitch in percent"
SLIDERS = (TEMPO, SEMITONES, GRADUAL, RATE)

# Which slider a key moves, and by how much.
STEPS = (
    ("Right", TEMPO, 10),
    ("Left", TEMPO, -10),
    ("ctrl+Right", TEMPO, 1),
    ("ctrl+Left", TEMPO, -1),
    ("Up", SEMITONES, 1),
    ("Down", SEMITONES, -1),
    ("shift+Up", SEMITONES, 12),
    ("shift+Down", SEMITONES, -12),
    ("ctrl+Up", GRADUAL, 12),
    ("ctrl+Down", GRADUAL, -12),
    ("alt+Up", GRADUAL, 1),
    ("alt+Down", GRADUAL, -1),
    ("Prior", RATE, 10),
    ("Next", RATE, -10),
    ("ctrl+Prior", RATE, 1),
    ("ctrl+Next", RATE, -1),
)

# Places of keys on the keyboard, whatever they are called with Num Lock or without it.
KEYPAD = {0: "90", 1: "87", 3: "89"}


class CommandsTest(DesktopTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.opened = os.path.join(cls.stage.folder, "opened")
        cls.stage.stand_in("xdg-open", f'echo "$1" >> "{cls.opened}"')
        cls.stage.stand_in("xdg-mime", "exit 0")

    def setUp(self):
        super().setUp()
        self.start_without_tips()

    def assert_sliders(self, **wanted):
        values = {name: wanted.get(name, 0) for name in SLIDERS}
        wait_until(lambda: {name: self.player.value(name) for name in SLIDERS} == values, f"the sliders at {values}", 5)

    def position(self):
        return self.player.value("Audio position")

    def test_each_key_of_tempo_and_pitch_moves_its_slider_and_escape_resets_it(self):
        for key, slider, change in STEPS:
            with self.subTest(key=key):
                self.player.press(key)
                self.assert_sliders(**{slider: change})
                self.player.press("Escape")
                self.assert_sliders()

    def test_the_reset_keys_reset_their_sliders(self):
        self.player.press("Right", "Up", "Prior")
        self.assert_sliders(**{TEMPO: 10, SEMITONES: 1, RATE: 10})
        self.player.press("End")
        self.assert_sliders(**{TEMPO: 10, RATE: 10})
        self.player.press("Home")
        self.assert_sliders(**{TEMPO: 10})
        self.player.press(KEYPAD[0])
        self.assert_sliders()

    def test_the_keypad_works_with_num_lock_and_without_it(self):
        self.load()
        self.player.click("Play", "push button")
        for _ in range(2):  # once with Num Lock off, once with it on
            before = self.position()
            self.player.press(KEYPAD[3])
            wait_until(lambda: before + 5 <= self.position() <= before + 9, "five seconds forward", 5)
            self.player.press(KEYPAD[1])
            wait_until(lambda: self.position() < before + 5, "five seconds back", 5)
            self.player.press("Right")
            self.assert_sliders(**{TEMPO: 10})
            self.player.press(KEYPAD[0])
            self.assert_sliders()
            self.player.press("Num_Lock")

    def test_the_digit_row_is_no_keypad(self):
        self.player.press("Right", "0", "1", "3")
        self.assert_sliders(**{TEMPO: 10})

    def test_playing_is_worked_by_keys(self):
        recording = self.stage.record()
        self.load()
        self.player.press("ctrl+p")
        recording.wait_for_sound("the track")
        self.player.press("Pause")
        recording.wait_for_silence("the pause")
        self.player.press("Pause")
        recording.wait_for_sound("the track after the pause")
        self.player.press("BackSpace")
        recording.wait_for_silence("the stop")
        self.player.press("ctrl+l")  # inert
        self.player.press("ctrl+s", "ctrl+r", "ctrl+e", "ctrl+v")
        recording.wait(1)
        recording.wait_for_silence("nothing")
        self.assertEqual(self.position(), 0)

    def test_the_loop_window_moves_by_keys(self):
        self.load()
        self.player.slide("Begin loop position", 4)
        self.player.slide("End loop position", 6)
        self.player.press("shift+Right", "shift+Right")
        wait_until(lambda: self.player.value("Begin loop position") == 6, "the loop window to move on")
        self.assertEqual(self.player.value("End loop position"), 8)
        self.player.press("shift+Left")
        wait_until(lambda: self.player.value("End loop position") == 7, "the loop window to move back")

    def test_a_text_box_keeps_its_editing_keys(self):
        self.load()
        box = "Thousandths of the begin loop position"
        self.player.enter(box, "345")
        self.player.press("Home", "Delete")
        wait_until(lambda: self.player.text(box) == "45", "the first digit to go")
        self.player.press("End", "BackSpace")
        wait_until(lambda: self.player.text(box) == "4", "the last digit to go")
        self.player.press("shift+Left", "ctrl+c", "ctrl+v", "ctrl+v")
        wait_until(lambda: self.player.text(box) == "44", "the digit copied")
        self.assert_sliders()
        self.assertEqual(self.player.items(), [LABEL_OF_WAV])

    def test_a_text_box_takes_the_digits_of_the_keypad(self):
        self.load()
        self.player.press("Num_Lock")
        self.addCleanup(self.player.press, "Num_Lock")
        box = "Thousandths of the end loop position"
        self.player.enter(box, "2")
        self.player.press(KEYPAD[1], KEYPAD[3])
        wait_until(lambda: self.player.text(box) == "213", "the digits of the keypad")

    def test_the_playlist_is_worked_by_keys(self):
        self.player.press("ctrl+o")
        self.player.answer_file_dialog("^Open audio", WAV)
        wait_until(lambda: self.player.items() == [LABEL_OF_WAV], "the new item")
        self.player.add(WAV)
        self.player.focus("Playlist", "list")
        self.player.type("bef")
        wait_until(lambda: self.player.value("End loop position") == SECONDS, "the track that was typed")
        self.player.press("ctrl+shift+Down")
        wait_until(lambda: self.player.selected() == 1, "the next track")
        self.player.press("Delete")
        wait_until(lambda: len(self.player.items()) == 1, "the selected item to go")
        self.player.press("ctrl+Delete")
        wait_until(lambda: self.player.items() == [], "the list to be empty")

    def test_a_slider_with_the_focus_moves_with_control_and_shift(self):
        self.player.focus(GRADUAL, "slider")
        self.player.press("ctrl+shift+Right", "ctrl+shift+Right")
        self.assert_sliders(**{GRADUAL: 2})
        self.player.press("Right")
        self.assert_sliders(**{GRADUAL: 2, TEMPO: 10})

    def page_opened(self):
        if not os.path.exists(self.opened):
            return ""
        with open(self.opened) as opened:
            return opened.read()

    def test_the_manual_opens_by_f1(self):
        self.player.press("F1")
        wait_until(lambda: self.page_opened().endswith("\n"), "a page to be opened")
        self.assertEqual(self.page_opened().strip(), "file://" + os.path.join(BUILD, "manual", "index.html"))

    def test_the_window_closes_by_its_menu(self):
        self.player.press("alt+f", "e")
        wait_until(lambda: not self.player.is_running(), "the program to end", 10)
        self.assertEqual(self.player.process.returncode, 0)


if __name__ == "__main__":
    end_on_signals()
    unittest.main(verbosity=2)

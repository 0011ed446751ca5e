"""Works the real program as a screen reader does: finds every control by its name and acts on it without keys or mouse."""

import os
import unittest

from DesktopTest import DesktopTest
from player import TOOL_BAR
from processes import end_on_signals, wait_until

# What a user can act on, and what it must be called by.
ACTIVE = {"push button", "toggle button", "slider", "text", "check box", "list", "combo box", "menu item"}

PANELS = {
    "push button": [
        "Open audio file", "Add mark", "Begin loop one thousandth back", "Begin loop one thousandth on",
        "End loop one thousandth back", "End loop one thousandth on", "5 seconds back", "Play", "Play loop", "Pause",
        "Stop", "5 seconds forward", "Tempo down by 10 percent", "Tempo down by 1 percent", "Tempo up by 1 percent",
        "Tempo up by 10 percent", "Reset tempo", "Pitch down by an octave", "Pitch down by a semitone",
        "Pitch up by a semitone", "Pitch up by an octave", "Reset pitch semitones", "Gradual pitch down by 1 percent",
        "Gradual pitch down by 0.1 percent", "Gradual pitch up by 0.1 percent", "Gradual pitch up by 1 percent",
        "Reset gradual pitch", "Tempo and pitch down by 10 percent", "Tempo and pitch down by 1 percent",
        "Tempo and pitch up by 1 percent", "Tempo and pitch up by 10 percent", "Reset tempo and pitch",
        "Beats per minute calculator", "Transpose calculator", "Reset all", "Volume down", "Volume up",
        "Balance to left", "Balance to right", "Reset balance", "Decrease fading interval",
        "Increase fading interval", "Fade in", "Fade out", "Visit Orvenda web site", "Collapse sound options",
        "Reset all bands", "Load preset", "Save preset",
    ],
    "slider": [
        "Audio position", "Begin loop position", "End loop position", "Tempo in percent", "Pitch in semitones",
        "Pitch in hundredths of a semitone", "Tempo and pitch in percent", "Volume in percent", "Balance",
        "80 Hz", "170 Hz", "310 Hz", "600 Hz", "1 kHz", "3 kHz", "6 kHz", "12 kHz", "14 kHz", "16 kHz",
    ],
    "text": [
        "Thousandths of the begin loop position", "Thousandths of the end loop position", "Fading interval in seconds",
    ],
    "check box": ["Apply settings to all list members"],
    "list": ["Playlist"],
    "progress bar": ["Level left", "Level right"],
}


class AccessibilityTest(DesktopTest):
    def test_every_control_of_the_window_has_its_name(self):
        self.start_without_tips()
        self.player.act("Expand sound options", "push button")
        self.player.find("Save preset", "push button")
        found = {(item.get_role_name(), item.get_name()) for item in self.player.showing(without=TOOL_BAR)}
        for role, names in PANELS.items():
            for name in names:
                with self.subTest(role=role, name=name):
                    self.assertIn((role, name), found)
        unnamed = [item.get_role_name() for item in self.player.showing() if item.get_role_name() in ACTIVE
                   and not item.get_name()]
        self.assertEqual(unnamed, [])

    def test_tempo_and_pitch_are_set_through_their_sliders(self):
        self.start_without_tips()
        self.player.set_value("Tempo in percent", -25)
        wait_until(lambda: self.player.shows("75%", "label"), "the read-out of the tempo")
        self.player.set_value("Pitch in semitones", 3)
        wait_until(lambda: self.player.shows("3", "label"), "the read-out of the pitch")
        self.player.act("Reset all", "push button")
        wait_until(lambda: self.player.value("Tempo in percent") == 0 == self.player.value("Pitch in semitones"),
                   "the sliders to go back")

    def test_a_track_is_played_marked_and_stopped(self):
        self.start_without_tips()
        self.load()
        recording = self.stage.record()
        self.player.act("Play", "push button")
        recording.wait_for_sound("the track")
        wait_until(lambda: self.player.value("Audio position") >= 1, "the first second")
        self.player.act("Add mark", "push button")
        mark = wait_until(lambda: self.player.items("Mark list"), "the mark")[0]
        self.assertRegex(mark, r"^00:0\d:\d\d$")
        self.player.act("Stop", "push button")
        recording.wait_for_silence("the stop")
        self.player.click(mark, "list item")
        recording.wait_for_sound("the track from the mark on")
        self.assertGreater(self.player.find("Level left", "progress bar").get_current_value(), 0)

    def test_the_equalizer_follows_its_presets(self):
        self.start_without_tips()
        self.player.act("Expand sound options", "push button")
        self.player.set_value("1 kHz", 300)
        self.player.act("Reset all bands", "push button")
        wait_until(lambda: self.player.value("1 kHz") == 0, "the band to go back")
        self.player.choose(0, "Full Bass")
        wait_until(lambda: self.player.shows("Full Bass", "combo box"), "the preset")
        wait_until(lambda: self.player.value("80 Hz") > 0, "the bass to be raised")

    def test_a_fade_walks_the_volume_down(self):
        self.start_without_tips()
        self.player.act("Decrease fading interval", "push button")
        self.player.act("Decrease fading interval", "push button")
        self.player.act("Fade out", "push button")
        wait_until(lambda: self.player.value("Volume in percent") == 0, "the end of the fade", 10)

    def test_a_transposition_is_calculated_and_applied(self):
        self.start_without_tips()
        self.player.press("ctrl+t")
        self.player.wait_for_window("^Transpose calculator$")
        self.player.choose(0, "G")
        self.player.choose(1, "A")
        self.player.find("2 up or 10 down", "label")
        self.player.click("Transpose up", "push button")
        self.player.wait_for_no_window("^Transpose calculator$")
        wait_until(lambda: self.player.value("Pitch in semitones") == 2, "the transposition")

    def test_beats_are_counted_and_a_tempo_is_applied(self):
        self.start_without_tips()
        self.player.press("ctrl+b")
        self.player.wait_for_window("^Beats per minute calculator$")
        self.player.click("Determine tempo, click with each beat", "push button", times=8)
        wait_until(lambda: self.player.shows("96 Bpm", "label"), "the result", 10)
        self.player.choose(0, "120")
        self.player.click("Apply new tempo", "push button")
        self.player.wait_for_no_window("^Beats per minute calculator$")
        wait_until(lambda: self.player.value("Tempo in percent") == 25, "the new tempo")

    def test_a_tip_comes_at_the_start_until_it_is_declined(self):
        self.start()
        self.player.wait_for_window("^Tip of the Day$")
        self.player.find("2", "label")
        self.player.act("Next tip", "push button")
        wait_until(lambda: self.player.shows("3", "label"), "the next tip")
        self.player.act("Show tips at startup", "check box")
        self.player.act("Close", "push button")
        self.player.wait_for_no_window("^Tip of the Day$")
        self.assertEqual(self.player.close(), 0)
        with open(os.path.join(self.stage.environment["HOME"], ".config", "Larkspin", "Larkspin.conf")) as settings:
            self.assertIn("Show%20Tips%20at%20Startup=0", settings.read())

    def test_the_about_window_names_the_program(self):
        self.start_without_tips()
        self.player.press("alt+h", "a")
        self.player.wait_for_window("^About Larkspin$")
        self.player.find("Version 0.1.0", "label")
        self.player.click("System information", "push button")
        self.player.find("System Information Is Unavailable At This Time", "label")


if __name__ == "__main__":
    end_on_signals()
    unittest.main(verbosity=2)

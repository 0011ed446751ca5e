"""What the desktop tests share: a stage for each script, and a player with a home of its own for each test."""

import os
import unittest

from player import Player
from processes import wait_until
from stage import Stage

BUILD = os.environ["LARKSPIN_BUILD"]
WAV = os.path.join(BUILD, "practice", "before-the-lesson.wav")
LABEL_OF_WAV = "before-the-lesson (Wav file)"
SECONDS = 34  # of the track


class DesktopTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.kept = os.path.join(BUILD, "desktop", cls.__name__)
        cls.stage = cls.enterClassContext(Stage(logs=cls.kept))

    def setUp(self):
        self.results = os.path.join(self.kept, self.id().split(".")[-1])
        os.makedirs(self.results, exist_ok=True)
        self.stage.new_home()

    def start(self, **settings):
        """Starts the program as its user finds it who has chosen these settings earlier."""
        self.stage.choose(**settings)
        self.player = Player(self.stage, os.path.join(BUILD, "larkspin"))
        self.addCleanup(self.player.end)
        self.addCleanup(self.keep_screenshot)  # runs before the end of the player
        self.player.start()

    def start_without_tips(self):
        self.start(Show_Tips_at_Startup=0)

    def keep_screenshot(self):
        self.stage.screenshot(os.path.join(self.results, "screen.png"))

    def load(self, path=WAV, label=LABEL_OF_WAV):
        self.player.add(path)
        self.player.pick(label)
        wait_until(lambda: self.player.value("End loop position") == SECONDS, "the track to load")

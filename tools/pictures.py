"""Takes the pictures of the README and the manual from the real program.

    python3 tools/pictures.py build/release

Run it when the windows have changed. Each picture is a window, without its frame, at one and a half times the usual size.
"""

import os
import shutil
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(ROOT, "tools", "stage"))

from player import Player
from processes import end_on_signals, wait_until
from stage import Stage

MANUAL = os.path.join(ROOT, "docs", "manual", "pictures")
TRACKS = ("before-the-lesson.mp3", "before-the-lesson.wav")


def take(stage, title, path, crop=None):
    time.sleep(0.7)  # what is drawn at the last moment shall be in the picture
    window = stage.run("xdotool", "search", "--onlyvisible", "--name", title).split()[0]
    cut = ["-crop", crop, "+repage"] if crop else []
    stage.run("convert", "x:" + window, *cut, "-depth", "8", "+dither", "-colors", "192", path)


def main():
    build = os.path.abspath(sys.argv[1])
    end_on_signals()
    with Stage(size="2600x1700") as stage:
        stage.choose(Show_Tips_at_Startup=0)
        stage.environment["QT_SCALE_FACTOR"] = "1.5"
        player = Player(stage, os.path.join(build, "larkspin"))
        player.start()
        for track in TRACKS:
            player.add(os.path.join(build, "practice", track))
        player.pick("before-the-lesson (MP3 file)")
        wait_until(lambda: player.value("End loop position") == 34, "the track to load")
        player.set_value("Tempo in percent", -20)
        player.set_value("Pitch in semitones", 2)
        player.set_value("Begin loop position", 4)
        player.set_value("End loop position", 12)
        player.enter("Thousandths of the begin loop position", "250")
        player.enter("Thousandths of the end loop position", "595")
        player.click("Play loop", "push button")
        time.sleep(1.5)
        take(stage, "^Larkspin$", os.path.join(MANUAL, "larkspin.png"))
        for _ in range(3):
            player.press("F5")
            time.sleep(1.2)
        player.click("Expand sound options", "push button")
        player.choose(0, "Full Bass Treble")
        take(stage, "^Larkspin$", os.path.join(MANUAL, "expanded.png"))
        x, y, width, height = player.place("Playlist", "list")
        left, top = player.origin()
        take(stage, "^Larkspin$", os.path.join(MANUAL, "marks.png"),
             f"{width + 32:.0f}x{height + 335:.0f}+{max(0, x - left - 20):.0f}+{y - top - 70:.0f}")
        player.click("Collapse sound options", "push button")
        player.press("ctrl+t")
        player.wait_for_window("^Transpose calculator$")
        player.choose(0, "G")
        player.choose(1, "A")
        take(stage, "^Transpose calculator$", os.path.join(MANUAL, "transpose.png"))
        player.press("alt+F4")
        player.wait_for_no_window("^Transpose calculator$")
        player.activate()
        player.press("ctrl+b")
        player.wait_for_window("^Beats per minute calculator$")
        player.click("Determine tempo, click with each beat", "push button", times=10)
        wait_until(lambda: player.shows("120 Bpm", "label"), "the result", 10)
        player.choose(0, "96")
        take(stage, "^Beats per minute calculator$", os.path.join(MANUAL, "bpm.png"))
        player.press("alt+F4")
        player.wait_for_no_window("^Beats per minute calculator$")
        player.activate()
        player.press("ctrl+r")
        player.wait_for_window("^Recorder initial settings$")
        take(stage, "^Recorder initial settings$", os.path.join(MANUAL, "recorder-tip.png"))
        player.press("Return")
        player.wait_for_window("^Sound card recorder$")
        player.click("Expand additional options", "push button")
        player.press("alt+r")
        time.sleep(2)
        take(stage, "^Sound card recorder$", os.path.join(MANUAL, "recorder.png"))
        player.press("alt+F4")
        player.wait_for_no_window("^Sound card recorder$")
        player.activate()
        player.press("ctrl+v")
        player.wait_for_window("^Vocal Remover$")
        player.click("Browse input", "push button")
        player.answer_file_dialog("^Open audio", shutil.copy(os.path.join(build, "practice", TRACKS[0]), stage.folder),
                                  "^Vocal Remover$")
        player.set_value("Low cut-off frequency in hertz", 150)
        player.set_value("Vocal pan", 20)
        player.set_value("Position in seconds", 5)
        time.sleep(1)
        take(stage, "^Vocal Remover$", os.path.join(MANUAL, "vocal-remover.png"))
        player.press("alt+F4")
        player.wait_for_no_window("^Vocal Remover$")
        player.activate()
        with tempfile.TemporaryDirectory(prefix="songs-") as songs:
            encoder(stage, player, shutil.copy(os.path.join(build, "practice", TRACKS[1]), songs))
            disc(stage, player, [shutil.copy(os.path.join(build, "practice", track), songs) for track in TRACKS])
            player.end()


def encoder(stage, player, song):
    player.press("ctrl+e")
    player.wait_for_window("^MP3 encoder$")
    player.click("Browse", "push button")
    player.answer_file_dialog("^Select a file to encode$", song, "^MP3 encoder$")
    player.click("Options", "push button")
    player.click("Joint", "radio button")
    player.click("Use variable bitrate", "check box")
    take(stage, "^MP3 encoder$", os.path.join(MANUAL, "mp3-encoder.png"))
    player.press("alt+F4")
    player.wait_for_no_window("^MP3 encoder$")
    player.activate()


def disc(stage, player, songs):
    player.click_in_tool_bar("Burn Audio CD")
    for song in songs:
        player.wait_for_window("^Audio CD Writer$")
        player.click("Add audio track", "push button")
        player.answer_file_dialog("^Open audio", song, "^Audio CD Writer$")
    player.wait_for_window("^Audio CD Writer$")
    wait_until(lambda: player.shows("2 Audio Tracks"), "the tracks")
    player.click("Disc at once", "check box")
    take(stage, "^Audio CD Writer$", os.path.join(MANUAL, "audio-cd-writer.png"))


if __name__ == "__main__":
    main()

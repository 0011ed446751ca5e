"""From the start of a process to its main window on the screen, and what it costs while nothing happens.

    PYTHONPATH=tools/stage python3 bench/startup.py build/release [OTHER-PLAYER ITS-TITLE]

In a display and a sound server of their own, by turns with the other player, ten starts each. Prints milliseconds
(smallest, middle, largest), then the part of a core that the player takes with a sound loaded and stopped, and while it
plays, over 20 s each.
"""

import os
import statistics
import sys
import time

from player import Player
from processes import end_on_signals, wait_until
from stage import Stage

STARTS = 10
IDLE_SECONDS = 20


def shown(stage, title, at_least):
    """Whether a window of this title and width is on the screen: the splash has the title of the main window."""
    for window in stage.run("xdotool", "search", "--onlyvisible", "--name", title, check=False).split():
        geometry = stage.run("xdotool", "getwindowgeometry", "--shell", window, check=False)
        if any(int(line[6:]) >= at_least for line in geometry.splitlines() if line.startswith("WIDTH=")):
            return True
    return False


def start_time(stage, program, title, at_least):
    begin = time.monotonic()
    process = stage.processes.start("startup", [program], stage.environment)
    while not shown(stage, title, at_least):
        if process.poll() is not None or time.monotonic() - begin > 20:
            raise RuntimeError(f"{program} shows no window: see {stage.logs}/startup.log")
    taken = time.monotonic() - begin
    stage.processes.end(process)
    wait_until(lambda: not stage.run("xdotool", "search", "--onlyvisible", "--name", title, check=False), "its end")
    return taken * 1000


def cpu_seconds(process):
    with open(f"/proc/{process.pid}/stat") as stat:
        fields = stat.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def core_share(process):
    before = cpu_seconds(process)
    time.sleep(IDLE_SECONDS)
    return (cpu_seconds(process) - before) / IDLE_SECONDS


def prepare_home(stage):
    """That of a user who has started the program before and wants no tips."""
    stage.choose(Show_Tips_at_Startup=0)
    folder = os.path.join(stage.environment["HOME"], ".local", "share", "Larkspin")
    os.makedirs(folder)
    for name in ("list.pms", "path.pms"):
        open(os.path.join(folder, name), "w").close()


def main():
    build = os.path.abspath(sys.argv[1])
    programs = {"larkspin": (os.path.join(build, "larkspin"), "^Larkspin$", 600)}
    if len(sys.argv) > 3:
        programs[sys.argv[2]] = (sys.argv[2], sys.argv[3], 0)
    end_on_signals()
    with Stage() as stage:
        prepare_home(stage)
        times = {name: [] for name in programs}
        for _ in range(STARTS):
            for name, program in programs.items():
                times[name].append(start_time(stage, *program))
        for name, taken in times.items():
            print(f"{name:<12} {min(taken):6.0f} {statistics.median(taken):6.0f} {max(taken):6.0f} ms to its window")

        player = Player(stage, programs["larkspin"][0])
        player.start()
        player.add(os.path.join(build, "practice", "before-the-lesson.wav"))
        player.pick("before-the-lesson (Wav file)")
        wait_until(lambda: player.value("End loop position") == 34, "the track to load")
        time.sleep(2)
        print(f"loaded and stopped: {100 * core_share(player.process):.2f}% of a core")
        player.click("Play loop", "push button")
        print(f"playing unchanged:  {100 * core_share(player.process):.2f}% of a core")
        player.end()


if __name__ == "__main__":
    main()

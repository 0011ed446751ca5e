"""Tells when the machine itself stood still: for how long it let nobody run, however urgent.

A virtual machine does not always get the processors that it shows. A sound that breaks off then is not the program's
doing, and a test that listens for gaps has to know the difference.
"""

import os
import sys
import time

WATCHED_FROM = 0.005  # seconds beyond the nap; less than that no buffer notices
NAP = 0.002


class Stalls:
    """Watches from now on, with a higher priority than any sound."""

    def __init__(self, stage):
        self._path = os.path.join(stage.logs, "stalls.log")
        open(self._path, "w", encoding="utf-8").close()
        self._processes = stage.processes
        self._watchers = [stage.processes.start("stalls", [sys.executable, __file__, str(processor), self._path],
                                                stage.environment)
                          for processor in sorted(os.sched_getaffinity(0))]

    def end(self):
        """Ends the watch."""
        for watcher in self._watchers:
            self._processes.end(watcher)

    def between(self, begin, end):
        """Those that touched this time, each its end on the monotonic clock and its length, in seconds."""
        with open(self._path, encoding="utf-8") as log:
            all_of_them = [tuple(map(float, line.split())) for line in log]
        return [(moment, length) for moment, length in all_of_them if moment >= begin and moment - length <= end]


def _watch(processor, path):
    os.sched_setaffinity(0, {processor})
    os.sched_setscheduler(0, os.SCHED_RR, os.sched_param(50))
    before = time.monotonic()
    while True:
        time.sleep(NAP)
        now = time.monotonic()
        if now - before > NAP + WATCHED_FROM:
            with open(path, "a", encoding="utf-8") as log:
                log.write(f"{now:.4f} {now - before:.4f}\n")
        before = time.monotonic()


if __name__ == "__main__":
    _watch(int(sys.argv[1]), sys.argv[2])

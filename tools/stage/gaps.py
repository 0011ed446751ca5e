"""Listens whether a sound breaks off, and tells whether the machine was to blame."""

import time
from dataclasses import dataclass

from stage import FRAME_BYTES, RATE
from stalls import Stalls

SHORTEST = 44  # frames; a millisecond without the least noise is in no music
REACH = 0.15  # seconds around a gap in which a stall can have made it: the buffer, and the recording's uncertainty


@dataclass
class Gap:
    """All in seconds; the moment by the recording's clock."""

    moment: float
    length: float
    stalled: float

    def explained(self):
        return self.stalled > 0

    def __str__(self):
        reason = f"the machine stood still for {1000 * self.stalled:.0f} ms" if self.explained() else "unexplained"
        return f"gap at {self.moment:.3f} s of {1000 * self.length:.1f} ms: {reason}"


class Gaps:
    """Watches a recording, and the machine, from now on."""

    def __init__(self, stage, recording):
        self._recording = recording
        self._stalls = Stalls(stage)
        self._difference = float("inf")
        self.compare_clocks()

    def compare_clocks(self):
        """To be called now and then: the recording lags by what waits in pipes, and least at the best moment."""
        self._difference = min(self._difference, time.monotonic() - self._recording.seconds())

    def end(self):
        """Ends the watch over the machine."""
        self._stalls.end()

    def between(self, begin, end):
        """The gaps between two moments by the recording's clock."""
        self.compare_clocks()
        samples = self._recording.all()
        found = []
        place = int(begin * RATE) * FRAME_BYTES
        while True:
            place = samples.find(bytes(SHORTEST * FRAME_BYTES), place, int(end * RATE) * FRAME_BYTES)
            if place < 0:
                return found
            first = last = -(-place // FRAME_BYTES)
            while samples[last * FRAME_BYTES:(last + 1) * FRAME_BYTES] == bytes(FRAME_BYTES):
                last += 1
            found.append(self._gap(first / RATE, (last - first) / RATE))
            place = max(last, first + 1) * FRAME_BYTES

    def _gap(self, moment, length):
        there = moment + self._difference
        near = self._stalls.between(there - REACH, there + length + REACH)
        return Gap(moment, length, sum(stall for _, stall in near))

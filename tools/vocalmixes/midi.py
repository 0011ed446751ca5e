"""Standard MIDI files, as much of them as a sequencer needs to play one instrument."""

import struct

TICKS_PER_BEAT = 480


def _length(value):
    """In groups of seven bits, the last one without its top bit."""
    groups = [value & 0x7F]
    while value := value >> 7:
        groups.append(value & 0x7F | 0x80)
    return bytes(reversed(groups))


def _chunk(name, content):
    return name + struct.pack(">I", len(content)) + content


def write(path, beats_per_minute, part):
    """Writes what one part plays, on channel 10 where it has no program of its own, as that is where drums are."""
    channel = 9 if part.program is None else 0
    events = [(0, 0, b"\xff\x51\x03" + round(60e6 / beats_per_minute).to_bytes(3, "big"))]
    if part.program is not None:
        events.append((0, 1, bytes([0xC0 | channel, part.program])))
    for controller, value in [(7, part.volume), (10, 64 + round(part.pan * 0.63)), (91, part.reverb)]:
        events.append((0, 1, bytes([0xB0 | channel, controller, value])))
    for note in part.notes:
        begin = max(0, round(note.beat * TICKS_PER_BEAT))
        end = max(begin + 1, round((note.beat + note.beats) * TICKS_PER_BEAT))
        events.append((begin, 3, bytes([0x90 | channel, note.pitch, note.velocity])))
        events.append((end, 2, bytes([0x80 | channel, note.pitch, 64])))  # before a note of the same moment
    events.append((max(tick for tick, _, _ in events), 4, b"\xff\x2f\x00"))

    track, now = b"", 0
    for tick, _, event in sorted(events, key=lambda entry: entry[:2]):
        track += _length(tick - now) + event
        now = tick
    with open(path, "wb") as file:
        file.write(_chunk(b"MThd", struct.pack(">HHH", 0, 1, TICKS_PER_BEAT)) + _chunk(b"MTrk", track))

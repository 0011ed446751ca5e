"""Two songs for a voice and instruments, as they stand on paper: a ballad with a band, and a folk song with two guitars,
flute, cello and double bass. Instruments stand in the image as on records: what carries the song near the centre, the
others at the sides."""

import random
from dataclasses import dataclass, field


@dataclass
class Note:
    """Beats count from 0 at the beginning of the song; pitch 69 is the A of 440 Hz."""

    beat: float
    pitch: int
    beats: float
    velocity: int = 80


@dataclass
class Part:
    """What one instrument plays, and where it stands: -100 is left, 100 right."""

    name: str
    program: int | None  # as General MIDI counts from 0; none for drums
    pan: int
    volume: int
    reverb: int = 30
    notes: list[Note] = field(default_factory=list)

    def play(self, beat, pitch, beats, velocity=80):
        self.notes.append(Note(beat, pitch, beats, velocity))


@dataclass
class Song:
    """Lines of the voice are (beat, [(word, [(pitch, beats) of each syllable]), ...])."""

    name: str
    beats_per_minute: float
    parts: list[Part]
    lines: list[tuple]

    @property
    def seconds_per_beat(self):
        return 60 / self.beats_per_minute


def _as_people_play(parts, seed):
    """No two strokes alike: up to 8 ms early or late, and some louder than others."""
    chance = random.Random(seed)
    for part in parts:
        for note in part.notes:
            note.beat = max(0.0, note.beat + chance.uniform(-0.013, 0.013))
            note.velocity = min(127, max(1, note.velocity + chance.randint(-7, 7)))


# Bass note, and a voicing that a guitar, a piano or strings can spread.
CHORDS = {
    "G": (31, [55, 59, 62, 67, 71]),
    "D/F#": (30, [54, 57, 62, 66, 69]),
    "Em": (28, [52, 59, 64, 67, 71]),
    "C": (36, [52, 60, 64, 67, 72]),
    "Am": (33, [57, 60, 64, 69, 72]),
    "D": (38, [57, 62, 66, 69, 74]),
    "Dm": (38, [57, 62, 65, 69, 74]),
    "F": (29, [53, 60, 65, 69, 72]),
    "Bb": (34, [58, 62, 65, 70, 74]),
    "Gm": (31, [55, 58, 62, 67, 70]),
    "A": (33, [57, 61, 64, 69, 73]),
}


def _strum(part, beat, pitches, beats, velocity, upwards=False):
    for place, pitch in enumerate(reversed(pitches) if upwards else pitches):
        part.play(beat + 0.018 * place, pitch, beats - 0.018 * place, velocity - 2 * place)


def ballad():
    """Ten bars in G at 96 beats a minute: drums, bass, guitar left, piano right, strings wide, and a guitar that
    answers the voice."""
    harmony = ["G", "D/F#", "Em", "C", "G", "D", "Am", "C", "D", "G"]
    drums = Part("drums", None, 0, 114, 22)
    bass = Part("bass", 33, 0, 108, 6)
    guitar = Part("guitar", 25, -75, 76, 26)
    piano = Part("piano", 0, 70, 104, 34)
    strings_left = Part("strings-left", 48, -95, 62, 50)
    strings_right = Part("strings-right", 48, 95, 62, 50)
    answer = Part("answer", 27, 35, 124, 46)

    for bar, name in enumerate(harmony):
        begin, (root, voicing) = 4 * bar, CHORDS[name]
        if bar in (0, 4):
            drums.play(begin, 49, 2, 84)
        for eighth in range(8):
            drums.play(begin + eighth / 2, 46 if eighth == 7 and bar % 2 else 42, 0.25, 78 if eighth % 2 == 0 else 58)
        for beat in (0, 1.5 if bar % 2 else 2, 2.5):
            drums.play(begin + beat, 36, 0.3, 104)
        for beat in (1, 3):
            drums.play(begin + beat, 38, 0.3, 100)
        if bar in (3, 7):
            for place, pitch in enumerate([48, 48, 45, 43]):
                drums.play(begin + 3 + place / 4, pitch, 0.25, 84 + 4 * place)

        next_root = CHORDS[harmony[(bar + 1) % len(harmony)]][0]
        bass.play(begin, root, 1.4, 96)
        bass.play(begin + 1.5, root, 0.45, 82)
        bass.play(begin + 2, root + 12 if root < 33 else root, 0.9, 90)
        bass.play(begin + 3, root + 7, 0.45, 84)
        bass.play(begin + 3.5, next_root + (2 if next_root < root else -2), 0.4, 80)

        for beat, length, velocity, upwards in [(0, 0.95, 92, False), (1, 0.45, 74, False), (1.5, 0.45, 66, True),
                                                (2, 0.45, 84, False), (2.5, 0.45, 68, True), (3, 0.45, 78, False),
                                                (3.5, 0.45, 70, True)]:
            _strum(guitar, begin + beat, voicing if not upwards else voicing[2:], length, velocity, upwards)

        for eighth, pitch in enumerate([voicing[1] + 12, voicing[2] + 12, voicing[3] + 12, voicing[2] + 12,
                                        voicing[4], voicing[3] + 12, voicing[2] + 12, voicing[3]]):
            piano.play(begin + eighth / 2, pitch, 0.7, 76 - 10 * (eighth % 2))
        for pitch in [root + 24, root + 31]:
            piano.play(begin, pitch, 3.5, 66)

        for part, pitches in [(strings_left, [voicing[0], voicing[3], voicing[1] + 12]),
                              (strings_right, [voicing[1], voicing[2], voicing[4]])]:
            for pitch in pitches:
                part.play(begin, pitch, 3.95, 72)

    for beat, pitch, beats in [(6.5, 78, 0.5), (7, 81, 0.5), (7.5, 79, 1.0), (14.5, 76, 0.5), (15, 79, 0.5),
                               (15.5, 83, 1.2), (22.5, 78, 0.5), (23, 74, 0.5), (23.5, 76, 1.0), (30.5, 79, 0.5),
                               (31, 76, 0.5), (31.5, 74, 1.2), (36, 74, 0.5), (36.5, 79, 0.5), (37, 83, 2.5)]:
        answer.play(beat, pitch, beats, 86)

    parts = [drums, bass, guitar, piano, strings_left, strings_right, answer]
    _as_people_play(parts, 96)
    lines = [
        (0.5, [("morning", [(62, .5), (67, 1)]), ("light", [(71, 1)]), ("on", [(69, .5)]), ("the", [(67, .5)]),
               ("river", [(69, .5), (66, 1.5)])]),
        (8.5, [("carry", [(64, .5), (67, .5)]), ("me", [(71, 1)]), ("over", [(72, 1), (71, .5)]), ("the", [(69, .5)]),
               ("sea", [(67, 2.0)])]),
        (16.5, [("all", [(62, .5)]), ("of", [(67, .5)]), ("the", [(69, .5)]), ("windows", [(71, 1), (69, .5)]),
                ("are", [(67, .5)]), ("open", [(69, 1), (66, 1.5)])]),
        (24.5, [("show", [(64, .5)]), ("me", [(67, .5)]), ("the", [(69, .5)]), ("way", [(72, 1.5)]), ("to", [(71, .5)]),
                ("be", [(69, .5)]), ("free", [(67, 2.5)])]),
        (32.5, [("morning", [(69, .5), (66, 1)]), ("light", [(69, 1)]), ("and", [(67, .5)]), ("me", [(67, 3)])]),
    ]
    return Song("ballad", 96, parts, lines)


def folk_song():
    """Twelve bars of three in D minor at 92 beats a minute: nylon strings left, steel strings right, flute, cello and
    double bass."""
    harmony = ["Dm", "C", "Dm", "A", "Dm", "F", "Gm", "A", "Bb", "F", "A", "Dm"]
    nylon = Part("nylon-guitar", 24, -65, 104, 30)
    steel = Part("steel-guitar", 25, 65, 102, 30)
    flute = Part("flute", 73, 30, 84, 52)
    cello = Part("cello", 42, -35, 72, 44)
    bass = Part("double-bass", 32, 5, 104, 14)

    for bar, name in enumerate(harmony):
        begin, (root, voicing) = 3 * bar, CHORDS[name]
        for eighth, pitch in enumerate([voicing[0], voicing[2], voicing[3], voicing[4], voicing[3], voicing[2]]):
            nylon.play(begin + eighth / 2, pitch, 1.2, 86 if eighth == 0 else 72)
        _strum(steel, begin, voicing, 1.9, 80)
        _strum(steel, begin + 2, voicing[1:], 0.5, 70)
        _strum(steel, begin + 2.5, voicing[2:], 0.5, 62, upwards=True)
        bass.play(begin, root if root >= 31 else root + 12, 1.8, 96)
        bass.play(begin + 2, root + 7, 0.9, 82)
        cello.play(begin, voicing[1] - 12, 2.9, 70)
    for beat, pitch, beats in [(5, 81, .5), (5.5, 79, .5), (6, 77, 2), (11, 76, .5), (11.5, 79, .5), (12, 81, 2),
                               (17, 77, .5), (17.5, 76, .5), (18, 74, 2), (23, 73, .5), (23.5, 76, .5), (24, 77, 2),
                               (27, 81, 1), (28, 79, 1), (29, 77, 1), (30, 76, 2), (33, 74, 3)]:
        flute.play(beat, pitch, beats, 78)

    parts = [nylon, steel, flute, cello, bass]
    _as_people_play(parts, 92)
    lines = [
        (0, [("over", [(62, 1), (65, .5)]), ("the", [(67, .5)]), ("hill", [(69, 2)])]),
        (6, [("where", [(69, .5)]), ("the", [(67, .5)]), ("willow", [(65, 1), (64, .5)]), ("grows", [(64, 2)])]),
        (12, [("nobody", [(62, 1), (65, .5), (69, .5)]), ("calls", [(72, 1)]), ("my", [(70, .5)]), ("name", [(69, 1)])]),
        (18, [("only", [(67, 1), (70, .5)]), ("the", [(69, .5)]), ("wind", [(67, 1)]), ("knows", [(69, 1.5)])]),
        (24, [("low", [(70, 1)]), ("is", [(69, .5)]), ("the", [(67, .5)]), ("moon", [(65, 1.5)]),
              ("on", [(67, .5)]), ("the", [(65, .5)]), ("water", [(64, 1), (61, .5)]), ("below", [(62, .5), (62, 2)])]),
    ]
    return Song("folk-song", 92, parts, lines)

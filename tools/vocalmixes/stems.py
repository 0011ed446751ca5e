"""Plays and sings the parts of the mixes that a remover of voices is judged by.

    python3 stems.py FOLDER

Makes a folder of each song, with its instruments in instruments/, each in two channels where it stands in the image and
with its room, and in voices/ the singer and a speaker, each in one channel and dry; all of 44.1 kHz in 32-bit floats.
Does nothing where they are there already. Wants fluidsynth with the sound font TimGM6mb, festival with the voice
kal_diphone, espeak-ng and ffmpeg.
"""

import glob
import os
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor

import midi
import songs

SOUND_FONT = "/usr/share/sounds/sf2/TimGM6mb.sf2"
RATE = 44100
SECONDS_TO_WAIT = 120
SPEECH = ("The ferry leaves the harbour at a quarter past nine. Most of the people on board have seen this coast before, "
          "and yet they all come up on deck when the lighthouse passes. A girl counts the gulls. Her brother wants to "
          "know how deep the water is, and whether anybody ever swam across it.")


def run(command):
    try:
        subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=True,
                       timeout=SECONDS_TO_WAIT)
    except subprocess.CalledProcessError as error:
        sys.exit(f"{command[0]}: {error.stderr.decode(errors='replace')}")
    except FileNotFoundError:
        sys.exit(f"{command[0]} is not installed")


def play(song, part, target):
    with tempfile.TemporaryDirectory() as scratch:
        score = os.path.join(scratch, "score.mid")
        midi.write(score, song.beats_per_minute, part)
        run(["fluidsynth", "-ni", "-q", "-g", "0.5", "-r", str(RATE), "-R", "yes", "-C", "no", "-O", "float", "-T", "wav",
             "-F", target, SOUND_FONT, score])


def frequency(pitch, cents=0):
    return 440 * 2 ** ((pitch - 69 + cents / 100) / 12)


def sung(pitch, seconds):
    """The frequencies of one syllable and how long each lasts: a long one begins straight, and then swings five to six
    times a second by a third of a semitone to either side."""
    straight, half = 0.28, 0.09
    swings = max(0, int((seconds - straight) / half))
    return ([(frequency(pitch), seconds - swings * half)]
            + [(frequency(pitch, 33 if swing % 2 == 0 else -33), half) for swing in range(swings)])


def sheet(song):
    """What festival sings from. Commas part syllables, plus signs the frequencies of one."""
    lines, now = [], 0.0
    for beat, words in song.lines:
        lines.append(f'<REST SECONDS="{(beat - now) * song.seconds_per_beat:.4f}"></REST>')
        now = beat
        for word, syllables in words:
            notes = [sung(pitch, beats * song.seconds_per_beat) for pitch, beats in syllables]
            frequencies = ",".join("+".join(f"{hertz:.2f}" for hertz, _ in syllable) for syllable in notes)
            lengths = ",".join("+".join(f"{seconds:.4f}" for _, seconds in syllable) for syllable in notes)
            lines.append(f'<DURATION SECONDS="{lengths}"><PITCH FREQ="{frequencies}">{word}</PITCH></DURATION>')
            now += sum(beats for _, beats in syllables)
    return "\n".join(['<?xml version="1.0"?>',
                      '<!DOCTYPE SINGING PUBLIC "-//SINGING//DTD SINGING mark up//EN" "Singing.v0_1.dtd" []>',
                      '<SINGING BPM="60">', *lines, '</SINGING>', ''])


def in_floats(source, target):
    run(["ffmpeg", "-v", "error", "-y", "-i", source, "-ar", str(RATE), "-c:a", "pcm_f32le", target])


def sing(song, target):
    with tempfile.TemporaryDirectory() as scratch:
        paper, voice = os.path.join(scratch, "song.xml"), os.path.join(scratch, "voice.wav")
        with open(paper, "w", encoding="ascii") as file:
            file.write(sheet(song))
        run(["text2wave", "-mode", "singing", "-eval", "(voice_kal_diphone)", paper, "-o", voice])
        in_floats(voice, target)


def speak(target):
    with tempfile.TemporaryDirectory() as scratch:
        voice = os.path.join(scratch, "voice.wav")
        run(["espeak-ng", "-v", "en-gb+f3", "-p", "60", "-s", "150", "-w", voice, SPEECH])
        in_floats(voice, target)


def make(folder):
    work = []
    for song in [songs.ballad(), songs.folk_song()]:
        for kind in ["instruments", "voices"]:
            os.makedirs(os.path.join(folder, song.name, kind))
        voices = os.path.join(folder, song.name, "voices")
        work.append((sing, song, os.path.join(voices, "singer.wav")))
        work.append((speak, os.path.join(voices, "speaker.wav")))
        work += [(play, song, part, os.path.join(folder, song.name, "instruments", part.name + ".wav"))
                 for part in song.parts]
    with ThreadPoolExecutor(os.cpu_count()) as workers:
        for done in [workers.submit(*task) for task in work]:
            done.result()


def ensure(folder):
    """Makes them where they are missing or older than what they are made by, and then all of them or none."""
    sources = glob.glob(os.path.join(os.path.dirname(os.path.abspath(__file__)), "*.py"))
    if os.path.isdir(folder) and os.path.getmtime(folder) > max(map(os.path.getmtime, sources)):
        return
    unfinished = folder + ".unfinished"
    for old in [unfinished, folder]:
        shutil.rmtree(old, ignore_errors=True)
    make(unfinished)
    os.rename(unfinished, folder)
    os.utime(folder)


if __name__ == "__main__":
    ensure(os.path.abspath(sys.argv[1]))

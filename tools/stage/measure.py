"""Asking the measuring program what was heard."""

import subprocess


def measure(program, original, heard, stretches):
    """Measures stretches of a recording, each a name, two moments and what to measure; returns for each name the
    answers by their keys, numbers where they are numbers."""
    log = heard + ".log"
    with open(log, "w", encoding="utf-8") as file:
        for name, begin, end, measures in stretches:
            file.write(f"{name} {begin:.4f} {end:.4f} {measures}\n")
    done = subprocess.run([program, original, heard, log], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          text=True, timeout=240, check=True)
    answers = {}
    for line in done.stdout.splitlines():
        name, *pairs = line.split()
        answers[name] = {key: _number(text) for key, text in (pair.split("=") for pair in pairs)}
    return answers


def _number(text):
    try:
        return float(text)
    except ValueError:
        return text

"""Starting processes, waiting for what they bring about, and ending them by their id."""

import os
import signal
import subprocess
import time

URGENT = 20  # as a real-time priority: the sound server has to be above what sounds through it


class Impatient(Exception):
    """What was waited for did not come about in its time."""


def wait_until(condition, what, seconds=20.0):
    """Asks the condition until its answer is true, and returns that answer."""
    deadline = time.monotonic() + seconds
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > deadline:
            raise Impatient(f"waited {seconds:.0f} s in vain for {what}")
        time.sleep(0.02)


class Processes:
    """The processes of one run, each with those it starts itself in a group of its own."""

    def __init__(self, logs):
        self._logs = logs
        self._running = []

    def start(self, name, arguments, environment, urgent=False, **options):
        """An urgent process goes before others where the machine allows it, as the sound server does on a desktop. The
        program itself is an ordinary one there: its sound has to come before others by itself."""
        if urgent:
            options["preexec_fn"] = lambda: _make_urgent(0)
        with open(os.path.join(self._logs, name + ".log"), "ab") as log:
            process = subprocess.Popen(arguments, env=environment, stdin=subprocess.DEVNULL, stderr=log,
                                       stdout=options.pop("stdout", log), start_new_session=True, **options)
        process.name = name
        self._running.append(process)
        return process

    def hurry(self, process):
        """Makes it urgent now: some take back at their start what they were started with."""
        _make_urgent(process.pid)

    def end(self, process, kind=signal.SIGTERM):
        """Ends a process and what it started. One that does not heed the signal is killed."""
        if process in self._running:
            self._running.remove(process)
        _signal_group(process.pid, kind)
        try:
            process.wait(timeout=5)
        except subprocess.TimeoutExpired:
            pass
        _signal_group(process.pid, signal.SIGKILL)
        process.wait(timeout=5)

    def end_all(self):
        for process in reversed(list(self._running)):
            self.end(process)


def _signal_group(group, kind):
    try:
        os.killpg(group, kind)
    except ProcessLookupError:
        pass


def _make_urgent(process):
    try:
        os.sched_setscheduler(process, os.SCHED_RR, os.sched_param(URGENT))
    except PermissionError:
        pass


def end_on_signals():
    """Lets an interrupt or a wish to terminate run the way out that an error takes, so that nothing is left behind."""

    def leave(number, _frame):
        raise SystemExit(128 + number)

    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, leave)

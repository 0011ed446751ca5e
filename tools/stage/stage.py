"""A private place to run the player in: a display, a sound server and an accessibility bus that nobody else sees."""

import os
import shutil
import subprocess
import tempfile

from processes import Processes, wait_until

RATE = 44100
FRAME_BYTES = 2 * 4  # two channels of 32-bit floats


class Stage:
    """Use it in a with statement: leaving that ends every process and removes every file that the stage made."""

    def __init__(self, logs=None, size="1280x900"):
        self._size = size
        self.folder = tempfile.mkdtemp(prefix="larkspin-")
        runtime = os.path.join(self.folder, "run")
        os.mkdir(runtime, mode=0o700)
        self.logs = logs or self.folder
        os.makedirs(self.logs, exist_ok=True)
        self.processes = Processes(self.logs)
        self.socket = os.path.join(runtime, "native")
        self.sound_server = None
        self.environment = {
            "PATH": os.environ.get("PATH", "/usr/bin:/bin"),
            "LANG": "C.UTF-8",
            "XDG_RUNTIME_DIR": runtime,
            "PULSE_SERVER": "unix:" + self.socket,
            "QT_QPA_PLATFORM": "xcb",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        }
        self.new_home()

    def new_home(self):
        """From now on programs find the folders of a user who has never started them."""
        self.environment["HOME"] = tempfile.mkdtemp(prefix="home-", dir=self.folder)

    def choose(self, **settings):
        """Writes what the user of this home has chosen in the program earlier."""
        folder = os.path.join(self.environment["HOME"], ".config", "Larkspin")
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, "Larkspin.conf"), "w") as file:
            file.write("[Options]\n")
            for key, value in settings.items():
                file.write(f"{key.replace('_', '%20')}={value}\n")

    def stand_in(self, name, script):
        """Puts a program of this name before the machine's own."""
        folder = os.path.join(self.folder, "bin")
        os.makedirs(folder, exist_ok=True)
        path = os.path.join(folder, name)
        with open(path, "w") as file:
            file.write("#!/bin/sh\n" + script + "\n")
        os.chmod(path, 0o755)
        if not self.environment["PATH"].startswith(folder):
            self.environment["PATH"] = folder + ":" + self.environment["PATH"]

    def __enter__(self):
        try:
            self._start_display()
            self._start_bus()
            self.start_sound_server()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.processes.end_all()
        shutil.rmtree(self.folder, ignore_errors=True)

    def run(self, *arguments, **options):
        """Runs a short command here and returns what it prints."""
        done = subprocess.run(arguments, env=self.environment, stdin=subprocess.DEVNULL, text=True, timeout=20,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=options.get("check", True))
        return done.stdout if done.returncode == 0 else ""

    def _start_display(self):
        told, tells = os.pipe()
        arguments = ["Xvfb", "-displayfd", str(tells), "-screen", "0", self._size + "x24", "-nolisten", "tcp", "-r", "-noreset"]
        self.processes.start("display", arguments, self.environment, pass_fds=(tells,))
        os.close(tells)
        with os.fdopen(told) as answer:  # the display takes a free number and tells which
            number = answer.readline().strip()
        if not number:
            raise RuntimeError(f"no virtual display: see {self.logs}/display.log")
        self.environment["DISPLAY"] = ":" + number
        self.processes.start("windows", ["openbox", "--sm-disable"], self.environment)
        wait_until(lambda: "_NET_SUPPORTING_WM_CHECK(WINDOW)" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
                   "the window manager")

    def _start_bus(self):
        told, tells = os.pipe()
        arguments = ["dbus-daemon", "--session", "--nofork", f"--print-address={tells}"]
        self.processes.start("bus", arguments, self.environment, pass_fds=(tells,))
        os.close(tells)
        with os.fdopen(told) as answer:
            self.environment["DBUS_SESSION_BUS_ADDRESS"] = answer.readline().strip()

    def start_sound_server(self):
        arguments = ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--disable-shm=yes",
                     "--use-pid-file=no",
                     "-L", f"module-native-protocol-unix auth-anonymous=1 socket={self.socket}",
                     "-L", f"module-null-sink sink_name=speakers rate={RATE} format=float32le norewinds=1 "
                     "sink_properties=device.description=Speakers"]
        self.sound_server = self.processes.start("sound", arguments, self.environment)
        wait_until(lambda: "speakers" in self.run("pactl", "list", "short", "sinks", check=False), "the sound server")
        self.processes.hurry(self.sound_server)

    def kill_sound_server(self):
        self.processes.end(self.sound_server)
        if os.path.exists(self.socket):
            os.remove(self.socket)

    def record(self):
        return Recording(self)

    def screenshot(self, path):
        self.run("import", "-window", "root", path)


class Recording:
    """What comes out of the speakers, from now on. Its clock counts the frames that have come out.

    It is kept in memory: a disc would now and then hold up whoever plays.
    """

    def __init__(self, stage):
        self._stage = stage
        self._raw = os.memfd_create("recording")
        arguments = ["parec", "--device=speakers.monitor", f"--rate={RATE}", "--channels=2", "--format=float32le",
                     "--raw", "--latency-msec=20"]
        self._process = stage.processes.start("recording", arguments, stage.environment, urgent=True,
                                              stdout=self._raw)
        wait_until(lambda: self.seconds() > 0, "the recording to begin")

    def __del__(self):
        os.close(self._raw)

    def seconds(self):
        if self._process.poll() is not None:
            raise RuntimeError(f"the recording has ended: see {self._stage.logs}/recording.log")
        return self._frames() / RATE

    def _frames(self):
        return os.fstat(self._raw).st_size // FRAME_BYTES

    def _read(self, first, count):
        """So many frames; the system hands over no more than two gigabytes at once."""
        parts = []
        place, end = first * FRAME_BYTES, (first + count) * FRAME_BYTES
        while place < end:
            parts.append(os.pread(self._raw, end - place, place))
            place += len(parts[-1])
        return b"".join(parts)

    def wait(self, seconds):
        """Lets so much more come out of the speakers."""
        end = self.seconds() + seconds
        wait_until(lambda: self.seconds() >= end, f"{seconds} s of sound", seconds=2 * seconds + 10)

    def samples(self, seconds):
        """The last samples that came out, both channels by turns."""
        frames = self._frames()
        count = min(frames, int(seconds * RATE))
        return memoryview(self._read(frames - count, count)).cast("f")

    def loudest(self, seconds):
        return max(map(abs, self.samples(seconds)), default=0.0)

    def wait_for_sound(self, what="sound", seconds=10.0):
        """Returns the moment, by this recording's clock, by which something is heard."""
        wait_until(lambda: self.loudest(0.1) > 0.01, what, seconds)
        return self.seconds()

    def wait_for_silence(self, what="silence", seconds=10.0):
        wait_until(lambda: self.seconds() > 0.3 and self.loudest(0.3) < 1e-6, what, seconds)
        return self.seconds()

    def stop(self):
        self._stage.processes.end(self._process)

    def all(self):
        """The bytes of all frames so far, floats of both channels by turns."""
        return self._read(0, self._frames())

    def save(self, path):
        """Writes all of it as a WAV file of floats, to the bit what came out."""
        samples = self.all()
        number = lambda value, size: value.to_bytes(size, "little")
        form = number(3, 2) + number(2, 2) + number(RATE, 4) + number(RATE * FRAME_BYTES, 4) + number(8, 2) + number(32, 2)
        content = b"WAVEfmt " + number(len(form), 4) + form + b"data" + number(len(samples), 4) + samples
        with open(path, "wb") as file:
            file.write(b"RIFF" + number(len(content), 4) + content)

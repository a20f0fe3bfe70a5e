"""An X11 screen in memory with a pointer and a keyboard of its own, and what it shows."""
import mmap
import os
import shutil
import struct
import subprocess
import tempfile
import time
from pathlib import Path

# Words of 32 bits in the header of the file that holds the picture, most significant byte first.
HEADER = struct.Struct(">25I")
HEADER_SIZE, WIDTH, HEIGHT, BYTES_PER_LINE, COLORS = 0, 4, 5, 12, 19
COLOR_SIZE = 12
BYTES_PER_PIXEL = 4  # blue, green, red, nothing


class ScreenError(Exception):
    """The screen couldn't be started, or didn't show in time what was waited for."""


def wait_until(condition, seconds=60, step=0.1):
    """What the condition answers, once that is true in the sense of the language."""
    deadline = time.monotonic() + seconds
    while not (answer := condition()):
        if time.monotonic() > deadline:
            raise ScreenError(f"Waited {seconds} seconds in vain for: {condition.__name__}")
        time.sleep(step)
    return answer


def private_environment(home):
    """That of a desktop where nobody has been yet: home folder, settings and caches are `home`."""
    environment = dict(os.environ, LC_ALL="C.UTF-8", TZ="UTC")
    for name in ("HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"):
        environment[name] = str(home)
    for name in ("WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "QT_QPA_PLATFORM", "QT_QUICK_BACKEND",
                 "QT_SCALE_FACTOR", "VELMOR_ENGINE"):
        environment.pop(name, None)
    # Without a word about it a bus would be started, and stay.
    environment["DBUS_SESSION_BUS_ADDRESS"] = "disabled:"
    return environment


class VirtualScreen:
    """A bare screen: black, without a window manager. A context: it ends with it."""

    def __init__(self, width, height):
        self.folder = Path(tempfile.mkdtemp(prefix="velmor-screen-"))
        self.processes = []
        read, write = os.pipe()
        self._start(["Xvfb", "-displayfd", str(write), "-screen", "0", f"{width}x{height}x24",
                     "-fbdir", str(self.folder), "-nolisten", "tcp", "-noreset"],
                    pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as told:
            number = told.readline().strip()
        if not number:
            self.close()
            raise ScreenError("Xvfb didn't start.")
        self.name = f":{number}"
        with open(self.folder / "Xvfb_screen0", "rb") as shared:
            self.memory = mmap.mmap(shared.fileno(), 0, prot=mmap.PROT_READ)
        self.header = HEADER.unpack_from(self.memory)
        self.pixels = self.header[HEADER_SIZE] + COLOR_SIZE * self.header[COLORS]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        for process in reversed(self.processes):
            process.terminate()
            process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def _start(self, command, **how):
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, **how)
        self.processes.append(process)

    def add_desktop(self, color):
        """Gives the screen a ground, a window manager and a compositor."""
        environment = dict(os.environ, DISPLAY=self.name)
        subprocess.run(["hsetroot", "-solid", color], env=environment, check=True,
                       stdout=subprocess.DEVNULL)
        self._start(["openbox"], env=environment)
        self._start(["picom", "--backend", "xrender", "--config", "/dev/null"], env=environment)

        def compositor():
            listed = subprocess.run(["xdotool", "search", "--class", "picom"], env=environment,
                                    stdout=subprocess.PIPE, check=False)
            return listed.stdout
        wait_until(compositor)

    def pixel(self, x, y):
        """Red, green and blue."""
        start = self.pixels + y * self.header[BYTES_PER_LINE] + x * BYTES_PER_PIXEL
        blue, green, red = self.memory[start:start + 3]
        return red, green, blue

    def picture(self, box):
        """A part of the screen as a Pillow image; left, top, right and bottom in pixels."""
        from PIL import Image  # Here, so that the rest works without it.
        size = (self.header[WIDTH], self.header[HEIGHT])
        whole = Image.frombytes("RGB", size, self.memory[self.pixels:], "raw", "BGRX",
                                self.header[BYTES_PER_LINE])
        return whole.crop(box)

    def act(self, *words):
        """Moves the pointer, or presses a button or key, in the words of xdotool."""
        subprocess.run(["xdotool", *map(str, words)], env=dict(os.environ, DISPLAY=self.name),
                       check=True)

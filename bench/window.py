"""Measures how soon the window is there, and what it takes while nothing moves; prints one table.

Called by script/bench. The window opens on a screen in memory, whose pixels tell when it is drawn;
the time counts from the start of the program to the first frame as a user sees it. Once the scanner
is found and all is at rest, the threads of the program tell how long they ran.
"""
import argparse
import os
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from processes import RunError
from table import aligned
from virtualscreen import ScreenError, VirtualScreen, private_environment, wait_until

SCREEN = (2400, 1000)  # wide enough for the drawer beside the card
CARD = (SCREEN[0] // 2 - 190, 100)
TRACK_PLACE, TRACK = (60, 99), (0xF1, 0xEF, 0xF7)  # the ground of the tabs
BUTTON_PLACE, ACCENT = (190 - 26, 237), (0x7A, 0x5A, 0xF8)  # the round button with a scanner found
SCANS_PLACE = (331, 320)  # the button that opens the drawer
DRAWER_PLACE = (380 + 10 + 450, 500)  # the ground of the preview, which has the same colour
WARM_RUNS = 5
REST = 3  # seconds until the last animation and search are over
IDLE = 5  # seconds of looking at the program at rest
BUDGET = 600  # ms to the first frame, software renderer, warm
RENDERERS = (("software", {"QT_QUICK_BACKEND": "software"}, BUDGET), ("OpenGL", {}, None))
HEADINGS = ("renderer", "first frame, cold", "warm", "budget", "verdict", "idle CPU, card",
            "all open", "memory, card", "all open")


def verdict(milliseconds, budget):
    """
    >>> verdict(600, 600), verdict(601, 600), verdict(9000, None)
    ('met', 'MISSED', '')
    """
    if budget is None:
        return ""
    return "met" if milliseconds <= budget else "MISSED"


def drop_caches():
    """Has files read from the disk again. False where that isn't allowed."""
    os.sync()
    try:
        Path("/proc/sys/vm/drop_caches").write_text("3", encoding="ascii")
    except OSError:
        return False
    return True


def run_seconds(pid):
    """How long the program's threads have run so far, in seconds."""
    tasks = Path(f"/proc/{pid}/task").glob("*/schedstat")
    return sum(int(task.read_text(encoding="ascii").split()[0]) for task in tasks) / 1e9


def memory(pid):
    """The program's share of resident memory in bytes: what it has with others counts in part."""
    for line in Path(f"/proc/{pid}/smaps_rollup").read_text(encoding="ascii").splitlines():
        if line.startswith("Pss:"):
            return int(line.split()[1]) * 1024
    raise RunError("no Pss")


class Window:
    """The program in its window. A context: it ends with it."""

    def __init__(self, screen, program, home, settings, *options):
        self.screen = screen
        environment = dict(private_environment(home), DISPLAY=screen.name, **settings)
        environment["SCANENGINE_FEEDER"] = str(home / "feeder")
        self.start = time.monotonic()
        # It stays in this process, though it becomes another program.
        self.process = subprocess.Popen([program, *options], env=environment,
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()

    def wait_for(self, place, color, step=0.002):
        def shown():
            if self.process.poll() is not None:
                raise RunError(f"velmor ended with {self.process.returncode}")
            return self.screen.pixel(CARD[0] + place[0], CARD[1] + place[1]) == color
        wait_until(shown, step=step)

    def first_frame(self):
        """Milliseconds from the start."""
        self.wait_for(TRACK_PLACE, TRACK)
        return 1000 * (time.monotonic() - self.start)

    def at_rest(self):
        """The share of one core that it takes, in percent, and its memory."""
        time.sleep(REST)
        before, start = run_seconds(self.process.pid), time.monotonic()
        time.sleep(IDLE)
        busy = run_seconds(self.process.pid) - before
        return 100 * busy / (time.monotonic() - start), memory(self.process.pid)


def measure(program, settings, budget):
    """The figures of one row."""
    with VirtualScreen(*SCREEN) as screen, tempfile.TemporaryDirectory() as name:
        home = Path(name)
        (home / "feeder").mkdir()

        def frame():
            with Window(screen, program, home, settings) as window:
                return window.first_frame()
        cold = frame()
        warm = min(frame() for _ in range(WARM_RUNS))
        with Window(screen, program, home, settings) as window:
            window.wait_for(BUTTON_PLACE, ACCENT)
            card, card_memory = window.at_rest()
        with Window(screen, program, home, settings, "-uiDrawer") as window:
            window.wait_for(BUTTON_PLACE, ACCENT)
            screen.act("mousemove", CARD[0] + SCANS_PLACE[0], CARD[1] + SCANS_PLACE[1],
                       "click", 1, "mousemove", 4, 4)
            window.wait_for(DRAWER_PLACE, TRACK)
            everything, all_memory = window.at_rest()
    return (f"{cold:.0f} ms", f"{warm:.0f} ms", f"<= {budget} ms" if budget else "",
            verdict(warm, budget), f"{card:.2f} %", f"{everything:.2f} %",
            f"{card_memory / 1e6:.0f} MB", f"{all_memory / 1e6:.0f} MB")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", type=Path, help="the build's folder of programs")
    options = parser.parse_args()
    lines, failed, dropped = [], False, True
    for renderer, settings, budget in RENDERERS:
        try:
            dropped = drop_caches() and dropped
            figures = measure(options.programs.resolve() / "velmor", settings, budget)
        except (RunError, ScreenError, OSError) as error:
            print(f"failed: {error}", file=sys.stderr)
            figures, failed = ("failed",) * (len(HEADINGS) - 1), True
        lines.append((renderer, *figures))
    print(aligned([HEADINGS] + lines))
    if not dropped:
        print("The system's caches couldn't be dropped: cold is the first start with a new home.")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())

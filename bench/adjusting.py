"""Measures how soon a preview of a calibration sample follows a slider, and prints one table.

Called by script/bench. The engine is driven as the application drives it: an "adjust" with another
brightness each time, timed from the command to its answer.
"""
import argparse
import json
import os
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from feeding import write_page
from processes import RunError
from table import aligned

MOVES = 9
KINDS = ((300, "gray", False), (300, "gray", True), (300, "color", False), (300, "color", True),
         (300, "bw", True), (300, "auto", True), (600, "color", True))
HEADINGS = ("A4 sample", "first preview", "after that", "the longest", "preview's file")


def spread(seconds):
    """The first, the median and the longest of the others, in words.

    >>> spread([0.5, 0.1, 0.25, 0.2])
    ('500 ms', '200 ms', '250 ms')
    """
    first, *others = (1000 * value for value in seconds)
    return tuple(f"{value:.0f} ms" for value in (first, statistics.median(others), max(others)))


def moved(engine, command):
    """Seconds that a preview took."""
    start = time.monotonic()
    engine.stdin.write(json.dumps(command) + "\n")
    engine.stdin.flush()
    for line in engine.stdout:
        event = json.loads(line)
        if event["event"] == "error":
            raise RunError(event["message"])
        if event["event"] == "adjusted":
            return time.monotonic() - start
    raise RunError("the engine ended")


def measure(programs, page, dpi, color, clean):
    """The figures of one row."""
    with tempfile.TemporaryDirectory() as name:
        sample, preview = Path(name) / ".velmor_raw.png", Path(name) / ".velmor_preview.png"
        write_page(page, dpi, "color" if color in ("color", "auto") else "gray", sample)
        environment = dict(os.environ, SANE_CONFIG_DIR=name, SCANENGINE_FEEDER="")
        with subprocess.Popen([programs / "scanengine"], env=environment, stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              text=True) as engine:
            seconds = [moved(engine, {
                "cmd": "adjust", "input": str(sample), "colorMode": color,
                "auto": {"cleanBackground": clean, "brightness": 10 * move, "contrast": 100},
                "output": {"path": str(preview), "format": "png"}}) for move in range(MOVES)]
            engine.stdin.write('{"cmd":"quit"}\n')
        return *spread(seconds), f"{preview.stat().st_size / 1e6:.1f} MB"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", type=Path, help="the build's folder of programs")
    parser.add_argument("page", type=Path, help="the sample, a PNG file of 300 dpi")
    options = parser.parse_args()
    lines, failed = [], False
    for dpi, color, clean in KINDS:
        try:
            figures = measure(options.programs, options.page, dpi, color, clean)
        except (RunError, OSError, ValueError) as error:
            print(f"failed: {error}", file=sys.stderr)
            figures, failed = ("failed",) * 4, True
        lines.append((f"{dpi} dpi {color}{', cleaned' if clean else ''}", *figures))
    print(aligned([HEADINGS] + lines))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())

"""Measures whether the engine holds a fast feeder back, and prints one table.

Called by script/bench. The engine scans from the feeder in fastfeeder/ with all processing on. A gap
is the time from the last data of a page to the start of the next one, as the feeder itself sees it.
"""
import argparse
import json
import os
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

from processes import RunError, high_water
from table import aligned

PAGE_DPI = 300  # of the pages that pages.py prints
PAGES = 10
PACES = (("60 pages a minute", 1.0), ("no limit", 0.0))  # seconds a page takes
KINDS = ((300, "gray"), (300, "color"), (600, "gray"), (600, "color"))
HEADINGS = ("feeder", "page", "gap, median", "gap, longest", "pages a minute", "engine's memory")
PROCESSING = {"crop": True, "deskew": True, "cleanBackground": True, "blankRemoval": True,
              "autoLevels": True, "ocr": False, "ocrLanguage": "eng", "brightness": 100,
              "contrast": 100}


def write_page(source, dpi, color, target):
    """The page as a file that the feeder reads."""
    from PIL import Image  # Here, so that the examples run without it.
    page = Image.open(source).convert("RGB" if color == "color" else "L")
    if dpi != PAGE_DPI:
        page = page.resize((page.width * dpi // PAGE_DPI, page.height * dpi // PAGE_DPI))
    page.save(target)


def gaps(notes):
    """Seconds from each page's last data to the next start, from the feeder's notes.

    >>> gaps("1.0 2.0\\n2.5 3.5\\n3.75 4.0\\n")
    [0.5, 0.25]
    """
    times = [tuple(map(float, line.split())) for line in notes.splitlines()]
    return [start - end for (_, end), (start, _) in zip(times, times[1:])]


def pace(notes):
    """Pages a minute from the first start to the last data.

    >>> pace("1.0 2.0\\n2.5 3.5\\n3.75 4.0\\n")
    60.0
    """
    times = [float(word) for word in notes.split()]
    return 60 * (len(times) // 2) / (times[-1] - times[0])


def scan(programs, folder, environment, dpi, color):
    """The most memory the engine held, in bytes."""
    command = {"cmd": "scan", "dpi": dpi, "colorMode": color, "auto": PROCESSING,
               "output": {"path": str(folder / "scan.pdf"), "format": "images"}}
    with subprocess.Popen([programs / "scanengine"], env=environment, stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True) as engine:
        engine.stdin.write(json.dumps(command) + "\n")
        engine.stdin.flush()
        for line in engine.stdout:
            event = json.loads(line)
            if event["event"] in ("done", "error"):
                break
        peak = high_water(engine.pid)
        engine.stdin.write('{"cmd":"quit"}\n')
    if event.get("pages") != PAGES:
        raise RunError(f"{dpi} dpi {color}: {event}")
    return peak


def measure(programs, page, seconds, dpi, color):
    """The figures of one row."""
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        (folder / "dll.conf").write_text("fastfeeder\n", encoding="ascii")
        (folder / "dll.d").mkdir()
        fed, notes = folder / "page.pnm", folder / "times"
        write_page(page, dpi, color, fed)
        library = programs.resolve().parent / "bench" / "lib"
        environment = dict(os.environ, SANE_CONFIG_DIR=str(folder), LD_LIBRARY_PATH=str(library),
                           FASTFEEDER_PAGE=str(fed), FASTFEEDER_PAGES=str(PAGES),
                           FASTFEEDER_SECONDS=str(seconds), FASTFEEDER_TIMES=str(notes),
                           SCANENGINE_FEEDER="")
        peak = scan(programs, folder, environment, dpi, color)
        text = notes.read_text(encoding="ascii")
    found = gaps(text)
    return (f"{1000 * statistics.median(found):.0f} ms", f"{1000 * max(found):.0f} ms",
            f"{pace(text):.0f}", f"{peak / 1e6:.0f} MB")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", type=Path, help="the build's folder of programs")
    parser.add_argument("page", type=Path, help="the page to feed, a PNG file of 300 dpi")
    options = parser.parse_args()
    lines, failed = [], False
    for feeder, seconds in PACES:
        for dpi, color in KINDS:
            try:
                figures = measure(options.programs, options.page, seconds, dpi, color)
            except (RunError, OSError, ValueError) as error:
                print(f"failed: {error}", file=sys.stderr)
                figures, failed = ("failed",) * 4, True
            lines.append((feeder, f"{dpi} dpi {color}", *figures))
    print(aligned([HEADINGS] + lines))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())

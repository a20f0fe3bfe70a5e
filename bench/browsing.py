"""Measures the drawer over a folder of thousands of scans; prints one table.

Called by script/bench. The scans are one scan under many names, each of which is read and drawn for
itself. The time counts from the click on "My scans"; the pixels of the first cell tell when its
page is drawn. Scrolling is that of a wheel, as fast as the window takes it.
"""
import argparse
import os
import shutil
import sys
import tempfile
import time
from pathlib import Path

from processes import RunError, run
from table import aligned
from virtualscreen import ScreenError, VirtualScreen, private_environment, wait_until
from window import ACCENT, BUTTON_PLACE, CARD, SCANS_PLACE, SCREEN, TRACK, Window, memory

SCANS = 5000
CELL = (390 + 20, 20, 120, 150)  # within the first cell: left, top, width and height
MARGIN = (390 + 371, 300)  # beside the preview: its colour comes when the drawer is all there
INK = 200  # what is darker is print
PAGES_DOWN = 400
HEADINGS = ("scans", "drawer shown", "first page drawn", "memory, opened", "scrolled through")


def fill(home, programs, page):
    """A scan of the page under many names, in the folder where a new user's scans go."""
    feeder, folder = home / "feeder", home / "Documents" / "Scans"
    feeder.mkdir()
    shutil.copy(page, feeder / "page.png")
    environment = dict(private_environment(home), SCANENGINE_FEEDER=str(feeder))
    made = Path(run([programs / "velmor", "scan", "--no-ocr", "--folder", folder],
                    environment).strip())
    for number in range(1, SCANS):
        os.link(made, folder / f"Document_{number:05}.pdf")


def has_page(screen):
    left, top, width, height = CELL
    dark = sum(max(screen.pixel(CARD[0] + x, CARD[1] + y)) < INK
               for x in range(left, left + width, 2) for y in range(top, top + height, 2))
    return dark > 300  # more than the sign for what is not drawn yet has


def measure(programs, page):
    """The figures of the row."""
    with VirtualScreen(*SCREEN) as screen, tempfile.TemporaryDirectory(
            dir=os.environ.get("TMPDIR")) as name:
        home = Path(name)
        fill(home, programs, page)
        settings = {"QT_QUICK_BACKEND": "software"}
        with Window(screen, programs / "velmor", home, settings) as window:
            window.wait_for(BUTTON_PLACE, ACCENT)
            screen.act("mousemove", CARD[0] + SCANS_PLACE[0], CARD[1] + SCANS_PLACE[1])
            start = time.monotonic()
            screen.act("click", 1)
            window.wait_for(MARGIN, TRACK)
            shown = time.monotonic() - start
            wait_until(lambda: has_page(screen), step=0.02)
            drawn = time.monotonic() - start
            screen.act("mousemove", CARD[0] + CELL[0], CARD[1] + CELL[1])
            time.sleep(3)
            opened = memory(window.process.pid)
            for _ in range(PAGES_DOWN // 50):
                screen.act("click", "--repeat", 500, "--delay", 2, 5)
                time.sleep(1)
            scrolled = memory(window.process.pid)
    return (str(SCANS), f"{1000 * shown:.0f} ms", f"{1000 * drawn:.0f} ms",
            f"{opened / 1e6:.0f} MB", f"{scrolled / 1e6:.0f} MB")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", type=Path, help="the build's folder of programs")
    parser.add_argument("page", type=Path, help="the image of the page that the scans show")
    options = parser.parse_args()
    try:
        figures = measure(options.programs.resolve(), options.page)
    except (RunError, ScreenError, OSError) as error:
        print(f"failed: {error}", file=sys.stderr)
        return 1
    print(aligned([HEADINGS, figures]))
    return 0


if __name__ == "__main__":
    sys.exit(main())

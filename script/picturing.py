"""Makes the pictures of the README from the real windows, on a screen in memory.

Called by script/screenshots. The window is driven as a user would drive it, with the sample pages
in a feeder.
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from virtualscreen import ScreenError, VirtualScreen, private_environment, wait_until

SCALE = 2  # pixels for each unit of the window's own, in which all below is given
SCREEN = (2400, 960)
GROUND = "#E4E1EE"
CARD = (SCREEN[0] // 2 - 190, 100)
CARD_WIDTH = 380
DRAWER = (CARD[0] + CARD_WIDTH + 10, CARD[1], 900, 580)
COLUMN = (DRAWER[0] + 365, DRAWER[1], DRAWER[0] + DRAWER[2], DRAWER[1] + DRAWER[3])
# In the grid of the drawer, from its top left corner.
RECEIPT, LETTER = (95, 348), (268, 130)
# In the editor, from the column's top left corner: the receipt's corners, and a line of the letter.
RECEIPT_CORNERS = ((180, 137), (357, 137), (364, 525), (179, 525))
LINE = (216, 212)
FRAME = 36  # around the windows; most of their shadow is in it
ACCENT = (0x7A, 0x5A, 0xF8)
BUTTON = (190, 237)  # the middle of the round button, from the card's top left corner
BESIDE_SYMBOL = (190 - 26, 237)
OLDER = ("article", "receipt", "letter")
SHEETS = ("letter.png", "article.png", "receipt.jpg")


class Session:
    """A user's home folder, and the window open on the screen."""

    def __init__(self, screen, programs, samples, home):
        self.screen, self.programs, self.samples, self.home = screen, programs, samples, home
        self.scans = home / "Documents" / "Scans"
        self.feeder = home / "feeder"
        self.environment = dict(private_environment(home), DISPLAY=screen.name,
                                QT_SCALE_FACTOR=str(SCALE), QT_QUICK_BACKEND="software",
                                SCANENGINE_FEEDER=str(self.feeder))
        self.window = None

    def fill_feeder(self, sheets):
        shutil.rmtree(self.feeder, ignore_errors=True)
        self.feeder.mkdir()
        for number, sheet in enumerate(sheets):
            source = self.samples / sheet
            shutil.copy(source, self.feeder / f"{number}{source.suffix}")

    def make_older_scans(self):
        """A few that are in the folder already, with the names that a user gave them."""
        for name in OLDER:
            self.fill_feeder([sheet for sheet in SHEETS if sheet.startswith(name)])
            command = [self.programs / "velmor", "scan", "--no-ocr", "--folder", self.scans]
            told = subprocess.run(command, env=self.environment, check=True, text=True,
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
            made = Path(told.stdout.strip())
            raw = made.parent / ".velmor_raw"
            (raw / made.stem).rename(raw / name.capitalize())
            made.rename(made.with_stem(name.capitalize()))

    def open(self, *options):
        self.screen.act("mousemove", 4, 4)
        self.window = subprocess.Popen([self.programs / "velmor", *options],
                                       env=self.environment)

        def ready():
            return self.color_at(BESIDE_SYMBOL) == ACCENT
        wait_until(ready)

    def close(self):
        if self.window:
            self.window.terminate()
            self.window.wait()
            self.window = None

    def color_at(self, place):
        return self.screen.pixel(*((CARD[i] + place[i]) * SCALE for i in (0, 1)))

    def click(self, place):
        x, y = ((CARD[i] + place[i]) * SCALE for i in (0, 1))
        self.screen.act("mousemove", x, y, "click", 1, "mousemove", 4, 4)

    def look(self, height, right=CARD[0] + CARD_WIDTH):
        """The card down to `height`, and what is beside it up to `right`."""
        box = (CARD[0] - FRAME, CARD[1] - FRAME, right + FRAME, CARD[1] + height + FRAME)
        return self.screen.picture([SCALE * edge for edge in box])

    def look_at_column(self):
        """The drawer beside the grid."""
        return self.screen.picture([SCALE * edge for edge in COLUMN])

    def look_at_rest(self, *what):
        """The same as `look`, once nothing moves any more."""
        return at_rest(lambda: self.look(*what))

    def edit(self, scan, key):
        """Opens the editor on a scan of the grid, and waits for its page."""
        self.screen.act("mousemove", *(SCALE * (DRAWER[i] + scan[i]) for i in (0, 1)), "click", 1)
        self.act_in_column("mousemove", (100, 300))
        at_rest(self.look_at_column)
        self.screen.act("key", key)
        at_rest(self.look_at_column)

    def act_in_column(self, action, place, *then):
        self.screen.act(action, *(SCALE * (COLUMN[i] + place[i]) for i in (0, 1)), *then)

    def card_height(self):
        """Down to where the pixels below the card's left half are the window's no more."""
        middle = CARD[0] + 60
        ground = tuple(bytes.fromhex(GROUND[1:]))
        y = SCREEN[1] - 1
        while y > CARD[1] and not _unlike(self.screen.pixel(middle * SCALE, y * SCALE), ground):
            y -= 1
        return y + 1 - CARD[1]


def at_rest(look):
    """What is seen once it is the same twice."""
    last = None

    def rest():
        nonlocal last
        before, last = last, look()
        return before is not None and before.tobytes() == last.tobytes()
    wait_until(rest, step=0.5)
    return last


def _unlike(color, ground):
    """Not the ground, nor the ground in a window's shadow."""
    return any(mine > there for mine, there in zip(color, ground))


def picture_scan(session):
    """While the pages are read: in the middle of the time between the last page and the PDF."""
    sheets = SHEETS + SHEETS
    session.fill_feeder(sheets)
    session.open()
    height = session.card_height()
    before = set(session.scans.glob("*.pdf"))
    session.click(BUTTON)

    def all_pages():
        return len(list(session.scans.glob("*.png"))) == len(sheets)
    wait_until(all_pages)
    session.click(BUTTON)
    seen = []

    def saved():
        seen.append(session.look(height))
        return set(session.scans.glob("*.pdf")) - before
    wait_until(saved, seconds=300, step=0.3)
    return seen[len(seen) // 2], height


def pictures(session):
    """Name and image of each picture."""
    session.make_older_scans()
    session.fill_feeder(SHEETS)
    session.open()
    yield "card", session.look_at_rest(session.card_height())
    session.close()

    session.open("-uiDrawer")
    session.look_at_rest(SCREEN[1] - CARD[1] - FRAME)
    yield "settings", session.look_at_rest(session.card_height())
    session.close()

    making, height = picture_scan(session)
    yield "making", making

    # The drawer opens by itself; the green circle and the message go away.
    def done():
        return session.color_at(BESIDE_SYMBOL) == ACCENT
    wait_until(done)
    time.sleep(5)
    yield "drawer", session.look_at_rest(max(height, DRAWER[3]), DRAWER[0] + DRAWER[2])

    session.edit(RECEIPT, "c")
    for corner in RECEIPT_CORNERS:
        session.act_in_column("mousemove", corner, "click", 1)
        time.sleep(0.2)
    session.act_in_column("mousemove", (40, 470))
    yield "crop", at_rest(session.look_at_column)
    session.screen.act("key", "Escape")

    session.edit(LETTER, "w")
    session.act_in_column("mousemove", LINE)
    yield "magic", at_rest(session.look_at_column)
    session.close()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", type=Path, help="the build's folder of programs")
    parser.add_argument("samples", type=Path, help="the folder of sample pages")
    parser.add_argument("target", type=Path, help="the folder for the pictures")
    options = parser.parse_args()
    options.target.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="velmor-pictures-") as home, \
            VirtualScreen(*(SCALE * side for side in SCREEN)) as screen:
        os.chmod(home, 0o700)
        screen.add_desktop(GROUND)
        session = Session(screen, options.programs.resolve(), options.samples, Path(home))
        try:
            for name, image in pictures(session):
                image.save(options.target / f"{name}.png")
        except ScreenError as error:
            sys.exit(str(error))
        finally:
            session.close()


if __name__ == "__main__":
    main()

"""Ten scanned-looking A4 pages at 300 dpi, 8-bit grey, with the text that is printed on them.

    PYTHONPATH=script /usr/bin/python3 bench/pages.py FOLDER

Writes FOLDER/NAME.png and FOLDER/NAME.txt for each text in bench/texts. Seeded: the same packages
give the same bytes. A text's paragraphs are divided by empty lines; how a line begins says what
it is: "# " a heading, "= " a line of its own, "> " one at the right edge, "| " a table row.
"""
import itertools
import re
import sys
from dataclasses import dataclass
from pathlib import Path

import numpy
from PIL import Image
from printing.sheet import A4, DPI, Sheet, break_lines, font, mm, pt, scanned, text_width

TEXTS = Path(__file__).resolve().parent / "texts"


@dataclass(frozen=True)
class Look:
    """How a page is set, and what the scanner made of it; sizes in points, `scan` for scanned()."""
    family: str
    size: float
    scan: dict
    headings: str = ""
    columns: int = 1
    leading: float = 1.32
    justify: bool = False
    margin: float = 22  # left and right, millimetres


LOOKS = {
    "01-letter-en": Look("serif", 11.5, {"seed": 11, "skew": 0.4, "folds": (mm(99), mm(198))}),
    "02-letter-de": Look("garamond", 12, {"seed": 12, "skew": -0.5, "ink": 120, "weak": 0.3},
                         "lato"),
    "03-columns-de": Look("schola", 11, {"seed": 13, "skew": 0.15, "paper": 236}, "heros",
                          columns=2),
    "04-columns-en": Look("pagella", 11.5, {"seed": 14, "skew": -1.1, "grain": 0.35}, columns=2,
                          justify=True),
    "05-list-en": Look("lato", 10.5, {"seed": 15, "skew": 0.0, "blur": 1.0}),
    "06-list-de": Look("sans", 10.5, {"seed": 16, "skew": 0.7, "paper": 190, "ink": 70}),
    "07-small-en": Look("serif", 8.5, {"seed": 17, "skew": -0.1}, "sans", columns=2, leading=1.2,
                        margin=18),
    "08-small-de": Look("sans", 8, {"seed": 18, "skew": 0.2, "blur": 1.5, "grain": 0.3},
                        leading=1.25, margin=30, justify=True),
    "09-table-en": Look("heros", 10, {"seed": 19, "skew": -1.4, "folds": (mm(148),)}),
    "10-table-de": Look("pagella", 10.5, {"seed": 20, "skew": 0.35, "paper": 238}, "lato"),
}

_KINDS = {"# ": "heading", "= ": "line", "> ": "right", "| ": "row"}


def parts(text):
    """(kind, content) in order: content is a string, for a table a list of rows of cells."""
    found = []
    for block in text.strip().split("\n\n"):
        for kind, lines in itertools.groupby(block.split("\n"),
                                             lambda line: _KINDS.get(line[:2], "paragraph")):
            lines = list(lines)
            if kind == "paragraph":
                found.append((kind, " ".join(lines)))
            elif kind == "row":
                found.append(("table", [[cell.strip() for cell in line[2:].split("|")]
                                        for line in lines]))
            else:
                found += [(kind, line[2:]) for line in lines]
        found.append(("gap", ""))
    return found[:-1]


class _Overflow(Exception):
    """The text is longer than the columns."""


class _Setter:
    """Sets parts below each other and column after column, down to `bottom`. Lengths in pixels."""

    def __init__(self, look, bottom):
        self.sheet = Sheet()
        self.look = look
        self.body = font(look.family, look.size)
        self.leading = pt(look.size * look.leading)
        self.left = mm(look.margin)
        self.width = A4[0] - 2 * self.left
        self.top = self.y = mm(26)
        self.bottom = bottom
        self.columns_left = look.columns - 1

    def set(self, found):
        if self.look.columns > 1:
            self._title(found[0][1])
            found = found[1:]
        for kind, content in found:
            getattr(self, f"_{kind}")(content)
        return self.sheet

    def _title(self, text):
        face = font(self.look.headings or self.look.family, self.look.size * 2, "bold")
        self.sheet.line(text, self.left, self.y, face)
        self.top = self.y = self.y + 2 * self.leading
        gap = mm(8)
        self.width = (self.width - gap * (self.look.columns - 1)) // self.look.columns

    def _claim(self, height):
        """Moves to the next column when `height` doesn't fit."""
        if self.y + height - self.leading <= self.bottom:
            return
        if self.columns_left == 0:
            raise _Overflow
        self.columns_left -= 1
        self.left += self.width + mm(8)
        self.y = self.top

    def _gap(self, _):
        if self.y > self.top:
            self.y += self.leading // 2

    def _heading(self, text):
        face = font(self.look.headings or self.look.family, self.look.size * 1.15, "bold")
        self._claim(10 * self.leading)
        self._gap("")
        self.y = self.sheet.paragraph(text, self.left, self.y, self.width, face,
                                      round(self.leading * 1.15), justify=False)

    def _line(self, text):
        self._claim(self.leading)
        self.sheet.line(text, self.left, self.y, self.body)
        self.y += self.leading

    def _right(self, text):
        self._claim(self.leading)
        self.sheet.line(text, self.left + self.width, self.y, self.body, align="right")
        self.y += self.leading

    def _paragraph(self, text):
        self._claim(len(break_lines(text, self.width, self.body)) * self.leading)
        self.y = self.sheet.paragraph(text, self.left, self.y, self.width, self.body, self.leading,
                                      justify=self.look.justify)

    def _table(self, rows):
        step = round(self.leading * 1.15)
        self._claim(len(rows) * step)
        stops = self._stops(rows)
        strong = font(self.look.family, self.look.size, "bold")
        for number, row in enumerate(rows):
            cells = [(text, *stop) for text, stop in zip(row, stops)]
            self.sheet.cells(cells, self.y, self.body if number else strong)
            if number in (0, len(rows) - 1):
                self.sheet.rule(self.left, self.left + self.width, self.y + step // 3, 3)
            self.y += step

    def _stops(self, rows):
        """(x, align) of each column: figures at the right, words at the left, evenly spaced."""
        columns = list(itertools.zip_longest(*rows, fillvalue=""))
        strong = font(self.look.family, self.look.size, "bold")
        widths = [max(text_width(cell, strong) for cell in column) for column in columns]
        gap = (self.width - sum(widths)) / (len(columns) - 1)
        x, stops = self.left, []
        for number, (column, width) in enumerate(zip(columns, widths)):
            figures = number > 0 and all(re.fullmatch(r"[-\d.,]*( min)?", cell)
                                         for cell in column[1:])
            stops.append((x + width, "right") if figures else (x, "left"))
            x += width + gap
        return stops


def _set(name, look):
    """The page in columns of equal height: the lowest that hold the text, on whole 5 mm."""
    found = parts((TEXTS / f"{name}.txt").read_text(encoding="utf-8"))
    for height in range(60, 280, 5):
        try:
            return _Setter(look, mm(height)).set(found)
        except _Overflow:
            continue
    return sys.exit(f"{name}.txt doesn't fit on its page.")


def _noisy(page, seed):
    """`page` with a sensor's noise, which makes the PNG as heavy to decode as a scanner's."""
    noise = numpy.random.RandomState(seed).standard_normal((page.height, page.width))
    grey = numpy.asarray(page) + 1.2 * noise
    return Image.fromarray(numpy.clip(numpy.round(grey), 0, 255).astype(numpy.uint8))


def make(folder):
    folder.mkdir(parents=True, exist_ok=True)
    for name, look in LOOKS.items():
        sheet = _set(name, look)
        page = _noisy(scanned(sheet.image, **look.scan), look.scan["seed"])
        page.save(folder / f"{name}.png", dpi=(DPI, DPI))
        sheet.save_truth(folder / f"{name}.txt")


if __name__ == "__main__":
    make(Path(sys.argv[1]))

"""Sets pages in type and makes them look scanned.

Shared by script/samples and bench/pages.py. Lengths are pixels at 300 dpi from the top left;
mm() and pt() convert. Nothing here reads a clock or an unseeded random source: the same packages
give the same bytes. What it needs is listed in packages.sh beside it.
"""
import functools
import sys
from pathlib import Path

import numpy
from PIL import Image, ImageDraw, ImageFilter, ImageFont, features

DPI = 300
A4 = (2480, 3508)

_FONTS = Path("/usr/share/fonts")
_GYRE = "/usr/share/texmf/fonts/opentype/public/tex-gyre/texgyre"

# Name: (package, regular, bold, italic). All licences allow embedding and drawing: the GUST Font
# License (TeX Gyre) and the SIL Open Font License (the others).
_FAMILIES = {
    name: (package, *(_FONTS / file.format(style) for style in styles))
    for name, package, file, styles in (
        ("pagella", "fonts-texgyre", _GYRE + "pagella-{}.otf", ("regular", "bold", "italic")),
        ("heros", "fonts-texgyre", _GYRE + "heros-{}.otf", ("regular", "bold", "italic")),
        ("schola", "fonts-texgyre", _GYRE + "schola-{}.otf", ("regular", "bold", "italic")),
        ("garamond", "fonts-ebgaramond", "opentype/ebgaramond/EBGaramond12-{}.otf",
         ("Regular", "Bold", "Italic")),
        ("lato", "fonts-lato", "truetype/lato/Lato-{}.ttf", ("Regular", "Bold", "Italic")),
        ("sans", "fonts-liberation2", "truetype/liberation2/LiberationSans-{}.ttf",
         ("Regular", "Bold", "Italic")),
        ("serif", "fonts-liberation2", "truetype/liberation2/LiberationSerif-{}.ttf",
         ("Regular", "Bold", "Italic")),
        ("mono", "fonts-liberation2", "truetype/liberation2/LiberationMono-{}.ttf",
         ("Regular", "Bold", "Italic")),
    )
}
_STYLES = ("regular", "bold", "italic")


def mm(length):
    """Pixels of a length in millimetres."""
    return round(length * DPI / 25.4)


def pt(size):
    """Pixels of a length in points."""
    return round(size * DPI / 72)


@functools.cache
def font(family, size, style="regular"):
    """A font of `size` points. Ends the program, naming the package, when it is not installed."""
    package, *files = _FAMILIES[family]
    if not features.check("raqm"):
        sys.exit("Pillow lacks Raqm, so text would lose its kerning. Install libraqm0.")
    try:
        return ImageFont.truetype(str(files[_STYLES.index(style)]), pt(size),
                                  layout_engine=ImageFont.Layout.RAQM)
    except OSError as error:
        sys.exit(f"No font {family} {style}: {error}. Install {package}.")


# Every letter printed on its own, so that the ground truth is what is on paper.
_FEATURES = ["-liga", "-dlig", "-clig"]


@functools.cache
def _prints(face, letter):
    return bytes(face.getmask(letter)) != bytes(face.getmask("\uffff"))


def _check_letters(text, face):
    """Ends the program when the font has no shape for a letter: it would print a box."""
    for letter in set(text) - set(" \u00a0"):
        if not _prints(face, letter):
            sys.exit(f"{face.path} has no letter {letter!r}. Choose another font for {text!r}.")


def text_width(text, face):
    return face.getlength(text, features=_FEATURES)


class Sheet:
    """A white page to draw on, and the lines of text printed so far, in reading order."""

    def __init__(self, size=A4):
        self.image = Image.new("L", size, 255)
        self.draw = ImageDraw.Draw(self.image)
        self.truth = []

    def ink(self, text, x, baseline, face, align="left", tone=0, tracking=0):
        """Draws one run of text, not recorded. `align` says what of the text lies at `x`."""
        _check_letters(text, face)
        width = text_width(text, face) + tracking * (len(text) - 1)
        left = x - {"left": 0, "centre": width / 2, "right": width}[align]
        if not tracking:
            self.draw.text((round(left), baseline), text, fill=tone, font=face, anchor="ls",
                           features=_FEATURES)
            return
        for letter in text:
            self.draw.text((round(left), baseline), letter, fill=tone, font=face, anchor="ls")
            left += text_width(letter, face) + tracking

    def line(self, text, x, baseline, face, **look):
        """Draws and records one printed line."""
        self.ink(text, x, baseline, face, **look)
        self.truth.append(text)

    def cells(self, cells, baseline, face):
        """Draws a table row, recorded as one line. A cell is (text, x, align)."""
        for text, x, align in cells:
            self.ink(text, x, baseline, face, align)
        self.truth.append(" ".join(text for text, _, _ in cells if text))

    def rule(self, left, right, y, thickness=2, tone=0):
        self.draw.rectangle((left, y, right, y + thickness - 1), fill=tone)

    def paragraph(self, text, x, baseline, width, face, leading, justify=True, indent=0):
        """Sets a paragraph; answers the baseline of the line after it."""
        lines = break_lines(text, width, face, indent)
        for number, words in enumerate(lines):
            left = x + (indent if number == 0 else 0)
            last = number == len(lines) - 1
            if justify and not last and len(words) > 1:
                self._justified(words, left, baseline, x + width - left, face)
            else:
                self.ink(" ".join(words), left, baseline, face)
            self.truth.append(" ".join(words))
            baseline += leading
        return baseline

    def _justified(self, words, x, baseline, width, face):
        gap = (width - sum(text_width(word, face) for word in words)) / (len(words) - 1)
        for word in words:
            self.ink(word, x, baseline, face)
            x += text_width(word, face) + gap

    def save_truth(self, path):
        path.write_text("\n".join(self.truth).replace("\u00a0", " ") + "\n", encoding="utf-8")


def _pieces(text):
    """(piece, ends the word) of a text in which | marks where a word may be divided."""
    for word in text.split(" "):
        parts = word.split("|")
        for number, part in enumerate(parts):
            yield part, number == len(parts) - 1


def break_lines(text, width, face, indent=0):
    """Lists of words, one a line, so that the looseness of all lines together is least.

    Least sum of squared free widths, as in paragraph-wise breaking; the last line is free.
    """
    pieces = list(_pieces(text))
    sizes = [text_width(piece, face) for piece, _ in pieces]
    blank, hyphen = text_width(" ", face), text_width("-", face)
    best = [(0.0, 0)] + [None] * len(pieces)
    for start in range(len(pieces)):
        if best[start] is None:
            continue
        room = width - (indent if start == 0 else 0)
        used = 0.0
        for end in range(start + 1, len(pieces) + 1):
            whole = pieces[end - 1][1]
            used += sizes[end - 1]
            slack = room - used - (0 if whole else hyphen)
            if slack < 0 and end > start + 1:
                break
            cost = best[start][0]
            if end < len(pieces):
                cost += (slack / blank) ** 2 + (0 if whole else 12)
            if best[end] is None or cost < best[end][0]:
                best[end] = (cost, start)
            used += blank if whole else 0
    return _lines_of(pieces, best)


def _lines_of(pieces, best):
    lines, end = [], len(pieces)
    while end > 0:
        start = best[end][1]
        words, open_word = [], ""
        for piece, whole in pieces[start:end]:
            open_word += piece
            if whole:
                words.append(open_word)
                open_word = ""
        if open_word:
            words.append(open_word if open_word.endswith("-") else open_word + "-")
        lines.insert(0, words)
        end = start
    return lines


def clouds(size, cells, random):
    """Smooth noise around 0, standard deviation near 0.5, as an array of rows."""
    width, height = size
    coarse = random.standard_normal((cells * height // width + 2, cells + 2)).astype(numpy.float32)
    return numpy.asarray(Image.fromarray(coarse).resize(size, Image.Resampling.BICUBIC))


def scanned(image, seed, skew=0.0, paper=243, ink=34, blur=0.75, grain=0.16, folds=(), weak=0.1):
    """A grey page as a flatbed scanner would see it.

    skew: degrees clockwise. paper, ink: grey levels, 0 black. blur: radius in pixels.
    grain: noise on the edges of ink, as a share of full contrast. folds: heights of creases.
    weak: how unevenly the ink takes.
    Paper carries only sparse noise, and ink few levels, which keeps the PNG small.
    """
    random = numpy.random.RandomState(seed)
    image = image.rotate(-skew, Image.Resampling.BICUBIC, fillcolor=255)
    image = image.filter(ImageFilter.GaussianBlur(blur))
    size = image.size
    cover = 1 - numpy.asarray(image, dtype=numpy.float32) / 255
    edge = 4 * cover * (1 - cover)
    cover = cover * (1 - weak * numpy.clip(0.5 + clouds(size, 60, random), 0, 2))
    cover += edge * grain * random.standard_normal(cover.shape).astype(numpy.float32)
    tone = paper + 1.6 * clouds(size, 5, random)
    tone += _lid_shadow(size)
    for fold in folds:
        tone += _crease(size, fold, random)
    specks = random.random_sample(cover.shape)
    tone = numpy.round(tone) - 4 * (specks < 0.004) + 4 * (specks > 0.998)
    grey = tone - numpy.clip(cover, 0, 1) * (tone - ink)
    grey = numpy.where(cover > 0.02, numpy.round(grey / 12) * 12, grey)
    return Image.fromarray(numpy.clip(grey, 0, 255).astype(numpy.uint8))


def _lid_shadow(size):
    """The paper's edge lifts off the glass at the right and at the bottom."""
    across = numpy.arange(size[0], dtype=numpy.float32)
    down = numpy.arange(size[1], dtype=numpy.float32)
    right = -26 * numpy.exp((across - size[0]) / 14)
    bottom = -16 * numpy.exp((down - size[1]) / 18)
    return right[None, :] + bottom[:, None]


def _crease(size, height, random):
    """A faint dark line with a lighter one below it, not quite straight."""
    wander = numpy.cumsum(random.standard_normal(size[0])) * 0.06
    away = numpy.arange(size[1], dtype=numpy.float32)[:, None] - (height + wander)[None, :]
    return 5 * numpy.exp(-((away - 9) / 6) ** 2) - 13 * numpy.exp(-(away / 5) ** 2)


def save_png(image, path):
    image.save(path, dpi=(DPI, DPI), compress_level=9)

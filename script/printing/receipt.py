"""receipt.jpg: a till receipt photographed on a table, a little askew."""
import numpy
from PIL import Image, ImageFilter

from printing.sheet import A4, DPI, Sheet, clouds, font

_PAPER = (1340, 2860)
_LEFT, _RIGHT = 90, _PAPER[0] - 90

# Name, pence.
_GOODS = [
    ("Brown loaf, seeded", 385),
    ("Farm butter 250 g", 310),
    ("Eggs, large, 12", 420),
    ("Quince jelly 340 g", 465),
    ("Cheddar 0.412 kg", 618),
    ("Russet apples 1.35 kg", 297),
    ("Pot of tea for two *", 540),
    ("Plum cake, 2 slices *", 690),
    ("Beeswax candle *", 875),
]


def make(folder):
    sheet = _printed()
    photo = _photographed(sheet.image)
    photo.save(folder / "receipt.jpg", quality=84, dpi=(DPI, DPI), optimize=True)
    sheet.save_truth(folder / "receipt.txt")


def _money(pence):
    return f"{pence // 100}.{pence % 100:02d}"


def _printed():
    sheet = Sheet(_PAPER)
    middle = _PAPER[0] / 2
    body, strong = font("mono", 12), font("mono", 12, "bold")
    y = 215
    sheet.line("QUINCE & BARLEY", middle, y, font("mono", 22, "bold"), align="centre")
    for text in ("Farm Shop and Tea Room", "Upper Lidmere, Thistle Lane 8", "Tel. 01632 960 288"):
        y += 78 if y == 215 else 66
        sheet.line(text, middle, y, body, align="centre")
    y = _row(sheet, y + 110, "Till 2  Receipt 04817", "", body)
    y = _row(sheet, y, "Sat 14 Sep 2024", "15:42", body)
    _dashes(sheet, y - 8)
    y += 72
    for name, price in _GOODS:
        y = _row(sheet, y, name, _money(price), body)
    _dashes(sheet, y - 8)
    y = _totals(sheet, y + 96, body, strong)
    _barcode(sheet, y)
    y += 310
    for text in ("Thank you for calling in.", "The orchard walk is open until dusk."):
        sheet.line(text, middle, y, body, align="centre")
        y += 62
    return sheet


def _row(sheet, y, left, right, face):
    sheet.cells([(" ".join(left.split()), _LEFT, "left"), (right, _RIGHT, "right")], y, face)
    return y + 72


def _dashes(sheet, y):
    for x in range(_LEFT, _RIGHT - 20, 40):
        sheet.draw.rectangle((x, y, x + 24, y + 4), fill=0)


def _totals(sheet, y, body, strong):
    total = sum(price for _, price in _GOODS)
    taxed = sum(price for name, price in _GOODS if name.endswith("*"))
    tax = round(taxed / 6)  # One sixth of the price is tax at 20 %.
    y = _row(sheet, y, "TOTAL", f"£{_money(total)}", font("mono", 18, "bold")) + 24
    y = _row(sheet, y, "Cash", "50.00", body)
    y = _row(sheet, y, "Change", _money(5000 - total), strong)
    _dashes(sheet, y - 8)
    y += 72
    y = _row(sheet, y, "VAT 20 % on items marked *", "", body)
    y = _row(sheet, y, "Net", _money(taxed - tax), body)
    y = _row(sheet, y, "VAT", _money(tax), body)
    y = _row(sheet, y, "VAT 0 %", _money(total - taxed), body)
    return y + 20


def _barcode(sheet, top):
    """Bars of one to four units with the look of a code; they spell nothing."""
    random = numpy.random.RandomState(88)
    x, right = _LEFT + 130, _RIGHT - 130
    while x < right:
        bar, gap = 6 * random.randint(1, 4), 6 * random.randint(1, 4)
        sheet.draw.rectangle((x, top, min(x + bar, right) - 1, top + 170), fill=0)
        x += bar + gap


def _photographed(printed):
    random = numpy.random.RandomState(415)
    corners = _corners()
    ink = _onto_table(printed.filter(ImageFilter.GaussianBlur(1.0)), corners, 255)
    inside = _onto_table(Image.new("L", _PAPER, 255), corners, 0)
    mask = numpy.asarray(inside.filter(ImageFilter.GaussianBlur(1.0)), dtype=numpy.float32) / 255
    cover = 1 - numpy.asarray(ink, dtype=numpy.float32) / 255
    cover = cover * 0.93 * (1 - 0.12 * numpy.clip(clouds(A4, 24, random), -1, 2))
    light = _light() * (1 - 0.5 * _shadow(inside) * (1 - mask))
    table = _table(random)
    curl = 1 - 0.045 * numpy.clip(clouds(A4, 4, random), -1, 1)
    layers = []
    for paper, tint, table_tint in ((247, 52, 1.0), (244, 50, 0.99), (235, 56, 0.965)):
        sheet = paper * curl * (1 - cover) + tint * cover
        layers.append((sheet * mask + table * table_tint * (1 - mask)) * light)
    grain = 1.6 * random.standard_normal(cover.shape).astype(numpy.float32)
    pixels = numpy.stack([numpy.clip(layer + grain, 0, 255) for layer in layers], axis=-1)
    return Image.fromarray(pixels.astype(numpy.uint8)).filter(ImageFilter.GaussianBlur(0.5))


def _corners():
    """Where the paper's corners lie on the photograph, from the top left clockwise, in pixels.

    Four degrees anticlockwise, and narrower at the far end.
    """
    angle = numpy.radians(-4.0)
    cosine, sine = numpy.cos(angle), numpy.sin(angle)
    turn = numpy.array([[cosine, -sine], [sine, cosine]])
    half_width, half_height = _PAPER[0] / 2, _PAPER[1] / 2
    flat = numpy.array([
        (-half_width * 0.972, -half_height), (half_width * 0.968, -half_height * 0.996),
        (half_width * 1.012, half_height), (-half_width * 1.015, half_height * 0.994)])
    return flat @ turn.T + numpy.array([A4[0] / 2 + 15, A4[1] / 2 + 10])


def _onto_table(image, corners, fill):
    width, height = _PAPER
    source = [(0, 0), (width, 0), (width, height), (0, height)]
    rows, values = [], []
    for (x, y), (u, v) in zip(corners, source):
        rows += [[x, y, 1, 0, 0, 0, -u * x, -u * y], [0, 0, 0, x, y, 1, -v * x, -v * y]]
        values += [u, v]
    solved = numpy.linalg.solve(numpy.array(rows), numpy.array(values))
    coefficients = [float(f"{value:.10g}") for value in solved]
    return image.transform(A4, Image.Transform.PERSPECTIVE, coefficients,
                           Image.Resampling.BICUBIC, fillcolor=fill)


def _shadow(inside):
    """A soft shadow to the lower right, 0 to 1: a close dark one over a wide faint one."""
    total = 0
    for offset, radius, strength in ((10, 9, 0.55), (34, 46, 0.6)):
        moved = Image.new("L", A4, 0)
        moved.paste(inside, (offset, offset))
        blurred = moved.filter(ImageFilter.GaussianBlur(radius))
        total = total + strength * numpy.asarray(blurred, dtype=numpy.float32) / 255
    return numpy.clip(total, 0, 1)


def _light():
    """A lamp at the upper left: from 1.04 there to 0.72 at the far corner."""
    x = numpy.linspace(0, 1, A4[0], dtype=numpy.float32)[None, :]
    y = numpy.linspace(0, 1, A4[1], dtype=numpy.float32)[:, None]
    away = numpy.sqrt((x - 0.28) ** 2 + 1.4 * (y - 0.2) ** 2)
    return 1.03 - 0.27 * away ** 1.4


def _table(random):
    """Grey stone: broad clouds, fine mottling and sparse darker grains."""
    coarse = 4 * clouds(A4, 9, random) + 3 * clouds(A4, 90, random) + 3 * clouds(A4, 420, random)
    dark = random.random_sample((A4[1], A4[0])) < 0.0012
    grains = Image.fromarray((dark * 255).astype(numpy.uint8))
    spots = numpy.asarray(grains.filter(ImageFilter.GaussianBlur(2.2)), dtype=numpy.float32)
    return 132 + coarse - 1.6 * spots

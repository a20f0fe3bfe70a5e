"""letter.png: an English letter on a bookbinder's paper."""
import math

from printing.sheet import A4, Sheet, font, mm, pt, save_png, scanned

_LEFT, _RIGHT = mm(27), A4[0] - mm(27)

_ADDRESS = [
    "Mrs Imelda Thornaby", "The Old Ferry House", "14 Saltmarsh Row", "Oxley Harbour OX9 4TB"]

_BODY = [
    "Thank you for bringing your grandfather’s sea atlas to our bench last week. I have now had "
    "the chance to look through it leaf by leaf, in good north light, and I am glad to say that it "
    "is in far better health than its covers suggest. Paper of this age was made from linen rags, "
    "and it forgives a great deal.",
    "Of the 62 charts, 57 are sound and want no more than a careful cleaning with a soft brush. "
    "Four have short tears along the lower edge, the longest of them 38\u00a0mm, which we would "
    "mend with Japanese tissue and wheat starch paste. Only the chart of the northern fisheries "
    "gives me some concern: a damp winter has left a tide line across it, and I would like to wash "
    "that sheet before anything else is done.",
    "The binding is another story. Both boards have come away, the sewing is broken in three "
    "places, and somebody once repaired the spine with what I can only describe as carpet tape. We "
    "would lift the tape, sew the sections again on five linen cords, and keep as much of the old "
    "calfskin as will bear it. You asked whether the gilt compass on the front can be saved. It "
    "can, and it will look all the better for not being made new.",
    "As for the cost, we reckon on 46\u00a0hours of work and £85 for materials, which comes to "
    "£1,925 in all. A third of that is due when we begin. If you would rather spread the work over "
    "two years, we could do the paper this winter and the binding next; the book would be "
    "perfectly safe in a box in the meantime.",
    "There is one more thing. Between charts 40 and 41 we found a folded note in pencil, dated "
    "9\u00a0June 1931, with a list of soundings and the words “good holding ground, kind people”. "
    "We have left it exactly where it was. You may like to read it before we go on, and perhaps to "
    "tell us where that anchorage might be.",
    "The atlas is in our fireproof cupboard, and you are welcome to visit it on any weekday "
    "between nine and four. Please ring the lower bell twice; the upper one fell silent in the "
    "spring, and none of us has the heart to take it down.",
]


def make(folder):
    sheet = Sheet()
    _letterhead(sheet)
    y = _opening(sheet)
    y = _paragraphs(sheet, y)
    _closing(sheet, y)
    _foot(sheet)
    page = scanned(sheet.image, seed=1907, skew=0.3, folds=(mm(99), mm(198)))
    save_png(page, folder / "letter.png")
    sheet.save_truth(folder / "letter.txt")


def _letterhead(sheet):
    middle = A4[0] / 2
    sheet.line("THE TIDEWELL BINDERY", middle, mm(27), font("garamond", 21), align="centre",
               tracking=pt(2.6))
    sheet.line("Books, charts and papers mended by hand since 1926", middle, mm(34),
               font("garamond", 11.5, "italic"), align="centre")
    sheet.rule(_LEFT, _RIGHT, mm(39.5), 3)
    sheet.rule(_LEFT, _RIGHT, mm(40.3), 1)


def _opening(sheet):
    face, y = font("pagella", 10.5), mm(53)
    for line, date in zip(_ADDRESS, ("21 October 2024", "", "", "")):
        sheet.cells([(line, _LEFT, "left"), (date, _RIGHT, "right")], y, face)
        y += pt(14.5)
    y += pt(20)
    sheet.line("Dear Mrs Thornaby,", _LEFT, y, face)
    y += pt(24)
    sheet.line("Your sea atlas of 1874: what we found and what we propose", _LEFT, y,
               font("pagella", 10.5, "bold"))
    return y + pt(22)


def _paragraphs(sheet, y):
    face = font("pagella", 10.5)
    for text in _BODY:
        y = sheet.paragraph(text, _LEFT, y, _RIGHT - _LEFT, face, pt(14.5)) + pt(6)
    return y


def _closing(sheet, y):
    face = font("pagella", 10.5)
    sheet.line("With kind regards,", _LEFT, y, face)
    _signature(sheet, _LEFT + mm(2), y + mm(12))
    sheet.line("Edwin Farrowdale", _LEFT, y + mm(22.5), face)
    sheet.line("Head of the workshop", _LEFT, y + mm(22.5) + pt(13.5),
               font("pagella", 9.5, "italic"))


def _foot(sheet):
    face = font("garamond", 9.5)
    middle, y = A4[0] / 2, A4[1] - mm(17.5)
    sheet.rule(_LEFT, _RIGHT, y - mm(5.5), 1)
    address = "3 Rope Walk, Oxley Harbour OX9 2LN · Telephone 01632 960 417"
    sheet.line(f"{address} · Monday to Friday, 9 to 4", middle, y, face, align="centre")


def _signature(sheet, x, y):
    """A quick pen stroke: loops that flatten to the right, drawn as dots of changing width."""
    for step in range(5200):
        t = step / 5200
        across = mm(46) * t + mm(3.4) * math.sin(t * 41)
        up = mm(7.5) * (1 - t) ** 1.6 * math.sin(t * 41 + 1.1 + 1.5 * math.sin(t * 9))
        radius = 2.2 + 1.9 * math.sin(t * 41 + 0.4) ** 2
        _dot(sheet, x + across, y - mm(1) - up - mm(2) * t, radius)
    for step in range(1600):
        t = step / 1600
        _dot(sheet, x + mm(4) + mm(47) * t, y + mm(3.2) - mm(4.5) * t + mm(1.1) * math.sin(t * 5),
             3.4 - 2.2 * t)


def _dot(sheet, x, y, radius):
    sheet.draw.ellipse((x - radius, y - radius, x + radius, y + radius), fill=40)

"""article.png: a German two-column page with a table and footnotes in small print."""
from printing.sheet import A4, Sheet, font, mm, pt, save_png, scanned

_LEFT, _RIGHT, _GAP = mm(20), A4[0] - mm(20), mm(7)
_WIDTH = (_RIGHT - _LEFT - _GAP) // 2
_COLUMNS = (_LEFT, _LEFT + _WIDTH + _GAP)
_TOP = mm(89)
_LEADING = pt(13.9)

_LEDE = (
    "Vierzig Jahre lang wurde im Lüßfelder Moor Torf gestochen. Dann verschlossen Freiwillige "
    "einen Graben nach dem anderen. Heute brüten dort wieder Kraniche, und die Dörfer ringsum "
    "merken, was ein nasser Boden wert ist.")

# A line that begins with # is a sub-heading. | marks where a word may be divided.
_FIRST = [
    "Wer im März vor Sonnen|auf|gang auf dem Bohlen|weg steht, hört das Moor, bevor er es sieht. "
    "Irgendwo im Nebel trompetet ein Kranich, ein zweiter antwortet, und unter den Brettern "
    "gluckst das Wasser. „Früher war hier um diese Zeit alles still“, sagt Förster Jörn Wübbels. "
    "„Still und staubtrocken.“",
    "Bis 1983 lief die letzte Torf|maschine. Zurück blieb eine braune Fläche, durch|zogen von "
    "186 Gräben, die jeden Tropfen Regen binnen weniger Tage in den Fluss leiteten. Der Boden "
    "sackte Jahr für Jahr um gut einen Zenti|meter.¹",
    "# Spundwände aus Lärchenholz",
    "Die Lösung war so schlicht wie mühsam: Man musste die Gräben schließen. Zwei Dutzend Leute "
    "aus den Nachbar|dörfern trafen sich jeden zweiten Sams|tag, rammten Bohlen aus Lärchen|holz "
    "in den weichen Grund und dichteten sie mit Torf ab. Mehr als 300 solcher Stau|wehre sind es "
    "inzwischen geworden. Bezahlt wurde das Holz aus dem Erlös des jähr|lichen Heidel|beer|festes.",
    "Der Erfolg ließ auf sich warten. In den ersten drei Sommern fiel der Wasser|stand trotz aller "
    "Mühe; Birken hatten die Fläche erobert und zogen an heißen Tagen mehr Wasser aus dem Boden, "
    "als nach|floss. Erst als Schafe die jungen Triebe kurz hielten, stieg der Spiegel.",
    "Seither wandern die Torf|moose zurück, Polster um Polster. Sie saugen sich voll, bis sie das "
    "Zwanzig|fache ihres Gewichts tragen, und lassen unter sich nichts mehr faulen. Aus einer "
    "Wüste ist wieder ein Ort geworden, an dem man nasse Füße bekommt und gern wieder|kommt.",
]
_SECOND = [
    "# Was die Pegel zeigen",
    "Seit 1995 misst die Schule in Ober|lüß an fünf Stellen den Wasser|stand. Die Kinder lesen die "
    "Pegel am ersten Montag jedes Monats ab und tragen die Werte in ein grünes Heft ein. Daraus "
    "ist eine Reihe geworden, um die manches Institut sie beneidet.²",
]
_TABLE_TITLE = "Mittlerer Wasserstand und Brutpaare"
_TABLE = [
    ("Jahr", "Pegel in cm", "Kraniche", "Kiebitze"),
    ("1995", "−41,5", "0", "2"),
    ("2000", "−33,8", "1", "2"),
    ("2005", "−22,0", "3", "5"),
    ("2010", "−14,6", "7", "9"),
    ("2015", "−9,3", "12", "8"),
    ("2020", "−6,1", "19", "14"),
]
_THIRD = [
    "Nasser Torf wächst, wenn auch langsam: rund einen Milli|meter im Jahr. Wichtiger ist, dass er "
    "nicht mehr zerfällt. Und bei Stark|regen wirkt das Moor wie ein Schwamm; die Keller in der "
    "Mühlen|gasse blieben beim Hoch|wasser vor zwei Jahren zum ersten Mal trocken. Den Land|wirten "
    "im Tal reicht das als Beweis; drei von ihnen haben ihre nassen Wiesen in|zwischen selbst "
    "zurück|gegeben.",
    "# Ein Weg für alle",
    "Im kommenden Frühjahr soll der Bohlen|weg bis zum Aus|sichts|turm verlängert werden, breit "
    "genug für Roll|stühle und Kinder|wagen. Wübbels freut sich auf die Gäste, hat aber eine "
    "Bitte: „Bleiben Sie auf den Brettern. Das Moor hat lange genug gewartet, es mag keine Eile.“",
]
_NOTES = [
    "¹ Bodenkundliche Aufnahme der Gemeinde Oberlüß, 1984. Gemessen wurde an zwölf Pfählen entlang "
    "der alten Feldbahn, jeweils Ende September.",
    "² Angaben in Zentimetern unter der Oberfläche, Mittel aus fünf Pegeln. Für 1998 fehlen die "
    "Werte von Juli bis Oktober, weil ein Biber den Steg unterhöhlte.",
]


def make(folder):
    sheet = Sheet()
    _head(sheet)
    body = font("pagella", 10)
    _flow(sheet, _FIRST, _COLUMNS[0], _TOP, body)
    y = _flow(sheet, _SECOND, _COLUMNS[1], _TOP, body)
    y = _table(sheet, _COLUMNS[1], y + pt(10))
    _flow(sheet, _THIRD, _COLUMNS[1], y, body)
    _foot(sheet)
    page = scanned(sheet.image, seed=1995, skew=-0.2, paper=240, ink=38, blur=0.8)
    save_png(page, folder / "article.png")
    sheet.save_truth(folder / "article.txt")


def _head(sheet):
    small = font("lato", 8)
    sheet.cells([("HEIDEBLATT · NATUR UND LANDSCHAFT", _LEFT, "left"),
                 ("Ausgabe 3 / 2024", _RIGHT, "right")], mm(18), small)
    sheet.rule(_LEFT, _RIGHT, mm(21), 5)
    sheet.line("Das Moor kehrt zurück", _LEFT, mm(41.5), font("pagella", 35, "bold"))
    y = sheet.paragraph(_LEDE, _LEFT, mm(54), mm(160), font("pagella", 12.5, "italic"), pt(18),
                        justify=False)
    sheet.line("Von Änne Großkopp", _LEFT, y + pt(5), font("lato", 8.5))


def _flow(sheet, texts, x, y, face):
    """Sets paragraphs and sub-headings down a column; the first after a heading has no indent."""
    fresh = True
    for text in texts:
        if text.startswith("# "):
            y += 0 if y == _TOP else pt(9)
            sheet.line(text[2:], x, y, font("lato", 10.5, "bold"))
            y += pt(15.5)
        else:
            y = sheet.paragraph(text, x, y, _WIDTH, face, _LEADING, indent=0 if fresh else pt(11))
        fresh = text.startswith("# ")
    return y


def _table(sheet, x, y):
    right = x + _WIDTH
    sheet.line(_TABLE_TITLE, x, y, font("lato", 8.8, "bold"))
    y += pt(6)
    sheet.rule(x, right, y, 4)
    stops = (x + pt(3), x + _WIDTH * 0.47, x + _WIDTH * 0.735, right - pt(3))
    for number, row in enumerate(_TABLE):
        y += pt(13.4)
        cells = [(text, stop, "left" if column == 0 else "right")
                 for column, (text, stop) in enumerate(zip(row, stops))]
        sheet.cells(cells, y, font("lato", 8.8, "bold" if number == 0 else "regular"))
        last = number == len(_TABLE) - 1
        sheet.rule(x, right, y + pt(4), 4 if last else 2 if number == 0 else 1,
                   tone=0 if last or number == 0 else 120)
    return y + pt(24)


def _foot(sheet):
    face = font("pagella", 7)
    y = A4[1] - mm(33)
    sheet.rule(_LEFT, _LEFT + mm(40), y - pt(11), 2)
    for note in _NOTES:
        y = sheet.paragraph(note, _LEFT, y, _RIGHT - _LEFT, face, pt(9.2), justify=False) + pt(1.5)
    sheet.line("17", A4[0] / 2, A4[1] - mm(14), font("lato", 8.5), align="centre")

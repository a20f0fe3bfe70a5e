"""Makes PDF files that are damaged or odd, each in another way: make.py FOLDER

All come from one good file of three pages, which is made here too. Those whose name begins with
"odd" are valid. Encrypted ones are made by qpdf.
"""
import subprocess
import sys
import zlib
from pathlib import Path

PAGES = 3
CATALOG, TREE, FONT, FIRST = 1, 2, 3, 4


def good_objects():
    """The objects of the good file by number: three pages of text, each with its stream."""
    kids = " ".join(f"{FIRST + 2 * i} 0 R" for i in range(PAGES))
    objects = {
        CATALOG: f"<< /Type /Catalog /Pages {TREE} 0 R >>".encode(),
        TREE: f"<< /Type /Pages /Count {PAGES} /Kids [{kids}] /MediaBox [0 0 200 300] >>".encode(),
        FONT: b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
    }
    for i in range(PAGES):
        number = FIRST + 2 * i
        objects[number] = (f"<< /Type /Page /Parent {TREE} 0 R /Contents {number + 1} 0 R "
                           f"/Resources << /Font << /F {FONT} 0 R >> >> >>").encode()
        objects[number + 1] = stream(f"BT /F 24 Tf 40 150 Td (Page {i + 1}) Tj ET".encode())
    return objects


def stream(data, entries=b"", length=None):
    size = len(data) if length is None else length
    return b"<< /Length %d %s>>\nstream\n%s\nendstream" % (size, entries, data)


def pdf(objects, trailer=b"", header=b"%PDF-1.5\n"):
    """A file of these objects, with a table of their places."""
    out, places = bytearray(header), {}
    for number, body in objects.items():
        places[number] = len(out)
        out += b"%d 0 obj\n%s\nendobj\n" % (number, body)
    table = len(out)
    last = max(objects)
    out += b"xref\n0 %d\n0000000000 65535 f \n" % (last + 1)
    for number in range(1, last + 1):
        kind = b"n" if number in places else b"f"
        out += b"%010d %05d %s \n" % (places.get(number, 0), 0, kind)
    out += (b"trailer\n<< /Size %d /Root %d 0 R %s>>\nstartxref\n%d\n%%%%EOF\n"
            % (last + 1, CATALOG, trailer, table))
    return bytes(out)


def changed(**bodies):
    """The good file with other bodies for some objects, named "o" and the number; None: without."""
    objects = good_objects()
    for name, body in bodies.items():
        number = int(name[1:])
        if body is None:
            del objects[number]
        else:
            objects[number] = body
    return pdf(objects)


def page(**entries):
    """The first page with entries in place of its own."""
    base = {"Type": "/Page", "Parent": f"{TREE} 0 R", "Contents": f"{FIRST + 1} 0 R"}
    both = {**base, **entries}
    return ("<< " + " ".join(f"/{key} {value}" for key, value in both.items()) + " >>").encode()


def tree(entries):
    return f"<< /Type /Pages {entries} /MediaBox [0 0 200 300] >>".encode()


def files():
    good = pdf(good_objects())
    bomb = zlib.compress(b"%" + b"x" * 60_000_000, 9)
    half = bytearray(good)
    for place in range(200, len(half), 37):
        half[place] ^= 0x55
    deep = b"[" * 20_000 + b"]" * 20_000
    return {
        # Nothing of a PDF
        "empty": b"",
        "one byte": b"%",
        "text": b"This is a text with the name of a PDF.\n" * 20,
        "png": b"\x89PNG\r\n\x1a\n" + b"\0" * 500,
        "zeros": b"\0" * 5000,
        "header alone": b"%PDF-1.5\n",
        "random": bytes((i * i * 7919 + 13 * i) >> 3 & 255 for i in range(20_000)),
        # Cut or changed
        "cut in half": good[:len(good) // 2],
        "cut before the table": good[:good.rindex(b"xref\n0")],
        "cut at the end": good[:-9],
        "flipped bits": bytes(half),
        "junk before": b"junk\n" * 300 + good,
        "junk behind": good + b"junk\n" * 3000,
        "twice": good + good,
        "wrong table": good.replace(b"0 65535 f", b"9 65535 f").replace(b" 00000 n", b"9 0000 n"),
        "wrong startxref": good[:good.rindex(b"startxref")] + b"startxref\n999999999\n%%EOF\n",
        "startxref in a circle": good[:good.rindex(b"startxref")] + b"startxref\n9\n%%EOF\n",
        "no trailer": good.replace(b"trailer", b"trailor"),
        # The document
        "no catalog": changed(o1=None),
        "catalog is a number": changed(o1=b"42"),
        "no tree": changed(o2=None),
        "tree in a circle": changed(o2=tree("/Count 1 /Kids [2 0 R]")),
        "tree holds its root": changed(o2=tree("/Count 3 /Kids [4 0 R 1 0 R 6 0 R]")),
        "count too large": changed(o2=tree("/Count 1000000 /Kids [4 0 R 6 0 R 8 0 R]")),
        "count below zero": changed(o2=tree("/Count -3 /Kids [4 0 R 6 0 R 8 0 R]")),
        "kids missing": changed(o2=tree("/Count 3")),
        "kids are numbers": changed(o2=tree("/Count 3 /Kids [1 2 3]")),
        "no pages": changed(o2=tree("/Count 0 /Kids []")),
        "deep arrays": changed(o4=page(Odd=deep.decode())),
        # Its pages
        "page missing": changed(o6=None),
        "page is null": changed(o4=b"null"),
        "page twice": changed(o2=tree("/Count 3 /Kids [4 0 R 4 0 R 6 0 R]")),
        "parent elsewhere": changed(o4=page(Parent="5 0 R")),
        "media of text": changed(o4=page(MediaBox="[(a) (b) (c) (d)]")),
        "media empty": changed(o4=page(MediaBox="[0 0 0 0]")),
        "media huge": changed(o4=page(MediaBox="[0 0 1e9 1e9]")),
        "media not finite": changed(o4=page(MediaBox="[0 0 1e400 -1e400]")),
        "crop outside": changed(o4=page(CropBox="[900 900 950 950]")),
        "rotation of 45": changed(o4=page(Rotate="45")),
        "rotation huge": changed(o4=page(Rotate="99999999999999999999")),
        "contents missing": changed(o5=None),
        "contents is a page": changed(o4=page(Contents="6 0 R")),
        "annotations are a number": changed(o4=page(Annots="7")),
        "annotation in a circle": changed(o4=page(Annots="[4 0 R]")),
        # Their streams
        "length too long": changed(o5=stream(b"BT ET", length=9999)),
        "length too short": changed(o5=stream(b"BT /F 24 Tf (Page) Tj ET", length=2)),
        "not deflated": changed(o5=stream(b"plain", b"/Filter /FlateDecode ")),
        "unknown filter": changed(o5=stream(b"plain", b"/Filter /NoSuchDecode ")),
        "inflates to 60 MB": changed(o5=stream(bomb, b"/Filter /FlateDecode ")),
        "operators without end": changed(o5=stream(b"q " * 20_000)),
        # Valid, but unusual
        "odd rotation of 450": changed(o4=page(Rotate="450")),
        "odd boxes turned round": changed(o4=page(MediaBox="[200 300 0 0]")),
        "odd user unit": changed(o4=page(UserUnit="10")),
        "odd inherited rotation": changed(o2=tree("/Count 3 /Rotate 90 /Kids [4 0 R 6 0 R 8 0 R]")),
        "odd labels": changed(o1=b"<< /Type /Catalog /Pages 2 0 R "
                                 b"/PageLabels << /Nums [0 << /S /r >> 2 << /S /D /P (A-) >>] >> >>"),
    }


def main():
    folder = Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, content in files().items():
        (folder / f"{name}.pdf").write_bytes(content)
    good = folder / "good.pdf"
    good.write_bytes(pdf(good_objects()))
    for name, user in (("password", "secret"), ("odd owner's password", "")):
        subprocess.run(["qpdf", "--encrypt", user, "owner", "256", "--print=none", "--", good,
                        folder / f"{name}.pdf"], check=True)
    good.unlink()


if __name__ == "__main__":
    main()

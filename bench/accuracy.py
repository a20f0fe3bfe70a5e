"""How much of a page's text a PDF gives back, in errors over the length of the truth.

Both measures work on text after Unicode's compatibility folding (a ligature counts as its letters)
with every run of white space as one blank:

- `reading_errors`: edits that turn the page's text into the truth, order included.
- `word_errors`: the same word by word, each word paired with the most similar one anywhere on the
  page, blanks not counted. Neither columns read in another order nor lines divided elsewhere
  matter to it.
"""
import heapq
import subprocess
import unicodedata
from collections import Counter
from dataclasses import dataclass


@dataclass(frozen=True)
class Accuracy:
    """Errors as shares of the truth's characters: 0 is a perfect page, 1 or more an empty one."""
    reading: float
    words: float


def measure(pdf, truths):
    """The accuracy over all pages of the file `pdf`, whose pages have the texts `truths`.

    ValueError if the file hasn't as many pages.
    """
    texts = page_texts(pdf)
    if len(texts) != len(truths):
        raise ValueError(f"{pdf} has {len(texts)} pages of text, not {len(truths)}.")
    pairs = [(normalised(truth), normalised(text)) for truth, text in zip(truths, texts)]
    characters = sum(len(truth) for truth, _ in pairs)
    letters = sum(len(truth.replace(" ", "")) for truth, _ in pairs)
    return Accuracy(sum(reading_errors(*pair) for pair in pairs) / characters,
                    sum(word_errors(*pair) for pair in pairs) / letters)


def page_texts(pdf):
    """The text of each page in the order in which the file shows it."""
    command = ["pdftotext", "-raw", "-enc", "UTF-8", str(pdf), "-"]
    whole = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout.decode("utf-8")
    return whole.split("\f")[:-1]


def normalised(text):
    """
    >>> normalised(" ﬁnd\\n the \\u00a0 way ")
    'find the way'
    """
    return " ".join(unicodedata.normalize("NFKC", text).split())


def reading_errors(truth, text):
    """The Levenshtein distance: insertions, deletions and replacements of one character.

    Myers' bit-parallel form (J. ACM 46, 1999): one column of the edit table is two integers, whose
    bits say where the column steps up and where it steps down.

    >>> [reading_errors(*pair) for pair in (("", ""), ("", "ab"), ("ab", ""), ("ab", "ab"))]
    [0, 2, 2, 0]
    >>> [reading_errors(*pair) for pair in (("kitten", "sitting"), ("ab", "ba"), ("abc", "xabc"))]
    [3, 2, 1]
    >>> import random
    >>> draw = random.Random(1)
    >>> words = ["".join(draw.choices("abc", k=draw.randrange(90))) for _ in range(60)]
    >>> all(reading_errors(a, b) == _by_table(a, b) for a in words[:20] for b in words)
    True
    """
    if not truth:
        return len(text)
    last = 1 << (len(truth) - 1)
    full = (last << 1) - 1
    places = {}
    for index, character in enumerate(truth):
        places[character] = places.get(character, 0) | 1 << index
    up, down, errors = full, 0, len(truth)
    for character in text:
        match = places.get(character, 0)
        vertical = match | down
        diagonal = (((match & up) + up) ^ up) | match
        rise = down | (full & ~(diagonal | up))
        fall = up & diagonal
        errors += bool(rise & last) - bool(fall & last)
        rise = rise << 1 | 1
        fall <<= 1
        up = full & (fall | ~(vertical | rise))
        down = full & rise & vertical
    return errors


def _by_table(truth, text):
    """The same distance by the definition, to check against."""
    row = list(range(len(text) + 1))
    for index, expected in enumerate(truth, 1):
        corner, row[0] = row[0], index
        for place, found in enumerate(text, 1):
            corner, row[place] = row[place], min(
                row[place] + 1, row[place - 1] + 1, corner + (expected != found))
    return row[-1]


def word_errors(truth, text):
    """Edits over the pairs of words; a word without a partner costs its length.

    Equal words pair first, then again and again the two closest of what is left.

    >>> word_errors("one two three", "three one two")
    0
    >>> word_errors("one two three", "three ome two")
    1
    >>> word_errors("one two", "one"), word_errors("one", "one two"), word_errors("a a", "a")
    (3, 3, 1)
    >>> word_errors("cat hat", "hat bat")
    1
    >>> word_errors("abc", "xyz"), word_errors("abcd", "xy"), word_errors("", "")
    (3, 4, 0)
    """
    expected, found = Counter(truth.split()), Counter(text.split())
    missing = list((expected - found).elements())
    extra = list((found - expected).elements())
    pairs = [(reading_errors(word, other), i, j)
             for i, word in enumerate(missing) for j, other in enumerate(extra)]
    heapq.heapify(pairs)
    total, open_missing, open_extra = 0, set(range(len(missing))), set(range(len(extra)))
    while pairs and open_missing and open_extra:
        errors, i, j = heapq.heappop(pairs)
        if i in open_missing and j in open_extra:
            total += errors
            open_missing.remove(i)
            open_extra.remove(j)
    return total + sum(len(missing[i]) for i in open_missing) + sum(
        len(extra[j]) for j in open_extra)

"""The table of a benchmark: each row a figure of ours, what it is measured against, a verdict."""
from dataclasses import dataclass
from typing import Optional

RATIO = "of the reference"
ABSOLUTE = "absolute"


@dataclass(frozen=True)
class Row:
    """A figure is None when its measurement failed; less is better in every row."""
    name: str
    unit: str
    ours: Optional[float]
    reference: Optional[float]
    budget: Optional[float] = None  # None: the row is there to read, not to pass.
    against: str = RATIO

    @property
    def failed(self):
        return self.ours is None or self.reference is None

    @property
    def ratio(self):
        """None without two figures or with a reference of 0."""
        return None if self.failed or self.reference == 0 else self.ours / self.reference

    @property
    def verdict(self):
        """
        >>> Row("faster", "s", 3.0, 5.0, 0.6).verdict, Row("slower", "s", 3.1, 5.0, 0.6).verdict
        ('met', 'MISSED')
        >>> Row("no errors left", "%", 0.0, 0.0, 1).verdict, Row("some", "%", 0.1, 0.0, 1).verdict
        ('met', 'MISSED')
        >>> [Row("memory", "MB", ours, 90, 400, ABSOLUTE).verdict for ours in (400, 401)]
        ['met', 'MISSED']
        >>> Row("broken", "s", None, 5.0, 0.6).verdict, Row("alone", "s", 3.0, None).verdict
        ('FAILED', 'FAILED')
        >>> Row("to read", "s", 9.0, 5.0).verdict
        ''
        """
        if self.failed:
            return "FAILED"
        if self.budget is None:
            return ""
        limit = self.budget * (self.reference if self.against == RATIO else 1)
        return "met" if self.ours <= limit else "MISSED"

    def cells(self):
        """The row in words, in the order of HEADINGS."""
        unit = self.unit if self.against == ABSOLUTE else "x"
        return (self.name, _figure(self.ours, self.unit), _figure(self.reference, self.unit),
                "" if self.ratio is None else f"{self.ratio:.2f}",
                "" if self.budget is None else f"<= {self.budget:g} {unit}", self.verdict)


HEADINGS = ("row", "ours", "reference", "ratio", "budget", "verdict")


def _figure(value, unit):
    return "failed" if value is None else f"{value:.2f} {unit}"


def as_text(rows):
    return aligned([HEADINGS] + [row.cells() for row in rows])


def aligned(lines):
    """Columns parted by two blanks; the first reads from the left, the others from the right.

    The first line is the headings.

    >>> print(aligned([("a", "figure"), ("row", "1")]))
    a    figure
    ---  ------
    row       1
    """
    widths = [max(len(line[column]) for line in lines) for column in range(len(lines[0]))]
    lines = list(lines)
    lines.insert(1, tuple("-" * width for width in widths))
    return "\n".join(
        "  ".join([line[0].ljust(widths[0])]
                  + [cell.rjust(width) for cell, width in zip(line[1:], widths[1:])]).rstrip()
        for line in lines)

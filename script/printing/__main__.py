"""Makes the three sample pages in the folder that the only argument names."""
import sys
from pathlib import Path

from printing import article, letter, receipt


def main():
    folder = Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for sample in (letter, article, receipt):
        sample.make(folder)


if __name__ == "__main__":
    main()

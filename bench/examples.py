"""Runs the examples in the comparison's own sources; ends with 1 when one doesn't hold."""
import doctest
import sys

import accuracy
import adjusting
import feeding
import table
import window


def main():
    results = [doctest.testmod(module) for module in (accuracy, adjusting, feeding, table, window)]
    if any(result.attempted == 0 for result in results):
        sys.exit("A module has lost its examples.")
    return 1 if any(result.failed for result in results) else 0


if __name__ == "__main__":
    sys.exit(main())

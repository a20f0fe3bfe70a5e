"""Runs the programs that are compared, and measures them from outside."""
import re
import subprocess
import tempfile
import time
from pathlib import Path

TIMEOUT = 3600  # seconds; a program that takes longer hangs


class RunError(Exception):
    """A program failed, or what it made isn't what was asked for."""


def run(command, environment=None):
    """What the program printed. Its error output, shortened, is in the RunError."""
    words = [str(word) for word in command]
    try:
        done = subprocess.run(words, env=environment, timeout=TIMEOUT, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    except (OSError, subprocess.TimeoutExpired) as error:
        raise RunError(str(error)) from error
    _check_ended_well(words, done.returncode, done.stderr)
    return done.stdout.decode()


def _check_ended_well(words, exit_code, messages):
    if exit_code != 0:
        last = messages.decode(errors="replace").strip()[-400:]
        raise RunError(f"{' '.join(words)} ended with {exit_code}: {last}")


def seconds_of(command, environment=None):
    """Wall time of a whole run, start and end of the process included."""
    start = time.monotonic()
    run(command, environment)
    return time.monotonic() - start


def peak_memory(command, environment):
    """The most resident bytes that the program itself held; programs it starts aren't counted.

    Read every 5 ms: the system tells a child's peak after its end only together with that of the
    child's own children.
    """
    peak = 0
    words = [str(word) for word in command]
    with tempfile.TemporaryFile() as messages, subprocess.Popen(
            words, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=messages) as process:
        deadline = time.monotonic() + TIMEOUT
        while process.poll() is None:
            peak = max(peak, high_water(process.pid))
            if time.monotonic() > deadline:
                process.kill()
            time.sleep(0.005)
        messages.seek(0)
        _check_ended_well(words, process.returncode, messages.read())
    return peak


def high_water(pid):
    """The most resident bytes that the process has held so far; 0 once it has ended."""
    try:
        status = Path(f"/proc/{pid}/status").read_text(encoding="ascii", errors="replace")
    except OSError:  # It ended in between.
        return 0
    found = re.search(r"^VmHWM:\s+(\d+) kB$", status, re.MULTILINE)
    return int(found[1]) * 1024 if found else 0


def check_pages(pdf, count, size):
    """Raises RunError unless each of `count` pages shows one image of `size` pixels.

    Without this a program could win by losing pages or pixels.
    """
    listing = run(["pdfimages", "-list", pdf]).splitlines()[2:]
    images = [line.split() for line in listing]
    shown = [(int(cells[0]), (int(cells[3]), int(cells[4]))) for cells in images]
    if shown != [(page, size) for page in range(1, count + 1)]:
        raise RunError(f"{pdf} doesn't show {count} pages of {size[0]} x {size[1]} pixels: {shown}")

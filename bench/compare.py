"""Compares Velmor with other ways to do the same work, and prints one table.

Called by script/bench, which builds, prints the pages and gives the folders. Ends with 1 when a
measurement failed; a missed budget is marked in the table and no failure.
"""
import argparse
import json
import os
import shutil
import sys
from pathlib import Path

import accuracy
from PIL import Image
from processes import RunError, check_pages, peak_memory, run, seconds_of
from table import ABSOLUTE, Row, as_text

PAGE_SIZE = (2480, 3508)
LARGE_PAGE = (4960, 7016)
LONG_JOB = 200  # pages
MEGABYTE = 1e6


class Bench:
    """The programs of one build at work on one folder of pages, in a scratch folder of its own."""

    def __init__(self, programs, pages, scratch, runs):
        self.programs, self.pages, self.scratch, self.runs = programs, pages, scratch, runs
        self.images = sorted(pages.glob("*.png"))
        self.truths = [image.with_suffix(".txt").read_text(encoding="utf-8")
                       for image in self.images]
        self.failures = []

    def attempt(self, work, *arguments):
        """The answer of `work`; None after noting a failure, so that other rows still come."""
        try:
            return work(*arguments)
        except (RunError, ValueError) as error:
            self.failures.append(f"{work.__name__}: {error}")
            return None

    def best_of_pairs(self, ours, reference):
        """The least time of each, run in turn so that what else the machine does meets both.

        One that fails is not run again.
        """
        works, best = [ours, reference], [[], []]
        for _ in range(self.runs):
            for side, work in enumerate(works):
                seconds = self.attempt(work) if work else None
                if seconds is None:
                    works[side] = None
                else:
                    best[side].append(seconds)
        return tuple(min(times) if work else None for work, times in zip(works, best))

    # Velmor

    def fresh_folder(self, name):
        folder = self.scratch / name
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        return folder

    def scan_command(self, feeder, output, recognition):
        return [self.programs / "velmor", "scan", "--folder", output, "--quality", "300",
                "--color", "grayscale", "--device", f"feeder:{feeder}", recognition]

    def scan_environment(self, feeder):
        """The build's own engine, fed from `feeder`, and settings that nobody has touched."""
        home = self.fresh_folder("home")
        return dict(os.environ, SCANENGINE_FEEDER=str(feeder), HOME=str(home),
                    VELMOR_ENGINE=str(self.programs / "scanengine"), XDG_CONFIG_HOME=str(home),
                    QT_QPA_PLATFORM="offscreen")

    def scan(self, recognition):
        output = self.fresh_folder(f"scan{recognition}")
        seconds = seconds_of(self.scan_command(self.pages, output, recognition),
                             self.scan_environment(self.pages))
        check_pages(only_pdf(output), len(self.images), PAGE_SIZE)
        return seconds

    def searchable(self):
        return self.scan("--ocr")

    def plain(self):
        return self.scan("--no-ocr")

    def assembly(self):
        """Seconds from the page files to the written PDF, without scanning."""
        pdf = self.fresh_folder("assembly") / "scan.pdf"
        seconds = float(run([self.programs / "velmor_assemble", self.pages, pdf]))
        check_pages(pdf, len(self.images), PAGE_SIZE)
        return seconds

    def long_job(self, recognition):
        """(bytes of memory beyond the PDF's own, bytes of the PDF)."""
        feeder = self.fresh_folder("stack")
        for number in range(LONG_JOB):
            os.link(self.images[number % len(self.images)], feeder / f"page_{number:03}.png")
        output = self.fresh_folder("long")
        peak = peak_memory(self.scan_command(feeder, output, recognition),
                           self.scan_environment(feeder))
        pdf = only_pdf(output)
        check_pages(pdf, LONG_JOB, PAGE_SIZE)
        size = pdf.stat().st_size
        shutil.rmtree(output)
        return peak - size, size

    def large_scan(self):
        """The scan of one colour page at 600 dpi."""
        feeder, output = self.fresh_folder("large-feeder"), self.fresh_folder("large")
        with Image.open(self.images[0]) as page:
            page.convert("RGB").resize(LARGE_PAGE).save(
                feeder / "page.png", dpi=(600, 600), compress_level=1)
        run(self.scan_command(feeder, output, "--no-ocr")
            + ["--quality", "600", "--color", "color"], self.scan_environment(feeder))
        return only_pdf(output)

    def editing_memory(self, *command):
        """The most bytes that an edit of that page takes."""
        pdf = self.large_scan()
        return peak_memory([self.programs / "velmor", *command, "--no-ocr", pdf],
                           self.scan_environment(self.pages))

    # What it is compared with

    def reference_pdf(self):
        return self.scratch / "reference.pdf"

    def ocrmypdf(self):
        """The same pages as a PDF without loss, the languages that are on them.

        PDF rather than PDF/A leaves out a conversion that Velmor doesn't make either.
        """
        source = self.scratch / "pages.pdf"
        if not source.exists():
            run(["img2pdf", "-o", source, *self.images])
        seconds = seconds_of(["ocrmypdf", "--quiet", "--jobs", "2", "-l", "eng+deu",
                              "--output-type", "pdf", source, self.reference_pdf()])
        check_pages(self.reference_pdf(), len(self.images), PAGE_SIZE)
        return seconds

    def recoding(self):
        """Seconds for bare decoding of the pages and encoding them as JPEG, one after the other."""
        return float(run([self.programs / "velmor_recode", self.pages]))

    # Rows

    def recognition_rows(self):
        ours, reference = self.best_of_pairs(self.searchable, self.ocrmypdf)
        rows = [Row("10 pages to a searchable PDF", "s", ours, reference, 0.6)]
        errors = [self.attempt(self.errors_of_scan) if ours else None,
                  self.attempt(accuracy.measure, self.reference_pdf(), self.truths)
                  if reference else None]
        for name, part in (("in reading order", "reading"), ("words in any order", "words")):
            rows.append(Row(f"  character errors, {name}", "%", *(
                100 * getattr(measured, part) if measured else None for measured in errors), 1))
        return rows

    def errors_of_scan(self):
        return accuracy.measure(only_pdf(self.scratch / "scan--ocr"), self.truths)

    def assembly_rows(self):
        ours, reference = self.best_of_pairs(self.assembly, self.recoding)
        return [Row("10 pages to a PDF without text, from files", "s", ours, reference, 1.25),
                Row("  the whole command, scanning included", "s", self.attempt(self.plain),
                    reference)]

    def magic(self, recognition):
        """Seconds for new levels, from the raw pages, on the scan that was made last."""
        pdf = only_pdf(self.scratch / "scan--no-ocr")
        command = [self.programs / "velmor", "magic", "--black", "0.1", "--white", "0.9",
                   "--gamma", "1.2", recognition, pdf]
        seconds = seconds_of(command, self.scan_environment(self.pages))
        check_pages(pdf, len(self.images), PAGE_SIZE)
        return seconds

    def magic_rows(self):
        plain, reference = self.best_of_pairs(lambda: self.magic("--no-ocr"), self.recoding)
        return [Row("new levels for 10 pages, without text", "s", plain, reference),
                Row("  with text", "s", self.attempt(self.magic, "--ocr"), reference)]

    def memory_row(self, recognition):
        beyond, size = self.attempt(self.long_job, recognition) or (None, None)
        return Row(f"{LONG_JOB} pages {recognition}, memory beyond the PDF's size", "MB",
                   beyond and beyond / MEGABYTE, size and size / MEGABYTE, 400, ABSOLUTE)

    def editing_rows(self):
        edits = {"cropped": ["crop", "--quad", ".02,.01 .985,.02 .98,.985 .01,.98"],
                 "with new levels": ["magic", "--black", "0.1", "--white", "0.9"]}
        peaks = [self.attempt(self.editing_memory, *command) for command in edits.values()]
        return [Row(f"600 dpi colour page {name}, memory", "MB", peak and peak / MEGABYTE,
                    LARGE_PAGE[0] * LARGE_PAGE[1] * 4 / MEGABYTE)
                for name, peak in zip(edits, peaks)]

    def case_rows(self):
        """(rows with a budget, the printed list of all cases)."""
        report = self.scratch / "cases.json"
        listing = self.attempt(run, [
            self.programs / "velmor_bench", "--benchmark_min_time=0.3",
            f"--benchmark_out={report}", "--benchmark_out_format=json"]) or ""
        times = self.attempt(case_times, report) if listing else {}
        return [Row("levels on a preview of 1800 pixels", "ms", times.get("levelsPreview"),
                    times.get("copyPreview"), 8, ABSOLUTE),
                Row("thumbnail of an A4 scan", "ms", times.get("thumbnail"),
                    times.get("copyA4"), 60, ABSOLUTE),
                *(Row(f"pages turned, open to saved: {pages}", "ms",
                      times.get(f"rotatePages/{pages}"), times.get(f"copyPages/{pages}"),
                      1.5 if pages == 100 else None) for pages in (1, 100, 1000)),
                *(Row(name, "ms", times.get(case), times.get("decodeRaw")) for name, case in (
                    ("600 dpi colour page made ready for the editor", "baseImage"),
                    ("  cropped, without text", "applyCrop/0"),
                    ("  with text", "applyCrop/1"),
                    ("  new levels, without text", "applyMagic/0"),
                    ("  with text", "applyMagic/1")))], listing


def case_times(report):
    """Milliseconds of each case by name; cases that reported an error are left out."""
    cases = json.loads(report.read_text(encoding="utf-8"))["benchmarks"]
    return {case["name"].removesuffix("/real_time"): case["real_time"]
            for case in cases if not case.get("error_occurred")}


def only_pdf(folder):
    found = list(folder.glob("*.pdf"))
    if len(found) != 1:
        raise RunError(f"{folder} holds {len(found)} PDFs, not one.")
    return found[0]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", type=Path, help="the build's folder of programs")
    parser.add_argument("pages", type=Path, help="the pages and their texts")
    parser.add_argument("scratch", type=Path, help="a folder to work in")
    parser.add_argument("--runs", type=int, default=3, help="pairs of runs, 3 unless given")
    parser.add_argument("--full", action="store_true", help="the long job with recognition too")
    options = parser.parse_args()

    bench = Bench(options.programs, options.pages, options.scratch, options.runs)
    rows = bench.recognition_rows() + bench.assembly_rows() + bench.magic_rows()
    rows.append(bench.memory_row("--no-ocr"))
    if options.full:
        rows.append(bench.memory_row("--ocr"))
    rows += bench.editing_rows()
    case_rows, listing = bench.case_rows()
    print(as_text(rows + case_rows), listing, sep="\n\n", end="")
    for failure in bench.failures:
        print(f"failed: {failure}", file=sys.stderr)
    return 1 if bench.failures or any(row.failed for row in rows + case_rows) else 0


if __name__ == "__main__":
    sys.exit(main())

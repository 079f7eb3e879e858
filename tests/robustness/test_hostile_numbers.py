"""A whole current model with a hostile number in the place of each of its numbers, one at a time: the import must end in a
clear failure or go to its end, soon and in little memory."""

import json
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

COMMAND = os.environ["KOVA_COMMAND"]
SANITIZED = os.environ.get("KOVA_SANITIZED") == "1"
# of the processor: other work on the machine does not count
SECONDS = 1 if os.environ.get("KOVA_OPTIMISED") == "1" else 30
MEMORY_KB = 64 * 1024
HUGE, NEGATIVE = "2000000000", "-1"

# What a record is: a text, a list of numbers or of counts, or numbers in columns (offset and width).
TEXT, LIST, COUNT = "text", "list", "count"
GEOMETRY = [(5 * i, 5) for i in range(4)] + [(20 + 15 * i, 15) for i in range(16)]
LISTED, VALUE, CONSTANT = [(7, 5), (23, 3), (34, 10)], [(11, 5), (32, 3), (54, 10)], [(7, 5), (23, 5), (46, 10)]


def columns(spans, *numbers):
    line = ""
    for (offset, width), number in zip(spans, numbers):
        line = line.ljust(offset) + str(number).rjust(width)
    return line, spans


OPENING = [
    ("   11      3", TEXT), ("A river", TEXT), ("1 2 2003 4 5 6", LIST), ("7 8 2009 10 11 12", LIST), ("365.5", LIST),
    ("2", COUNT), *((str(option), LIST) for option in (0, 1, 2, 3, 4, 0, 0.75)), ("0.125 0.5", LIST), ("0.25", LIST),
    ("NH-34     Ammonia", TEXT), ("DISOX     Dissolved Oxygen", TEXT),
    ("Segments", TEXT), ("2", COUNT), ("1", LIST), ("0.25", LIST), ("2 0.5", LIST), ("Names", TEXT),
    *(columns([(0, 5)], i) for i in (1, 2)), ("Geometry", TEXT),
    *(columns(GEOMETRY, i, 0, 1, 3, *(f"{i}.5" for _ in range(16))) for i in (1, 2))]
FLOW_PATHS = [
    ("Flow paths", TEXT), ("Fields", TEXT), ("2", COUNT),
    ("Surface water", TEXT), ("river.hyd", TEXT), ("1", COUNT), ("Headwater", TEXT), ("2", COUNT), ("0 1 1.0", LIST),
    ("1 2 0.75", LIST), ("Pore water", TEXT), ("0", COUNT)]
FLOW_SERIES = [
    ("Series", TEXT), ("2", COUNT), ("Surface water", TEXT), ("1", COUNT), ("1.5 86400", LIST), ("Headwater", TEXT),
    ("2", COUNT), ("10.5 0", LIST), ("12 30.25", LIST), ("Pore water", TEXT), ("0", COUNT)]
EXCHANGES = [
    ("Exchange", TEXT), ("2", COUNT), ("Surface water", TEXT), ("1", COUNT), ("2 0.25", LIST), ("Confluence", TEXT),
    ("1", COUNT), ("1 2 25.5 100", LIST), ("2", COUNT), ("3.5 0", LIST), ("4.5 30", LIST), ("Pore water", TEXT),
    ("0", COUNT)]
BOUNDARIES = [
    ("Boundaries", TEXT), ("2", COUNT), ("Ammonia", TEXT), ("1", COUNT), columns([(0, 10), (10, 10)], "1.25", "1.0"),
    ("1", LIST), ("2", COUNT), ("0.1 0", LIST), ("0.2 30", LIST), ("Oxygen", TEXT), ("0", COUNT)]
LOADS = [
    ("Loads", TEXT), ("1", LIST), ("storm.nps", TEXT), ("2", COUNT), ("Ammonia", TEXT), ("1", COUNT), ("0.5 1", LIST),
    ("2", LIST), ("2", COUNT), ("7.5 0", LIST), ("8.5 30", LIST), ("Oxygen", TEXT), ("0", COUNT)]
TIME_FUNCTIONS = [
    ("Functions", TEXT), ("2", COUNT), ("4", LIST), ("2", COUNT), ("0 4.5", LIST), ("30 12.25", LIST), ("13", LIST),
    ("0", COUNT)]
PARAMETERS = [
    ("Parameters", TEXT), ("2", COUNT), ("2", COUNT), ("List", TEXT),
    columns(LISTED, 2, 1, 1.5), columns(LISTED, 14, 3, 0.5), ("Values", TEXT),
    ("1", LIST), columns(VALUE, 2, 1, 20.5), columns(VALUE, 14, 3, 100),
    ("2", LIST), columns(VALUE, 2, 1, 21.5), columns(VALUE, 14, 3, 7.25)]
CONSTANTS = [("Constants", TEXT), ("2", COUNT), columns(CONSTANT, 27, 1, 0.5), columns(CONSTANT, 64, 2, 40)]
CONDITIONS = [("Conditions", TEXT), ("2", COUNT), ("2", COUNT)] + 2 * [
    ("System", TEXT), ("3", LIST), ("1.5", LIST), ("0", LIST), ("Segments", TEXT), ("1 0.125 0.75", LIST),
    ("2 0.25 1.0", LIST)]
MODEL = (OPENING + FLOW_PATHS + FLOW_SERIES + EXCHANGES + BOUNDARIES + LOADS + TIME_FUNCTIONS + PARAMETERS + CONSTANTS +
         CONDITIONS)


def spans_of(line, kind):
    """Offset and width of the numbers in a record."""
    if kind in (LIST, COUNT):
        return [(number.start(), len(number[0])) for number in re.finditer(r"\S+", line)]
    return [] if kind == TEXT else kind


class HostileNumbers(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = Path(folder.name) / "model.inp"

    def import_model(self, lines, *options):
        """Imports the lines, and holds the import to its bounds."""
        self.path.write_text("".join(line + "\n" for line in lines))
        process = subprocess.Popen([COMMAND, "--json", "--quiet", *options, self.path], stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        output = process.stdout.read()
        process.stdout.close()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        self.assertLess(usage.ru_utime + usage.ru_stime, SECONDS)
        if not SANITIZED:
            self.assertLess(usage.ru_maxrss, MEMORY_KB)
        self.assertIn(process.returncode, (0, 1))
        errors = json.loads(output)["errors"]
        self.assertEqual(process.returncode != 0, bool(errors))
        for error in errors:
            self.assertIn(error["line"], range(1, len(lines) + 2))
            self.assertTrue(error["reason"])
        return errors

    def place_everywhere(self, hostile, *options):
        """Puts the number in the place of each other; gives the records in which it stood, and what became of them."""
        lines = [line for line, _ in MODEL]
        for i, (line, kind) in enumerate(MODEL):
            for offset, width in spans_of(line, kind):
                in_columns = kind not in (LIST, COUNT)
                # the largest number that the columns hold
                number = ("9" * width if len(hostile) > width else hostile.rjust(width)) if in_columns else hostile
                changed = line[:offset] + number + line[offset + width:]
                with self.subTest(line=i + 1, record=changed):
                    yield i, kind, self.import_model(lines[:i] + [changed] + lines[i + 1:], *options)

    def test_the_model_itself_comes_across(self):
        self.assertEqual(self.import_model([line for line, _ in MODEL]), [])

    def test_huge_numbers(self):
        # header and texts apart: dates 12, the rest of the opening block 1 + 1 + 7 + 2 + 1, segments 5 + 2 + 2 * 20,
        # 1 + 2 + 1 + 6, 1 + 2 + 2 + 1 + 4, 1 + 2 + 2 + 1 + 4 + 1 + 4, 1 + 2 + 2 + 2 + 4, 2 + 2 + 2 + 2 + 4,
        # 1 + 2 + 2 + 4, 2 + 6 + 2 + 12, 1 + 6, 2 + 2 * 9
        count = 12 + 12 + 47 + 10 + 10 + 15 + 11 + 12 + 9 + 22 + 7 + 20
        counts = 0
        for i, kind, errors in self.place_everywhere(HUGE):
            count -= 1
            if kind == COUNT:
                counts += 1
                # the records behind it are not there, or are something else
                self.assertTrue(errors, f"line {i + 1}")
                self.assertGreaterEqual(errors[0]["line"], i + 1)
        self.assertEqual(count, 0)
        self.assertGreater(counts, 30)

    def test_negative_numbers(self):
        for _ in self.place_everywhere(NEGATIVE):
            pass

    def test_huge_numbers_when_only_the_transport_is_wanted(self):
        for i, kind, errors in self.place_everywhere(HUGE, "--scope", "transport"):
            if kind == COUNT:
                self.assertTrue(errors, f"line {i + 1}")

    def test_huge_counts_at_the_end_of_the_file(self):
        # nothing behind the count: the file ends where the first record should be
        lines = [line for line, _ in MODEL]
        for i, (_, kind) in enumerate(MODEL):
            if kind != COUNT:
                continue
            with self.subTest(line=i + 1):
                errors = self.import_model(lines[:i] + [HUGE])
                self.assertEqual(len(errors), 1)
                self.assertTrue("ends here" in json.dumps(errors) or errors[0]["expected"] == "at most 170000 breakpoints",
                                errors)

    def test_counts_without_anything_to_count(self):
        # sections with as much as their heads say, which is nothing
        nothing = {"-1": None, "0": None, HUGE: 1}
        head = [line for line, _ in OPENING + FLOW_PATHS + FLOW_SERIES + EXCHANGES + BOUNDARIES + LOADS + TIME_FUNCTIONS]
        for segments in nothing:
            for parameters in ("-1", "0"):
                # without parameters no segment has a record, however many there are
                lines = head + ["Parameters", segments, parameters, "List", "Constants", "-1", "Conditions", "-1", segments]
                self.assertEqual(self.import_model(lines), [], (segments, parameters))
        lines = head + ["Parameters", HUGE, "1", "List", columns(LISTED, 2, 1, 1.5)[0], "Values"]
        self.assertIn("ends here", json.dumps(self.import_model(lines)))

    def test_numbers_that_the_file_chooses_size_no_table(self):
        head = [line for line, _ in OPENING + FLOW_PATHS + FLOW_SERIES + EXCHANGES + BOUNDARIES + LOADS]
        functions = ["Functions", "3000"]
        for number in range(1900000000, 1900003000):
            functions += [str(number), "0"]
        listed = [columns(LISTED, number, 999, 1)[0] for number in range(97000, 99999)]
        parameters = ["Parameters", "1", str(len(listed)), "List", *listed, "Values", "1900000000",
                      *(columns(VALUE, number, 999, 1)[0] for number in range(97000, 99999))]
        constants = ["Constants", "3000", *(columns(CONSTANT, 99999, column, 1)[0] for column in range(97000, 100000))]
        self.assertEqual(self.import_model(head + functions + parameters + constants + ["Conditions", "0", HUGE]), [])
        # a segment far away
        errors = self.import_model(head + functions + parameters + constants + [
            "Conditions", "1", HUGE, "System", "0", "0", "0", "Segments", "1900000000 2 3"])
        self.assertIn("ends here", json.dumps(errors))


if __name__ == "__main__":
    unittest.main()

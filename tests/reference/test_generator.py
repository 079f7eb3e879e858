"""What generated files of the current format are worth for a comparison."""

import random
import unittest

from driver import import_file
from generate import generate_described
from generate_records import column_real, column_record
from records import RecordReader
from small_files import arguments_of

SEEDS = range(1000, 1240)
SMALL = 15000


class CurrentFiles(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        described = [generate_described(seed) for seed in SEEDS]
        cls.contents = [content for content, description in described if ": current, " in description]
        cls.results = [import_file(content) for content in cls.contents]

    def test_about_two_thirds_are_complete(self):
        complete = sum(result.failure is None for result in self.results)
        self.assertGreater(complete, 0.55 * len(self.results))
        self.assertLess(complete, 0.8 * len(self.results))

    def test_most_are_small(self):
        small = sum(len(content) < SMALL for content in self.contents)
        self.assertGreater(small, 0.9 * len(self.contents))

    def test_every_section_sends_something_somewhere(self):
        for keyword in ("PHYDROFILE", "PBQ", "PNOQFUNC", "PNORFUNC", "PALLBOUNDFUNC", "PCONVB", "PSCALW", "PBRKTF",
                        "PCONSTPARAM", "PCONSTISUSED", "PINITC"):
            with self.subTest(keyword):
                self.assertTrue(any(arguments_of(result, keyword) for result in self.results))


class Columns(unittest.TestCase):
    def test_every_line_can_be_read_by_its_layout(self):
        rng = random.Random(7)
        for _ in range(2000):
            number, class_index = rng.randint(-9999, 99999), rng.randint(-99, 999)
            record = column_record(rng, "parameter", ((7, 5, b"%d" % number), (11, 3, b"%d" % class_index),
                                                      (8, 10, column_real(rng, 10))))
            with self.subTest(record):
                values = RecordReader(record.lines).fixed("(7X,I5,11X,I3,8X,F10.0)", "number", "class", "scale")
                self.assertIn(values["number"], (number, 0))
                self.assertIn(values["class"], (class_index, 0))


if __name__ == "__main__":
    unittest.main()

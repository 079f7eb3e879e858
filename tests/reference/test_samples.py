"""The samples of both formats are read whole, and what their lines say comes out."""

import re
import struct
import unittest
from pathlib import Path

from command_log import Answers, real_on_log
from driver import import_file
from small_files import CURRENT_CONSOLE, arguments_of

SAMPLES = Path(__file__).resolve().parents[2] / "samples"
SEGMENT_COUNT = 42
SYSTEM_COUNT = 22


def number(text):
    return real_on_log(struct.unpack("<f", struct.pack("<f", float(text)))[0])


def rows(text, pattern):
    """The groups of every line that the pattern fits; it finds its numbers by the words before them."""
    return re.findall(pattern, text, re.MULTILINE)


class Samples(unittest.TestCase):
    def test_all_are_read_whole(self):
        for name, last in (("river-estuary-v7.inp", b"Reading Initial Conditions"),
                           ("river-estuary-v8.inp", b"Done Reading Initial Conditions"),
                           ("river-estuary-v7-as-v8.inp", b"Done Reading Initial Conditions")):
            for answers in (Answers(scope=0, index_names=1), Answers(scope=1, index_names=0)):
                with self.subTest(f"{name} {answers}"):
                    result = import_file(SAMPLES / name, answers)
                    self.assertIsNone(result.failure)
                    self.assertEqual(result.console_lines[-1], last)


class CurrentSample(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.text = (SAMPLES / "river-estuary-v8.inp").read_text("ascii")
        cls.result = import_file(SAMPLES / "river-estuary-v8.inp")

    def assert_sent(self, keyword, expected):
        self.assertEqual(arguments_of(self.result, keyword), expected)

    def test_counts(self):
        self.assertEqual(self.result.console_lines, CURRENT_CONSOLE)
        # 14 boundaries for each system; 9 flow and 5 exchange functions; 13 records of time functions.
        for keyword, count in (("PSEGNAME", SEGMENT_COUNT), ("PSYSNAME", SYSTEM_COUNT), ("PFLOWFUNCDESC", 9),
                               ("PNBRKQ", 9), ("PEXCHANGEFUNCDESC", 5), ("PALLBOUNDFUNC", 14 * SYSTEM_COUNT),
                               ("PNBRKTF", 13), ("PCONSTPARAM", 15 * SEGMENT_COUNT), ("PCONSTISUSED", 138),
                               ("PINITC", SYSTEM_COUNT * SEGMENT_COUNT), ("PFDISS", SYSTEM_COUNT * SEGMENT_COUNT)):
            with self.subTest(keyword):
                self.assertEqual(len(arguments_of(self.result, keyword)), count)

    def test_the_option_of_the_first_segment(self):
        option = arguments_of(self.result, "PIQOPT")[0].split(", ")[1]
        self.assert_sent("PFLOWTYPE", [f"int {segment}, {option}" for segment in range(1, SEGMENT_COUNT + 1)])

    def test_nothing_is_read_of_the_largest_concentrations(self):
        self.assert_sent("PCMAX", [f"int {system}, real 0" for system in range(1, SYSTEM_COUNT + 1)])

    def test_parameters(self):
        listed = rows(self.text, r"^Param: +(\d+) +Column: +(\d+) Scale: +(\S+)")
        self.assertEqual(len(listed), 15)
        self.assert_sent("PADDPARAM", [f"int {code}, int {column}" for code, column, _ in listed])
        self.assert_sent("PSCALEPARAMBYISC", [f"int {code}, int {column}, real {number(scale)}"
                                              for code, column, scale in listed])
        values = rows(self.text, r"^Parameter: +(\d+) +Column: +(\d+) +Value: +(\S+)")
        by_segment = [values[start:start + 15] for start in range(0, len(values), 15)]
        self.assert_sent("PCONSTPARAM", ["int {}, int {}, int {}, real {}".format(segment, code, column, number(value))
                                         for row_of_parameter in zip(*by_segment, strict=True)
                                         for segment, (code, column, value) in enumerate(row_of_parameter, start=1)])

    def test_constants(self):
        constants = rows(self.text.replace("D", "E"), r"^Const: +(\d+) +Column: +(\d+) +Value: +(\S+)")
        self.assertEqual(len(constants), 138)
        self.assert_sent("PADDCONST", [f"int {constant}, int {column}" for constant, column, _ in constants])
        self.assert_sent("PCONSTVALUEBYISC", [f"int {constant}, int {column}, real {number(value)}"
                                              for constant, column, value in constants])


if __name__ == "__main__":
    unittest.main()

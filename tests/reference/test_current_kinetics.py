"""Kinetic constants and initial conditions of the current format, with expected values worked out by hand."""

import unittest

from current_section_tests import TRANSPORT_ONLY, CurrentSections, columned
from driver import import_file
from small_files import (CURRENT_CONSOLE, CURRENT_OPENING, FIRST_STATEMENT, current_file_up_to, current_segments,
                         notice, replaced)

INITIAL_NOTICE = notice("Importing Initial Conditions", 41)


def constant(number=b"", column=b"", value=b""):
    return b"%7s%5s%11s%5s%18s%10s\n" % (b"", number, b"", column, b"", value)


def sends(*constants):
    """Both passes over (number, column, value)."""
    return ([f"PADDCONST int {number}, int {column}" for number, column, _ in constants] + ["PCONSTANTSREFRESH"]
            + [line for number, column, value in constants
               for line in (f"PCONSTVALUEBYISC int {number}, int {column}, real {value}",
                            f"PCONSTISUSED int {number}, int {column}, int 1")] + ["PCONSTANTSREFRESH"])


class Constants(CurrentSections):
    section = "constants"
    # Columns 8-12 number, 24-28 column, 47-56 value; what stands anywhere else is skipped.
    content = (b"Constants\n3\n" + columned((8, b"   41"), (24, b"    1"), (47, b"       1.5 remark"), filler=b"x")
               + columned((11, b"64"), (28, b"3"), (52, b"-2e-1")) + columned((8, b"41"), (24, b"1"), (55, b"12")))

    def test_two_passes_without_a_notice(self):
        self.assertEqual(self.commands(self.content), [
            "PADDCONST int 41, int 1", "PADDCONST int 64, int 3", "PADDCONST int 41, int 1", "PCONSTANTSREFRESH",
            "PCONSTVALUEBYISC int 41, int 1, real 1.5", "PCONSTISUSED int 41, int 1, int 1",
            "PCONSTVALUEBYISC int 64, int 3, real -0.200000003", "PCONSTISUSED int 64, int 3, int 1",
            "PCONSTVALUEBYISC int 41, int 1, real 12", "PCONSTISUSED int 41, int 1, int 1", "PCONSTANTSREFRESH"])

    def test_columns(self):
        for record, sent in (
                (b"\n", (0, 0, "0")), (columned((11, b"52")), (52, 0, "0")),
                (columned((11, b"52"), (23, b"7")), (52, 0, "0")), (columned((11, b"52"), (29, b"7")), (52, 0, "0")),
                (columned((7, b"7123456"), (23, b"9-12349"), (46, b"812345678909")), (12345, -1234, "1.23456794e+09")),
                (columned((8, b"5   2"), (24, b"1 2 3"), (47, b"  1 . 5   ")), (52, 123, "1.5")),
                (columned((11, b"52"), (28, b"1"), (47, b"1")), (52, 1, "1")),
                (columned((11, b"52"), (28, b"1"), (46, b"9")), (52, 1, "0")),
                (columned((11, b"52"), (28, b"1"), (51, b"1.5E+3")), (52, 1, "1500")),
                (columned((11, b"52"), (28, b"1"), (56, b"78")), (52, 1, "7")),
                (columned((11, b"52"), (27, b"-1"), (55, b"-0")), (52, -1, "-0"))):
            with self.subTest(record):
                self.assertEqual(self.commands(b"T\n1\n" + record), sends(sent))

    def test_no_constants(self):
        for count in (b"0", b"-1", b"-2147483648", b"/"):
            with self.subTest(count):
                self.assertEqual(self.commands(b"T\n%b\n" % count), sends())

    def test_numbers_of_time_functions_and_beyond_the_table(self):
        """Legacy numbers that became time functions, and numbers that no model knows."""
        numbers = (2, 3, 7, 3001, 99999, -9999, 0)
        content = b"T\n7\n" + b"".join(constant(b"%d" % number, b"1", b"2") for number in numbers)
        for model_type in (11, 8):
            opening = (replaced(CURRENT_OPENING, 0, b"%5d      3\n" % model_type),)
            self.assertEqual(self.commands(content, opening=opening), sends(*((number, 1, 2) for number in numbers)))

    def test_transport_only_reads_and_sends_nothing(self):
        self.assertEqual(self.commands(self.content, TRANSPORT_ONLY), [])
        self.assert_fails(b"T\n1\n" + constant(b"x"), 3, 8, "constant_number", answers=TRANSPORT_ONLY)

    def test_failures(self):
        self.assert_fails(b"'T\n", 1, 1, "title")
        self.assert_fails(b"T\nText\n", 2, 1, "constant_count")
        self.assert_fails(b"T\n1\n" + constant(b"1.5"), 3, 8, "constant_number")
        self.assert_fails(b"T\n2\n" + constant(b"1") + constant(b"1", b"\t1"), 4, 24, "constant_column")
        self.assert_fails(b"T\n1\n" + constant(b"1", b"1", b"1e"), 3, 47, "constant_value")
        result = self.assert_fails(b"T\n2147483647\n" + constant(b"1"), 4, 1, "constant_number")
        self.assertEqual(result.console_lines[:-1], CURRENT_CONSOLE[:8])

    def test_the_end_of_the_file(self):
        self.assert_ends(self.content, 5)


class InitialConditions(CurrentSections):
    section = "initial_conditions"
    content = (b"Initial\n2\n2\nAmmonia\n1\n1.5\n900\nValues\n1 10 1\n2 20 .5\n\n3\n0\n800\n\n2 -1 0\n2 .25 /\n")

    def test_commands(self):
        self.assertEqual(self.commands(self.content), INITIAL_NOTICE + [
            "PCMAX int 1, real 0", "PDENSITY int 1, real 1.5", "PIFIELD int 1, int 1",
            "PINITC int 1, int 1, real 10", "PFDISS int 1, int 1, real 1",
            "PINITC int 1, int 2, real 20", "PFDISS int 1, int 2, real 0.5",
            "PCMAX int 2, real 0", "PDENSITY int 2, real 0", "PIFIELD int 2, int 3",
            "PINITC int 2, int 1, real 0", "PFDISS int 2, int 1, real 0",
            "PINITC int 2, int 2, real 0.25", "PFDISS int 2, int 2, real 0"])

    def test_counts_left_out_are_those_so_far(self):
        content = b"T\n/\n/\nA\n/\n/\n/\nV\n1 1 1\n2 2 2\n"
        self.assertEqual(self.commands(content, boundary=b"T\n1\nA\n0\n", loads=b"T\n0\n/\nA\n0\n"), INITIAL_NOTICE + [
            "PCMAX int 1, real 0", "PDENSITY int 1, real 0", "PIFIELD int 1, int 0",
            "PINITC int 1, int 1, real 1", "PFDISS int 1, int 1, real 1",
            "PINITC int 1, int 2, real 2", "PFDISS int 1, int 2, real 2"])
        # The segment parameters have the last word on the segments.
        commands = self.commands(b"T\n1\n/\nA\n0\n0\n0\nV\n1 7/\n", seg_parameters=b"P\n1\n0\nList\n")
        self.assertEqual(commands[-2:], ["PINITC int 1, int 1, real 7", "PFDISS int 1, int 1, real 0"])

    def test_counts_below_one(self):
        for count in (b"0", b"-1", b"-2147483648"):
            with self.subTest(count):
                self.assertEqual(self.commands(b"T\n%b\n2\n" % count), INITIAL_NOTICE)
                self.assertEqual(self.commands(b"T\n1\n%b\nA\n1\n2\n3\nV\n" % count), INITIAL_NOTICE + [
                    "PCMAX int 1, real 0", "PDENSITY int 1, real 2", "PIFIELD int 1, int 1"])

    def test_a_huge_segment_count_without_systems(self):
        self.assertEqual(self.commands(b"T\n0\n2000000000\n"), INITIAL_NOTICE)

    def test_more_systems_than_the_model_has(self):
        content = b"T\n4\n0\n" + b"A\n2\n/\n/\nV\n" * 4
        self.assertEqual(self.commands(content)[2:], [
            line for system in (1, 2, 3, 4)
            for line in (f"PCMAX int {system}, real 0", f"PDENSITY int {system}, real 0",
                         f"PIFIELD int {system}, int 2")])

    def test_a_segment_out_of_range_fails_at_its_record(self):
        for record in (b"3 1 1", b"0 1 1", b"-1 1 1", b"/", b",1 1", b"1* 1 1", b"2147483647 /"):
            for answers in (None, TRANSPORT_ONLY):
                with self.subTest(record):
                    content = b"T\n1\n2\nA\n0\n0\n0\nV\n1 1 1\n" + record + b"\n"
                    result = import_file(current_file_up_to("initial_conditions", content), answers)
                    statement = FIRST_STATEMENT["initial_conditions"] + 9
                    self.assertEqual((result.failure.section, result.failure.statement, result.failure.line),
                                     ("initial_conditions_v2", statement, statement - 1))
                    self.assertEqual(result.failure.field, "segment_number")

    def test_the_count_of_this_section_is_the_range(self):
        content = b"T\n1\n3\nA\n0\n0\n0\nV\n3 1 1\n3 2 2\n3 3 /\n"
        self.assertEqual(self.commands(content)[-6:], [
            "PINITC int 1, int 1, real 0", "PFDISS int 1, int 1, real 0", "PINITC int 1, int 2, real 0",
            "PFDISS int 1, int 2, real 0", "PINITC int 1, int 3, real 3", "PFDISS int 1, int 3, real 2"])

    def test_transport_only_sends_the_notice(self):
        self.assertEqual(self.commands(self.content, TRANSPORT_ONLY), INITIAL_NOTICE)

    def test_captions_behind_the_end_count_and_are_no_failure(self):
        # The fourth and the eighth statement are captions.
        self.assert_fails(b"T\n1\n2\n", 5, 1, "flow_field", lines_before=-1)
        self.assert_fails(b"T\n1\n2\nA\n1\n2\n3\n", 9, 1, "segment_number", lines_before=-1)
        for count in (b"0", b"-3"):
            with self.subTest(count):
                self.assertEqual(self.commands(b"T\n1\n%b\nA\n1\n2\n3\n" % count)[-1], "PIFIELD int 1, int 1")

    def test_failures(self):
        self.assert_fails(b"", 1, 1, "title")
        self.assert_fails(b"T\nA\n", 2, 1, "system_count")
        self.assert_fails(b"T\n1\nx\n", 3, 1, "segment_count")
        self.assert_fails(b"T\n1\n1\nA\n1.\n", 5, 1, "flow_field")
        self.assert_fails(b"T\n1\n1\nA\n1\n1e39\n", 6, 1, "density")
        self.assert_fails(b"T\n1\n1\nA\n1\n1\nx\n", 7, 1, "largest_concentration")
        self.assert_fails(b"T\n1\n1\nA\n1\n1\n1\nV\n1 1 '1'\n", 9, 5, "dissolved_fraction")
        result = self.assert_fails(b"T\n1\n1\nA\n1\n1\n1\nV\n1 x 1\n", 9, 3, "concentration")
        self.assertEqual(result.console_lines[:-1], CURRENT_CONSOLE[:10])

    def test_segments_of_the_file(self):
        commands = self.commands(b"T\n1\n/\nA\n1\n1\n1\nV\n2 5 6\n1 7 8\n3 9 1\n", segments=current_segments(1, 1, 1),
                                 seg_parameters=b"P\n/\n0\nList\n")
        self.assertEqual(commands[-6:], [
            "PINITC int 1, int 1, real 7", "PFDISS int 1, int 1, real 8", "PINITC int 1, int 2, real 5",
            "PFDISS int 1, int 2, real 6", "PINITC int 1, int 3, real 9", "PFDISS int 1, int 3, real 1"])


if __name__ == "__main__":
    unittest.main()

"""Kinetic constants and initial conditions, with expected values worked out by hand."""

import unittest

from command_log import Answers
from driver import import_file
from legacy_constant_rows import GROUPS, TIME_FUNCTIONS
from legacy_kinetics import translate_constants
from shared import ImportState
from small_files import (LEGACY_OPENING, commands_of, legacy_file, legacy_file_up_to, notice,
                         opening_with_all_systems, opening_with_flags, replaced)

TRANSPORT_ONLY = Answers(scope=0)
OTHER_MODEL = (replaced(LEGACY_OPENING, 0, b"    7      2\n"),)
ALL_SYSTEMS = opening_with_all_systems(b"28*0")
CONSTANT_NOTICE = notice("Importing Kinetic Constants", 40)
INITIAL_NOTICE = notice("Importing Initial Conditions", 41)
# Flag or class of the group: system that sets the flag, or first system of the class.
SYSTEM_OF = {"ammonia": 1, "nitrate": 2, "organic_n": 3, "organic_p": 5, "organic_si": 7, "cbod_count": 8,
             "oxygen": 11, "detrital_c": 12, "salinity": 17, "solids_count": 21, "phytoplankton_count": 24,
             "ph": 27}


def opening_with_systems(*systems):
    return opening_with_all_systems(b" ".join(b"0" if system in systems else b"1" for system in range(1, 29)))


def sends(*constants):
    """Both passes over (number, column, value)."""
    return ([f"PADDCONST int {number}, int {column}" for number, column, _ in constants]
            + ["PCONSTANTSREFRESH"]
            + [line for number, column, value in constants
               for line in (f"PCONSTVALUEBYISC int {number}, int {column}, real {value}",
                            f"PCONSTISUSED int {number}, int {column}, int 1")]
            + ["PCONSTANTSREFRESH"])


class Sections(unittest.TestCase):
    section = None

    def commands(self, content, answers=None, opening=LEGACY_OPENING, **others):
        result = import_file(legacy_file(opening, **{self.section: content}, **others), answers)
        self.assertIsNone(result.failure)
        return commands_of(result, self.section)

    def assert_fails(self, content, statement, line, column, field, answers=None, **others):
        result = import_file(legacy_file(**{self.section: content}, **others), answers)
        failure = result.failure
        self.assertIsNotNone(failure)
        self.assertEqual((failure.section, failure.statement, failure.line, failure.column, failure.field),
                         (self.section, statement, line, column, field))
        self.assertEqual(commands_of(result, self.section), [])
        self.assertEqual(result.console_lines[-1], b"Error Reading Import File at Line: %d" % statement)


class ConstantRows(unittest.TestCase):
    def test_row_counts(self):
        counts = {(group.flag or group.count_name, group.smallest_count): len(group.rows) for group in GROUPS}
        self.assertEqual(counts, {
            (None, 0): 36, ("ph", 0): 4, ("salinity", 0): 1, ("ammonia", 0): 4, ("nitrate", 0): 3,
            ("solids_count", 1): 3, ("solids_count", 2): 3, ("solids_count", 3): 3, ("detrital_c", 0): 2,
            ("organic_n", 0): 2, ("organic_p", 0): 2, ("organic_si", 0): 2, ("cbod_count", 1): 6,
            ("cbod_count", 2): 6, ("cbod_count", 3): 6, ("oxygen", 0): 88, ("phytoplankton_count", 1): 24,
            ("phytoplankton_count", 2): 26, ("phytoplankton_count", 3): 25})
        self.assertEqual(len(TIME_FUNCTIONS), 42 - 36)

    def test_a_legacy_number_stands_in_one_row(self):
        numbers = [row.legacy_number for group in GROUPS for row in group.rows]
        numbers += [legacy_number for legacy_number, _ in TIME_FUNCTIONS]
        self.assertEqual(len(set(numbers)), len(numbers))

    def test_columns_go_with_the_size_of_the_class(self):
        others = [row.legacy_number for group in GROUPS for row in group.rows
                  if row.column != max(group.smallest_count, 1)]
        self.assertEqual(others, [119])

    def test_neighbours(self):
        """Groups of rows that are numbered alike on both sides."""
        constant_of = {row.legacy_number: row.constant for group in GROUPS for row in group.rows}
        for first, last, constant in ((110, 118, 64), (120, 134, 74), (140, 149, 64), (150, 164, 74),
                                      (170, 194, 64), (1140, 1217, 178), (60, 67, 54), (10, 13, 27),
                                      (14, 16, 31), (30, 37, 37), (40, 44, 47), (45, 49, 47), (50, 54, 47),
                                      (17, 19, 34), (20, 22, 34), (23, 25, 34), (69, 76, 92), (246, 249, 5),
                                      (99, 106, 166)):
            for number in range(first, last + 1):
                self.assertEqual(constant_of[number], constant + number - first)

    def test_names(self):
        table = translate_constants(ImportState(phytoplankton_count=3, presence_flags={"ammonia", "oxygen"}),
                                    [(13, 1.0), (125, 1.0), (1, 1.0), (1142, 1.0), (1166, 1.0), (1180, 1.0)])
        self.assertEqual(table.names, {
            30: b"Minimum Temperature for Nitrification Reaction (\xf8C)".ljust(60),
            79: b"hytoplankton Zooplankton Grazing Rate Constant for Group 1 (",
            52: b"Waterbody Type Used for Wind Driven Reaeration Rate".ljust(60),
            180: b"Maximum error for testing convergence of the steady-state so",
            204: b"Saltwater nitrification reaction velocity (m/day)".ljust(60),
            218: b"Diagnesis rate for POP G1".ljust(60)})


class Constants(Sections):
    section = "constants"

    def sent(self, content, **options):
        commands = self.commands(content, **options)
        self.assertEqual(commands[:2], CONSTANT_NOTICE)
        return commands[2:]

    def test_two_passes(self):
        content = b"2\n1 3\n74 .1\n"
        self.assertEqual(self.sent(content), [
            "PADDCONST int 52, int 1", "PADDCONST int 97, int 1", "PCONSTANTSREFRESH",
            "PCONSTVALUEBYISC int 52, int 1, real 3", "PCONSTISUSED int 52, int 1, int 1",
            "PCONSTVALUEBYISC int 97, int 1, real 0.100000001", "PCONSTISUSED int 97, int 1, int 1",
            "PCONSTANTSREFRESH"])
        log = import_file(legacy_file(constants=content)).log_lines
        for line in ("2 PADDCONST[10] int 52, int 1", "0 PCONSTANTSREFRESH[18]",
                     "3 PCONSTVALUEBYISC[17] int 52, int 1, real 3",
                     "3 PCONSTISUSED[13] int 52, int 1, int 1"):
            self.assertIn(line, log)

    def test_no_constants(self):
        for content in (b"0\n", b"-1\n", b"-2147483648\n", b"/\n", b"1\n9999 1\n", b"2\n/\n0 5\n",
                        b"2\n2147483647 1\n-2147483648 1\n", b"1\n10 1\n"):
            with self.subTest(content):
                self.assertEqual(self.sent(content), sends())

    def test_time_functions(self):
        self.assertEqual(self.sent(b"1\n2 15\n"), sends() + [
            "PNBRKTF int 37, int 1, int 2", "PBRKTF int 37, int 1, int 1, real 0, real 15",
            "PBRKTF int 37, int 1, int 2, real 365.25, real 15", "PTFSREFRESH"])
        commands = self.sent(b"8\n7 1\n6 2\n5 3\n4 4\n3 5\n2 6\n7/\n1 8\n")
        self.assertEqual(commands[:5], sends((52, 1, 8)))
        self.assertEqual(commands[5:], [line for function, value in (
            (41, 1), (40, 2), (42, 3), (39, 4), (38, 5), (37, 6), (41, 0)) for line in (
                f"PNBRKTF int {function}, int 1, int 2",
                f"PBRKTF int {function}, int 1, int 1, real 0, real {value}",
                f"PBRKTF int {function}, int 1, int 2, real 365.25, real {value}")] + ["PTFSREFRESH"])

    def test_every_condition_met_and_unmet(self):
        for group in GROUPS:
            what = group.flag or group.count_name
            if what is None:
                continue
            # As many of the class as the group needs and nothing else; all else and one less of the class.
            first = SYSTEM_OF[what]
            last = first + max(group.smallest_count, 1) - 1
            end_of_class = first + 3 if group.smallest_count else first + 1
            opening = opening_with_systems(*range(first, last + 1))
            without = opening_with_systems(*(set(range(1, 29)) - set(range(last, end_of_class))))
            for row in group.rows:
                with self.subTest(row.legacy_number):
                    content = b"1\n%d 2\n" % row.legacy_number
                    expected = sends((row.constant, 1, 2)) if row.column == 1 else sends()
                    self.assertEqual(self.sent(content, opening=opening), expected)
                    self.assertEqual(self.sent(content, opening=without), sends())

    def test_columns(self):
        # Second and third column of a constant that the first one put into the list.
        self.assertEqual(self.sent(b"3\n40 1\n45 2\n50 3\n", opening=ALL_SYSTEMS),
                         sends((47, 1, 1), (47, 2, 2), (47, 3, 3)))
        # The third column alone counts three, of which the second is 0.
        self.assertEqual(self.sent(b"2\n40 1\n50 3\n", opening=ALL_SYSTEMS),
                         sends((47, 1, 1), (47, 2, 0), (47, 3, 3)))
        # The default has two CBODs.
        self.assertEqual(self.sent(b"3\n40 1\n45 2\n50 3\n"), sends((47, 1, 1), (47, 2, 2)))
        # Without a first column nothing is in the list.
        self.assertEqual(self.sent(b"1\n45 2\n"), sends())

    def test_the_last_row_decides_the_columns(self):
        self.assertEqual(self.sent(b"2\n45 2\n40 1\n"), sends((47, 1, 1)))
        self.assertEqual(self.sent(b"3\n40 1\n50 3\n45 2\n", opening=ALL_SYSTEMS),
                         sends((47, 1, 1), (47, 2, 2)))

    def test_a_repeated_number_is_sent_twice(self):
        self.assertEqual(self.sent(b"3\n1 5\n74 6\n1 7\n"), sends((52, 1, 7), (97, 1, 6), (52, 1, 7)))

    def test_legacy_22_takes_the_last_place(self):
        two_solids = opening_with_systems(21, 22)
        self.assertEqual(self.sent(b"2\n1 5\n22 7\n", opening=two_solids), sends((36, 1, 0), (36, 2, 7)))
        self.assertEqual(self.sent(b"4\n19 4\n1 5\n22 7\n74 6\n", opening=two_solids),
                         sends((36, 1, 4), (36, 2, 7), (36, 1, 4), (36, 2, 7), (97, 1, 6)))
        # Into an empty list nothing comes, and the columns count for a later first one.
        self.assertEqual(self.sent(b"1\n22 7\n", opening=two_solids), sends())
        self.assertEqual(self.sent(b"2\n22 7\n19 4\n", opening=two_solids), sends((36, 1, 4)))
        # Without the second solid it does nothing, and 20 and 21 never take a place.
        self.assertEqual(self.sent(b"2\n1 5\n22 7\n", opening=opening_with_systems(21)), sends((52, 1, 5)))
        self.assertEqual(self.sent(b"3\n1 5\n20 7\n21 8\n", opening=two_solids), sends((52, 1, 5)))

    def test_legacy_119_needs_two_groups(self):
        self.assertEqual(self.sent(b"1\n119 2\n", opening=opening_with_systems(24)), sends())
        self.assertEqual(self.sent(b"2\n119 2\n149 3\n", opening=opening_with_systems(24, 25)),
                         sends((73, 1, 2), (73, 2, 3)))

    def test_benthic_algae_count_a_column_elsewhere(self):
        self.assertEqual(self.sent(b"1\n80 5\n"), sends())
        # The fifth entry gives constant 5 one column, which it has already; constant 135 has none.
        ph = opening_with_systems(27)
        self.assertEqual(self.sent(b"5\n246 1\n247 2\n248 3\n8 4\n80 5\n", opening=ph),
                         sends((5, 1, 1), (6, 1, 2), (7, 1, 3), (9, 1, 4)))
        # In place 47 the algae set the columns of constant 47 back from 2 to 1.
        content = b"47\n40 1\n45 2\n" + b"1 3\n" * 45
        self.assertEqual(self.sent(content), sends((47, 1, 1), (47, 2, 2), *[(52, 1, 3)] * 45))
        content = b"48\n40 1\n45 2\n" + b"1 3\n" * 45 + b"80 4\n"
        self.assertEqual(self.sent(content), sends((47, 1, 1), *[(52, 1, 3)] * 45))
        content = b"47\n40 1\n45 2\n" + b"1 3\n" * 44 + b"80 4\n"
        self.assertEqual(self.sent(content), sends((47, 1, 1), (47, 2, 2), *[(52, 1, 3)] * 44))

    def test_benthic_algae_that_count_their_own_column(self):
        # Entry 135 of the list is constant 135 itself.
        content = b"135\n" + b"1 3\n" * 134 + b"80 4\n"
        self.assertEqual(self.sent(content), sends(*[(52, 1, 3)] * 134, (135, 1, 4)))
        # Behind entry 3000 no column is counted.
        content = b"3001\n" + b"1 3\n" * 3000 + b"80 4\n"
        self.assertEqual(self.sent(content), sends(*[(52, 1, 3)] * 3000))

    def test_values_left_out(self):
        self.assertEqual(self.sent(b"2\n1/\n74,,\n"), sends((52, 1, 0), (97, 1, 0)))

    def test_other_models_have_no_state_variables(self):
        self.assertEqual(self.sent(b"3\n40 1\n1 2\n2 3\n", opening=OTHER_MODEL)[:5], sends((52, 1, 2)))

    def test_transport_only_reads_and_sends_nothing(self):
        self.assertEqual(self.commands(b"3\n1 1\n2 2\n80 3\n", TRANSPORT_ONLY), [])

    def test_failures(self):
        # The count stands in line 41.
        for answers in (None, TRANSPORT_ONLY):
            self.assert_fails(b"x\n", 42, 41, 1, "constant_count", answers)
            self.assert_fails(b"2\n1 1\n1. 2\n", 44, 43, 1, "constant_number", answers)
            self.assert_fails(b"2\n1 1\n1\n'2'\n", 44, 44, 1, "constant_value", answers)
        failure = import_file(legacy_file_up_to("constants", b"2147483647\n1 1\n")).failure
        self.assertEqual((failure.statement, failure.line, failure.field), (44, 43, "constant_number"))


class InitialConditions(Sections):
    """Ten systems; 8 and 10 are the state variables 1 and 2. Two segments."""
    section = "initial_conditions"
    nothing = b"System\n1\n1.\n100.\nValues\n1 0 1\n2 0 1\n"
    system_8 = b"CBOD-1\n3\n.5\n1e5\nValues\n1 1.5 .25\n2 2.5 .75\n"
    system_10 = b"CBOD-3\n4\n.75\n2e5\nValues\n2 4.5 1\n1 3.5 0\n"

    def sent(self, content, **options):
        commands = self.commands(content, **options)
        self.assertEqual(commands[:2], INITIAL_NOTICE)
        return commands[2:]

    def system(self, variable, largest, density, field, *values):
        return [f"PCMAX int {variable}, real {largest}", f"PDENSITY int {variable}, real {density}",
                f"PIFIELD int {variable}, int {field}"] + [
            line for segment, (concentration, fraction) in enumerate(values, start=1)
            for line in (f"PINITC int {variable}, int {segment}, real {concentration}",
                         f"PFDISS int {variable}, int {segment}, real {fraction}")]

    def test_systems_and_segments(self):
        content = b"10\n2\n" + self.nothing * 7 + self.system_8 + self.nothing + self.system_10
        self.assertEqual(self.sent(content), [
            "PCMAX int 1, real 100000", "PDENSITY int 1, real 0.5", "PIFIELD int 1, int 3",
            "PINITC int 1, int 1, real 1.5", "PFDISS int 1, int 1, real 0.25",
            "PINITC int 1, int 2, real 2.5", "PFDISS int 1, int 2, real 0.75",
            "PCMAX int 2, real 200000", "PDENSITY int 2, real 0.75", "PIFIELD int 2, int 4",
            "PINITC int 2, int 1, real 3.5", "PFDISS int 2, int 1, real 0",
            "PINITC int 2, int 2, real 4.5", "PFDISS int 2, int 2, real 1"])
        result = import_file(legacy_file(initial_conditions=content))
        for line in ("2 PCMAX[6] int 1, real 100000", "2 PDENSITY[9] int 1, real 0.5",
                     "2 PIFIELD[8] int 1, int 3", "3 PINITC[7] int 1, int 1, real 1.5",
                     "3 PFDISS[7] int 1, int 1, real 0.25"):
            self.assertIn(line, result.log_lines)
        self.assertEqual(result.console_lines[-1], b"Reading Initial Conditions")
        self.assertEqual(self.commands(content, TRANSPORT_ONLY), INITIAL_NOTICE)

    def test_systems_that_the_section_does_not_have(self):
        none = (0, 0, 0, (0, 0), (0, 0))
        self.assertEqual(self.sent(b"8\n2\n" + self.nothing * 7 + self.system_8),
                         self.system(1, 100000, 0.5, 3, (1.5, 0.25), (2.5, 0.75)) + self.system(2, *none))
        for content in (b"0\n2\n", b"-1\n/\n"):
            self.assertEqual(self.sent(content), self.system(1, *none) + self.system(2, *none))

    def test_segments_that_no_record_names(self):
        content = b"8\n3\n" + (b"System\n1\n1\n1\nValues\n" + b"1 1 1\n" * 3) * 7 + (
            b"CBOD-1\n3\n.5\n7\nValues\n3 1.5 .25\n3 2.5 .75\n1 4/\n")
        self.assertEqual(self.sent(content)[:9], self.system(1, 7, 0.5, 3, (4, 0), (0, 0), (2.5, 0.75)))

    def test_what_records_leave_out(self):
        content = b"8\n2\n" + self.nothing * 7 + b"CBOD-1\n/\n,\n1*\nValues\n2 5 6\n2,,7/\n"
        self.assertEqual(self.sent(content)[:7], self.system(1, 0, 0, 0, (0, 0), (5, 7)))
        content = b"8\n2\n" + self.nothing * 7 + b"CBOD-1\n/\n,\n1*\nValues\n2 5 6\n2,8/\n"
        self.assertEqual(self.sent(content)[:7], self.system(1, 0, 0, 0, (0, 0), (8, 6)))

    def test_counts_left_out_are_those_of_the_sections_before(self):
        # The loads leave 8 systems, the segment parameters one segment.
        loads = b"0\n8\n" + b"Nothing\n0\n" * 8
        content = b"/\n/\n" + b"System\n1\n1\n1\nValues\n1 2 3\n" * 8
        self.assertEqual(self.sent(content, loads=loads, seg_parameters=b"1\n0\n"),
                         self.system(1, 1, 1, 1, (2, 3)) + self.system(2, 0, 0, 0, (0, 0)))

    def test_counts_below_one(self):
        content = b"8\n-2\n" + b"System\n1\n2\n3\nValues\n" * 8
        self.assertEqual(self.sent(content), self.system(1, 3, 2, 1) + self.system(2, 0, 0, 0))
        self.assertEqual(self.sent(b"0\n0\n"), self.system(1, 0, 0, 0) + self.system(2, 0, 0, 0))

    def test_no_state_variables(self):
        content = b"1\n2\n" + self.nothing
        for opening in (opening_with_flags(b"10*1"), OTHER_MODEL):
            self.assertEqual(self.commands(content, opening=opening), INITIAL_NOTICE)
            self.assertEqual(self.commands(b"0\n2147483647\n", opening=opening), INITIAL_NOTICE)

    def test_segment_numbers_outside(self):
        # The counts stand in lines 42 and 43, the first segment of the first system in line 49.
        for number in (b"0", b"3", b"-1", b"2147483647", b"-2147483648", b"/", b","):
            for answers in (None, TRANSPORT_ONLY):
                with self.subTest(number):
                    content = b"1\n2\nSystem\n1\n1\n1\nValues\n" + number + b" 1 1\n2 1 1\n"
                    self.assert_fails(content, 50, 49, None, "segment_number", answers)

    def test_segments_that_no_record_backs(self):
        for content in (b"0\n100001\n", b"-1\n2147483647\n"):
            self.assert_fails(content, 44, 43, None, "segment_count")
            self.assertEqual(self.commands(content, TRANSPORT_ONLY), INITIAL_NOTICE)
        self.assertEqual(len(self.sent(b"0\n100000\n")), 2 * 200003)

    def test_captions_have_no_error_branch(self):
        # The caption in line 44 is behind the end of the file and counts; the flow field fails.
        failure = import_file(legacy_file_up_to("initial_conditions", b"1\n2\n")).failure
        self.assertEqual((failure.statement, failure.line, failure.field), (46, 44, "flow_field"))
        failure = import_file(legacy_file_up_to("initial_conditions", b"1\n2\nSystem\n1\n1\n1\n")).failure
        self.assertEqual((failure.statement, failure.line, failure.field), (50, 48, "segment_number"))
        content = legacy_file(initial_conditions=b"1\n0\nSystem\n1\n1\n1\n")
        self.assertIsNone(import_file(content).failure)

    def test_failures(self):
        for answers in (None, TRANSPORT_ONLY):
            self.assert_fails(b"x\n", 43, 42, 1, "system_count", answers)
            self.assert_fails(b"1\n1.\n", 44, 43, 1, "segment_count", answers)
            self.assert_fails(b"1\n2\nSystem\nx\n", 46, 45, 1, "flow_field", answers)
            self.assert_fails(b"1\n2\nSystem\n1\nx\n", 47, 46, 1, "density", answers)
            self.assert_fails(b"1\n2\nSystem\n1\n1\nx\n", 48, 47, 1, "largest_concentration", answers)
            self.assert_fails(b"1\n2\n" + self.nothing[:-6] + b"2 x 1\n", 51, 50, 3, "concentration", answers)


if __name__ == "__main__":
    unittest.main()

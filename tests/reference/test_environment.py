"""Time functions and segment parameters, with expected values worked out by hand."""

import math
import struct
import unittest

import single
from command_log import Answers, text_pieces
from driver import import_file
from legacy_environment import CURRENT_FUNCTION, FURTHER_SERIES, PARAMETER_ROWS, WARNINGS, WATTS_PER_LANGLEY
from small_files import (LEGACY_OPENING, commands_of, legacy_file, legacy_file_up_to, notice,
                         opening_with_all_systems, replaced)

TRANSPORT_ONLY = Answers(scope=0)
OTHER_MODEL = (replaced(LEGACY_OPENING, 0, b"    7      2\n"),)
TIME_FUNCTION_NOTICE = notice("Importing Time Function Information", 48)
PARAMETER_NOTICE = notice("Importing Segment Parameter Information", 52)
RED = 'PINFOHTML text[50] "<li><span style=\\"font-weight: bold; color: Red;\\">\\0"'
LANGLEYS = b"Solar Radiation Time Function Converted from Langleys to Watts/m2: "


def warning(message, name=b""):
    """What `commands_of` gives for a red line."""
    text = (message + name.ljust(30) + b"</span></li>").ljust(132) + b"\0"
    return [RED, "PINFOHTML text[133] " + text_pieces(text)]


def fragment(text):
    """What `commands_of` gives for a literal of the information pane."""
    return f"PINFOHTML text[{len(text) + 1}] " + text_pieces(text + b"\0")


class Sections(unittest.TestCase):
    def commands(self, section, content, answers=None, opening=LEGACY_OPENING, report_tables=0, **others):
        result = import_file(legacy_file(opening, **{section: content}, **others), answers,
                             report_tables=report_tables)
        self.assertIsNone(result.failure)
        return commands_of(result, section)

    def assert_fails(self, section, content, statement, line, column, field, answers=None, **others):
        result = import_file(legacy_file(**{section: content}, **others), answers)
        failure = result.failure
        self.assertIsNotNone(failure)
        self.assertEqual((failure.section, failure.statement, failure.line, failure.column, failure.field),
                         (section, statement, line, column, field))
        self.assertEqual(commands_of(result, section), [])
        self.assertEqual(result.console_lines[-1], b"Error Reading Import File at Line: %d" % statement)


class Single(unittest.TestCase):
    def test_one_rounding(self):
        # 16777216 and 16777218 are neighbours; a sum or product half way between two goes to the even one.
        self.assertEqual(single.add(16777216.0, 1.0), 16777216.0)
        self.assertEqual(single.add(16777218.0, 1.0), 16777220.0)
        self.assertEqual(single.multiply(16777215.0, 3.0), 50331644.0)
        self.assertEqual(struct.pack(">f", single.divide(1.0, 3.0)), b"\x3e\xaa\xaa\xab")

    def test_beyond_the_largest(self):
        largest = struct.unpack(">f", b"\x7f\x7f\xff\xff")[0]
        self.assertEqual(single.add(largest, largest), math.inf)
        self.assertEqual(single.multiply(-largest, 2.0), -math.inf)
        self.assertTrue(math.isnan(single.add(math.inf, -math.inf)))

    def test_division_by_zero(self):
        self.assertTrue(math.isnan(single.divide(0.0, 0.0)))
        self.assertEqual(single.divide(-1.0, 0.0), -math.inf)
        self.assertEqual(single.divide(1.0, -0.0), -math.inf)
        self.assertEqual(math.copysign(1.0, single.divide(0.0, -3.0)), -1.0)


class TimeFunctions(Sections):
    def sent(self, content, **options):
        """The commands between the blue notice and the refresh, from a file without red lines."""
        commands = self.commands("timefunctions", content, **options)
        self.assertEqual((commands[:2], commands[-1]), (TIME_FUNCTION_NOTICE, "PTFSREFRESH"))
        return commands[2:-1]

    def test_functions_and_breakpoints(self):
        content = b"2\n1\n'Water temperature'\n2\n0 10.5\n365 20.5\n11 : velocity\nVelocity\n1\n1 .1\n"
        self.assertEqual(self.sent(content), [
            "PNBRKTF int 1, int 1, int 2", "PBRKTF int 1, int 1, int 1, real 0, real 10.5",
            "PBRKTF int 1, int 1, int 2, real 365, real 20.5",
            "PNBRKTF int 2, int 1, int 1", "PBRKTF int 2, int 1, int 1, real 1, real 0.100000001"])
        log = import_file(legacy_file(timefunctions=content)).log_lines
        for line in ("3 PNBRKTF[8] int 2, int 1, int 1", "0 PTFSREFRESH[12]",
                     "5 PBRKTF[7] int 2, int 1, int 1, real 1, real 0.100000001"):
            self.assertIn(line, log)

    def test_the_number_of_every_function(self):
        for number, current in ((1, 1), (5, 4), (6, 3), (7, 21), (8, 22), (9, 8), (10, 17), (11, 2), (14, 9),
                                (15, 10), (16, 11), (19, 33), (20, 12), (21, 14), (22, 16), (25, 15)):
            with self.subTest(number):
                red = warning(LANGLEYS, b"a") if number == 5 else []
                self.assertEqual(self.commands("timefunctions", b"1\n%d\na\n0\n" % number),
                                 red + TIME_FUNCTION_NOTICE
                                 + [f"PNBRKTF int {current}, int 1, int 0", "PTFSREFRESH"])
        self.assertEqual((len(CURRENT_FUNCTION), len(FURTHER_SERIES), len(WARNINGS)), (16, 2, 8))

    def test_solar_radiation_in_watts(self):
        # The nearest single to 0.48426 is 16249069 / 2**25; 100 times that is rounded to 12694585 / 2**18.
        self.assertEqual(WATTS_PER_LANGLEY, 16249069 / 2 ** 25)
        self.assertEqual(self.commands("timefunctions", b"1\n5\nSun\n2\n100 100\n200 2\n"),
                         warning(LANGLEYS, b"Sun") + TIME_FUNCTION_NOTICE + [
                             "PNBRKTF int 4, int 1, int 2",
                             "PBRKTF int 4, int 1, int 1, real 100, real 48.4259987",
                             "PBRKTF int 4, int 1, int 2, real 200, real 0.968519986", "PTFSREFRESH"])

    def test_warnings(self):
        commands = self.commands("timefunctions", b"1\n2\nLake\n1\n0 1\n")
        self.assertEqual(commands[:2], [RED, 'PINFOHTML text[133] "Water Temperature Time Function 2 not '
                                        'supported in KOVA8: Lake" 26*" " "</span></li>" 32*" " "\\0"'])
        self.assertEqual(commands[2:], TIME_FUNCTION_NOTICE + ["PTFSREFRESH"])
        for number, message in ((3, b"Water Temperature Time Function 3 not supported in KOVA8: "),
                                (4, b"Water Temperature Time Function 4 not supported in KOVA8: "),
                                (12, b"Water Velocity Time Function 2 not supported in KOVA8: "),
                                (13, b"Water Velocity Time Function 3 not supported in KOVA8: "),
                                (17, b"Time Function not supported: "),
                                (18, b"Ice Cover Time Function 3 not supported in KOVA8: ")):
            name = b"0123456789" * 3
            with self.subTest(number):
                self.assertEqual(self.commands("timefunctions", b"1\n%d\n'%s45'\n0\n" % (number, name)),
                                 warning(message, name) + TIME_FUNCTION_NOTICE + ["PTFSREFRESH"])

    def test_warnings_come_first_and_in_order(self):
        commands = self.commands("timefunctions", b"3\n17\na\n0\n1\nb\n0\n5\nc\n0\n")
        self.assertEqual(commands[:4],
                         warning(b"Time Function not supported: ", b"a") + warning(LANGLEYS, b"c"))
        self.assertEqual(commands[6:], ["PNBRKTF int 1, int 1, int 0", "PNBRKTF int 4, int 1, int 0",
                                        "PTFSREFRESH"])

    def test_names_left_out(self):
        for name in (b"/", b",", b"1*", b"''", b"'  '"):
            with self.subTest(name):
                self.assertEqual(self.commands("timefunctions", b"1\n17\n" + name + b"\n0\n")[:2],
                                 warning(b"Time Function not supported: "))

    def test_other_numbers_are_read_and_ignored(self):
        for number in (b"0", b"/", b"26", b"50", b"51", b"-1", b"2147483647", b"-2147483648"):
            with self.subTest(number):
                self.assertEqual(self.sent(b"2\n" + number + b"\na\n2\n1 2\n3 4\n1\nb\n0\n"),
                                 ["PNBRKTF int 1, int 1, int 0"])

    def test_further_series(self):
        one, second, third = b"1\na\n1\n1 2\n", b"23\nb\n1\n3 4\n", b"24\nc\n1\n5 6\n"
        first = ["PNBRKTF int 1, int 1, int 1", "PBRKTF int 1, int 1, int 1, real 1, real 2"]
        of_23 = ["PNBRKTF int 1, int 2, int 1", "PBRKTF int 1, int 2, int 1, real 3, real 4"]
        of_24 = ["PNBRKTF int 1, int 3, int 1", "PBRKTF int 1, int 3, int 1, real 5, real 6"]
        for content, commands in (
                (b"2\n" + one + second, first + of_23),
                (b"3\n" + one + second + third, first + of_23 + of_24),
                (b"2\n" + one + third, first + ["PNBRKTF int 1, int 2, int 0"] + of_24),
                (b"3\n" + one + third + second, first + of_23),
                (b"3\n" + second + third + one, first),
                (b"2\n" + second + third, []),
                (b"3\n" + one + b"99\nx\n0\n" + second, first + of_23)):
            with self.subTest(content):
                self.assertEqual(self.sent(content), commands)

    def test_further_series_belong_to_the_latest_function(self):
        self.assertEqual(self.sent(b"4\n6\na\n0\n23\nb\n-1\n7\nc\n0\n23\nd\n/\n"), [
            "PNBRKTF int 3, int 1, int 0", "PNBRKTF int 3, int 2, int -1",
            "PNBRKTF int 21, int 1, int 0", "PNBRKTF int 21, int 2, int -1"])

    def test_a_repeated_number_has_what_came_last(self):
        sent = ["PNBRKTF int 1, int 1, int 2", "PBRKTF int 1, int 1, int 1, real 7, real 2",
                "PBRKTF int 1, int 1, int 2, real 3, real 8"]
        self.assertEqual(self.sent(b"2\n1\na\n2\n1 2\n3 4\n1\nb\n,\n7/\n,8\n"), sent * 2)
        # A breakpoint behind a shorter count is still there when the count grows again.
        self.assertEqual(self.sent(b"3\n1\na\n2\n1 2\n3 8\n1\nb\n1\n7 9\n1\nc\n2\n,2\n/\n"), sent * 3)

    def test_counts_and_values_left_out_by_other_numbers(self):
        # A number in the table keeps its count, also one that nobody uses; one beyond it does not.
        for content in (b"3\n30\na\n1\n1 2\n30\nb\n/\n3 4\n1\nc\n/\n",
                        b"3\n51\na\n1\n1 2\n51\nb\n/\n1\nc\n/\n"):
            self.assertEqual(self.sent(content), ["PNBRKTF int 1, int 1, int 0"])
        self.assertEqual(self.sent(b"1\n1\na\n2\n/\n,5\n"), [
            "PNBRKTF int 1, int 1, int 2", "PBRKTF int 1, int 1, int 1, real 0, real 0",
            "PBRKTF int 1, int 1, int 2, real 0, real 5"])

    def test_no_functions(self):
        for content in (b"0\n", b"-1\n", b"-2147483648\n", b"/\n"):
            with self.subTest(content):
                self.assertEqual(self.sent(content), [])

    def test_other_models_have_no_functions(self):
        self.assertEqual(self.sent(b"2\n5\na\n1\n1 2\n2\nb\n0\n", opening=OTHER_MODEL), [])

    def test_transport_only_sends_the_refresh(self):
        content = b"3\n5\na\n1\n1 2\n10\nb\n0\n2\nc\n0\n"
        self.assertEqual(self.commands("timefunctions", content, TRANSPORT_ONLY), ["PTFSREFRESH"])
        self.assertEqual(self.commands("timefunctions", content, TRANSPORT_ONLY, report_tables=1),
                         ["PTFSREFRESH"])

    def test_tables(self):
        # 12694585 / 2**18 and 16249069 / 2**24 add up to 12948477 / 2**18, half of which is 24.69726.
        content = b"4\n2\nLake\n0\n5\nSun\n2\n0 100\n1 2\n24\n'Third of the sun'\n-3\n10\nAir\n1\n0 -0\n"
        commands = self.commands("timefunctions", content, report_tables=1)
        head = [line for line in commands if line.startswith("PINFOHTML")][4:15]
        self.assertEqual(head, [fragment(text) for text in (
            b'<body><center><table style="text-align: left; height: 95px; width: ',
            b'436px; "border="1" cellpadding="2" cellspacing="2"><tbody>',
            b'<tr style="font-weight: bold;" align="center"> <td style=',
            b'"width: 116px;" colspan="4" rowspan="1"><big>Time Functions</big>',
            b'</td></tr><tr><td style="font-weight: bold; text-align: center; ',
            b'color: rgb(0, 0, 153); width: 183px;">Time Function</td>',
            b'<td style="font-weight: bold; text-align: center; color: rgb(0, 0, 153);',
            b'width: 78px;">Index</td><td style="font-weight: bold; text-align:',
            b' center; color: rgb(0, 0, 153); width: 136px;">Num Data Points</td>',
            b'<td style="font-weight: bold; text-align: center; color: rgb(0, 0, 153);',
            b' width: 116px;">Average</td></tr>')])
        row_of = self.row
        self.assertEqual(commands[15:], [
            "PNBRKTF int 4, int 1, int 2", "PBRKTF int 4, int 1, int 1, real 0, real 48.4259987",
            "PBRKTF int 4, int 1, int 2, real 1, real 0.968519986",
            *row_of("Lake", 4, 2, "24.697260", "24.6972599"),
            "PNBRKTF int 4, int 2, int 0", *row_of("Lake", 4, 0, "nan", "nan"),
            "PNBRKTF int 4, int 3, int -3", *row_of("Lake", 4, -3, "-0.000000", "-0"),
            "PNBRKTF int 17, int 1, int 1", "PBRKTF int 17, int 1, int 1, real 0, real -0",
            *row_of("Sun", 17, 1, "0.000000", "0"),
            fragment(b"</tbody></table><br></center></body>"), "PTFSREFRESH"])

    def row(self, name, index, count, average, written_average):
        """A row of the table: the name is that of the record in its place."""
        def cell(text):
            return f'"{text}" {132 - len(text)}*" "'
        return [fragment(b'<tr><td style="text-align: center; width: 183px;">'),
                f'PINFOHTML text[31] "{name}" {30 - len(name)}*" " "\\0"',
                fragment(b'</td><td style="text-align: center; width: 78px;">'),
                f'GSPRINTFI text[132] -> {cell(str(index))}, text[3] "%d\\0", int {index}',
                f'PINFOHTML text[133] {cell(str(index))} "\\0"',
                fragment(b'</td><td style="text-align: center; width: 136px;"> '),
                f'GSPRINTFI text[132] -> {cell(str(count))}, text[3] "%d\\0", int {count}',
                f'PINFOHTML text[133] {cell(str(count))} "\\0"',
                fragment(b'</td><td style="text-align: center; width: 116px;">'),
                f'GSPRINTFR text[132] -> {cell(average)}, text[3] "%f\\0", real {written_average}',
                f'PINFOHTML text[133] {cell(average)} "\\0"', 'PINFOHTML text[11] "</td></tr>\\0"']

    def test_tables_without_rows(self):
        for content, opening in ((b"0\n", LEGACY_OPENING), (b"1\n1\na\n1\n1 2\n", OTHER_MODEL)):
            commands = self.commands("timefunctions", content, opening=opening, report_tables=1)
            self.assertEqual(len(commands), 13)
            self.assertEqual(commands[10:], [fragment(b' width: 116px;">Average</td></tr>'),
                                             fragment(b"</tbody></table><br></center></body>"),
                                             "PTFSREFRESH"])

    def test_failures(self):
        # The count stands in line 38.
        for answers in (None, TRANSPORT_ONLY):
            self.assert_fails("timefunctions", b"51\n", 39, 38, 1, "function_count", answers)
            self.assert_fails("timefunctions", b"1\n1.\n", 40, 39, 1, "function_number", answers)
            self.assert_fails("timefunctions", b"1\n1\n'a'b\n", 41, 40, 1, "function_name", answers)
            self.assert_fails("timefunctions", b"1\n1\na\nx\n", 42, 41, 1, "breakpoint_count", answers)
            self.assert_fails("timefunctions", b"1\n99\na\n1\n1 x\n", 43, 42, 3, "value", answers)
        self.assertEqual(self.sent(b"50\n" + b"26\na\n0\n" * 50), [])

    def test_huge_counts_end_with_the_file(self):
        content = legacy_file_up_to("timefunctions", b"1\n1\na\n2147483647\n1 2\n")
        failure = import_file(content).failure
        self.assertEqual((failure.statement, failure.line, failure.field), (44, 43, "time"))


class SegmentParameters(Sections):
    """Two segments; no solids and no phytoplankton unless the opening block says otherwise."""
    all_classes = opening_with_all_systems(b"28*0")
    air_temperature = b"1\n10\nAir\n0\n"
    of_air = ["PADDPARAM int 2, int 1", "PSCALEPARAMBYISC int 2, int 1, real 1", "PADDPARAM int 3, int 1",
              "PSCALEPARAMBYISC int 3, int 1, real 1"]

    def sent(self, content, **options):
        return self.commands("seg_parameters", content, **options)

    def values(self, code, class_index, *values):
        return [f"PCONSTPARAM int {segment}, int {code}, int {class_index}, real {value}"
                for segment, value in enumerate(values, start=1)]

    def test_parameters_and_values(self):
        content = b"2\n2\n2 1.5\n4 2\n1\n2 10\n4 .25\n2\n2 20\n4 .75\n"
        self.assertEqual(self.sent(content), PARAMETER_NOTICE + [
            "PADDPARAM int 1, int 1", "PSCALEPARAMBYISC int 1, int 1, real 1.5",
            "PADDPARAM int 17, int 1", "PSCALEPARAMBYISC int 17, int 1, real 2", "PPARAMSREFRESH",
            *self.values(1, 1, 10, 20), *self.values(17, 1, 0.25, 0.75), "PPARAMSREFRESH"])
        result = import_file(legacy_file(seg_parameters=content))
        for line in ("2 PADDPARAM[10] int 1, int 1", "3 PSCALEPARAMBYISC[17] int 1, int 1, real 1.5",
                     "0 PPARAMSREFRESH[15]", "4 PCONSTPARAM[12] int 2, int 17, int 1, real 0.75"):
            self.assertIn(line, result.log_lines)
        self.assertEqual(result.console_lines[-2:],
                         [b"Reading Segment Parameters", b"Reading Initial Conditions"])

    def test_the_code_of_every_parameter(self):
        table = {1: (41, 1), 2: (1, 1), 4: (17, 1), 5: (42, 1), 6: (30, 1), 7: (31, 1), 8: (32, 1),
                 10: (23, 1), 11: (22, 1), 12: (15, 1), 13: (29, 1), 14: (24, 1), 15: (25, 1), 16: (26, 1),
                 17: (27, 1), 18: (28, 1), 19: (21, 1), 22: (6, 1), 23: (7, 1), 24: (19, 1), 25: (19, 2),
                 26: (19, 3), 27: (20, 1), 28: (20, 2), 29: (20, 3), 100: (33, 1), 101: (34, 1), 102: (35, 1),
                 103: (36, 1), 104: (37, 1), 105: (38, 1), 106: (39, 1)}
        for number, (code, class_index) in table.items():
            with self.subTest(number):
                content = b"1\n1\n%d 2\n1\n%d 3\n" % (number, number)
                self.assertEqual(self.sent(content, opening=self.all_classes)[2:],
                                 [f"PADDPARAM int {code}, int {class_index}",
                                  f"PSCALEPARAMBYISC int {code}, int {class_index}, real 2", "PPARAMSREFRESH",
                                  *self.values(code, class_index, 3), "PPARAMSREFRESH"])
        self.assertEqual(len(PARAMETER_ROWS), len(table) + 2)

    def test_solar_radiation_has_two_entries(self):
        self.assertEqual(self.sent(b"2\n1\n9 4\n1\n9 7\n2\n9 8\n"), PARAMETER_NOTICE + [
            "PADDPARAM int 4, int 1", "PSCALEPARAMBYISC int 4, int 1, real 4",
            "PADDPARAM int 5, int 1", "PSCALEPARAMBYISC int 5, int 1, real 1", "PPARAMSREFRESH",
            *self.values(4, 1, 7, 8), *self.values(5, 1, 1, 1), "PPARAMSREFRESH"])

    def test_classes_that_are_not_simulated(self):
        for number in (24, 25, 26, 27, 28, 29):
            with self.subTest(number):
                self.assertEqual(self.sent(b"1\n1\n%d 1\n1\n%d 1\n" % (number, number)), ["PPARAMSREFRESH"])
        # One of the three solids and two of the phytoplankton groups.
        opening = opening_with_all_systems(b"20*0 0 1 1 2*0 1 2*0")
        numbers = (24, 25, 26, 27, 28, 29)
        content = b"0\n6\n" + b"".join(b"%d 1\n" % number for number in numbers)
        self.assertEqual([line for line in self.sent(content, opening=opening) if line.startswith("PADD")],
                         ["PADDPARAM int 19, int 1", "PADDPARAM int 20, int 1", "PADDPARAM int 20, int 2"])

    def test_other_numbers_are_read_and_dropped(self):
        for number in (b"0", b"/", b"20", b"21", b"30", b"99", b"107", b"-1", b"2147483647", b"-2147483648"):
            with self.subTest(number):
                self.assertEqual(self.sent(b"2\n1\n" + number + b" 1\n1\n,5\n2\n,6\n"), ["PPARAMSREFRESH"])

    def test_water_temperature_functions(self):
        red = notice("There is only 1 Water Temperature Time Function in KOVA8", 69)
        self.assertEqual(self.sent(b"1\n2\n3 1\n3 1\n1\n3 5\n3 6\n"), red * 2 + ["PPARAMSREFRESH"])
        self.assertEqual(self.sent(b"0\n3\n2 1\n3 1\n4 1\n")[:5],
                         red + PARAMETER_NOTICE + ["PADDPARAM int 1, int 1"])

    def test_the_list_is_what_was_read_last(self):
        # The second segment has the number 4 twice, and of that number the first segment has no value.
        self.assertEqual(self.sent(b"2\n2\n1 5\n2 6\n1\n1 10\n2 11\n2\n4 12\n4 13\n"), PARAMETER_NOTICE + [
            "PADDPARAM int 17, int 1", "PSCALEPARAMBYISC int 17, int 1, real 5",
            "PADDPARAM int 17, int 1", "PSCALEPARAMBYISC int 17, int 1, real 6", "PPARAMSREFRESH",
            *self.values(17, 1, 0, 13) * 2, "PPARAMSREFRESH"])
        self.assertEqual(self.sent(b"2\n1\n1 5\n1\n107 10\n2\n1 11\n")[-3:-1], self.values(41, 1, 0, 11))
        # The number in the first segment is that of the list from there on.
        self.assertEqual(self.sent(b"2\n1\n1 5\n1\n2 10\n2\n,11\n")[-3:-1], self.values(1, 1, 10, 11))

    def test_what_records_leave_out(self):
        # The scale, the number in the first segment and the value in the second one.
        self.assertEqual(self.sent(b"2\n1\n1/\n/\n,7\n/\n1/\n")[2:], [
            "PADDPARAM int 41, int 1", "PSCALEPARAMBYISC int 41, int 1, real 0", "PPARAMSREFRESH",
            *self.values(41, 1, 7, 0), "PPARAMSREFRESH"])
        # Twice the same number: the second record without a value leaves the one of the first.
        self.assertEqual(self.sent(b"1\n2\n1 2\n1 3\n9\n1 4\n1/\n")[-3:-1], self.values(41, 1, 4) * 2)
        # The segment count is that of the segments, the parameter count 0.
        self.assertEqual(self.sent(b"/\n1\n1 1\n1\n1 5\n2\n1 6\n")[-3:-1], self.values(41, 1, 5, 6))
        self.assertEqual(self.sent(b"1\n/\n"), ["PPARAMSREFRESH"])

    def test_counts_below_one(self):
        for content in (b"2\n0\n", b"2\n-1\n", b"-2\n-2147483648\n"):
            with self.subTest(content):
                self.assertEqual(self.sent(content), ["PPARAMSREFRESH"])
        self.assertEqual(self.sent(b"-1\n1\n1 2\n"), PARAMETER_NOTICE + [
            "PADDPARAM int 41, int 1", "PSCALEPARAMBYISC int 41, int 1, real 2", "PPARAMSREFRESH",
            "PPARAMSREFRESH"])

    def test_air_temperature(self):
        commands = self.sent(b"2\n0\n", timefunctions=self.air_temperature)
        self.assertEqual(commands, PARAMETER_NOTICE + self.of_air + [
            "PPARAMSREFRESH", *self.values(2, 1, 1, 1), *self.values(3, 1, 1, 1), "PPARAMSREFRESH"])
        commands = self.sent(b"1\n1\n22 3\n1\n22 4\n", timefunctions=self.air_temperature)
        self.assertEqual(commands, PARAMETER_NOTICE + [
            "PADDPARAM int 6, int 1", "PSCALEPARAMBYISC int 6, int 1, real 3", *self.of_air, "PPARAMSREFRESH",
            *self.values(6, 1, 4), *self.values(2, 1, 1), *self.values(3, 1, 1), "PPARAMSREFRESH"])

    def test_other_models_have_no_parameters(self):
        for content in (b"1\n2\n3 1\n1 1\n1\n3 1\n1 1\n", b"1\n0\n"):
            self.assertEqual(self.sent(content, opening=OTHER_MODEL, timefunctions=self.air_temperature),
                             ["PPARAMSREFRESH"])

    def test_transport_only_reads_and_sends_nothing(self):
        for content in (b"1\n2\n3 1\n1 1\n1\n3 1\n1 1\n", b"1\n0\n"):
            self.assertEqual(self.sent(content, answers=TRANSPORT_ONLY, timefunctions=self.air_temperature),
                             [])

    def test_segments_that_no_record_backs(self):
        others = {"timefunctions": self.air_temperature}
        # The time function takes three lines more; the parameter count is in line 43.
        self.assert_fails("seg_parameters", b"100001\n0\n", 44, 43, None, "parameter_count", **others)
        self.assert_fails("seg_parameters", b"2147483647\n-1\n", 44, 43, None, "parameter_count", **others)
        self.assertEqual(len(self.sent(b"100000\n0\n", initial_conditions=b"0\n1\n", **others)), 200000 + 8)
        self.assertEqual(self.sent(b"2147483647\n0\n"), ["PPARAMSREFRESH"])
        self.assertEqual(self.sent(b"2147483647\n0\n", answers=TRANSPORT_ONLY, **others), [])

    def test_failures(self):
        # The segment count stands in line 39.
        for answers in (None, TRANSPORT_ONLY):
            self.assert_fails("seg_parameters", b"x\n", 40, 39, 1, "segment_count", answers)
            self.assert_fails("seg_parameters", b"1\n1.5\n", 41, 40, 1, "parameter_count", answers)
            self.assert_fails("seg_parameters", b"1\n1\n1 x\n", 42, 41, 3, "parameter_scale", answers)
            self.assert_fails("seg_parameters", b"1\n1\n1 1\nx\n", 43, 42, 1, "segment_number", answers)
            self.assert_fails("seg_parameters", b"1\n1\n1 1\n1\n1 x\n", 44, 43, 3, "parameter_value", answers)


if __name__ == "__main__":
    unittest.main()

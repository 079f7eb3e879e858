"""Time functions and segment parameters of the current format, with expected values worked out by hand."""

import unittest

from current_section_tests import TRANSPORT_ONLY, CurrentSections, columned
from driver import import_file
from small_files import (CURRENT_CONSOLE, CURRENT_OPENING, commands_of, current_file, current_file_up_to,
                         current_segments, notice, replaced)

PARAMETER_NOTICE = notice("Importing Segment Parameter Information", 52)


class TimeFunctions(CurrentSections):
    section = "timefunctions"
    content = b"Functions\n4\n1\n2\n0 15.5\n365 16\n1\n1\n2 3\n77\n0\n-5\n-1\n"

    def test_records_go_out_in_their_order_each_as_a_first_series(self):
        self.assertEqual(self.commands(self.content), [
            "PNBRKTF int 1, int 1, int 2", "PBRKTF int 1, int 1, int 1, real 0, real 15.5",
            "PBRKTF int 1, int 1, int 2, real 365, real 16",
            "PNBRKTF int 1, int 1, int 1", "PBRKTF int 1, int 1, int 1, real 2, real 3",
            "PNBRKTF int 77, int 1, int 0", "PNBRKTF int -5, int 1, int -1", "PTFSREFRESH"])

    def test_nothing_is_converted_or_warned_of(self):
        """Among them the legacy numbers of solar radiation, of functions without a place, and of further series."""
        for number in (2, 3, 4, 5, 12, 17, 18, 23, 24, 51, 0, 2147483647, -2147483648):
            with self.subTest(number):
                self.assertEqual(self.commands(b"T\n1\n%d\n1\n1 100\n" % number), [
                    f"PNBRKTF int {number}, int 1, int 1",
                    f"PBRKTF int {number}, int 1, int 1, real 1, real 100", "PTFSREFRESH"])

    def test_what_records_leave_out_is_zero(self):
        """Also where an earlier record of the same number has a value."""
        self.assertEqual(self.commands(b"T\n3\n6\n1\n8 9\n6\n/\n/\n1\n,4/\n"), [
            "PNBRKTF int 6, int 1, int 1", "PBRKTF int 6, int 1, int 1, real 8, real 9",
            "PNBRKTF int 6, int 1, int 0",
            "PNBRKTF int 0, int 1, int 1", "PBRKTF int 0, int 1, int 1, real 0, real 4", "PTFSREFRESH"])

    def test_no_functions(self):
        for count in (b"0", b"-1", b"-2147483648", b"/"):
            with self.subTest(count):
                self.assertEqual(self.commands(b"T\n%b\n" % count), ["PTFSREFRESH"])
                self.assertEqual(self.commands(b"T\n%b\n" % count, TRANSPORT_ONLY), ["PTFSREFRESH"])

    def test_more_functions_than_the_legacy_format_takes(self):
        commands = self.commands(b"T\n60\n" + b"9\n0\n" * 60)
        self.assertEqual(commands, ["PNBRKTF int 9, int 1, int 0"] * 60 + ["PTFSREFRESH"])

    def test_transport_only_sends_the_refresh(self):
        self.assertEqual(self.commands(self.content, TRANSPORT_ONLY), ["PTFSREFRESH"])

    def test_tables_are_not_for_this_format(self):
        with_tables = import_file(current_file(timefunctions=self.content), report_tables=1)
        self.assertEqual(commands_of(with_tables, "timefunctions"), self.commands(self.content))

    def test_failures(self):
        self.assert_fails(b"", 1, 1, "title")
        self.assert_fails(b"T\n1x\n", 2, 1, "function_count")
        self.assert_fails(b"T\n1\n'1'\n", 3, 1, "function_number")
        self.assert_fails(b"T\n1\n1\n2147483648\n", 4, 1, "breakpoint_count")
        self.assert_fails(b"T\n1\n1\n2\n1 2\n3 .\n", 6, 3, "value")
        self.assert_fails(b"T\n1\n1\n2000000000\n1 2\n3\n\n4\n", 7, 1, "time", lines_before=2)

    def test_the_end_of_the_file(self):
        self.assert_ends(self.content, 13)

    def test_the_console_tells_how_far_it_came(self):
        for content, count in ((b"T\n", 3), (b"T\n1\n", 4), (b"T\n0\n", 5)):
            with self.subTest(content):
                console = import_file(current_file_up_to("timefunctions", content)).console_lines
                # Behind the last case the segment parameters have begun.
                self.assertEqual(console[:-1], CURRENT_CONSOLE[:6] if count == 5 else CURRENT_CONSOLE[:count])


# Columns 8-12 number, 24-26 class index, 35-44 scale; what stands anywhere else is skipped.
FIRST_LISTED = columned((8, b"   41"), (24, b"  1"), (35, b"       1.5 remark"), filler=b"x")
SECOND_LISTED = columned((11, b"19"), (26, b"3"), (42, b"2e1"))
# Columns 12-16 number, 33-35 class index, 55-64 value.
VALUES = (columned((12, b"   41"), (33, b"  1"), (55, b"       .25 remark"), filler=b"x"),
          columned((15, b"19"), (35, b"3"), (63, b"12")),
          columned((15, b"41"), (35, b"1"), (62, b"-.5")),
          columned((12, b"1 9"), (33, b"3"), (55, b"1 2 3 4 5")))


def listed(number=b"", class_index=b"", scale=b""):
    return b"%7s%5s%11s%3s%8s%10s\n" % (b"", number, b"", class_index, b"", scale)


def value(number=b"", class_index=b"", value_columns=b""):
    return b"%11s%5s%16s%3s%19s%10s\n" % (b"", number, b"", class_index, b"", value_columns)


class SegmentParameters(CurrentSections):
    section = "seg_parameters"
    content = (b"Parameters\n2\n2\nList\n" + FIRST_LISTED + SECOND_LISTED + b"Values\n1\n" + VALUES[0] + VALUES[1]
               + b"2\n" + VALUES[2] + VALUES[3])

    def one_parameter(self, *records):
        """The values of a single parameter in one segment."""
        return self.commands(b"P\n1\n1\nList\n" + records[0] + b"Values\n1\n" + records[1])

    def test_parameters_and_values(self):
        self.assertEqual(self.commands(self.content), PARAMETER_NOTICE + [
            "PADDPARAM int 41, int 1", "PSCALEPARAMBYISC int 41, int 1, real 1.5",
            "PADDPARAM int 19, int 3", "PSCALEPARAMBYISC int 19, int 3, real 20", "PPARAMSREFRESH",
            "PCONSTPARAM int 1, int 41, int 1, real 0.25", "PCONSTPARAM int 2, int 41, int 1, real -0.5",
            "PCONSTPARAM int 1, int 19, int 3, real 12", "PCONSTPARAM int 2, int 19, int 3, real 12345",
            "PPARAMSREFRESH"])

    def test_the_columns_of_the_list(self):
        for record, sent in (
                (columned((7, b"712345678"), (22, b"99-12999"), (34, b"812345678909")), (12345, -12, "1.23456794e+09")),
                (columned((8, b"1 2 3"), (27, b"9"), (42, b".5")), (123, 0, "0.5")),
                (columned((12, b"7")), (7, 0, "0")), (columned((12, b"7"), (24, b"5")), (7, 5, "0")),
                (b"\n", (0, 0, "0")), (columned((12, b"7"), (25, b"5"), (35, b"-0")), (7, 5, "-0")),
                (columned((12, b"7"), (24, b"5"), (35, b" 1 5 E 1 ")), (7, 5, "150")),
                (columned((12, b"7"), (24, b"5"), (44, b"12")), (7, 5, "1"))):
            number, class_index, scale = sent
            with self.subTest(record):
                content = b"P\n0\n1\nList\n" + record + b"Values\n"
                self.assertEqual(self.commands(content), PARAMETER_NOTICE + [
                    f"PADDPARAM int {number}, int {class_index}",
                    f"PSCALEPARAMBYISC int {number}, int {class_index}, real {scale}",
                    "PPARAMSREFRESH", "PPARAMSREFRESH"])

    def test_the_columns_of_a_value(self):
        for placed, sent in (((54, b"9         7"), "7"), ((55, b"1"), "1"), ((36, b""), "0"), ((64, b"12"), "1"),
                             ((36, b"x" * 19 + b"1d2"), "100"), ((57, b"1.2 5"), "1.25"), ((65, b"5"), "0")):
            with self.subTest(placed):
                commands = self.one_parameter(listed(b"19", b"3", b"1"),
                                              columned((15, b"19"), (35, b"3"), placed))
                self.assertEqual(commands[-2], f"PCONSTPARAM int 1, int 19, int 3, real {sent}")

    def test_the_list_has_what_the_last_segment_says(self):
        content = (b"P\n2\n2\nList\n" + listed(b"1", b"1", b"7") + listed(b"2", b"1", b"8") + b"Values\n"
                   + b"1\n" + value(b"30", b"2", b"1") + value(b"40", b"3", b"2")
                   + b"2\n" + value(b"50", b"4", b"3") + value(b"", b"5", b"4"))
        self.assertEqual(self.commands(content)[2:], [
            "PADDPARAM int 50, int 4", "PSCALEPARAMBYISC int 50, int 4, real 7",
            "PADDPARAM int 0, int 5", "PSCALEPARAMBYISC int 0, int 5, real 8", "PPARAMSREFRESH",
            "PCONSTPARAM int 1, int 50, int 4, real 1", "PCONSTPARAM int 2, int 50, int 4, real 3",
            "PCONSTPARAM int 1, int 0, int 5, real 2", "PCONSTPARAM int 2, int 0, int 5, real 4", "PPARAMSREFRESH"])

    def test_the_place_in_the_list_counts_and_not_the_number(self):
        content = (b"P\n1\n2\nList\n" + listed(b"1", b"1", b"5") * 2 + b"Values\n"
                   + b"1\n" + value(b"1", b"1", b"8") + value(b"1", b"1", b"9"))
        self.assertEqual(self.commands(content)[-3:], ["PCONSTPARAM int 1, int 1, int 1, real 8",
                                                       "PCONSTPARAM int 1, int 1, int 1, real 9", "PPARAMSREFRESH"])

    def test_the_segment_number_is_read_and_not_used(self):
        content = (b"P\n2\n1\nList\n" + listed(b"1") + b"Values\n9\n" + value(b"1", b"", b"3") + b"/\n"
                   + value(b"1", b"", b"4"))
        self.assertEqual(self.commands(content)[-3:-1], ["PCONSTPARAM int 1, int 1, int 0, real 3",
                                                         "PCONSTPARAM int 2, int 1, int 0, real 4"])

    def test_no_parameters_leave_the_list_heading_only(self):
        for count in (b"0", b"-1", b"-2147483648", b"/"):
            with self.subTest(count):
                self.assertEqual(self.commands(b"P\n2\n%b\nList\n" % count), ["PPARAMSREFRESH"])
                self.assert_fails(b"P\n2\n%b\n" % count, 4, 1, "list_heading")

    def test_parameters_without_segments(self):
        for count in (b"0", b"-4"):
            with self.subTest(count):
                self.assertEqual(self.commands(b"P\n%b\n1\nList\n" % count + listed(b"5", b"2", b"3") + b"Values\n"),
                                 PARAMETER_NOTICE + ["PADDPARAM int 5, int 2",
                                                     "PSCALEPARAMBYISC int 5, int 2, real 3", "PPARAMSREFRESH",
                                                     "PPARAMSREFRESH"])

    def test_a_segment_count_left_out_is_that_of_the_segments(self):
        content = b"P\n/\n1\nList\n" + listed(b"5") + b"Values\n" + (b"1\n" + value(b"5", b"", b"6")) * 3
        self.assertEqual(self.commands(content, segments=current_segments(0, 0, 0))[-4:-1], [
            f"PCONSTPARAM int {segment}, int 5, int 0, real 6" for segment in (1, 2, 3)])

    def test_a_huge_segment_count_without_parameters(self):
        commands = self.commands(b"P\n2000000000\n0\nList\n", initial_conditions=b"I\n0\n0\n")
        self.assertEqual(commands, ["PPARAMSREFRESH"])

    def test_other_models_have_parameters_too(self):
        for model_type in (11, 8, 7, 0):
            opening = (replaced(CURRENT_OPENING, 0, b"%5d      3\n" % model_type),)
            self.assertEqual(self.commands(self.content, opening=opening), self.commands(self.content))

    def test_time_functions_add_no_parameters(self):
        """Function 10 is the air temperature of the legacy format, 17 that of this one."""
        commands = self.commands(b"P\n2\n0\nList\n", timefunctions=b"T\n2\n10\n0\n17\n0\n")
        self.assertEqual(commands, ["PPARAMSREFRESH"])

    def test_transport_only_reads_and_sends_nothing(self):
        self.assertEqual(self.commands(self.content, TRANSPORT_ONLY), [])
        self.assertEqual(self.commands(b"P\n2\n0\nList\n", TRANSPORT_ONLY), [])

    def test_failures(self):
        self.assert_fails(b"'P\n", 1, 1, "title")
        self.assert_fails(b"P\nList\n", 2, 1, "segment_count")
        self.assert_fails(b"P\n2\n2.\n", 3, 1, "parameter_count")
        head = b"P\n2\n1\nList\n"
        self.assert_fails(head + b"       \t  41\n", 5, 8, "parameter_number")
        self.assert_fails(head + listed(b"41", b"1.", b""), 5, 24, "class_index")
        self.assert_fails(head + listed(b"41", b"1", b"1,5"), 5, 35, "parameter_scale")
        head += listed(b"41", b"1", b"1")
        self.assert_fails(head, 6, 1, "segment_heading")
        self.assert_fails(head + b"Values\nx\n", 7, 1, "segment_number")
        self.assert_fails(head + b"Values\n1\n" + value(b"9a", b"", b""), 8, 12, "parameter_number")
        self.assert_fails(head + b"Values\n1\n" + value(b"9", b"-", b""), 8, 33, "class_index")
        self.assert_fails(head + b"Values\n1\n" + value(b"9", b"1", b"1e39"), 8, 55, "parameter_value")

    def test_the_end_of_the_file(self):
        self.assert_ends(self.content, 13)

    def test_the_console_begins_before_the_heading(self):
        console = import_file(current_file_up_to("seg_parameters", b"")).console_lines
        self.assertEqual(console[:-1], CURRENT_CONSOLE[:6])


if __name__ == "__main__":
    unittest.main()

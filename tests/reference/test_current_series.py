"""Boundary conditions and loads of the current format, with expected values worked out by hand."""

import unittest

from command_log import SendBuffers
from current_section_tests import TRANSPORT_ONLY, CurrentSections
from driver import import_file
from small_files import (CURRENT_CONSOLE, CURRENT_OPENING, arguments_of, commands_of, current_file,
                         current_file_up_to, notice, replaced)

EMPTY_BUFFERS = "real[170000] | 170000*0, real[170000] | 170000*0"
ZERO_PAIR = "real[170000] 0 0 | 169998*0, real[170000] 0 0 | 169998*0"
BOUNDARY_START = notice("Importing Boundary Information", 43) + ["PPROGRESS int 0"]
LOAD_START = notice("Importing Loading Information", 42)


def progress(*percentages):
    return [f"PPROGRESS int {percentage}" for percentage in percentages]


def placeholder(system, buffers=ZERO_PAIR):
    return [f"PSCALW int {system}, real 0", f"PCONVW int {system}, real 0", f"PNBWK int {system}, int 1, int 2",
            f"PALLLOADFUNC int {system}, int 1, {buffers}"]


class Boundaries(CurrentSections):
    section = "boundary"
    content = b"Boundaries\n2\nNH-34\n2\n       2.5       3.5 x\n7\n2\n1.5 0\n2.5 10\n/\n1\n4 5\nDO\n-1\n"

    def test_commands(self):
        self.assertEqual(self.commands(self.content), progress(0, 0, 100) + BOUNDARY_START + [
            "PPROGRESS int 0", "PNOBC int 1, int 2", "PSCALB int 1, real 2.5",
            "PIBC int 1, int 1, int 7", "PNBFP int 1, int 1, int 2",
            "PALLBOUNDFUNC int 1, int 1, real[170000] 1.5 2.5 | 169998*0, real[170000] 0 10 | 169998*0",
            "PIBC int 1, int 2, int 0", "PNBFP int 1, int 2, int 1",
            "PALLBOUNDFUNC int 1, int 2, real[170000] 4 | 1*2.5 169998*0, real[170000] 5 | 1*10 169998*0",
            "PPROGRESS int 100", "PNOBC int 2, int -1"])

    def test_progress_is_for_the_systems_of_the_section(self):
        for count, percentages in ((1, (100,)), (3, (0, 0, 100)), (5, (0, 0, 0, 0, 100))):
            with self.subTest(count):
                commands = self.commands(b"T\n%d\n" % count + b"Heading\n0\n" * count)
                numbered = [line for system, percentage in enumerate(percentages, start=1)
                            for line in (f"PPROGRESS int {percentage}", f"PNOBC int {system}, int 0")]
                self.assertEqual(commands, progress(0, *percentages) + BOUNDARY_START + numbered)

    def test_no_systems(self):
        for count in (b"0", b"-1", b"-2147483648"):
            with self.subTest(count):
                self.assertEqual(self.commands(b"T\n%b\n" % count), progress(0) + BOUNDARY_START)

    def test_a_system_count_left_out_is_that_of_the_opening_block(self):
        self.assertEqual(self.commands(b"T\n/\nA\n0\nB\n0\n")[-1], "PNOBC int 2, int 0")
        opening = CURRENT_OPENING[:5] + (b"1\n",) + CURRENT_OPENING[6:16]
        self.assertEqual(self.commands(b"T\n1*\nA\n,\n", opening=opening)[-1], "PNOBC int 1, int 0")

    def test_headings_stay_off_the_console(self):
        result = self.imported(b"Title\n1\nOn no console\n0\n")
        self.assertEqual(result.console_lines, CURRENT_CONSOLE)

    def test_a_factor_record_has_columns(self):
        for columns, factor in ((b"", "0"), (b"12", "12"), (b"     1 2.5", "12.5"), (b"1.5e1     ", "15"),
                                (b"          7", "0"), (b"2         x", None), (b"1234567890", "1.23456794e+09"),
                                (b"-0", "-0"), (b"  1.5\t", None), (b"1,2", None)):
            content = b"T\n1\nA\n1\n%b\n1\n0\n" % columns
            with self.subTest(columns):
                if factor is None:
                    result = import_file(current_file_up_to("boundary", content))
                    self.assertEqual(result.failure.statement, 37 + 4)
                else:
                    self.assertIn(f"PSCALB int 1, real {factor}", self.commands(content))

    def test_what_records_leave_out_is_zero(self):
        commands = self.commands(b"T\n1\nA\n2\n1\n/\n/\n,\n2\n/\n,3/\n")
        self.assertEqual(commands[-6:], [
            "PIBC int 1, int 1, int 0", "PNBFP int 1, int 1, int 0", f"PALLBOUNDFUNC int 1, int 1, {EMPTY_BUFFERS}",
            "PIBC int 1, int 2, int 0", "PNBFP int 1, int 2, int 2",
            "PALLBOUNDFUNC int 1, int 2, real[170000] 0 0 | 169998*0, real[170000] 0 3 | 169998*0"])

    def test_transport_only_reads_and_tells_progress(self):
        self.assertEqual(self.commands(self.content, TRANSPORT_ONLY), progress(0, 0, 100))
        self.assertEqual(self.commands(b"T\n0\n", TRANSPORT_ONLY), progress(0))

    def test_a_series_too_long_for_the_buffers(self):
        for answers in (None, TRANSPORT_ONLY):
            self.assert_fails(b"T\n1\nA\n1\n1\n1\n 170001\n", 7, 2, "breakpoint_count", progress(0, 100),
                              answers=answers)

    def test_a_series_that_fills_the_buffers(self):
        line = self.commands(b"T\n1\nA\n1\n1\n1\n170000\n" + b"/\n" * 170000)[-1]
        buffer = "real[170000]" + " 0" * 170000 + " |"
        self.assertEqual(line, f"PALLBOUNDFUNC int 1, int 1, {buffer}, {buffer}")

    def test_failures(self):
        self.assert_fails(b"'open\n", 1, 1, "title")
        self.assert_fails(b"T\nx\n", 2, 1, "system_count")
        self.assert_fails(b"T\n2\nA\n0\n", 5, 1, "heading", progress(0, 0, 100))
        self.assert_fails(b"T\n2\nA\n1.\n", 4, 1, "boundary_count", progress(0, 0))
        self.assert_fails(b"T\n1\nA\n1\n         1  x\n", 5, 11, "boundary_conversion_factor", progress(0, 100))
        self.assert_fails(b"T\n1\nA\n1\n1\n'2'\n", 6, 1, "series_segment", progress(0, 100))
        self.assert_fails(b"T\n1\nA\n1\n1\n2\n1\n\n3\n", 8, 1, "time", progress(0, 100), lines_before=2)

    def test_the_console_tells_how_far_it_came(self):
        for content, lines in ((b"", []), (b"T\n", CURRENT_CONSOLE[:1]), (b"T\n1\nA\n", CURRENT_CONSOLE[:1]),
                               (b"T\n0\n", CURRENT_CONSOLE[:2])):
            with self.subTest(content):
                console = import_file(current_file_up_to("boundary", content)).console_lines
                self.assertEqual(console[:-1], lines)


class Loads(CurrentSections):
    section = "loads"
    content = b"Loads\n1\nnps file.txt\n2\nNH-34\n0\nDO\n2\n1.5 2\n3\n1\n5 6\n-4\n2\n1 2\n3 4\n"

    def test_commands(self):
        self.assertEqual(self.commands(self.content), LOAD_START + [
            "PLOPT int 1", 'PNPSFILE text[512] "nps file.txt" 500*" "', *placeholder(1), "PCONVB int 2, real 1.5",
            "PNBWK int 2, int 3, int 1",
            "PALLLOADFUNC int 2, int 3, real[170000] 5 | 169999*0, real[170000] 6 | 169999*0",
            "PNBWK int 2, int -4, int 2",
            "PALLLOADFUNC int 2, int -4, real[170000] 1 3 | 169998*0, real[170000] 2 4 | 169998*0"])

    def test_a_file_name_only_with_an_option_above_0(self):
        for option, sent in ((b"0", 0), (b"-3", -3), (b"/", 0)):
            with self.subTest(option):
                self.assertEqual(self.commands(b"T\n%b\n0\n" % option), LOAD_START + [f"PLOPT int {sent}"])
        self.assertEqual(self.commands(b"T\n9\n\n0\n"),
                         LOAD_START + ["PLOPT int 9", 'PNPSFILE text[512] 512*" "'])

    def test_every_system_of_the_section_is_sent(self):
        content = b"T\n0\n3\nA\n-1\nB\n1\n/\n2\n-5\nC\n/\n"
        self.assertEqual(self.commands(content), LOAD_START + [
            "PLOPT int 0", *placeholder(1), "PCONVB int 2, real 0", "PNBWK int 2, int 2, int -5",
            f"PALLLOADFUNC int 2, int 2, {EMPTY_BUFFERS}", *placeholder(3)])

    def test_no_systems(self):
        self.assertEqual(self.commands(b"T\n0\n0\n"), LOAD_START + ["PLOPT int 0"])
        self.assertEqual(self.commands(b"T\n0\n-8\n"), LOAD_START + ["PLOPT int 0"])

    def test_a_system_count_left_out_is_that_of_the_boundaries(self):
        content = b"T\n0\n/\nA\n0\n"
        self.assertEqual(self.commands(content, boundary=b"T\n1\nA\n0\n")[3:], placeholder(1))
        # With the boundaries silent, too, it is that of the opening block.
        self.assertEqual(self.commands(content + b"B\n0\n", boundary=b"T\n/\nA\n0\nB\n0\n")[3:],
                         placeholder(1) + placeholder(2))

    def test_the_boundaries_leave_their_tail(self):
        boundary = b"T\n1\nA\n1\n1\n1\n3\n7 1\n8 2\n9 3\n"
        commands = self.commands(b"T\n0\n1\nA\n0\n", boundary=boundary)
        self.assertEqual(commands[3:], placeholder(
            1, "real[170000] 0 0 | 1*9 169997*0, real[170000] 0 0 | 1*3 169997*0"))

    def test_transport_only_leaves_the_buffers_as_they_are(self):
        boundary = b"T\n1\nA\n1\n1\n1\n1\n7 1\n"
        buffers = SendBuffers()
        import_file(current_file(boundary=boundary, loads=self.content), TRANSPORT_ONLY, send_buffers=buffers)
        self.assertEqual((buffers.values.written, buffers.times.written), ([], []))

    def test_transport_only_reads_and_sends_nothing(self):
        self.assertEqual(self.commands(self.content, TRANSPORT_ONLY), [])
        self.assert_fails(b"T\n0\n1\nA\nx\n", 5, 1, "load_count", answers=TRANSPORT_ONLY)

    def test_headings_are_values_of_lists(self):
        self.assertEqual(self.commands(b"\nTitle\n0\n1\n\n'two\nlines'\n0\n")[3:], placeholder(1))

    def test_a_series_too_long_for_the_buffers(self):
        self.assert_fails(b"T\n0\n1\nA\n1\n1 1\n2\n170001\n", 8, 1, "breakpoint_count")

    def test_failures(self):
        self.assert_fails(b"", 1, 1, "title")
        self.assert_fails(b"T\n1\n", 3, 1, "file_name")
        self.assert_fails(b"T\n0\n1\n'A'x\n", 4, 1, "heading")
        self.assert_fails(b"T\n0\n1\nA\n1\n1 1e\n", 6, 3, "second_load_factor")
        result = self.assert_fails(b"T\n0\n1\nA\n1\n1 1\n2\n1\n3 x\n", 9, 3, "time")
        self.assertNotIn(b"Done reading Loads", result.console_lines)

    def test_the_end_of_the_file(self):
        self.assert_ends(self.content, 16)


class Systems(unittest.TestCase):
    def test_systems_without_a_name_in_the_file_are_sent(self):
        """The host has no systems at all; the boundaries and the loads bring their own."""
        opening = CURRENT_OPENING[:5] + (b"0\n",) + CURRENT_OPENING[6:15]
        result = import_file(current_file(opening, boundary=b"T\n2\nA\n0\nB\n0\n", loads=b"T\n0\n1\nA\n0\n"))
        self.assertIsNone(result.failure)
        self.assertEqual(arguments_of(result, "PNUMSYS"), ["int 0"])
        self.assertEqual(arguments_of(result, "PNOBC"), ["int 1, int 0", "int 2, int 0"])
        self.assertEqual(arguments_of(result, "PSCALW"), ["int 1, real 0"])

    def test_other_models_are_read_in_the_same_way(self):
        content = {"boundary": Boundaries.content, "loads": Loads.content}
        results = [import_file(current_file(replaced_type(model_type), **content)) for model_type in (11, 8, 7, 0)]
        for section in content:
            commands = [commands_of(result, section) for result in results]
            self.assertEqual(commands, commands[:1] * 4)


def replaced_type(model_type):
    return (replaced(CURRENT_OPENING, 0, b"%5d      3\n" % model_type),)


if __name__ == "__main__":
    unittest.main()

"""Boundary conditions, loads and the send buffers, with expected values worked out by hand."""

import unittest

from command_log import Answers, SendBuffer, SendBuffers, argument_on_log
from driver import import_file
from small_files import (LEGACY_OPENING, commands_of, legacy_file, legacy_file_up_to, notice,
                         opening_with_flags, replaced)

TRANSPORT_ONLY = Answers(scope=0)
NO_BOUNDARIES = b"Nothing\n0\n"
EMPTY_BUFFER = "real[170000] | 170000*0"
EMPTY_BUFFERS = f"{EMPTY_BUFFER}, {EMPTY_BUFFER}"
ZERO_PAIR = "real[170000] 0 0 | 169998*0, real[170000] 0 0 | 169998*0"
BOUNDARY_START = notice("Importing Boundary Information", 43) + ["PPROGRESS int 0"]
LOAD_START = notice("Importing Loading Information", 42)


def placeholder(variable, buffers=ZERO_PAIR):
    return [f"PSCALW int {variable}, real 0", f"PCONVW int {variable}, real 0",
            f"PNBWK int {variable}, int 1, int 2", f"PALLLOADFUNC int {variable}, int 1, {buffers}"]


def console_of_boundaries(result):
    """The console lines between those of the segments and those of the segment parameters."""
    lines = result.console_lines
    start = lines.index(b"Setting Segment Name: Seg-2-Lower") + 1
    return lines[start:lines.index(b"Reading Segment Parameters")]


class Buffers(unittest.TestCase):
    def test_announced_entries_and_runs(self):
        buffer = SendBuffer()
        self.assertEqual(argument_on_log(buffer, 0), EMPTY_BUFFER)
        self.assertEqual(argument_on_log(buffer, -4), EMPTY_BUFFER)
        buffer.fill([1.5, 2.0])
        self.assertEqual(argument_on_log(buffer, 2), "real[170000] 1.5 2 | 169998*0")
        self.assertEqual(argument_on_log(buffer, 1), "real[170000] 1.5 | 1*2 169998*0")
        self.assertEqual(argument_on_log(buffer, 4), "real[170000] 1.5 2 0 0 | 169996*0")

    def test_the_tail_stays(self):
        buffer = SendBuffer()
        buffer.fill([1.0, 7.5, 7.5, 0.0, -0.0, 0.0])
        buffer.fill([3.0])
        self.assertEqual(argument_on_log(buffer, 1), "real[170000] 3 | 2*7.5 1*0 1*-0 169995*0")
        buffer.fill([])
        self.assertEqual(argument_on_log(buffer, 0), "real[170000] | 1*3 2*7.5 1*0 1*-0 169995*0")

    def test_a_full_buffer(self):
        buffer = SendBuffer([1.0] * 170000)
        self.assertEqual(argument_on_log(buffer, 1), "real[170000] 1 | 169999*1")
        self.assertEqual(argument_on_log(buffer, 200000), "real[170000]" + " 1" * 170000 + " |")


class Boundaries(unittest.TestCase):
    """Ten systems; 8 and 10 are the state variables 1 and 2."""
    head = b"10\n" + NO_BOUNDARIES * 7
    system_8 = b"CBOD-1\n2\n       2.5       3.5 x\n7\n2\n1.5 0\n2.5 10\n/\n1\n4 5\n"
    content = head + system_8 + NO_BOUNDARIES + b"\n-1\n"
    while_reading = ["PPROGRESS int %d" % value
                     for value in (0, 0, 100, 100, 200, 200, 300, 300, 400, 400, 500)]

    def commands(self, content, answers=None, opening=LEGACY_OPENING):
        result = import_file(legacy_file(opening, boundary=content), answers)
        self.assertIsNone(result.failure)
        return commands_of(result, "boundary")

    def assert_fails(self, content, statement, line, column, field, answers=None):
        result = import_file(legacy_file(boundary=content), answers)
        failure = result.failure
        self.assertIsNotNone(failure)
        self.assertEqual((failure.section, failure.statement, failure.line, failure.column, failure.field),
                         ("boundary", statement, line, column, field))
        self.assertEqual(result.console_lines[-1], b"Error Reading Import File at Line: %d" % statement)
        self.assertNotIn(b"Done Reading Boundary Information", result.console_lines)
        return commands_of(result, "boundary")

    def test_commands(self):
        self.assertEqual(self.commands(self.content), self.while_reading + BOUNDARY_START + [
            "PPROGRESS int 0", "PNOBC int 1, int 2", "PSCALB int 1, real 2.5",
            "PIBC int 1, int 1, int 7", "PNBFP int 1, int 1, int 2",
            "PALLBOUNDFUNC int 1, int 1, real[170000] 1.5 2.5 | 169998*0, real[170000] 0 10 | 169998*0",
            "PIBC int 1, int 2, int 0", "PNBFP int 1, int 2, int 1",
            "PALLBOUNDFUNC int 1, int 2, real[170000] 4 | 1*2.5 169998*0, real[170000] 5 | 1*10 169998*0",
            "PPROGRESS int 100", "PNOBC int 2, int -1"])

    def test_entry_points_and_lengths(self):
        log = import_file(legacy_file(boundary=self.content)).log_lines
        for line in ("2 PNOBC[6] int 1, int 2", "2 PSCALB[7] int 1, real 2.5",
                     "3 PIBC[5] int 1, int 1, int 7", "3 PNBFP[6] int 1, int 1, int 2"):
            self.assertIn(line, log)
        start = "4 PALLBOUNDFUNC[14] int 1, int 1, real[170000] "
        self.assertTrue(any(line.startswith(start) for line in log))

    def test_console(self):
        result = import_file(legacy_file(boundary=self.content))
        self.assertEqual(console_of_boundaries(result),
                         [b"Nothing"] * 7 + [b"CBOD-1", b"Nothing", b"", b"Done Reading Boundary Information",
                                             b"Boundary System: 1", b"Boundary System: 2"])

    def test_a_heading_on_the_console(self):
        for heading, line in ((b"  NH-34  'Ammonia' \t ", b"  NH-34  'Ammonia' \t"), (b"ab  \0cd", b"ab"),
                              (b"\0", b""),
                              (b"0123456789" * 9, b"0123456789" * 8), (b"D\xfcne\r!", b"D\xfcne\r!")):
            result = import_file(legacy_file(boundary=b"1\n" + heading + b"\n0\n"))
            with self.subTest(heading):
                self.assertEqual(console_of_boundaries(result)[0], line)

    def test_transport_only_reads_and_tells_progress(self):
        self.assertEqual(self.commands(self.content, TRANSPORT_ONLY), self.while_reading)
        result = import_file(legacy_file(boundary=self.content), TRANSPORT_ONLY)
        self.assertEqual(console_of_boundaries(result)[-1], b"Done Reading Boundary Information")

    def test_no_state_variables(self):
        opening = opening_with_flags(b"10*1")
        self.assertEqual(self.commands(b"2\n" + NO_BOUNDARIES * 2, opening=opening),
                         ["PPROGRESS int 0"] * 3 + BOUNDARY_START)

    def test_systems_that_the_section_does_not_have(self):
        nothing = ["PPROGRESS int 0", "PNOBC int 1, int 0", "PPROGRESS int 100", "PNOBC int 2, int 0"]
        for content in (b"0\n", b"-3\n"):
            with self.subTest(content):
                self.assertEqual(self.commands(content), ["PPROGRESS int 0"] + BOUNDARY_START + nothing)
        # System 8 is the last one here; system 10 has none.
        self.assertEqual(self.commands(b"8\n" + NO_BOUNDARIES * 7 + b"CBOD-1\n1\n\n1\n0\n"),
                         self.while_reading[:9] + BOUNDARY_START + [
                             "PPROGRESS int 0", "PNOBC int 1, int 1", "PSCALB int 1, real 0",
                             "PIBC int 1, int 1, int 1", "PNBFP int 1, int 1, int 0",
                             f"PALLBOUNDFUNC int 1, int 1, {EMPTY_BUFFERS}",
                             "PPROGRESS int 100", "PNOBC int 2, int 0"])

    def test_a_system_count_left_out_is_that_of_the_opening_block(self):
        rest = self.content.partition(b"\n")[2]
        self.assertEqual(self.commands(b"/\n" + rest), self.commands(self.content))

    def test_a_factor_record_has_columns(self):
        for columns, scale in ((b"1.5", "1.5"), (b"        15", "15"), (b"      1  5       2.0", "15"),
                               (b"         1234567890", "1"), (b"     1.E+1junk", "10")):
            content = b"8\n" + NO_BOUNDARIES * 7 + b"CBOD-1\n1\n" + columns + b"\n1\n0\n"
            with self.subTest(columns):
                if b"junk" in columns:
                    self.assert_fails(content, 53, 52, 11, "boundary_conversion_factor")
                else:
                    self.assertIn("PSCALB int 1, real " + scale, self.commands(content))

    def test_a_series_too_long_for_the_buffers(self):
        for answers in (None, TRANSPORT_ONLY):  # in system 1, which is bypassed
            for count in (b"170001", b"1*170001", b"2147483647"):
                with self.subTest(count):
                    commands = self.assert_fails(b"1\nNH-34\n1\n1.\n1\n" + count + b"\n", 41, 40, 1,
                                                 "breakpoint_count", answers)
                    self.assertEqual(commands, ["PPROGRESS int 0", "PPROGRESS int 0"])
        self.assert_fails(b"1\nNH-34\n1\n1.\n1\n170000\nx\n", 42, 41, 1, "value")

    def test_a_series_that_fills_the_buffers(self):
        series = b"170000\n1 2\n" + b"/\n" * 169998 + b"3 4\n"
        content = b"8\n" + NO_BOUNDARIES * 7 + b"CBOD-1\n1\n1.\n1\n" + series
        zeros = " 0" * 169998
        self.assertEqual(self.commands(content)[-3],
                         f"PALLBOUNDFUNC int 1, int 1, real[170000] 1{zeros} 3 |, real[170000] 2{zeros} 4 |")

    def test_failures(self):
        # Lines 31 to 34 are the sections before.
        self.assertEqual(self.assert_fails(b"x\n", 36, 35, 1, "system_count"), [])
        self.assertEqual(self.assert_fails(b"2\nNH-34\n0\nNO3\nx\n", 40, 39, 1, "boundary_count"),
                         ["PPROGRESS int 0", "PPROGRESS int 0", "PPROGRESS int 100"])
        content = legacy_file_up_to("boundary", b"1\n")
        failure = import_file(content).failure
        self.assertEqual((failure.statement, failure.line, failure.field), (37, 36, "heading"))


class Loads(unittest.TestCase):
    """The same ten systems."""
    system_8 = b"CBOD-1\n2\n2.5 3.5\n7\n2\n1.5 0\n2.5 10\n-2\n1\n4 5\n"
    content = b"0\n8\n" + NO_BOUNDARIES * 7 + system_8
    of_system_8 = [
        "PCONVB int 1, real 2.5", "PNBWK int 1, int 7, int 2",
        "PALLLOADFUNC int 1, int 7, real[170000] 1.5 2.5 | 169998*0, real[170000] 0 10 | 169998*0",
        "PNBWK int 1, int -2, int 1",
        "PALLLOADFUNC int 1, int -2, real[170000] 4 | 1*2.5 169998*0, real[170000] 5 | 1*10 169998*0"]

    def commands(self, content, answers=None, **others):
        result = import_file(legacy_file(loads=content, **others), answers)
        self.assertIsNone(result.failure)
        return commands_of(result, "loads")

    def assert_fails(self, content, statement, line, column, field, answers=None):
        result = import_file(legacy_file(loads=content), answers)
        failure = result.failure
        self.assertIsNotNone(failure)
        self.assertEqual((failure.section, failure.statement, failure.line, failure.column, failure.field),
                         ("loads", statement, line, column, field))
        self.assertEqual(commands_of(result, "loads"), [])

    def test_commands(self):
        # State variable 2 is system 10, which this section does not have.
        self.assertEqual(self.commands(self.content),
                         LOAD_START + ["PLOPT int 0"] + self.of_system_8 + placeholder(2))

    def test_entry_points_and_lengths(self):
        log = import_file(legacy_file(loads=self.content)).log_lines
        for line in ("1 PLOPT[6] int 0", "2 PCONVB[7] int 1, real 2.5", "3 PNBWK[6] int 1, int 7, int 2",
                     "2 PSCALW[7] int 2, real 0", "2 PCONVW[7] int 2, real 0"):
            self.assertIn(line, log)
        start = "4 PALLLOADFUNC[13] int 2, int 1, real[170000] 0 0 "
        self.assertTrue(any(line.startswith(start) for line in log))

    def test_a_placeholder_overwrites_two_entries(self):
        content = b"0\n8\n" + NO_BOUNDARIES * 7 + b"CBOD-1\n1\n1 1\n1\n3\n1 4\n2 5\n3 6\n"
        self.assertEqual(self.commands(content)[-4:], placeholder(
            2, "real[170000] 0 0 | 1*3 169997*0, real[170000] 0 0 | 1*6 169997*0"))

    def test_no_system_has_loads(self):
        for content in (b"0\n0\n", b"0\n-1\n", b"0\n1\nNH-34\n-2\n", b"/\n0\n"):
            with self.subTest(content):
                self.assertEqual(self.commands(content),
                                 LOAD_START + ["PLOPT int 0"] + placeholder(1) + placeholder(2))

    def test_the_file_name(self):
        expected = ["PLOPT int 2", 'PNPSFILE text[512] " runoff.nps" 501*" "']
        self.assertEqual(self.commands(b"2\n runoff.nps\n0\n")[2:4], expected)
        self.assertEqual(self.commands(b"1\n" + b"p" * 513 + b"\n0\n")[3],
                         'PNPSFILE text[512] "' + "p" * 512 + '"')
        self.assertEqual(self.commands(b"-1\n0\n")[2:4], ["PLOPT int -1", "PSCALW int 1, real 0"])

    def test_no_state_variables(self):
        self.assertEqual(self.commands(b"2\n\n0\n", opening=opening_with_flags(b"10*1")),
                         LOAD_START + ["PLOPT int 2", 'PNPSFILE text[512] 512*" "'])

    def test_transport_only_reads_and_sends_nothing(self):
        self.assertEqual(self.commands(self.content, TRANSPORT_ONLY), [])
        self.assert_fails(self.content[:-2] + b"x\n", 62, 61, 3, "time", TRANSPORT_ONLY)

    def test_a_system_count_left_out_is_that_of_the_boundaries(self):
        content = b"0\n,\n" + NO_BOUNDARIES * 7 + self.system_8
        self.assertEqual(self.commands(content, boundary=b"8\n" + NO_BOUNDARIES * 8),
                         self.commands(self.content))
        self.assertEqual(self.commands(b"0\n/\n", boundary=b"-8\n"), self.commands(b"0\n0\n"))

    def test_a_heading_is_a_value_of_a_list(self):
        for heading in (b"One two", b"\n'One\n two'", b"/", b"3*"):
            with self.subTest(heading):
                self.assertEqual(self.commands(b"0\n1\n" + heading + b"\n0\n"), self.commands(b"0\n0\n"))

    def test_what_records_leave_out_is_zero(self):
        content = b"0\n8\n" + NO_BOUNDARIES * 7 + b"CBOD-1\n1\n,9\n,\n2\n,1\n2/\n"
        self.assertEqual(self.commands(content)[3:6], [
            "PCONVB int 1, real 0", "PNBWK int 1, int 0, int 2",
            "PALLLOADFUNC int 1, int 0, real[170000] 0 2 | 169998*0, real[170000] 1 0 | 169998*0"])

    def test_a_series_too_long_for_the_buffers(self):
        for answers in (None, TRANSPORT_ONLY):
            self.assert_fails(b"0\n1\nNH-34\n1\n1 1\n1\n 170001\n", 43, 42, 2, "breakpoint_count", answers)

    def test_failures(self):
        # Lines 31 to 35 are the sections before.
        self.assert_fails(b"x\n", 37, 36, 1, "load_option")
        self.assert_fails(b"1\nrunoff.nps\n1.5\n", 39, 38, 1, "system_count")
        self.assert_fails(b"0\n1\n'NH-34'x\n0\n", 39, 38, 1, "heading")

    def test_the_boundaries_leave_their_tail(self):
        boundary = b"8\n" + NO_BOUNDARIES * 7 + b"CBOD-1\n1\n1.\n1\n3\n1 4\n2 5\n3 6\n"
        self.assertEqual(self.commands(b"0\n0\n", boundary=boundary)[-1],
                         "PALLLOADFUNC int 2, int 1, real[170000] 0 0 | 1*3 169997*0, "
                         "real[170000] 0 0 | 1*6 169997*0")


class SeveralImports(unittest.TestCase):
    def test_the_buffers_live_from_one_import_to_the_next(self):
        first = legacy_file(loads=Loads.content)
        second = legacy_file(boundary=b"8\n" + NO_BOUNDARIES * 7 + b"CBOD-1\n1\n1.\n1\n1\n9 8\n")
        buffers = SendBuffers()
        import_file(first, send_buffers=buffers)
        not_sent = b"0\n8\n" + NO_BOUNDARIES * 7 + b"CBOD-1\n1\n1 1\n1\n3\n1 4\n2 5\n3 6\n"
        import_file(legacy_file(loads=not_sent), TRANSPORT_ONLY, send_buffers=buffers)
        # The first import ended with a placeholder; the other one sent nothing and left the buffers alone.
        self.assertEqual((buffers.values.written, buffers.times.written), ([0.0, 0.0], [0.0, 0.0]))
        buffers.fill([(1.0, 2.0), (3.0, 4.0)])
        commands = commands_of(import_file(second, send_buffers=buffers), "boundary")
        self.assertEqual(commands[-3], "PALLBOUNDFUNC int 1, int 1, real[170000] 9 | 1*3 169998*0, "
                         "real[170000] 8 | 1*4 169998*0")
        alone = commands_of(import_file(second), "boundary")
        self.assertEqual(alone[-3], "PALLBOUNDFUNC int 1, int 1, real[170000] 9 | 169999*0, "
                         "real[170000] 8 | 169999*0")

    def test_other_models_have_no_series(self):
        content = replaced(LEGACY_OPENING, 0, b"    7      2\n")
        content = legacy_file((content,), boundary=b"1\nHeading\n1\n1.\n1\n1\n1 2\n", loads=b"0\n0\n")
        self.assertEqual(commands_of(import_file(content), "boundary"),
                         ["PPROGRESS int 0", "PPROGRESS int 0"] + BOUNDARY_START)
        self.assertEqual(commands_of(import_file(content), "loads"), LOAD_START + ["PLOPT int 0"])


if __name__ == "__main__":
    unittest.main()

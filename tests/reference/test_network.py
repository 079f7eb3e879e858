"""Flow paths, flow time series and exchanges, with expected values worked out by hand."""

import unittest

from command_log import Answers
from driver import import_file
from small_files import commands_of, legacy_file, legacy_file_up_to, notice


class Network(unittest.TestCase):
    def assert_section(self, section, content, *commands):
        """Behind the line of the pane exactly these commands."""
        result = import_file(legacy_file(**{section: content}))
        self.assertIsNone(result.failure)
        self.assertEqual(commands_of(result, section)[2:], list(commands))
        return result

    def assert_fails(self, section, content, statement, line, column, field):
        result = import_file(legacy_file(**{section: content}))
        failure = result.failure
        self.assertIsNotNone(failure)
        self.assertEqual((failure.section, failure.statement, failure.line, failure.column, failure.field),
                         (section, statement, line, column, field))
        self.assertEqual(commands_of(result, section), [])
        self.assertEqual(result.console_lines[-1], b"Error Reading Import File at Line: %d" % statement)


class FlowPaths(Network):
    def test_fields_functions_and_pairs(self):
        content = (b"1\n2\nSurface\n2\nHead water\n2\n0 1 1.\n1 2 .25\nMill race\n0\n"
                   b"Pore water\n1\nSeepage\n1\n-7 2 1e-1\n")
        result = self.assert_section(
            "flowpath", content,
            "PFLOWTYPE int 1, int 1", "PFLOWTYPE int 2, int 1", "PNFIELD int 2",
            "PNINQ int 1, int 2",
            "PNOQS int 1, int 1, int 2", 'PFLOWFUNCDESC int 1, int 1, text[30] "Head water" 20*" "',
            "PJQ int 1, int 1, int 1, int 0", "PIQ int 1, int 1, int 1, int 1",
            "PBQ int 1, int 1, int 1, real 1",
            "PJQ int 1, int 1, int 2, int 1", "PIQ int 1, int 1, int 2, int 2",
            "PBQ int 1, int 1, int 2, real 0.25",
            "PNOQS int 1, int 2, int 0", 'PFLOWFUNCDESC int 1, int 2, text[30] "Mill race" 21*" "',
            "PNINQ int 2, int 1",
            "PNOQS int 2, int 1, int 1", 'PFLOWFUNCDESC int 2, int 1, text[30] "Seepage" 23*" "',
            "PJQ int 2, int 1, int 1, int -7", "PIQ int 2, int 1, int 1, int 2",
            "PBQ int 2, int 1, int 1, real 0.100000001")
        self.assertEqual(commands_of(result, "flowpath")[:2], notice("Importing Flow Path Information", 44))
        self.assertIn("3 PNOQS[6] int 1, int 1, int 2", result.log_lines)
        self.assertIn("4 PBQ[4] int 1, int 1, int 1, real 1", result.log_lines)

    def test_option_3_names_a_file_in_the_first_field_only(self):
        option_of_both = ("PFLOWTYPE int 1, int 3", "PFLOWTYPE int 2, int 3")
        self.assert_section("flowpath", b"3\n2\nOne\n a/b.hyd\n0\nTwo\n0\n", *option_of_both, "PNFIELD int 2",
                            'PHYDROFILE text[512] " a/b.hyd" 504*" "', "PNINQ int 1, int 0",
                            "PNINQ int 2, int 0")
        self.assert_section("flowpath", b"3\n0\n", *option_of_both, "PNFIELD int 0")

    def test_a_file_name_is_512_columns_without_a_nul(self):
        content = b"3\n1\nOne\n" + b"p" * 600 + b"\n0\n"
        result = import_file(legacy_file(flowpath=content))
        self.assertIn('PHYDROFILE text[512] "' + "p" * 512 + '"', commands_of(result, "flowpath"))

    def test_counts_below_one(self):
        options = ("PFLOWTYPE int 1, int -3", "PFLOWTYPE int 2, int -3")
        self.assert_section("flowpath", b"-3\n-2\n", *options, "PNFIELD int -2")
        self.assert_section("flowpath", b"-3\n2\nOne\n-4\nTwo\n1\nF\n-1\n", *options, "PNFIELD int 2",
                            "PNINQ int 1, int -4", "PNINQ int 2, int 1", "PNOQS int 2, int 1, int -1",
                            'PFLOWFUNCDESC int 2, int 1, text[30] "F" 29*" "')

    def test_what_records_leave_out_is_zero(self):
        self.assert_section("flowpath", b"/\n1\nOne\n1\nF\n2\n,2/\n2*5 /\n",
                            "PFLOWTYPE int 1, int 0", "PFLOWTYPE int 2, int 0", "PNFIELD int 1",
                            "PNINQ int 1, int 1",
                            "PNOQS int 1, int 1, int 2", 'PFLOWFUNCDESC int 1, int 1, text[30] "F" 29*" "',
                            "PJQ int 1, int 1, int 1, int 0", "PIQ int 1, int 1, int 1, int 2",
                            "PBQ int 1, int 1, int 1, real 0",
                            "PJQ int 1, int 1, int 2, int 5", "PIQ int 1, int 1, int 2, int 5",
                            "PBQ int 1, int 1, int 2, real 0")
        self.assert_section("flowpath", b"0\n,\n", "PFLOWTYPE int 1, int 0", "PFLOWTYPE int 2, int 0",
                            "PNFIELD int 0")

    def test_a_description_is_30_columns_as_they_stand(self):
        for line, written in ((b"", '30*" "'), (b"0123456789" * 4, '"' + "0123456789" * 3 + '"'),
                              (b" 'a\0b', / 3*\t", '" \'a\\0b\', / 3*\\x09" 17*" "')):
            result = import_file(legacy_file(flowpath=b"0\n1\nOne\n1\n" + line + b"\n0\n"))
            with self.subTest(line):
                self.assertEqual(commands_of(result, "flowpath")[-1],
                                 "PFLOWFUNCDESC int 1, int 1, text[30] " + written)

    def test_failures_are_counted_by_statement(self):
        self.assert_fails("flowpath", b"x\n", 32, 31, 1, "flow_option")
        # The pair takes two lines, the record behind it stands in line 38.
        self.assert_fails("flowpath", b"0\n1\nOne\n1\nF\n2\n1\n2 1\n1 2 x\n", 39, 39, 5, "routing_fraction")

    def test_a_caption_behind_the_end_of_the_file_is_no_failure(self):
        for rest in (b"0\n1\n", b"0\n1"):
            content = legacy_file_up_to("flowpath", rest)
            failure = import_file(content).failure
            # Line 33 is none: the caption counts, and the function count behind it fails.
            self.assertEqual((failure.section, failure.statement, failure.line, failure.field),
                             ("flowpath", 35, 33, "inflow_count"))

    def test_a_file_name_at_the_end_of_the_file_is_a_failure(self):
        content = legacy_file_up_to("flowpath", b"3\n1\nOne\n")
        failure = import_file(content).failure
        self.assertEqual((failure.statement, failure.line, failure.field), (35, 34, "hydro_file_name"))

    def test_huge_counts_end_with_the_file(self):
        for content in (b"0\n2147483647\n", b"0\n1\nOne\n2000000000\n", b"0\n1\nOne\n1\nF\n2000000000\n"):
            with self.subTest(content):
                self.assertEqual(import_file(legacy_file(flowpath=content)).failure.section, "flowpath")

    def test_transport_only_changes_nothing(self):
        content = legacy_file(flowpath=b"1\n1\nOne\n1\nF\n1\n0 1 1\n")
        self.assertEqual(commands_of(import_file(content, Answers(scope=0)), "flowpath"),
                         commands_of(import_file(content, Answers(scope=1)), "flowpath"))


class FlowSeries(Network):
    def test_every_field_goes_out_with_the_last_factors(self):
        content = (b"3\nOne\n1\n2. 3.\nF\n2\n1.5 0.\n2.5 10.\nTwo\n0\nThree\n2\n4. 5.\nF\n0\nG\n1\n.5 .75\n")
        result = self.assert_section(
            "flows", content, "PNFIELD int 3",
            "PNINQ int 1, int 1", "PSCALEQ int 1, real 4", "PCONVQ int 1, real 5",
            "PNBRKQ int 1, int 1, int 2",
            "PNOQFUNC int 1, int 1, int 1, real 1.5, real 0",
            "PNOQFUNC int 1, int 1, int 2, real 2.5, real 10",
            "PNINQ int 2, int 0",
            "PNINQ int 3, int 2", "PSCALEQ int 3, real 4", "PCONVQ int 3, real 5",
            "PNBRKQ int 3, int 1, int 0",
            "PNBRKQ int 3, int 2, int 1", "PNOQFUNC int 3, int 2, int 1, real 0.5, real 0.75",
            "PFLOWSREFRESH")
        self.assertEqual(commands_of(result, "flows")[:2], notice("Importing Flow Time Series", 39))
        self.assertIn("5 PNOQFUNC[9] int 1, int 1, int 2, real 2.5, real 10", result.log_lines)
        self.assertIn("0 PFLOWSREFRESH[14]", result.log_lines)

    def test_counts_below_one(self):
        self.assert_section("flows", b"0\n", "PNFIELD int 0", "PFLOWSREFRESH")
        self.assert_section("flows", b"-5\n", "PNFIELD int -5", "PFLOWSREFRESH")
        self.assert_section("flows", b"2\nOne\n-1\nTwo\n1\n1 1\nF\n-6\n", "PNFIELD int 2",
                            "PNINQ int 1, int -1",
                            "PNINQ int 2, int 1", "PSCALEQ int 2, real 1", "PCONVQ int 2, real 1",
                            "PNBRKQ int 2, int 1, int -6", "PFLOWSREFRESH")

    def test_counts_left_out_are_those_of_the_flow_paths(self):
        paths = b"0\n2\nOne\n2\nF\n0\nG\n0\nTwo\n-3\n"
        series = b"/\nOne\n,\n6 7\nF\n1\n1 2\nG\n/\nTwo\n1*\n"
        result = import_file(legacy_file(flowpath=paths, flows=series))
        self.assertEqual(commands_of(result, "flows")[2:], [
            "PNFIELD int 2", "PNINQ int 1, int 2", "PSCALEQ int 1, real 6", "PCONVQ int 1, real 7",
            "PNBRKQ int 1, int 1, int 1", "PNOQFUNC int 1, int 1, int 1, real 1, real 2",
            "PNBRKQ int 1, int 2, int 0",
            "PNINQ int 2, int -3", "PFLOWSREFRESH"])

    def test_a_field_that_the_flow_paths_did_not_have(self):
        result = import_file(legacy_file(flowpath=b"0\n1\nOne\n1\nF\n0\n", flows=b"2\nOne\n0\nTwo\n/\n"))
        self.assertEqual(commands_of(result, "flows")[2:],
                         ["PNFIELD int 2", "PNINQ int 1, int 0", "PNINQ int 2, int 0", "PFLOWSREFRESH"])

    def test_factors_left_out_are_those_of_the_field_before(self):
        result = import_file(legacy_file(flows=b"2\nOne\n1\n2 3\nF\n0\nTwo\n1\n,9\nF\n0\n"))
        self.assertEqual(commands_of(result, "flows")[4:6], ["PSCALEQ int 1, real 2", "PCONVQ int 1, real 9"])
        result = import_file(legacy_file(flows=b"1\nOne\n1\n/\nF\n1\n/\n"))
        self.assertEqual(commands_of(result, "flows")[4:8],
                         ["PSCALEQ int 1, real 0", "PCONVQ int 1, real 0", "PNBRKQ int 1, int 1, int 1",
                          "PNOQFUNC int 1, int 1, int 1, real 0, real 0"])

    def test_failures(self):
        # The empty flow paths take lines 31 and 32.
        self.assert_fails("flows", b"x\n", 34, 33, 1, "flow_field_count")
        self.assert_fails("flows", b"1\nOne\n1\n1 1\nF\n2\n1 1\n1 'x'\n", 41, 40, 3, "time")
        content = legacy_file_up_to("flows", b"1\n")
        failure = import_file(content).failure  # this caption has an error branch
        self.assertEqual((failure.statement, failure.line, failure.field), (35, 34, "field_caption"))

    def test_a_failed_section_leaves_what_went_before(self):
        result = import_file(legacy_file(flows=b"x\n"))
        self.assertEqual(len(commands_of(result, "flowpath")), 5)
        self.assertEqual(commands_of(result, "exchanges"), [])
        self.assertEqual(commands_of(result, "boundary"), [])


class Exchanges(Network):
    def test_fields_functions_pairs_and_series(self):
        content = (b"'Surface water'\n1\n2. 3.\nOpen sea, at the bar\n2\n1 2 10.5 20.5\n0 2 3 4\n"
                   b"2\n5. 0.\n6. 100.\n"
                   b"Nothing\n0\nPore\n1\n4 5\nBed\n0\n0\n")
        result = self.assert_section(
            "exchanges", b"3\n" + content, "PNRFLD int 3",
            "PNTEX int 1, int 1", "PSCALER int 1, real 4", "PCONVR int 1, real 5",
            'PEXCHANGEFUNCDESC int 1, int 1, text[30] "Open sea, at the bar" 10*" "',
            "PNORS int 1, int 1, int 2",
            "PJRSEG int 1, int 1, int 1, int 1", "PIRSEG int 1, int 1, int 1, int 2",
            "PXAREA int 1, int 1, int 1, real 10.5", "PLENGTH int 1, int 1, int 1, real 20.5",
            "PJRSEG int 1, int 1, int 2, int 0", "PIRSEG int 1, int 1, int 2, int 2",
            "PXAREA int 1, int 1, int 2, real 3", "PLENGTH int 1, int 1, int 2, real 4",
            "PNOBRKS int 1, int 1, int 2", "PNORFUNC int 1, int 1, int 1, real 5, real 0",
            "PNORFUNC int 1, int 1, int 2, real 6, real 100",
            "PNTEX int 3, int 1", "PSCALER int 3, real 4", "PCONVR int 3, real 5",
            'PEXCHANGEFUNCDESC int 3, int 1, text[30] "Bed" 27*" "', "PNORS int 3, int 1, int 0",
            "PNOBRKS int 3, int 1, int 0", "PEXCHANGESREFRESH")
        self.assertEqual(commands_of(result, "exchanges")[:2], notice("Importing Exchange Information", 43))
        self.assertIn("1 PNRFLD[7] int 3", result.log_lines)
        self.assertIn("0 PEXCHANGESREFRESH[18]", result.log_lines)

    def test_counts_below_one(self):
        self.assert_section("exchanges", b"0\n", "PNRFLD int 0", "PEXCHANGESREFRESH")
        self.assert_section("exchanges", b"/\n", "PNRFLD int 0", "PEXCHANGESREFRESH")
        self.assert_section("exchanges", b"-9\n", "PNRFLD int -9", "PEXCHANGESREFRESH")
        self.assert_section("exchanges", b"2\nOne\n-1\nTwo\n1\n1 1\nF\n-2\n-3\n", "PNRFLD int 2",
                            "PNTEX int 2, int 1",
                            "PSCALER int 2, real 1", "PCONVR int 2, real 1",
                            'PEXCHANGEFUNCDESC int 2, int 1, text[30] "F" 29*" "',
                            "PNORS int 2, int 1, int -2",
                            "PNOBRKS int 2, int 1, int -3", "PEXCHANGESREFRESH")

    def test_factors_and_values_left_out(self):
        content = b"2\nOne\n1\n2 3\nF\n1\n7,,8/\n1\n,4\nTwo\n1\n5/\nF\n0\n0\n"
        result = import_file(legacy_file(exchanges=content))
        commands = commands_of(result, "exchanges")
        self.assertEqual(commands[4:6], ["PSCALER int 1, real 5", "PCONVR int 1, real 3"])
        self.assertEqual(commands[8:14], [
            "PJRSEG int 1, int 1, int 1, int 7", "PIRSEG int 1, int 1, int 1, int 0",
            "PXAREA int 1, int 1, int 1, real 8", "PLENGTH int 1, int 1, int 1, real 0",
            "PNOBRKS int 1, int 1, int 1",
            "PNORFUNC int 1, int 1, int 1, real 0, real 4"])

    def test_more_fields_than_flow_fields(self):
        result = self.assert_section("exchanges", b"2\nOne\n0\nTwo\n0\n", "PNRFLD int 2", "PEXCHANGESREFRESH")
        self.assertIn("1 PNFIELD[8] int 0", result.log_lines)

    def test_a_heading_is_a_value_of_a_list(self):
        # An empty line is gone over, a quote runs over lines, a slash leaves the heading out.
        for heading in (b"One two", b"\n'One\n two'", b"/", b"3*"):
            with self.subTest(heading):
                self.assert_section("exchanges", b"1\n" + heading + b"\n0\n", "PNRFLD int 1",
                                    "PEXCHANGESREFRESH")
        # Lines 31 to 33 are the sections before; the heading in line 35 takes the rest of the file.
        self.assert_fails("exchanges", b"1\n'One\n0\n", 36, 35, 1, "heading")

    def test_a_description_behind_the_end_of_the_file_is_no_failure(self):
        content = legacy_file_up_to("exchanges", b"1\nOne\n1\n1 1\n")
        failure = import_file(content).failure
        # Line 34 has the count, line 37 the factors (counter 38). The description counts, the pair count
        # fails.
        self.assertEqual((failure.section, failure.statement, failure.line, failure.field),
                         ("exchanges", 40, 38, "pair_count"))

    def test_a_failure_in_the_last_breakpoint_sends_nothing(self):
        self.assert_fails("exchanges", b"1\nOne\n1\n1 1\nF\n1\n1 2\n3 4\n1\n5 x\n", 43, 43, 3, "time")


if __name__ == "__main__":
    unittest.main()

"""Flow paths, flow time series and exchanges of the current format, with expected values worked out by hand."""

import unittest

from current_section_tests import TRANSPORT_ONLY, CurrentSections
from driver import import_file
from small_files import (CURRENT_SEGMENTS, arguments_of, current_file_up_to, current_segments, notice,
                         replaced)

PATH_NOTICE = notice("Importing Flow Path Information", 44)
FLOW_NOTICE = notice("Importing Flow Time Series", 39)
EXCHANGE_NOTICE = notice("Importing Exchange Information", 43)
NO_OPTION = ["PFLOWTYPE int 1, int 0", "PFLOWTYPE int 2, int 0"]


class FlowPaths(CurrentSections):
    section = "flowpath"
    content = (b"Flow paths\n'of the river, all'\n2\nSurface\n2\nRiver inflow, as measured at the upper end\n2\n"
               b"0 1 1\n1 2 .5\n\n0\nPore water\n1\nSeepage\n1\n2*2 -1.5\n")

    def test_fields_functions_and_pairs(self):
        self.assertEqual(self.commands(self.content), PATH_NOTICE + NO_OPTION + [
            "PNFIELD int 2", "PNINQ int 1, int 2",
            "PNOQS int 1, int 1, int 2",
            'PFLOWFUNCDESC int 1, int 1, text[30] "River inflow, as measured at t"',
            "PJQ int 1, int 1, int 1, int 0", "PIQ int 1, int 1, int 1, int 1", "PBQ int 1, int 1, int 1, real 1",
            "PJQ int 1, int 1, int 2, int 1", "PIQ int 1, int 1, int 2, int 2", "PBQ int 1, int 1, int 2, real 0.5",
            "PNOQS int 1, int 2, int 0", 'PFLOWFUNCDESC int 1, int 2, text[30] 30*" "',
            "PNINQ int 2, int 1", "PNOQS int 2, int 1, int 1",
            'PFLOWFUNCDESC int 2, int 1, text[30] "Seepage" 23*" "',
            "PJQ int 2, int 1, int 1, int 2", "PIQ int 2, int 1, int 1, int 2", "PBQ int 2, int 1, int 1, real -1.5"])

    def test_the_option_of_segment_1_is_that_of_all(self):
        no_fields = b"Title\nTitle\n0\n"
        for options, sent in (((), []), ((2,), [2]), ((0, 3), [0, 0]), ((3, 0, 1), [3, 3, 3]), ((-1, 3), [-1, -1])):
            with self.subTest(options):
                commands = self.commands(no_fields, segments=current_segments(*options))
                self.assertEqual(commands, PATH_NOTICE + [
                    f"PFLOWTYPE int {segment}, int {option}" for segment, option in enumerate(sent, start=1)]
                    + ["PNFIELD int 0"])

    def test_an_option_behind_the_end_of_its_line_is_0(self):
        segments = replaced(CURRENT_SEGMENTS, 8, b"    1    0    2\n")
        self.assertIn("PFLOWTYPE int 1, int 0", self.commands(b"Title\nTitle\n0\n", segments=(segments,)))

    def test_a_negative_segment_count_has_no_option(self):
        segments = (b"Title\n-2\n0\n1\n1 1\nNames\nGeometry\n",)
        commands = self.commands(b"Title\nTitle\n1\nField\n0\n", segments=segments)
        self.assertEqual(commands, PATH_NOTICE + ["PNFIELD int 1", "PNINQ int 1, int 0"])

    def test_option_3_of_segment_1_names_a_file_in_the_first_field(self):
        content = b"Title\nTitle\n2\nFirst\nriver one.hyd\n0\nSecond\n0\n"
        self.assertEqual(self.commands(content, segments=current_segments(3, 0))[2:], [
            "PFLOWTYPE int 1, int 3", "PFLOWTYPE int 2, int 3", "PNFIELD int 2",
            'PHYDROFILE text[512] "river one.hyd" 499*" "', "PNINQ int 1, int 0", "PNINQ int 2, int 0"])
        # Without the option the line would have to be the function count.
        self.assert_fails(content, 5, 1, "inflow_count")

    def test_option_3_without_fields_names_no_file(self):
        for count in (b"0", b"-1", b"/"):
            with self.subTest(count):
                commands = self.commands(b"Title\nTitle\n%b\n" % count, segments=current_segments(3))
                self.assertEqual(commands, PATH_NOTICE + ["PFLOWTYPE int 1, int 3",
                                                          "PNFIELD int -1" if count == b"-1" else "PNFIELD int 0"])

    def test_counts_below_one(self):
        content = b"/\n1*\n3\n\n-2\n\n1\n\n-2147483648\n\n,\n"
        self.assertEqual(self.commands(content)[4:], [
            "PNFIELD int 3", "PNINQ int 1, int -2", "PNINQ int 2, int 1", "PNOQS int 2, int 1, int -2147483648",
            'PFLOWFUNCDESC int 2, int 1, text[30] 30*" "', "PNINQ int 3, int 0"])

    def test_what_pairs_leave_out_is_zero(self):
        content = b"T\nT\n1\nField\n1\nFunction\n3\n7 8 9\n/\n,4/\n"
        self.assertEqual(self.commands(content)[-6:], [
            "PJQ int 1, int 1, int 2, int 0", "PIQ int 1, int 1, int 2, int 0", "PBQ int 1, int 1, int 2, real 0",
            "PJQ int 1, int 1, int 3, int 0", "PIQ int 1, int 1, int 3, int 4", "PBQ int 1, int 1, int 3, real 0"])

    def test_titles_are_values_of_lists(self):
        self.assertEqual(self.commands(b"\n\n'two\nlines'\n\nTitle\n0\n"), PATH_NOTICE + NO_OPTION + ["PNFIELD int 0"])

    def test_failures_tell_the_console_only(self):
        self.assert_fails(b"'It's\n", 1, 1, "title")
        self.assert_fails(b"T\n'open\n0\n", 2, 1, "second_title")
        self.assert_fails(b"T\nT\n 1.5\n", 3, 2, "flow_field_count")
        self.assert_fails(b"T\nT\n1\nCaption\nx\n", 5, 1, "inflow_count")
        self.assert_fails(b"T\nT\n1\nCaption\n1\nText\n1\n1 2 .\n", 8, 5, "routing_fraction")

    def test_the_end_of_the_file(self):
        for content, record in ((b"", 1), (b"T\n", 2), (b"T\nT\n", 3), (b"T\nT\n1\nCaption\n", 5),
                                (b"T\nT\n1\nCaption\n1\n", 6), (b"T\nT\n1\nCaption\n1\nText\n", 7),
                                (b"T\nT\n1\nCaption\n1\nText\n2\n1 1 1\n", 9)):
            field = {1: "title", 2: "second_title", 3: "flow_field_count", 5: "inflow_count", 6: "flow_description",
                     7: "pair_count", 9: "first_segment"}[record]
            with self.subTest(record):
                self.assert_fails(content, record, 1, field)

    def test_a_caption_behind_the_end_counts_and_is_no_failure(self):
        # The fourth statement is the caption; there is no line for it nor for the function count behind it.
        self.assert_fails(b"T\nT\n2000000000\n", 5, 1, "inflow_count", lines_before=-1)
        # With option 3 the name of the file is what is missing. There is one segment less, so two lines less.
        result = import_file(current_file_up_to("flowpath", b"T\nT\n1\n", segments=current_segments(3)))
        self.assertEqual((result.failure.statement, result.failure.field), (28 + 4, "hydro_file_name"))

    def test_transport_only_changes_nothing(self):
        self.assertEqual(self.commands(self.content, TRANSPORT_ONLY), self.commands(self.content))


class FlowSeries(CurrentSections):
    section = "flows"
    paths = b"T\nT\n2\nA\n1\na\n0\nB\n2\nb\n0\nc\n0\n"
    content = b"Flows\n2\nA\n1\n1.5 2\na\n2\n10 0\n20 1\nB\n2\n3 4\nb\n0\nc\n1\n-.5 7\n"

    def test_every_field_goes_out_with_the_last_factors(self):
        self.assertEqual(self.commands(self.content), FLOW_NOTICE + [
            "PNFIELD int 2", "PNINQ int 1, int 1", "PSCALEQ int 1, real 3", "PCONVQ int 1, real 4",
            "PNBRKQ int 1, int 1, int 2", "PNOQFUNC int 1, int 1, int 1, real 10, real 0",
            "PNOQFUNC int 1, int 1, int 2, real 20, real 1",
            "PNINQ int 2, int 2", "PSCALEQ int 2, real 3", "PCONVQ int 2, real 4", "PNBRKQ int 2, int 1, int 0",
            "PNBRKQ int 2, int 2, int 1", "PNOQFUNC int 2, int 2, int 1, real -0.5, real 7", "PFLOWSREFRESH"])

    def test_counts_left_out_are_those_of_the_flow_paths(self):
        content = b"T\n/\nA\n/\n1 1\na\n/\nB\n,\n/\nb\n0\nc\n0\n"
        self.assertEqual(self.commands(content, flowpath=self.paths)[2:], [
            "PNFIELD int 2", "PNINQ int 1, int 1", "PSCALEQ int 1, real 1", "PCONVQ int 1, real 1",
            "PNBRKQ int 1, int 1, int 0", "PNINQ int 2, int 2", "PSCALEQ int 2, real 1", "PCONVQ int 2, real 1",
            "PNBRKQ int 2, int 1, int 0", "PNBRKQ int 2, int 2, int 0", "PFLOWSREFRESH"])

    def test_counts_left_out_without_flow_paths_are_zero(self):
        self.assertEqual(self.commands(b"T\n/\n")[2:], ["PNFIELD int 0", "PFLOWSREFRESH"])
        self.assertEqual(self.commands(b"T\n1\nA\n/\n")[2:], ["PNFIELD int 1", "PNINQ int 1, int 0", "PFLOWSREFRESH"])

    def test_counts_below_one(self):
        self.assertEqual(self.commands(b"T\n-3\n", flowpath=self.paths)[2:], ["PNFIELD int -3", "PFLOWSREFRESH"])
        self.assertEqual(self.commands(b"T\n2\nA\n-1\nB\n1\n8 /\nb\n-4\n")[2:], [
            "PNFIELD int 2", "PNINQ int 1, int -1", "PNINQ int 2, int 1", "PSCALEQ int 2, real 8",
            "PCONVQ int 2, real 0", "PNBRKQ int 2, int 1, int -4", "PFLOWSREFRESH"])

    def test_failures(self):
        self.assert_fails(b"2\nCaption\n", 2, 1, "flow_field_count")
        self.assert_fails(b"T\n1\nA\n1\n1 x\n", 5, 3, "flow_conversion_factor")
        self.assert_fails(b"T\n1\nA\n1\n1 1\na\n2.\n", 7, 1, "breakpoint_count")
        self.assert_fails(b"T\n1\nA\n1\n1 1\na\n1\n1 1e39\n", 8, 3, "time")

    def test_the_end_of_the_file(self):
        self.assert_ends(self.content, 17)

    def test_transport_only_changes_nothing(self):
        self.assertEqual(self.commands(self.content, TRANSPORT_ONLY), self.commands(self.content))


class Exchanges(CurrentSections):
    section = "exchanges"
    content = (b"Exchanges\n2\n'Field one'\n1\n1 2\nEstuary, across\n2\n1 2 50 1000\n2 0 .5 /\n2\n1 0\n2 365\nTwo\n1\n"
               b"3 4\n\n0\n0\n")

    def test_fields_functions_pairs_and_series(self):
        self.assertEqual(self.commands(self.content), EXCHANGE_NOTICE + [
            "PNRFLD int 2", "PNTEX int 1, int 1", "PSCALER int 1, real 3", "PCONVR int 1, real 4",
            'PEXCHANGEFUNCDESC int 1, int 1, text[30] "Estuary, across" 15*" "', "PNORS int 1, int 1, int 2",
            "PJRSEG int 1, int 1, int 1, int 1", "PIRSEG int 1, int 1, int 1, int 2",
            "PXAREA int 1, int 1, int 1, real 50", "PLENGTH int 1, int 1, int 1, real 1000",
            "PJRSEG int 1, int 1, int 2, int 2", "PIRSEG int 1, int 1, int 2, int 0",
            "PXAREA int 1, int 1, int 2, real 0.5", "PLENGTH int 1, int 1, int 2, real 0",
            "PNOBRKS int 1, int 1, int 2", "PNORFUNC int 1, int 1, int 1, real 1, real 0",
            "PNORFUNC int 1, int 1, int 2, real 2, real 365",
            "PNTEX int 2, int 1", "PSCALER int 2, real 3", "PCONVR int 2, real 4",
            'PEXCHANGEFUNCDESC int 2, int 1, text[30] 30*" "', "PNORS int 2, int 1, int 0",
            "PNOBRKS int 2, int 1, int 0", "PEXCHANGESREFRESH"])

    def test_counts_below_one(self):
        for count, sent in ((b"0", 0), (b"-7", -7), (b"1*", 0)):
            with self.subTest(count):
                self.assertEqual(self.commands(b"T\n%b\n" % count),
                                 EXCHANGE_NOTICE + [f"PNRFLD int {sent}", "PEXCHANGESREFRESH"])
        self.assertEqual(self.commands(b"T\n2\nA\n-1\nB\n1\n/\nText\n-2\n-3\n")[2:], [
            "PNRFLD int 2", "PNTEX int 2, int 1", "PSCALER int 2, real 0", "PCONVR int 2, real 0",
            'PEXCHANGEFUNCDESC int 2, int 1, text[30] "Text" 26*" "', "PNORS int 2, int 1, int -2",
            "PNOBRKS int 2, int 1, int -3", "PEXCHANGESREFRESH"])

    def test_factors_left_out_are_those_of_the_field_before(self):
        content = b"T\n2\nA\n1\n5 6\n\n0\n0\nB\n1\n, 7\n\n0\n0\n"
        result = self.imported(content)
        self.assertEqual(arguments_of(result, "PSCALER"), ["int 1, real 5", "int 2, real 5"])
        self.assertEqual(arguments_of(result, "PCONVR"), ["int 1, real 7", "int 2, real 7"])

    def test_failures(self):
        self.assert_fails(b"3\nCaption\n", 2, 1, "exchange_field_count")
        self.assert_fails(b"T\n1\n'open\n1\n", 3, 1, "heading")
        self.assert_fails(b"T\n1\nA\n1\n1 1\nText\n1\n1 2 3 4x\n", 8, 7, "mixing_length")
        self.assert_fails(b"T\n1\nA\n1\n1 1\nText\n0\n1\n0 --1\n", 9, 3, "time")
        self.assert_fails(b"", 1, 1, "title")

    def test_a_description_behind_the_end_counts_and_is_no_failure(self):
        self.assert_fails(b"T\n1\nA\n1\n1 1\n", 7, 1, "pair_count", lines_before=-1)

    def test_transport_only_changes_nothing(self):
        self.assertEqual(self.commands(self.content, TRANSPORT_ONLY), self.commands(self.content))


if __name__ == "__main__":
    unittest.main()

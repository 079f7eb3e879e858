"""Cases for the reference importer whose expected values were reasoned by hand."""

import os
import struct
import tempfile
import unittest

from command_log import Answers, Integer, Real, Text, argument_on_log, command_on_log, text_pieces
from driver import derive_model_file_name, import_file, terminated_path
from generate import generate, generate_described
from records import (CannotConvert, ColumnField, ReadFailure, RecordReader, convert_columns, convert_integer,
                     convert_real, integers, parse_layout, reals, split_lines, texts)
from small_files import (CURRENT_CONSOLE, CURRENT_OPENING, CURRENT_REST, CURRENT_SEGMENTS, LEGACY_OPENING, LEGACY_REST,
                         LEGACY_SEGMENTS, PERCENTAGES, arguments_of, replaced)


def bits(value):
    return struct.unpack("<I", struct.pack("<f", value))[0]


def reader(content):
    return RecordReader(split_lines(content))


def read(content, *items):
    """The values of one free-form read; what the record left out is absent."""
    return reader(content).list([item for group in items for item in group])


def failure_of(action):
    try:
        action()
    except ReadFailure as failure:
        return failure.line, failure.column, failure.field
    return None


THREE = integers("a", "b", "c")
TWO_TEXTS = texts("s", "t")
NUMBER_AND_NAME = integers("n") + texts("name")


class Numbers(unittest.TestCase):
    def test_integers_take_a_sign_and_digits_within_32_bits(self):
        for text, value in ((b"5", 5), (b"+5", 5), (b"-07", -7), (b"2147483647", 2147483647),
                            (b"-2147483648", -2147483648), (b"0" * 5000 + b"9", 9)):
            self.assertEqual(convert_integer(text), value)

    def test_what_is_no_integer(self):
        for text in (b"", b"+", b"-", b"5.", b"5x", b"1e3", b"--5", b"5-", b"2147483648", b"-2147483649", b"9" * 6000,
                     b"0x1", b"\xb2"):
            with self.subTest(text), self.assertRaises(CannotConvert):
                convert_integer(text)

    def test_every_spelling_of_an_exponent(self):
        for text in (b"1500", b"1500.", b"1.5e3", b"1.5E+3", b"1.5d03", b"1.5D3", b"1.5q3", b"1.5Q+003", b"1.5+3",
                     b"15+2", b".15e4", b"15000e-1", b"15000-1", b"+1.5e0000000000000000000003"):
            with self.subTest(text):
                self.assertEqual(convert_real(text), 1500.0)

    def test_what_is_no_real(self):
        for text in (b"", b".", b"+", b"-.", b"1e", b"1e+", b"1.5+", b".e5", b"e5", b"1..5", b"1.5.", b"1e5.0",
                     b"1e+-3",
                     b"1+e3", b"1f3", b"inf", b"NaN", b"0x10", b"1,5", b"1_0", b"--1", b"1 5"):
            with self.subTest(text), self.assertRaises(CannotConvert):
                convert_real(text)

    def test_a_tie_goes_to_the_even_neighbour(self):
        self.assertEqual(convert_real(b"16777217"), 16777216.0)  # half way between ..216 and ..218
        self.assertEqual(convert_real(b"16777219"), 16777220.0)  # half way between ..218 and ..220
        self.assertEqual(convert_real(b"16777217." + b"0" * 600 + b"1"), 16777218.0)  # a hair above half way

    def test_rounding_happens_once(self):
        # 1 + 2**-24 + 2**-60 lies above the tie, but in double precision it would become the tie.
        text = b"1.0000000596046447753906250000008673617379884035472059622406959533691406250"
        self.assertEqual(bits(convert_real(text)), 0x3F800001)

    def test_the_largest_single_and_the_first_overflow(self):
        self.assertEqual(bits(convert_real(b"3.4028235677973366e38")), 0x7F7FFFFF)  # below half a step beyond it
        for text in (b"340282356779733661637539395458142568448", b"3.40282357e38", b"1e39", b"-1e99999999999999999999"):
            with self.subTest(text), self.assertRaises(CannotConvert):
                convert_real(text)

    def test_too_small_becomes_the_nearest(self):
        self.assertEqual(bits(convert_real(b"1.4e-45")), 1)
        self.assertEqual(bits(convert_real(b"0.71e-45")), 1)
        self.assertEqual(bits(convert_real(b"0.70e-45")), 0)
        self.assertEqual(bits(convert_real(b"-1e-99999999999999")), 0x80000000)
        self.assertEqual(bits(convert_real(b"1.17549435e-38")), 0x00800000)

    def test_zero_keeps_its_sign_and_swallows_any_exponent(self):
        self.assertEqual(bits(convert_real(b"-0")), 0x80000000)
        self.assertEqual(bits(convert_real(b"-0.0e7")), 0x80000000)
        self.assertEqual(bits(convert_real(b"0e999999999999999999")), 0)

    def test_digits_and_exponent_may_balance_over_any_length(self):
        self.assertEqual(convert_real(b"0." + b"0" * 5000 + b"5e5001"), 5.0)
        self.assertEqual(convert_real(b"5" + b"0" * 5000 + b"e-5000"), 5.0)


class FixedColumns(unittest.TestCase):
    def test_layouts(self):
        self.assertEqual(parse_layout("(I5,5x,I2)"), [ColumnField("I", 5), ColumnField("X", 5), ColumnField("I", 2)])
        geometry = parse_layout("(4(I5),16(F15.5))")
        self.assertEqual(geometry, [ColumnField("I", 5)] * 4 + [ColumnField("F", 15, 5)] * 16)
        self.assertEqual(sum(field.width for field in geometry), 260)

    def test_implied_decimals_only_without_point_and_exponent(self):
        field = ColumnField("F", 15, 5)
        for columns, value in ((b"          12345", 0.12345), (b"         100000", 1.0), (b"         12345.", 12345.0),
                               (b"          12e+2", 1200.0), (b"           12+2", 1200.0), (b"            -12",
                                                                                            -0.00012)):
            with self.subTest(columns):
                self.assertEqual(bits(convert_columns(field, columns)), bits(value))

    def test_implied_decimals_are_rounded_once(self):
        field = ColumnField("F", 15, 5)
        # 167.77217 rounded from the decimal text, not 16777217 rounded first and divided then.
        self.assertEqual(convert_columns(field, b"       16777217"), convert_real(b"167.77217"))

    def test_blanks_in_numbers_do_not_count(self):
        self.assertEqual(convert_columns(ColumnField("I", 6), b" - 1 2"), -12)
        self.assertEqual(convert_columns(ColumnField("F", 10, 0), b"1 . 5 e 1 "), 15.0)
        self.assertEqual(convert_columns(ColumnField("I", 5), b"     "), 0)
        self.assertEqual(bits(convert_columns(ColumnField("F", 5, 2), b"     ")), 0)

    def test_what_is_no_number_in_columns(self):
        for kind in "IF":
            for columns in (b"  -  ", b"1,2  ", b"\t   1", b"   1\r", b"1/   ", b"  1x ", b"\0    ", b"2*1  "):
                with self.subTest(kind + repr(columns)), self.assertRaises(CannotConvert):
                    convert_columns(ColumnField(kind, 5), columns)

    def test_a_short_line_is_padded_and_a_long_one_cut(self):
        self.assertEqual(reader(b"12\n").fixed("(I5,5x,I2)", "a", "b"), {"a": 12, "b": 0})
        self.assertEqual(reader(b"    7xxxxx 3xyz\n").fixed("(I5,5x,I2)", "a", "b"), {"a": 7, "b": 3})
        self.assertEqual(reader(b"  ab\n").fixed("(A6)", "t"), {"t": b"  ab  "})
        self.assertEqual(reader(b"\n").fixed("(I5,5x,I2)", "a", "b"), {"a": 0, "b": 0})

    def test_a_failure_names_the_first_column_of_the_field(self):
        self.assertEqual(failure_of(lambda: reader(b"    7      x\n").fixed("(I5,5x,I2)", "a", "b")), (1, 11, "b"))
        self.assertEqual(failure_of(lambda: reader(b"").fixed("(I5,5x,I2)", "a", "b")), (1, 1, "a"))


class Lines(unittest.TestCase):
    def test_line_ends(self):
        self.assertEqual(split_lines(b"a\nb\r\nc"), [b"a", b"b", b"c"])
        self.assertEqual(split_lines(b"a\n"), [b"a"])
        self.assertEqual(split_lines(b"\n\n"), [b"", b""])
        self.assertEqual(split_lines(b""), [])

    def test_a_carriage_return_alone_ends_nothing(self):
        self.assertEqual(split_lines(b"a\rb\r\r\nc\r"), [b"a\rb\r", b"c\r"])
        self.assertEqual(read(b"1\r2\r3\n", THREE), {"a": 1, "b": 2, "c": 3})

    def test_the_byte_order_mark_counts_once_and_only_at_the_start(self):
        self.assertEqual(split_lines(b"\xef\xbb\xbf7\n\xef\xbb\xbf8"), [b"7", b"\xef\xbb\xbf8"])
        self.assertEqual(split_lines(b"\xef\xbb\xbf"), [])


class FreeForm(unittest.TestCase):
    def test_separators(self):
        for content in (b"1 2 3\n", b"1,2,3\n", b" 1 ,2 , 3\n", b"1\t2\t3", b"1\n2\n\n3\n", b"1,\n2,\n3\n",
                        b"1 2 3 junk\n",
                        b"1 2 3/\n", b"1 2 3,x\n"):
            with self.subTest(content):
                self.assertEqual(read(content, THREE), {"a": 1, "b": 2, "c": 3})

    def test_the_rest_of_the_last_line_is_skipped(self):
        records = reader(b"1\n2 3 4 5\n6\n")
        records.list(THREE)
        self.assertEqual(records.list(integers("d")), {"d": 6})

    def test_empty_values(self):
        for content, expected in ((b"1,,3\n", {"a": 1, "c": 3}), (b",2,3\n", {"b": 2, "c": 3}), (b" ,2 3\n", {"b": 2,
                                                                                                              "c": 3}),
                                  (b"1, ,3\n", {"a": 1, "c": 3}), (b",,,\n", {}), (b"1,,\n3\n", {"a": 1, "c": 3})):
            with self.subTest(content):
                self.assertEqual(read(content, THREE), expected)

    def test_a_comma_first_on_a_continuation_line(self):
        for content, expected in ((b"1\n,2 3\n", {"a": 1, "b": 2, "c": 3}),   # it is the separator behind the 1
                                  (b"1,\n,3\n", {"a": 1, "c": 3}),            # the separator stood there already
                                  (b"1 2\n,,3\n", {"a": 1, "b": 2}),
                                  (b"1\n\n , 2 3\n", {"a": 1, "b": 2, "c": 3}),
                                  (b"1\n,\n,2 3\n", {"a": 1, "b": 2, "c": 3}),
                                  (b"1,\n\n,3\n", {"a": 1, "c": 3}),
                                  (b"2*1\n,3\n", {"a": 1, "b": 1, "c": 3}),
                                  (b"2*\n,3\n", {"c": 3}),
                                  (b"1 1*,\n,\n", {"a": 1})):
            with self.subTest(content):
                self.assertEqual(read(content, THREE), expected)

    def test_a_comma_behind_a_blank_first_line_is_no_empty_value(self):
        self.assertEqual(read(b"\n,1 2 3\n", THREE), {"a": 1, "b": 2, "c": 3})
        self.assertEqual(read(b"  \n\n,1 2 3\n", THREE), {"a": 1, "b": 2, "c": 3})
        self.assertEqual(read(b"\n,,2 3\n", THREE), {"b": 2, "c": 3})

    def test_slash(self):
        for content, expected in ((b"/\n", {}), (b"1/2 3\n", {"a": 1}), (b"1 2 /\n", {"a": 1, "b": 2}),
                                  (b"1\n/ 2 3\n", {"a": 1}), (b"1,\n/\n", {"a": 1}), (b"2*5/7\n", {"a": 5, "b": 5}),
                                  (b"\n\n/\n", {}), (b"2*/3\n", {})):
            with self.subTest(content):
                self.assertEqual(read(content, THREE), expected)
        self.assertEqual(read(b"ab\n/cd\n", TWO_TEXTS), {"s": b"ab"})

    def test_repeat_counts(self):
        for content, expected in ((b"3*4\n", {"a": 4, "b": 4, "c": 4}), (b"2*4 5\n", {"a": 4, "b": 4, "c": 5}),
                                  (b"1 2*-6\n", {"a": 1, "b": -6, "c": -6}), (b"2147483647*1\n", {"a": 1, "b": 1,
                                                                                                  "c": 1}),
                                  (b"002*4 5\n", {"a": 4, "b": 4, "c": 5}), (b"3*\n", {}), (b"2* 5\n", {"c": 5}),
                                  (b"2*,5\n", {"c": 5}), (b"3*", {}), (b"1 1*,5\n", {"a": 1, "c": 5})):
            with self.subTest(content):
                self.assertEqual(read(content, THREE), expected)

    def test_what_is_no_repeat_count(self):
        for content in (b"0*5 1 2\n", b"00*\n", b"2147483648*1\n", b"99999999999999999999*\n", b"-2*1 1\n", b"+2*1 1\n",
                        b"2**1 1\n", b"2*3*4 1\n", b"2.*1\n", b"*3 4\n", b"2 *3\n"):
            with self.subTest(content):
                self.assertIsNotNone(failure_of(lambda: read(content, THREE)))

    def test_a_repeated_value_is_converted_for_each_item(self):
        self.assertEqual(read(b"3*7\n", integers("a"), reals("b"), texts("c")), {"a": 7, "b": 7.0, "c": b"7"})
        self.assertEqual(failure_of(lambda: read(b"5 2*1.5\n", integers("a"), reals("b"), integers("c"))), (1, 3, "c"))

    def test_texts(self):
        for content, expected in ((b"Upper Pool\n", {"s": b"Upper", "t": b"Pool"}),
                                  (b"'Upper Pool',\"a, b/c\"\n", {"s": b"Upper Pool", "t": b"a, b/c"}),
                                  (b"'O''Brien' \"5\"\"\"\n", {"s": b"O'Brien", "t": b'5"'}),
                                  (b"O'Brien x;y\n", {"s": b"O'Brien", "t": b"x;y"}),
                                  (b"'' x\n", {"s": b"", "t": b"x"}),
                                  (b"12abc 3rd\n", {"s": b"12abc", "t": b"3rd"}),
                                  (b"99999999999 +2*x\n", {"s": b"99999999999", "t": b"+2*x"}),
                                  (b"2*ab\n", {"s": b"ab", "t": b"ab"}), (b"2*'a b'\n", {"s": b"a b", "t": b"a b"}),
                                  (b"2*3*4\n", {"s": b"3*4", "t": b"3*4"}), (b"2**x\n", {"s": b"*x", "t": b"*x"}),
                                  (b"a/b c\n", {"s": b"a"}), (b"12*\n", {}), (b"a\0b \xc9\n", {"s": b"a\0b",
                                                                                               "t": b"\xc9"})):
            with self.subTest(content):
                self.assertEqual(read(content, TWO_TEXTS), expected)

    def test_quoted_text_may_run_over_lines(self):
        self.assertEqual(read(b"'a \r\n  b' c\n", TWO_TEXTS), {"s": b"a   b", "t": b"c"})
        self.assertEqual(read(b"'a'\n'b'\n", TWO_TEXTS), {"s": b"a", "t": b"b"})

    def test_what_is_no_text(self):
        for content in (b"'a'b c\n", b"'a';'b'\n", b"'never\nclosed\n", b"0*x y\n", b"\"a''\n"):
            with self.subTest(content):
                self.assertEqual(failure_of(lambda: read(content, TWO_TEXTS)), (1, 1, "s"))

    def test_a_number_in_quotes_is_none(self):
        self.assertEqual(failure_of(lambda: read(b" '3' x\n", NUMBER_AND_NAME)), (1, 2, "n"))
        self.assertEqual(failure_of(lambda: read(b"3'x'\n", NUMBER_AND_NAME)), (1, 1, "n"))

    def test_failures_name_line_column_and_item(self):
        self.assertEqual(failure_of(lambda: read(b"1\n  2,\n x3\n", THREE)), (3, 2, "c"))
        self.assertEqual(failure_of(lambda: read(b"1 2*3.5\n", THREE)), (1, 3, "b"))
        self.assertEqual(failure_of(lambda: read(b"1 2\n", THREE)), (2, 1, "c"))
        self.assertEqual(failure_of(lambda: read(b"1,2,", THREE)), (2, 1, "c"))

    def test_an_empty_list_takes_one_line(self):
        records = reader(b"'what ever\n5\n")
        self.assertEqual(records.list([]), {})
        self.assertEqual(records.list(integers("a")), {"a": 5})
        self.assertEqual(failure_of(lambda: records.list([])), (3, 1, None))

    def test_flags_are_never_looped_over(self):
        self.assertEqual(reader(b"2*1 1999999998*0\n").flags("f", 2000000000, kept=3), [1, 1, 0])
        self.assertEqual(reader(b"1*,1 /\n").flags("f", 2147483647, kept=4), [0, 1, 0, 0])
        self.assertEqual(reader(b"1 2\n").flags("f", -5, kept=28), [])
        self.assertEqual(failure_of(lambda: reader(b"30*0 7*x\n").flags("f", 2147483647, kept=28)), (1, 6, "f 31"))

    def test_the_counter_counts_statements_whatever_happens(self):
        records = reader(b"1\n2\n3\n")
        records.list(THREE)
        self.assertEqual(records.line_counter, 2)
        records.caption()
        records.title()
        with self.assertRaises(ReadFailure) as caught:
            records.list(integers("a"))
        self.assertEqual((caught.exception.statement, records.line_counter), (5, 5))

    def test_a_title_that_is_no_text_costs_one_line(self):
        for content in (b"'Bob's' lake\n5\n", b"0*x\n5\n", b"Lake\n5\n", b"'a \n5 'b\n", b"'Lake\n5\n"):
            with self.subTest(content):
                records = reader(content)
                records.title()
                self.assertEqual(records.list(reals("a"))["a"], 5.0)


class Log(unittest.TestCase):
    def test_texts_as_pieces(self):
        for text, written in ((b"", '""'), (b"Upper Pool\0\0" + b" " * 28, '"Upper Pool\\0\\0" 28*" "'),
                              (b" " * 7 + b"x", '"       x"'), (b" " * 8, '8*" "'), (b"\0" * 8 + b" " * 9,
                                                                                     '8*"\\0" 9*" "'),
                              (b'a"\\\xb0\n\x7f~', '"a\\"\\\\\\xb0\\x0a\\x7f~"')):
            with self.subTest(text):
                self.assertEqual(text_pieces(text), written)

    def test_arguments_and_commands(self):
        self.assertEqual(argument_on_log(Integer(-3)), "int -3")
        self.assertEqual(argument_on_log(Real(convert_real(b"0.1"))), "real 0.100000001")
        self.assertEqual(argument_on_log(Real(-0.0)), "real -0")
        self.assertEqual(argument_on_log(Text(b"Platform: Linux".ljust(30) + b"\0")), 'text[31] "Platform: <stamped>"')
        self.assertEqual(command_on_log("PSEGMENTSREFRESH", []), "0 PSEGMENTSREFRESH[17]")


# --- whole files ----------------------------------------------------------------------------------------------------

class Files(unittest.TestCase):
    legacy = b"".join(LEGACY_OPENING + LEGACY_SEGMENTS + LEGACY_REST)
    current = b"".join(CURRENT_OPENING + CURRENT_SEGMENTS + CURRENT_REST)

    def assert_stops(self, content, section, counter, line, column, field):
        result = import_file(content)
        failure = result.failure
        self.assertIsNotNone(failure)
        self.assertEqual((failure.section, failure.statement, failure.line, failure.column, failure.field),
                         (section, counter, line, column, field))
        self.assertEqual(result.console_lines[-1], b"Error Reading Import File at Line: %d" % counter)
        self.assertEqual(arguments_of(result, "PPROGRESS"), PERCENTAGES)
        self.assertIn("Files</big></body>", result.log_lines[-1])
        return result

    def test_legacy_settings(self):
        result = import_file(self.legacy)
        self.assertIsNone(result.failure)
        self.assertEqual(arguments_of(result, "PSEEDDATE"), ["int 3, int 15, int 1998"])
        self.assertEqual(arguments_of(result, "PSEEDTIME"), ["int 6, int 30, int 0"])
        self.assertEqual(arguments_of(result, "PMINDT"), ["real 0.00100000005"])
        self.assertEqual(arguments_of(result, "PMAXDT"), ["real 0.5"])
        self.assertEqual(arguments_of(result, "PMODELOUTPUTINTERVAL"), ["real 0.25"])
        # The boundaries add 0 for reading, 0 for sending, and one for each of the two state variables.
        self.assertEqual(arguments_of(result, "PPROGRESS"),
                         PERCENTAGES[:6] + ["int 0", "int 0", "int 0", "int 100"] + PERCENTAGES[6:])

    def test_legacy_bypassed_systems_leave_no_gap(self):
        result = import_file(self.legacy)
        self.assertEqual(arguments_of(result, "PNUMSYS"), ["int 2"])
        self.assertEqual(arguments_of(result, "PSYSNAME"),
                         ['int 1, text[31] "CBOD-1" 24*" " "\\0", text[6] "CBODU\\0"',
                          'int 2, text[31] "CBOD-3" 24*" " "\\0", text[6] "CBODU\\0"'])

    def test_other_legacy_models_have_no_state_variables(self):
        result = import_file(b"    7      2\n" + self.legacy.partition(b"\n")[2])
        self.assertEqual(arguments_of(result, "PNUMSYS"), ["int 0"])
        self.assertEqual(arguments_of(result, "PSYSNAME"), [])
        self.assertEqual(arguments_of(result, "PSYSTEMSREFRESH"), [""])
        self.assertIn('1 PINFOHTML[10] text[133] 132*" " "\\0"', result.log_lines)

    def test_legacy_hostile_system_count(self):
        opening = list(LEGACY_OPENING)
        opening[4], opening[16] = b"2147483647\n", b"7*1 2*0 2147483647*1\n"
        result = import_file(b"".join(opening))
        self.assertEqual(arguments_of(result, "PNUMSYS"), ["int 2"])

    def test_legacy_no_systems_still_have_a_record(self):
        opening = list(LEGACY_OPENING)
        opening[4], opening[16] = b"-3\n", b"any thing\n"
        result = import_file(b"".join(opening) + b"".join(LEGACY_SEGMENTS + LEGACY_REST))
        self.assertIsNone(result.failure)
        self.assertEqual(arguments_of(result, "PNUMSYS"), ["int 0"])
        self.assertIn('3 GSPRINTFI[10] text[132] -> "-3" 130*" ", text[3] "%d\\0", int -3', result.log_lines)

    def test_row_of_the_parameter_table(self):
        log = import_file(self.legacy).log_lines
        label = log.index('1 PINFOHTML[10] text[57] "Simulation Length (days):</td><td style=\\"width: 214px;\\">\\0"')
        self.assertEqual(log[label + 1],
                         '3 GSPRINTFR[10] text[132] -> "365.250000" 122*" ", text[3] "%f\\0", real 365.25')
        self.assertEqual(log[label + 2], '1 PINFOHTML[10] text[133] "365.250000" 122*" " "\\0"')

    def test_a_failing_legacy_opening_keeps_its_table(self):
        content = replaced(LEGACY_OPENING, 16, b"7*1 0 1 q\n")
        result = self.assert_stops(content, "modelparam", 18, 17, 9, "bypass_flag 10")
        self.assertEqual(arguments_of(result, "PFILENAME"), [])
        self.assertIn('1 PINFOHTML[10] text[47] "</td></tr></tbody></table><br></center></body>\\0"', result.log_lines)
        self.assertNotIn("Error Reading", "".join(result.log_lines))  # a legacy section reports on the console only

    def test_the_first_record_counts_as_two(self):
        self.assert_stops(b"   11      2\nx\n", "modelparam", 3, 2, 1, "start_month")

    def test_a_huge_count_ends_with_the_file(self):
        content = b"".join(LEGACY_OPENING) + b"2000000000\n0\n0\n1 1\nNames\n1 a\n2 b\n"
        result = self.assert_stops(content, "segments", 29, 28, 1, "segment_number")
        self.assertEqual(arguments_of(result, "PNUMSEG"), [])

    def test_a_blank_file_is_legacy_and_ends_early(self):
        self.assert_stops(b"\n", "modelparam", 3, 2, 1, "start_month")

    def test_legacy_segments(self):
        result = import_file(self.legacy)
        self.assertEqual(arguments_of(result, "PSEGNAME"),
                         ['int 1, text[40] "Seg-1-Upper Pool\\0\\0" 22*" "',
                          'int 2, text[40] "Seg-2-Lower\\0\\0" 27*" "'])
        self.assertEqual(arguments_of(result, "PSEGLENGTH"), ["int 1, real 1000", "int 2, real 1.5"])
        self.assertEqual(arguments_of(result, "PSEGSLOPE"), ["int 1, real 0.00999999978", "int 2, real 1.5"])
        self.assertEqual(result.console_lines,
                         [b"Reading Segment: 1 Name: Upper Pool", b"Reading Segment: 2 Name: Lower",
                          b"Setting Number of Segments to: 2", b"Setting Segment Name: Seg-1-Upper Pool",
                          b"Setting Segment Name: Seg-2-Lower", b"Done Reading Boundary Information",
                          b"Boundary System: 1", b"Boundary System: 2",
                          b"Reading Segment Parameters", b"Reading Initial Conditions"])

    def test_legacy_names_without_index(self):
        result = import_file(self.legacy, Answers(index_names=1))
        self.assertEqual(arguments_of(result, "PSEGNAME")[0], 'int 1, text[40] "Upper Pool\\0\\0" 28*" "')

    def test_an_odd_answer_leaves_the_default(self):
        result = import_file(self.legacy, Answers(index_names=7))
        self.assertIn("Seg-1-", arguments_of(result, "PSEGNAME")[0])

    def test_legacy_name_left_out(self):
        segments = list(LEGACY_SEGMENTS)
        segments[5], segments[6] = b"1/\n", b"2,,\n"
        content = b"".join(LEGACY_OPENING) + b"".join(segments)
        self.assertEqual(arguments_of(import_file(content), "PSEGNAME")[0], 'int 1, text[40] "Seg-1-" 34*"\\0"')
        self.assertEqual(arguments_of(import_file(content, Answers(index_names=1)), "PSEGNAME")[1],
                         'int 2, text[40] 40*"\\0"')

    def test_a_full_name_has_no_room_for_a_nul(self):
        name = b"abcdefghij" * 5
        content = b"".join(LEGACY_OPENING) + replaced(LEGACY_SEGMENTS, 5, b"1 " + name + b"\n")
        self.assertEqual(arguments_of(import_file(content), "PSEGNAME")[0],
                         'int 1, text[40] "Seg-1-abcdefghijabcdefghijabcdefghijabcd"')

    def test_legacy_segments_without_index_text(self):
        count = 10001
        lines = [b"%d\n0\n0\n1 1\nNames\n" % count] + [b"%d P\n" % index for index in range(1, count + 1)]
        lines += [b"Geometry\n"] + [b"/\n"] * count
        names = arguments_of(import_file(b"".join(LEGACY_OPENING) + b"".join(lines)), "PSEGNAME")
        self.assertEqual(names[8], 'int 9, text[40] "Seg-9-P\\0\\0" 31*" "')
        self.assertEqual(names[9], 'int 10, text[40] "Seg-10-P\\0\\0" 30*" "')
        self.assertEqual(names[997], 'int 998, text[40] "Seg-998-P\\0\\0" 29*" "')
        self.assertEqual(names[998], 'int 999, text[40] 40*"\\0"')
        self.assertEqual(names[999], 'int 1000, text[40] "Seg-1000-P\\0\\0" 28*" "')
        self.assertEqual(names[9997], 'int 9998, text[40] "Seg-9998-P\\0\\0" 28*" "')
        self.assertEqual(names[9998], 'int 9999, text[40] 40*"\\0"')
        self.assertEqual(names[10000], 'int 10001, text[40] 40*"\\0"')

    def test_no_segments(self):
        for count in (b"0", b"-4", b"-2147483648"):
            content = b"".join(LEGACY_OPENING) + count + b"\n1\n.5\n1 1\nNames\n"  # the second caption is missing, too
            result = import_file(content)
            self.assertEqual(result.failure.section, "flowpath")
            self.assertEqual(arguments_of(result, "PNUMSEG"), ["int " + count.decode()])
            self.assertEqual(arguments_of(result, "PSEGNAME"), [])
            self.assertEqual(arguments_of(result, "PSEGMENTSREFRESH"), [""])

    def test_a_missing_second_caption_shows_in_the_next_read(self):
        content = b"".join(LEGACY_OPENING) + b"1\n1\n.5\n1 1\nNames\n1 a\n"
        self.assert_stops(content, "segments", 29, 27, 1, "segment_number")

    def test_current_settings(self):
        result = import_file(self.current)
        self.assertIsNone(result.failure)
        self.assertEqual(result.console_lines, CURRENT_CONSOLE)
        self.assertEqual(arguments_of(result, "PNUMSYS"), ["int 2"])
        self.assertEqual(arguments_of(result, "PSYSNAME"),
                         ['int 1, text[31] "Ammonia" 23*" " "\\0", text[6] "NH-34\\0"',
                          'int 2, text[31] 30*" " "\\0", text[6] "DO   \\0"'])
        self.assertIn('1 PINFOHTML[10] text[133] "Advanced Toxicant" 115*" " "\\0"', result.log_lines)

    def test_current_segments(self):
        result = import_file(self.current)
        self.assertEqual(arguments_of(result, "PSEGNAME"), ['int 1, text[40] "Seg-1-Upper-Pool\\0\\0" 22*" "'])
        log = result.log_lines
        first = log.index("2 PSEGTYPE[9] int 1, int 2")
        self.assertEqual(log[first + 1:first + 19], [
            "2 PIQOPT[7] int 1, int 3", "2 PVOLUME[8] int 1, real 1", "2 PVMULT[7] int 1, real 2",
            "2 PVEXP[6] int 1, real 3", "2 PDMULT[7] int 1, real 4", "2 PDEXP[6] int 1, real 5",
            "2 PSEGSLOPE[10] int 1, real 7", "2 PSEGLENGTH[11] int 1, real 6", "2 PSEGWIDTH[10] int 1, real 8",
            "2 PSEGROUGH[10] int 1, real 9", "2 PSEGMINDEPTH[13] int 1, real 10",
            "2 PINITIALSURFACEELEVATION[25] int 1, real 11", "2 PBOTTOMELEVATION[17] int 1, real 12",
            "2 PSIDESLOPE[11] int 1, real 13", "2 PINITIALDEPTH[14] int 1, real 14", "2 PWEIRHEIGHT[12] int 1, real 15",
            "2 GWEIRTYPE[10] int 1, real 16", "0 PSEGMENTSREFRESH[17]"])

    def test_current_hyphens_stop_at_the_end_of_the_name(self):
        for columns, written in ((b"", '"Seg-1-\\0\\0" 32*" "'), (b"  a  b ", '"Seg-1---a--b\\0\\0" 26*" "'),
                                 (b"x" * 33 + b" yz", '"Seg-1-' + "x" * 33 + '\\0"')):
            content = b"".join(CURRENT_OPENING) + replaced(CURRENT_SEGMENTS, 6, b"    1     " + columns + b"\n")
            with self.subTest(columns):
                self.assertEqual(arguments_of(import_file(content), "PSEGNAME"), ["int 1, text[40] " + written])

    def test_current_names_without_index_text(self):
        count = 1000
        lines = [b"Title\n%d\n0\n0\n1 1\nNames\n" % count] + [b"%5d     P\n" % index for index in range(1, count + 1)]
        content = b"".join(CURRENT_OPENING) + b"".join(lines) + b"Geometry\n" + b"\n" * count
        names = arguments_of(import_file(content), "PSEGNAME")
        self.assertEqual(names[998], 'int 999, text[40] 40*" "')
        self.assertEqual(names[999], 'int 1000, text[40] "Seg-1000-P\\0\\0" 28*" "')
        plain = arguments_of(import_file(content, Answers(index_names=1)), "PSEGNAME")
        self.assertEqual(plain[998], 'int 999, text[40] "P\\0\\0" 37*" "')

    def test_a_failing_current_section_reports_to_the_pane(self):
        content = b"".join(CURRENT_OPENING) + replaced(CURRENT_SEGMENTS, 8, b"    1    0    2    3\t\n")
        result = self.assert_stops(content, "segments_v2", 27, 26, 21, "volume")
        report = result.log_lines.index("1 PPROGRESS[10] int 5") + 1
        self.assertEqual(result.log_lines[report:report + 3], [
            '3 GSPRINTFI[10] text[80] -> "Error Reading Import File at Line # 27 </span></li>" 29*" ", '
            'text[52] "Error Reading Import File at Line # %d </span></li>\\0", int 27',
            '1 PINFOHTML[10] text[51] "<li><span style=\\"font-weight: bold; color: blue;\\">\\0"',
            '1 PINFOHTML[10] text[80] "Error Reading Import File at Line # 27 </span></li>" 29*" "'])

    def test_current_titles(self):
        # The title of the opening block has no error branch, the one of the segments has.
        self.assertIsNone(import_file(self.current.replace(b"'A title'", b"'It's a title")).failure)
        content = b"".join(CURRENT_OPENING) + replaced(CURRENT_SEGMENTS, 0, b"'It's a title\n")
        self.assert_stops(content, "segments_v2", 19, 18, 1, "title")
        self.assert_stops(b"    8      3\n", "modelparam_v2", 4, 2, 1, "start_month")

    def test_line_ends_and_mark_change_nothing(self):
        plain = import_file(self.current).log_lines
        self.assertEqual(import_file(self.current.replace(b"\n", b"\r\n")).log_lines, plain)
        self.assertEqual(import_file(b"\xef\xbb\xbf" + self.current).log_lines, plain)
        self.assertEqual(import_file(self.current[:-1]).log_lines, plain)


class Opening(unittest.TestCase):
    def assert_not_opened(self, result, path):
        self.assertEqual(len(result.log_lines), 8)
        self.assertEqual(result.log_lines[4:7], [
            '1 PINFOHTML[10] text[51] "<li><span style=\\"font-weight: bold; color: blue;\\">\\0"',
            '1 PINFOHTML[10] text[35] "File Can Not be Opened</span></li>\\0"',
            '1 PINFOHTML[10] text[51] "<li><span style=\\"font-weight: bold; color: blue;\\">\\0"'])
        self.assertEqual(result.log_lines[7],
                         f'1 PINFOHTML[10] text[132] "File: {path}\\0" {125 - len(path)}*" "')

    def test_files_that_cannot_be_opened(self):
        with tempfile.TemporaryDirectory() as folder:
            missing = os.path.join(folder, "missing.inp")
            self.assert_not_opened(import_file(missing), missing)
            self.assert_not_opened(import_file(folder), folder)

    def test_headers_that_cannot_be_read(self):
        for content in (b"", b"\xef\xbb\xbf", b"x\n", b"    7      x\n", b"   7\t      3\n",
                        "    7      3\n".encode("utf-16")):
            with self.subTest(content):
                self.assert_not_opened(import_file(content, path_text=b"a.inp"), "a.inp")

    def test_the_message_is_cut(self):
        result = import_file(b"", path_text=b"p" * 200)
        self.assertEqual(result.log_lines[7], '1 PINFOHTML[10] text[132] "File: ' + "p" * 126 + '"')

    def test_the_path_ends_at_its_first_nul(self):
        self.assertEqual(terminated_path(b"a.inp\0junk".ljust(512)), (b"a.inp\0junk\0".ljust(512), b"a.inp"))
        self.assertEqual(terminated_path(b"a b.inp".ljust(512)), (b"a b.inp\0".ljust(512), b"a b.inp"))
        self.assertEqual(terminated_path(b"p" * 512), (b"p" * 512, b"p" * 512))

    def test_model_file_names(self):
        fresh = b"\0" * 512
        for path, earlier, name in (
                (b"river.inp", fresh, b"river.KIF".ljust(512, b"\0")),
                (b"C:\\a.b\\model.inp", fresh, b"C:\\a.KIF".ljust(512, b"\0")),
                (b"river", fresh, b"river\0".ljust(511) + b"\0"),
                (b"a.b", b"older name.KIF".ljust(512, b"\0"), b"a.KIF name.KIF".ljust(512, b"\0")),
                (b"p" * 508 + b".inp", fresh, b"p" * 508 + b".KIF"),
                (b"p" * 510 + b".i", fresh, b"p" * 510 + b".K"),
                (b"p" * 511 + b".", fresh, b"p" * 511 + b"\0")):
            with self.subTest(path[-20:]):
                self.assertEqual(derive_model_file_name(terminated_path(path.ljust(512))[0], earlier), name)

    def test_the_model_file_name_travels_with_513(self):
        result = import_file(b"".join(LEGACY_OPENING), path_text=b"samples/river.inp")
        self.assertEqual(arguments_of(result, "PFILENAME"), ['text[513] "samples/river.KIF" 496*"\\0"'])
        self.assertEqual(arguments_of(result, "GFILENAME"), ['text[512] -> "samples/river.inp" 495*" "'])
        result = import_file(b"".join(LEGACY_OPENING), path_text=b"river")
        self.assertEqual(arguments_of(result, "PFILENAME"), ['text[513] "river\\0" 505*" " "\\0\\0"'])

    def test_questions(self):
        log = import_file(b"".join(LEGACY_OPENING), Answers(scope=0, index_names=1)).log_lines
        self.assertTrue(log[1].endswith('text[15] "Transport Only\\0", text[4] "All\\0", int -1 -> 0'))
        self.assertTrue(log[2].endswith("int -1 -> 1"))


class Generator(unittest.TestCase):
    def test_a_seed_always_gives_the_same_file(self):
        self.assertEqual(generate(17), generate(17))
        self.assertEqual(generate_described(17)[0], generate(17))

    def test_every_file_is_imported_to_the_end(self):
        for seed in range(300):
            content, description = generate_described(seed)
            with self.subTest(description):
                result = import_file(content)
                progress = arguments_of(result, "PPROGRESS")
                if progress:  # what stands between 40 and 50 are the boundaries' own
                    del progress[progress.index("int 40") + 1:progress.index("int 50")]
                    self.assertEqual(progress, PERCENTAGES)
                if "no fault" in description:
                    self.assertIsNone(result.failure)


if __name__ == "__main__":
    unittest.main()

"""Plants hostile texts in every place where texts of a file or of the command line reach a terminal, a page, JSON or SARIF:
they may be shown, but must not be obeyed."""

import json
import os
import re
import unicodedata
import unittest
from pathlib import Path

import command_test as program
from command_test import run
from report_pages import Page

# Named here so that its tests do not run once more.
CommandTestBase = program.CommandTest

# No more than five bytes: the shortest texts of a file have room for no more.
SHORT = [b"<b>", b"</td>", b"<!--", b"\"'>", b"&lt;", b"\x1b[2J", b"\x1b]0;", b"\x9b2J", b"\xc2\x9b2J", b"\x07\x08\x7f",
         b"a\rb", b"a\tb", b"a\x0cb", b"\xff\xfe", b"\xc0\xbc", b"\xe0\x80\xbc", b"\xf4\x90\x80\x80", b"\xed\xa0\x80",
         b"\xe2\x80\xae", b"\xe2\x81\xa6", b"\xe2\x80\x8f", b"\xd8\x9c", b"\xe2\x80\xa8", b"\xe2\x80\xa9", b"\xe2\x80\x8b",
         b"\xef\xbb\xbf", b"\xef\xbf\xbe", b"\xef\xb7\x90", b"\xf0\x9f\xbf\xbf", b"\xf3\xa0\x81\x81", b"\xe3\x85\xa4"]
LONG = SHORT + [b"</span></li></ul><b>x</b>", b"<script>alert(1)</script>", b"<img src=x onerror=alert(1)>",
                b"</main></body></html>", b"<a href=javascript:alert(1)>x", b"\" style=\"color: red;\" x=\"",
                b"<big style=\"color:red\">Whole", b"</td></tr><tr><td>: x", b"\x1b]8;;http://x.example\x07x",
                b"\x1b[1A\x1b[2Kok", b"]]></style><style>*{}"]

# Files with every text that there is: @ is one that fills the rest of its line, ~ one in quotes, # a short one.
LEGACY = """   11      2 @title
1 1 2010 0 0 0
1 1 2010 0 0 0
365.0
2
0
1
0
0
1
0
0.9
0.1 0.5
0
0 0
0
0
2
0
1.0
1.0 1.0
@caption of the segment names
1 ~segment name
2 b
@caption of the segment geometry
1 0 1 100.5 0.1 0.2 0.3 0.4 1000 0.001 20 0.03 0.1
2 0 1 200.5 0.1 0.2 0.3 0.4 1000 0.001 20 0.03 0.1
3
1
@caption of the flow field
@hydrodynamic file
1
@description of the flow function
1
0 1 1.0
1
@caption of the flow field in the series
1
1 1
@caption of the flow function
1
1 0
1
~heading of the exchange field
1
1 1
@description of the exchange function
1
1 2 3 4
1
1 0
2
@heading of the boundaries
1
     1.000      1.00
1
1
1 0
b
0
1
@non-point-source file
2
~heading of the loads
1
1 1
1
1
1 0
b
0
4
1
~name of a time function
1
0 1
13
~name of a time function that does not come across
1
0 1
5
~name of a time function that is converted
1
0 1
99
~name of a time function that nobody knows
1
0 1
2
1
3 1
1
3 1
2
3 1
1
1 1
2
2
@caption of the system
1
1
1
@caption of the initial conditions
1 1 1
2 1 1
b
1
1
1
b
1 1 1
2 1 1
"""
CURRENT = """   11      3
~title
1 1 2010 0 0 0
1 1 2010 0 0 0
365.0
2
0
1
0
0
1
0
0.9
0.1 0.5
0.25
#short     @long name of a system
NO-3O     Nitrate
~title of the segments
2
0
1.0
1.0 1.0
@caption of the segment names
    1     @segment name
    2     b
@caption of the segment geometry
    1    0    1    3            1.5
    2    0    1    3            1.5
~first title of the flow paths
~second title of the flow paths
1
@caption of the flow field
@hydrodynamic file
1
@description of the flow function
1
0 1 1.0
~title of the flow series
1
@caption of the flow field in the series
1
1 1
@caption of the flow function
1
1 0
~heading of the exchanges
1
~heading of the exchange field
1
1 1
@description of the exchange function
1
1 2 3 4
1
1 0
~heading of the boundary conditions
2
@heading of the boundaries
0
b
0
~heading of the load section
1
@non-point-source file
2
~heading of the loads
0
b
0
~heading of the time functions
1
1
1
0 1
~heading of the segment parameters
2
1
~heading of the parameter list
           1             1               1.5
~heading of the parameter values
1
               1                  1                          1.5
2
               1                  1                          1.5
~heading of the constants
0
~title of the initial conditions
2
2
@caption of the system
1
1
1
@caption of the initial conditions
1 1 1
2 1 1
b
1
1
1
b
1 1 1
2 1 1
"""
FILES = {"legacy": LEGACY, "current": CURRENT}
PLACE = re.compile(rb"([@~#])([a-z][-a-z ]*[a-z])")
HARMLESS = b"x"
# Each takes something else of an import to a terminal or a file; {} is a file to write.
FORMS = [["import", "--verbose"], ["import", "--json", "--data"], ["import", "--quiet", "--report", "{}"],
         ["import", "--quiet", "--log", "{}"], ["check"], ["check", "--verbose"], ["check", "--format", "json"],
         ["check", "--format", "sarif"]]


def file_with(template, text):
    """The file with a text in all its places."""
    def field(match):
        if match[1] == b"~":
            return b"'" + text.replace(b"'", b"''") + b"'"
        if match[1] == b"#":
            return (text if text in SHORT else HARMLESS).ljust(5)
        return text
    return PLACE.sub(field, template.encode())


def is_hidden(character):
    code = ord(character)
    return (unicodedata.category(character) in ("Cc", "Cf", "Cs", "Zl", "Zp") or code & 0xFFFE == 0xFFFE or
            0xFDD0 <= code <= 0xFDEF or code == 0x3164)


class Injection(CommandTestBase):
    def assert_harmless(self, output):
        """It is UTF-8, and has nothing that a terminal obeys or that nobody sees."""
        hidden = {character for character in output.decode() if is_hidden(character) and character != "\n"}
        self.assertEqual(hidden, set(), output[-2000:])

    def check_every_form(self, path, statuses):
        for form in FORMS:
            with self.subTest(form=form):
                written = Path(os.fsdecode(self.path("written")))
                written.write_bytes(b"")
                result = run(*[argument.format(written) for argument in form], path)
                self.assertIn(result.returncode, statuses, result.stderr)
                self.assert_harmless(result.stdout + result.stderr + written.read_bytes())
                if not {"--json", "json", "sarif"}.isdisjoint(form):
                    json.loads(result.stdout)

    def elements_of(self, content):
        """What the page about a file is made of."""
        report = self.path("report.html")
        self.assertEqual(run("-q", "--report", report, self.file("model.inp", content)).returncode, 0)
        page = Page(Path(os.fsdecode(report)).read_text("utf-8"))
        return [(element.tag, element.attributes) for element in page.elements]

    def test_texts_of_a_file(self):
        for file_format, template in FILES.items():
            for text in LONG:
                with self.subTest(file_format, text=text):
                    path = self.file("model.inp", file_with(template, text))
                    # every text is where a text may stand, so that the import gets to its end
                    self.assertEqual(run("-q", path).returncode, 0)
                    self.check_every_form(path, (0, 1))

    def test_texts_make_nothing_of_a_page(self):
        for file_format, template in FILES.items():
            harmless = self.elements_of(file_with(template, HARMLESS))
            for text in LONG:
                with self.subTest(file_format, text=text):
                    self.assertEqual(self.elements_of(file_with(template, text)), harmless)

    def test_texts_where_a_number_should_be(self):
        for file_format, template in FILES.items():
            content = file_with(template, HARMLESS)
            number = {"legacy": b"1 0 1 100.5", "current": b"    1    0    1    3"}[file_format]
            for text in LONG:
                with self.subTest(file_format, text=text):
                    path = self.file("model.inp", content.replace(number, number[:6] + text.ljust(8) + number[6:]))
                    self.assertEqual(run("-q", path).returncode, 1)
                    self.check_every_form(path, (1,))

    def test_names_of_files(self):
        for text in LONG:
            name = text.replace(b"/", b"|")
            with self.subTest(name=name):
                self.check_every_form(self.file(name, file_with(LEGACY, HARMLESS)), (0, 1))
                self.check_every_form(self.path(b"missing" + name), (1, 3))

    def test_command_lines(self):
        for text in LONG:
            missing = self.path(b"missing/" + text)
            for arguments in ([b"--" + text], [b"-" + text], [text], [b"import", b"--scope", text, b"x"],
                              [b"check", b"--format", text, b"x"], [b"check", b"--format=" + text, b"x"],
                              [b"import", b"--index-names", text, b"x"], [b"import", b"x", text], [b"check"] + [text] * 2,
                              [b"--log", missing, self.file("model.inp")], [b"--report", missing, self.file("model.inp")]):
                with self.subTest(arguments=arguments):
                    result = run(*arguments)
                    self.assertNotEqual(result.returncode, 0)
                    self.assert_harmless(result.stdout + result.stderr)

    def test_very_long_names(self):
        for name in (b"x" * 250, b"\xe2\x80\xae" * 80, b"<" * 250):
            with self.subTest(name=name):
                self.check_every_form(self.file(name, file_with(LEGACY, HARMLESS)), (0, 1))
        path = self.file("model.inp", file_with(LEGACY, b"<b>" + b"\x1b" * 5000))
        self.check_every_form(path, (0, 1))


if __name__ == "__main__":
    unittest.main()

"""Reads the report pages that the built program kova-import writes."""

import os
import signal
import unittest

import command_test as program
from command_test import run
from report_pages import (HOSTILE_NAMES, HOSTILE_SHORT_NAMES, Page, hostile_broken_file,
                          hostile_file)

# Named here so that its tests do not run once more.
CommandTestBase = program.CommandTest


class ReportTest(CommandTestBase):
    def text(self, path, *options, status=None):
        report = self.path("report.html")
        result = run("--quiet", "--report", report, *options, path)
        if status is not None:
            self.assertEqual(result.returncode, status, result.stderr)
        self.assertIn(result.returncode, (0, 1, 3, 4), result.stderr)
        with open(report, "rb") as file:
            return file.read().decode()

    def page(self, path, *options, status=None):
        return Page(self.text(path, *options, status=status))


class Pages(ReportTest):
    def paths(self):
        return [program.LEGACY, program.CURRENT, self.file("small.inp"), self.changed(27, b"1 2x"),
                self.file("empty.inp", b""), self.path("missing.inp"),
                self.file("hostile.inp", hostile_file()),
                self.file("broken.inp", hostile_broken_file())]

    def test_every_page_is_well_formed_and_accessible(self):
        for path in self.paths():
            page = self.page(path)
            self.assertEqual(page.one("html").attributes["lang"], "en")
            self.assertTrue(page.one("title").text.startswith("Import report: "))
            for tag in ("h1", "header", "main", "footer"):
                page.one(tag)
            identifiers = [element.attributes["id"] for element in page.elements
                           if "id" in element.attributes]
            self.assertEqual(len(identifiers), len(set(identifiers)))
            for element in page.elements:
                label = element.attributes.get("aria-labelledby")
                self.assertTrue(label is None or label in identifiers)
            for section in page.all("section"):
                self.assertIn("aria-labelledby", section.attributes)
            for table in page.all("table", "list"):
                self.assertTrue(any(caption.parent is table for caption in page.all("caption")))
            for head in page.all("th"):
                self.assertIn(head.attributes["scope"], ("row", "col"))

    def test_nothing_comes_from_elsewhere(self):
        policy = "default-src 'none'; style-src 'unsafe-inline'"
        for path in self.paths():
            text = self.text(path)
            page = Page(text)  # which knows no element or attribute that could bring anything
            self.assertIn(policy, [meta.attributes.get("content") for meta in page.all("meta")
                                   if meta.attributes.get("http-equiv") ==
                                   "Content-Security-Policy"])
            style = page.one("style").text
            for word in ("url(", "@import", "expression", "<"):
                self.assertNotIn(word, style)
            for character in text:
                self.assertTrue(character == "\n" or ord(character) >= 0x20)
                self.assertFalse(0x7F <= ord(character) < 0xA0 or 0x202A <= ord(character) <= 0x202E)

    def test_sample(self):
        page = self.page(program.LEGACY)
        self.assertIn("river-estuary-v7.inp", page.one("h1").text)
        terms = dict(zip((term.text for term in page.all("dt")),
                         (text.text for text in page.all("dd"))))
        self.assertEqual(terms["Model"], "Eutrophication (type 11)")
        self.assertEqual(terms["Period"],
                         "2019-01-01 00:00:00 to 2020-01-01 00:00:00 (365 days)")
        self.assertEqual(terms["Asked for"], "Everything, segment names with their numbers")
        rows = [head.text for head in page.all("th") if head.attributes["scope"] == "row" and
                head.parent.parent.tag == "tbody"]
        self.assertEqual([name.lower() for name in rows[-11:]], program.SECTIONS)
        systems = [item.text for item in page.all("li") if item.parent.tag == "ol"]
        self.assertEqual((len(systems), systems[0]), (22, "Ammonia"))
        pane = page.one("div", "pane")
        for text in ("KOVA Import Utility Version Information", "KOVA7 Model Parameters",
                     "KOVA 8 State Variables Imported", "Importing Segment Information",
                     "interface & KOVA8 Interface"):
            self.assertIn(text, pane.text)
        for character in "<>\\":
            self.assertNotIn(character, pane.text)

    def test_options(self):
        text = self.page(program.LEGACY, "--scope=transport", "--index-names=no").one("dl").text
        self.assertIn("Network and transport only, segment names as they are", text)

    def test_error(self):
        page = self.page(self.changed(27, b"1 2x 1 100.5"), status=1)
        article = page.one("article", "error")
        self.assertIn('segments: segment geometry: cannot read "bottom segment"', article.text)
        self.assertIn("line 27, column 3", article.text)
        self.assertEqual(page.one("pre").text, "27 | 1 2x 1 100.5\n   |   ^~")
        self.assertIn('Found "2x"; expected an integer', article.text)
        self.assertIn("Stopped before its end", page.one("p", "verdict").text)
        self.assertEqual(page.all("span", "error")[0].parent.tag, "p")

    def test_error_in_the_pane(self):
        page = self.page(self.file("broken.inp", hostile_broken_file()), status=1)
        self.assertIn("Error Reading Import File at Line # ", page.one("div", "pane").text)
        self.assertIn("<script>alert(1)</script>", page.one("pre").text)

    def test_file_that_cannot_be_opened(self):
        for name in ("missing.inp", "<script>alert(1)<", "<b>bold<" + "x" * 90):
            page = self.page(self.path(name), status=3)
            self.assertIn("cannot be opened", page.one("article", "error").text)
            self.assertIn("File Can Not be Opened", page.one("div", "pane").text)
            self.assertIn("File: " + os.fsdecode(self.path(name))[:120],
                          page.one("div", "pane").text)

    def test_names_are_text(self):
        page = self.page(self.file("hostile.inp", hostile_file()))
        systems = [item.text for item in page.all("li") if item.parent.tag == "ol"]
        pane = page.one("div", "pane")
        # The cells of the table of systems.
        cells = [cell.text for cell in page.all("td") if "width:331px" in
                 cell.attributes.get("style", "") and "colspan" not in cell.attributes][1:]
        for i, name in enumerate(HOSTILE_NAMES[:10] + HOSTILE_NAMES[15:]):
            self.assertIn(name.decode(), pane.text)
            self.assertIn(name.decode(), systems)
            self.assertIn(name.decode(), cells)
        for shown in ("\\u202etxet", "\\x1b[31mred", "\u00ff\u00fe<td onclick=x>"):
            self.assertIn(shown, systems)  # a NUL ends a name in the model, not in the pane
            self.assertTrue(any(cell.startswith(shown) for cell in cells))
        self.assertIn("\\x1b[31mred\\x00\\x07", cells)
        self.assertEqual(len(cells), 22)
        short = [cell.text for cell in page.all("td")
                 if "width:222px" in cell.attributes.get("style", "")][1:]
        self.assertEqual(short, [HOSTILE_SHORT_NAMES[i % len(HOSTILE_SHORT_NAMES)].decode()
                                 for i in range(len(HOSTILE_NAMES))] + ["PH-SU", "ALKAL"])
        self.assertEqual(page.all("b"), [])

    def test_file_names(self):
        for name in program.FileNames.NAMES + (b"<img src=x onerror=f()>", b"'\"&amp;"):
            page = self.page(self.file(name))
            if name.isascii() and name.decode().isprintable():
                self.assertEqual(page.one("title").text, "Import report: " + name.decode())


class Files(ReportTest):
    def test_page_that_cannot_be_written(self):
        for report in ("/dev/full", self.path("no/folder"), self.folder):
            result = run("--report", report, self.file("small.inp"))
            self.assertEqual(result.returncode, 74)
            self.assertIn(b"the report ", result.stderr)
            self.assertIn(b"cannot be written", result.stderr)

    def test_does_not_overwrite_other_files(self):
        path = self.file("model.inp")
        os.symlink(path, self.path("link"))
        for report in (path, self.path("link"), self.path("./model.inp")):
            self.assertEqual(run(path, "--report", report).returncode, 2)
        with open(path, "rb") as file:
            self.assertEqual(file.read(), program.SMALL)
        missing = self.path("missing.inp")
        self.assertEqual(run(missing, "--report", missing).returncode, 2)
        self.assertFalse(os.path.exists(missing))
        result = run(path, "--report", self.path("out"), "--log", self.path("./out"))
        self.assertEqual(result.returncode, 2)
        self.assertIn(b"overwrite the command log", result.stderr)

    def test_other_results_stay_as_they_are(self):
        report = self.path("report.html")
        path = self.file("small.inp")
        for options in ([], ["--json"], ["--verbose"]):
            plain = run(*options, path)
            reported = run("--report", report, *options, path)
            self.assertEqual((plain.returncode, plain.stdout, plain.stderr),
                             (reported.returncode, reported.stdout, reported.stderr))

    def test_same_import_same_page(self):
        self.assertEqual(self.text(program.CURRENT), self.text(program.CURRENT))

    def test_belongs_to_import(self):
        result = run("check", "--report", "x", program.LEGACY)
        self.assertEqual(result.returncode, 2)
        self.assertIn(b"--report", run("--help").stdout)


if __name__ == "__main__":
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)
    unittest.main()

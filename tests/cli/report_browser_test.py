"""Opens report pages in a browser: nothing from a file may become active there."""

import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from html import unescape
from pathlib import Path

import command_test as program
from injection_test import LEGACY, file_with
from report_pages import Page, hostile_broken_file, hostile_file

BROWSER = shutil.which("chromium")
NOT_RUN = 77


def browse(page, *options):
    """Runs the browser with a profile of its own and gives what it writes."""
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        return subprocess.run(
            [BROWSER, "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic",
             "--no-first-run", "--disable-background-networking", "--disable-component-update",
             "--disable-sync", "--user-data-dir=" + profile, *options, Path(page).as_uri()],
            stdin=subprocess.DEVNULL, capture_output=True, timeout=120, check=True).stdout


class InABrowser(program.CommandTest):
    def report(self, content, name):
        report = os.fsdecode(self.path("report.html"))
        program.run("--quiet", "--report", report, self.file(name, content))
        return report

    def document(self, report):
        text = browse(report, "--dump-dom").decode()
        # The browser writes what its document holds; the reader takes nothing active.
        return text, Page(text[text.index("<!DOCTYPE"):].strip())

    def test_names_stay_text(self):
        for content, name in ((hostile_file(), "model.inp"),
                              (hostile_broken_file(), "<script>alert(1)<")):
            report = self.report(content, name)
            text, document = self.document(report)
            self.assertNotIn("<script", text.lower())
            self.assertIn("<script>alert(1)</script>", document.one("div", "pane").text)
            # The browser finds the very elements that the page was meant to have.
            written = Page(Path(report).read_text("utf-8"))
            self.assertEqual([element.tag for element in document.elements],
                             [element.tag for element in written.elements])
            self.assertEqual("".join(document.one("body").text.split()),
                             "".join(written.one("body").text.split()))
            self.assertEqual(unescape(document.one("title").text), written.one("title").text)

    def test_names_of_time_functions_stay_text(self):
        name = b"<big style=\"color:red\">Whole"
        _, document = self.document(self.report(file_with(LEGACY, name), "model.inp"))
        self.assertIn(name.decode(), document.one("div", "pane").text)

    def test_prints(self):
        report = self.report(hostile_file(), "model.inp")
        printed = self.path("report.pdf")
        browse(report, "--no-pdf-header-footer", "--print-to-pdf=" + os.fsdecode(printed))
        with open(printed, "rb") as file:
            self.assertTrue(file.read().startswith(b"%PDF"))


if __name__ == "__main__":
    if BROWSER is None:
        print("chromium is not installed")
        sys.exit(NOT_RUN)
    unittest.main()

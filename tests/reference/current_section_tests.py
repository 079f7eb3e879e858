"""What the tests of current-format sections have in common."""

import unittest

from command_log import Answers
from driver import import_file
from small_files import (CURRENT_CONSOLE, FIRST_STATEMENT, commands_of, current_file, current_file_up_to,
                         pane_report)

TRANSPORT_ONLY = Answers(scope=0)
SECTION_WITHOUT_PANE_REPORT = "flowpath"


def columned(*placed, filler=b" "):
    """A line with texts at columns, counted from 1, and the filler between them."""
    line = b""
    for column, text in placed:
        line = line.ljust(column - 1, filler) + text
    return line + b"\n"


class CurrentSections(unittest.TestCase):
    section = None

    def imported(self, content, answers=None, **options):
        """An import that comes to the end of the file, and writes on the console what every such import does."""
        result = import_file(current_file(**{self.section: content}, **options), answers)
        self.assertIsNone(result.failure)
        self.assertEqual(result.console_lines, CURRENT_CONSOLE)
        return result

    def commands(self, content, answers=None, **options):
        return commands_of(self.imported(content, answers, **options), self.section)

    def assert_fails(self, content, record, column, field, before=(), lines_before=0, answers=None, **options):
        """The read statement of that number in the section fails; the file ends with the content.

        `lines_before` are the lines that records took beyond their first one, `before` what was sent before.
        """
        result = import_file(current_file_up_to(self.section, content, **options), answers)
        statement = FIRST_STATEMENT[self.section] + record - 1
        failure = result.failure
        self.assertIsNotNone(failure)
        self.assertEqual((failure.section, failure.statement, failure.line, failure.column, failure.field),
                         (self.section + "_v2", statement, statement - 1 + lines_before, column, field))
        self.assertEqual(result.console_lines[-1], b"Error Reading Import File at Line: %d" % statement)
        report = [] if self.section == SECTION_WITHOUT_PANE_REPORT else pane_report(statement)
        self.assertEqual(commands_of(result, self.section), list(before) + report)
        return result

    def assert_ends(self, content, records, before=()):
        """Cut behind any of its lines, each of which is a record, the section fails at the record behind the cut."""
        lines = content.splitlines(keepends=True)
        self.assertEqual(len(lines), records)
        for kept in range(records):
            with self.subTest(kept):
                result = import_file(current_file_up_to(self.section, b"".join(lines[:kept])))
                self.assertEqual(result.failure.section, self.section + "_v2")
                self.assertEqual(result.failure.statement, FIRST_STATEMENT[self.section] + kept)
                self.assertEqual(result.failure.reason, "the file ends")

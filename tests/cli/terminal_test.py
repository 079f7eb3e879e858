"""Runs the built program kova-import on a terminal: progress, colour and questions."""

import errno
import fcntl
import json
import os
import pty
import select
import signal
import struct
import subprocess
import termios
import unittest

import command_test as program
from command_test import COMMAND, LEGACY, environment, run

# Named here so that its tests do not run once more.
CommandTestBase = program.CommandTest


class Terminal:
    """Runs the program on a terminal of its own; standard output can be kept apart."""

    def __init__(self, *arguments, columns=80, env=None, output_apart=False, answers=b""):
        leader, follower = pty.openpty()
        fcntl.ioctl(follower, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        output = subprocess.PIPE if output_apart else follower
        process = subprocess.Popen([COMMAND, *arguments], stdin=follower, stdout=output,
                                   stderr=follower, env=env or environment(),
                                   start_new_session=True)
        os.close(follower)
        os.write(leader, answers)
        self.screen = self._read(leader, process)
        self.output = process.stdout.read() if output_apart else b""
        if output_apart:
            process.stdout.close()
        self.status = process.wait(60)
        os.close(leader)

    @staticmethod
    def _read(leader, process):
        screen = b""
        while True:
            if not select.select([leader], [], [], 60)[0]:
                process.kill()
                raise AssertionError("the program hangs: %r" % screen)
            try:
                piece = os.read(leader, 65536)
            except OSError as error:
                if error.errno != errno.EIO:
                    raise
                return screen
            if not piece:
                return screen
            screen += piece


class OnATerminal(CommandTestBase):
    def test_progress_bar_and_colour(self):
        terminal = Terminal(self.changed(27, b"1 2x"))
        self.assertEqual(terminal.status, 1)
        for text in (b"]   0 % model parameters", b"]   5 % segments"):
            self.assertIn(text, terminal.screen)
        # an import that has stopped makes no progress, and is not done
        self.assertNotIn(b" 10 % ", terminal.screen)
        self.assertNotIn(b"100 % ", terminal.screen)
        self.assertIn(b"\033[1;31merror: \033[0m", terminal.screen)
        self.assertNotIn(b"kova-import: 5 %", terminal.screen)

    def test_no_color(self):
        terminal = Terminal(self.changed(27, b"1 2x"), env=environment(NO_COLOR="1"))
        self.assertNotIn(b"\033", terminal.screen)
        self.assertIn(b"\r[", terminal.screen)
        self.assertIn(b"error: segments", terminal.screen)

    def test_dumb_terminal(self):
        terminal = Terminal(LEGACY, env=environment(TERM="dumb"))
        self.assertNotIn(b"\033", terminal.screen)
        self.assertIn(b"kova-import: 100 % done", terminal.screen)

    def test_width(self):
        line = b"1 2 1" + b" " * 300 + b"wrong" + b" " * 300 + b"1"
        for columns in (40, 60, 132):
            terminal = Terminal("-q", self.changed(27, line), columns=columns,
                                env=environment(NO_COLOR="1"))
            lines = terminal.screen.decode().split("\r\n")
            self.assertLessEqual(len(lines[1]), columns)
            self.assertEqual(lines[2].index("^"), lines[1].index("wrong"))

    def test_json_with_a_bar_on_standard_error(self):
        terminal = Terminal("--json", LEGACY, output_apart=True)
        self.assertEqual(json.loads(terminal.output)["exit_status"], terminal.status)
        self.assertIn(b"] 100 % ", terminal.screen)

    def test_quiet(self):
        self.assertNotIn(b" % ", Terminal("--quiet", LEGACY).screen)


class Asking(CommandTestBase):
    def test_without_a_terminal(self):
        result = run("--ask", LEGACY)
        self.assertEqual(result.returncode, 2)
        self.assertIn(b"--ask needs a terminal", result.stderr)
        self.assertEqual(result.stdout, b"")

    def summary(self, answers, *options):
        terminal = Terminal("--ask", "--json", *options, self.file("small.inp"), output_apart=True,
                            answers=answers)
        self.assertIn(terminal.status, (0, 4))
        for text in (b"Set Verbose Option: Yes or No?", b"Import Network/Transport or All ?",
                     b"Add Index to Segment Name to Insure Unique Name"):
            self.assertEqual(terminal.screen.count(text), 1)
        self.assertNotIn(b"Click Okay", terminal.screen)
        return json.loads(terminal.output)["summary"]["options"], terminal

    def test_answers(self):
        self.assertEqual(self.summary(b"yes\ntransport\nno\n")[0],
                         {"scope": "transport", "index_names": False})
        self.assertEqual(self.summary(b"1\n2\n1\n")[0], {"scope": "all", "index_names": True})

    def test_empty_answers_mean_what_the_options_say(self):
        self.assertEqual(self.summary(b"\n\n\n")[0], {"scope": "all", "index_names": True})
        self.assertEqual(self.summary(b"\n\n\n", "--scope=transport", "--index-names=no")[0],
                         {"scope": "transport", "index_names": False})

    def test_asks_again(self):
        options, terminal = self.summary(b"\nperhaps\n3\nt\n\n")
        self.assertEqual(options["scope"], "transport")
        self.assertEqual(terminal.screen.count(b"Please answer"), 2)

    def test_no_answer(self):
        terminal = Terminal("--ask", self.file("small.inp"), answers=b"\n\x04")
        self.assertEqual(terminal.status, 2)
        self.assertIn(b"nothing was imported", terminal.screen)


if __name__ == "__main__":
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)
    unittest.main()

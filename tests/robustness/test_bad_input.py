"""Files that are none, and files that want to do harm: each must end in a clear error, soon and in little memory."""

import json
import os
import resource
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

COMMAND = os.environ["KOVA_COMMAND"]
SANITIZED = os.environ.get("KOVA_SANITIZED") == "1"
SECONDS = int(os.environ.get("KOVA_SECONDS", "2"))
MEMORY_KB = 32 * 1024

OPENING = """   11      {version}
{title}1 2 2003 4 5 6
7 8 2009 10 11 12
365.0
{systems}
5
1
2
3
4
9
0.1
0.125 0.5
"""
LEGACY = OPENING.replace("{version}", "2").replace("{title}", "")
CURRENT = OPENING.replace("{version}", "3").replace("{title}", "A river\n")
HUGE = "2000000000"
ONE_SYSTEM = LEGACY.replace("{systems}", "1") + "0\n0\n0\n0\n"
NO_SEGMENTS = "0\n0\n0\n0 0\nNames\nGeometry\n"
# the sections behind the segments without anything in them
NO_FLOW_PATHS, NO_FLOWS, NO_EXCHANGES, NO_BOUNDARIES, NO_LOADS = "0\n0\n", "0\n", "0\n", "0\n", "0\n0\n"
NO_TIME_FUNCTIONS, NO_PARAMETERS, NO_CONSTANTS, NO_INITIAL_CONDITIONS = "0\n", "0\n0\n", "0\n", "0\n0\n"
NO_NETWORK = NO_FLOW_PATHS + NO_FLOWS + NO_EXCHANGES + NO_BOUNDARIES + NO_LOADS
NOTHING_ELSE = NO_NETWORK + NO_TIME_FUNCTIONS + NO_PARAMETERS + NO_CONSTANTS + NO_INITIAL_CONDITIONS


class BadInput(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def run_import(self, path, **process_options):
        """Imports a file; gives the exit status and the JSON, and holds the import to its bounds."""
        started = time.monotonic()
        process = subprocess.Popen([COMMAND, "--json", "--quiet", path], stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, **process_options)
        output = process.stdout.read()
        process.stdout.close()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        self.assertLess(time.monotonic() - started, SECONDS)
        if not SANITIZED:
            self.assertLess(usage.ru_maxrss, MEMORY_KB)
        return process.returncode, json.loads(output)

    def import_bytes(self, content):
        path = self.folder / "model.inp"
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return self.run_import(path)

    def assert_cannot_be_opened(self, path, reason, **process_options):
        status, result = self.run_import(path, **process_options)
        self.assertEqual(status, 3)
        self.assertIn(reason, json.dumps(result["errors"]))

    def assert_read_failure(self, content, line, field=None):
        status, result = self.import_bytes(content)
        self.assertEqual(status, 1)
        error = result["errors"][0]
        self.assertEqual(error["line"], line)
        if field is not None:
            self.assertEqual(error["field"], field)
        return error

    def test_a_file_that_is_missing(self):
        self.assert_cannot_be_opened(self.folder / "missing", "there is no such file")

    def test_a_file_that_may_not_be_read(self):
        path = self.folder / "locked"
        path.write_text("   11      2\n")
        path.chmod(0)
        somebody = {}
        if os.geteuid() == 0:
            # the superuser may read every file
            self.folder.chmod(0o755)
            somebody = {"user": 65534, "group": 65534, "extra_groups": []}
            try:
                subprocess.run([COMMAND, "--version"], check=True, capture_output=True, **somebody)
            except (OSError, subprocess.CalledProcessError):
                self.skipTest("the command is out of reach for anybody else")
        self.assert_cannot_be_opened(path, "may not be read", **somebody)

    def test_a_folder(self):
        self.assert_cannot_be_opened(self.folder, "it is a folder")

    def test_a_pipe_without_a_writer(self):
        path = self.folder / "pipe"
        os.mkfifo(path)
        self.assert_cannot_be_opened(path, "it is not a regular file")

    def test_a_device(self):
        self.assert_cannot_be_opened("/dev/zero", "it is not a regular file")

    def test_a_path_below_a_file(self):
        path = self.folder / "file"
        path.write_text("")
        self.assert_cannot_be_opened(path / "model.inp", "there is no such file")

    def test_an_empty_file(self):
        self.assert_read_failure("", 1)

    def test_a_header_and_nothing_else(self):
        self.assert_read_failure("   11      2\n", 1)
        self.assert_read_failure("   11      3", 1)

    def test_utf_16(self):
        for encoding in ("utf-16-le", "utf-16-be"):
            error = self.assert_read_failure(("\ufeff" + LEGACY).encode(encoding), 1)
            self.assertIn("UTF-16", json.dumps(error))

    def test_binary_bytes(self):
        everything = bytes(range(256))
        self.assert_read_failure(everything * 40, 1)
        self.assert_read_failure(b"   11      2\n" + everything * 40, 2)

    def test_a_line_of_100_megabytes(self):
        path = self.folder / "long.inp"
        for content in (b" ", b"1", b"x", b"'", b"1*", b","):
            with open(path, "wb") as file:
                file.write(b"   11      2\n")
                block = content * (1 << 20)
                for _ in range(100 * 1024 * 1024 // len(block)):
                    file.write(block)
            status, result = self.run_import(path)
            self.assertEqual(status, 1, content)
            self.assertTrue(result["errors"])

    def test_a_caption_of_100_megabytes_is_no_error(self):
        path = self.folder / "long.inp"
        head = LEGACY.replace("{systems}", "0") + "0\n\n0\n0\n0\n0\n0\n0 0\n"
        with open(path, "wb") as file:
            file.write(head.encode())
            for _ in range(100):
                file.write(b"c" * (1 << 20))
            file.write(b"\ncaption\n" + NOTHING_ELSE.encode())
        status, _ = self.run_import(path)
        self.assertEqual(status, 0)

    def test_huge_counts_in_small_files(self):
        segments = "1\n0.5\n1 1\nNames\n"
        for content, field in (
                (LEGACY.replace("{systems}", HUGE) + "0\n0 0 0\n", "bypass flag"),
                (LEGACY.replace("{systems}", "1") + HUGE + "\n0 1\n", "time"),
                (LEGACY.replace("{systems}", "1") + "0\n0\n" + HUGE + "\nrecord\n", None),
                (LEGACY.replace("{systems}", "1") + "0\n0\n0\n" + HUGE + "\nrecord\n", None),
                (LEGACY.replace("{systems}", "1") + "0\n0\n0\n0\n" + HUGE + "\n" + segments + "1 'A pool'\n", None),
                (CURRENT.replace("{systems}", HUGE) + "0.25\nNH-34     Ammonia\n", None),
                (CURRENT.replace("{systems}", "0") + "0.25\nSegments\n" + HUGE + "\n" + segments + "    1     A pool\n",
                 None)):
            status, result = self.import_bytes(content)
            self.assertEqual(status, 1, content)
            self.assertIn("ends here", json.dumps(result["errors"]))

    def test_huge_counts_of_fields_functions_pairs_and_breakpoints(self):
        flow_paths = ONE_SYSTEM + NO_SEGMENTS
        flows = flow_paths + NO_FLOW_PATHS
        exchanges = flows + NO_FLOWS
        boundaries = exchanges + NO_EXCHANGES
        loads = boundaries + NO_BOUNDARIES
        for content in (
                flow_paths + "0\n" + HUGE + "\nField\n0\n",
                flow_paths + "0\n1\nField\n" + HUGE + "\nFunction\n0\n",
                flow_paths + "0\n1\nField\n1\nFunction\n" + HUGE + "\n1 2 1\n",
                flows + HUGE + "\nField\n0\n",
                flows + "1\nField\n" + HUGE + "\n1 1\nFunction\n0\n",
                flows + "1\nField\n1\n1 1\nFunction\n" + HUGE + "\n1 2\n",
                exchanges + HUGE + "\nField\n0\n",
                exchanges + "1\nField\n" + HUGE + "\n1 1\nFunction\n0\n0\n",
                exchanges + "1\nField\n1\n1 1\nFunction\n" + HUGE + "\n1 2 3 4\n",
                exchanges + "1\nField\n1\n1 1\nFunction\n0\n" + HUGE + "\n1 2\n",
                boundaries + HUGE + "\nAmmonia\n0\n",
                boundaries + "1\nAmmonia\n" + HUGE + "\n1.0\n1\n0\n",
                loads + "0\n" + HUGE + "\nAmmonia\n0\n",
                loads + "0\n1\nAmmonia\n" + HUGE + "\n1 1\n1\n0\n"):
            status, result = self.import_bytes(content)
            self.assertEqual(status, 1, content)
            self.assertIn("ends here", json.dumps(result["errors"]), content)

    def test_huge_counts_of_functions_parameters_constants_and_conditions(self):
        functions = ONE_SYSTEM + NO_SEGMENTS + NO_NETWORK
        parameters = functions + NO_TIME_FUNCTIONS
        constants = parameters + NO_PARAMETERS
        conditions = constants + NO_CONSTANTS
        for content in (
                functions + "1\n1\nWarm\n" + HUGE + "\n0 1\n",
                parameters + HUGE + "\n1\n2 1\n1\n2 5\n",
                parameters + "1\n" + HUGE + "\n2 1\n",
                constants + HUGE + "\n1 2\n",
                conditions + HUGE + "\n0\nAmmonia\n0\n0\n0\nSegments\n",
                conditions + "1\n" + HUGE + "\nAmmonia\n0\n0\n0\nSegments\n1 2 3\n"):
            status, result = self.import_bytes(content)
            self.assertEqual(status, 1, content)
            self.assertIn("ends here", json.dumps(result["errors"]), content)
        status, result = self.import_bytes(functions + "51\n")
        self.assertEqual(status, 1)
        self.assertEqual(result["errors"][0]["expected"], "at most 50 time functions")

    def test_numbers_that_the_file_chooses_size_no_table(self):
        parameters = ONE_SYSTEM + NO_SEGMENTS + NO_NETWORK + NO_TIME_FUNCTIONS
        # a parameter table of large numbers
        numbers = range(1900000000, 1900003000)
        listed = "".join(f"{number} 1\n" for number in numbers)
        values = "".join(f"{number} 0.5\n" for number in numbers)
        content = parameters + "2\n3000\n" + listed + "1\n" + values + "2\n" + values + NO_CONSTANTS + NO_INITIAL_CONDITIONS
        status, _ = self.import_bytes(content)
        self.assertEqual(status, 0)
        # a segment far away
        conditions = parameters + NO_PARAMETERS + NO_CONSTANTS
        status, result = self.import_bytes(conditions + "1\n" + HUGE + "\nAmmonia\n0\n0\n0\nSegments\n1900000000 2 3\n")
        self.assertEqual(status, 1)
        self.assertIn("ends here", json.dumps(result["errors"]))
        # segments that no record backs
        status, result = self.import_bytes(conditions + "0\n100001\n")
        self.assertEqual(status, 1)
        self.assertEqual(result["errors"][0]["expected"], "at most 100000 segments, without any system")
        status, _ = self.import_bytes(conditions + "0\n100000\n")
        self.assertEqual(status, 0)

    def test_values_of_the_air_temperature_for_segments_that_no_record_backs(self):
        functions = "1\n10\nAir\n1\n0 20\n"
        content = ONE_SYSTEM + NO_SEGMENTS + NO_NETWORK + functions
        status, result = self.import_bytes(content + "100000\n0\n" + NO_CONSTANTS + NO_INITIAL_CONDITIONS)
        self.assertEqual(status, 0)
        sections = {section["name"]: section for section in result["summary"]["sections"]}
        self.assertEqual(sections["segment parameters"]["brought"], {"parameters": 2, "values": 200000})
        error = self.assert_read_failure(content + "100001\n0\n", content.count("\n") + 2)
        self.assertEqual(error["expected"], "at least 1 parameter, with more than 100000 segments")

    def test_series_longer_than_the_buffers_are_refused_where_they_are_announced(self):
        boundaries = ONE_SYSTEM + NO_SEGMENTS + NO_FLOW_PATHS + NO_FLOWS + NO_EXCHANGES
        for content, line in ((boundaries + "1\nAmmonia\n1\n1.0\n7\n", 33),
                              (boundaries + NO_BOUNDARIES + "0\n1\nAmmonia\n1\n1 1\n7\n", 35)):
            self.assertEqual(content.count("\n") + 1, line)
            for count in ("170001", HUGE):
                error = self.assert_read_failure(content + count + "\n", line)
                self.assertEqual(error["expected"], "at most 170000 breakpoints")
            error = self.assert_read_failure(content + "170000\n", line)
            self.assertIn("ends here", json.dumps(error))

    @unittest.skipIf(SANITIZED, "the sanitizers need the addresses")
    def test_a_section_that_does_not_fit_memory_ends_like_a_failed_read(self):
        # more segments than addresses are left for, and nothing else to tell
        content = CURRENT.replace("{systems}", "0") + "0.25\nSegments\n" + HUGE + "\n1\n0.5\n1 1\nNames\n"
        path = self.folder / "model.inp"
        # written piece by piece: this process must stay small, since a child's peak of memory counts from its fork
        with open(path, "w") as file:
            file.write(content)
            for _ in range(300):
                file.write("          Abcdefghijklmnopqrstuvwxyz0123456789ABCD\n" * 10000)
        addresses = 120 * 1024 * 1024
        run = subprocess.run([COMMAND, "--json", "--quiet", "--index-names", "no", path], capture_output=True,
                             preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (addresses, addresses)))
        self.assertEqual(run.returncode, 1)
        self.assertIn("There is not enough memory for the section.", json.dumps(json.loads(run.stdout)["errors"]))

    def test_a_huge_repeat_count_fills_the_bypass_flags_at_once(self):
        status, _ = self.import_bytes(
            LEGACY.replace("{systems}", HUGE) + "0\n" + HUGE + "*0\n0\n0\n" + NO_SEGMENTS + NOTHING_ELSE)
        self.assertEqual(status, 0)


if __name__ == "__main__":
    unittest.main()

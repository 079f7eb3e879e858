"""Runs the built program kova-import as people and other programs do."""

import json
import os
import shutil
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path
from urllib.parse import unquote_to_bytes

COMMAND = os.environ["KOVA_IMPORT_COMMAND"]
LIBRARY = os.environ["KOVA_IMPORT_LIBRARY"]
SAMPLES = Path(os.environ["KOVA_SAMPLES"])
LEGACY = str(SAMPLES / "river-estuary-v7.inp")
CURRENT = str(SAMPLES / "river-estuary-v8.inp")

SECTIONS = ["model parameters", "segments", "flow paths", "flow time series", "exchanges",
            "boundary conditions", "loads", "environmental time functions", "segment parameters",
            "kinetic constants", "initial conditions"]

# Up to the end of the segments of a legacy file, one line a record.
SMALL = b"""\
   11      2
3 1 2020 6 30 0
3 1 2020 6 30 0
10.5
3
0
1
0
0
1
0
0.9
0.001 0.1
1
0 0.5
0 0 0
0
0
2
0
1.0
1.0 1.0
names
1 'Upper Pool'
2 Lower
geometry
1 2 1 100.5 0.1 0.2 0.3 0.4 1000 0.001 20 0.03 0.1
2 0 1 200.5 0.1 0.2 0.3 0.4 1000 0.001 20 0.03 0.1
0
0
0
0
0
0
0
0
0
0
0
0
0
"""


def environment(**changes):
    result = {name: value for name, value in os.environ.items()
              if name not in ("NO_COLOR", "COLUMNS", "TERM")}
    result.update(TERM="xterm", LC_ALL="C")
    result.update(changes)
    return result


def run(*arguments, env=None, **options):
    options.setdefault("stdin", subprocess.DEVNULL)
    return subprocess.run([COMMAND, *arguments], capture_output=True, timeout=60,
                          env=env or environment(), **options)


class CommandTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = os.fsencode(folder.name)

    def path(self, name):
        return os.path.join(self.folder, os.fsencode(name))

    def file(self, name, content=SMALL):
        with open(self.path(name), "wb") as file:
            file.write(content)
        return self.path(name)

    def changed(self, line, content, name="bad.inp"):
        """SMALL with another line `line`."""
        lines = SMALL.splitlines(keepends=True)
        lines[line - 1] = content + b"\n"
        return self.file(name, b"".join(lines))


class ExitStatus(CommandTest):
    def check(self, result, status):
        self.assertEqual(result.returncode, status, result.stderr)

    def test_both_formats_are_imported_to_their_end(self):
        for path in (LEGACY, CURRENT):
            result = run(path)
            self.check(result, 0)
            self.assertIn(b": imported, with warnings\n", result.stdout)
            for text in (b"this version", b"imported in part"):
                self.assertNotIn(text, result.stdout + result.stderr)
            document = json.loads(run(path, "--json").stdout)
            self.assertEqual((document["result"], document["exit_status"]), ("imported", 0))
            self.assertEqual({section["status"] for section in document["summary"]["sections"]},
                             {"imported"})

    def test_sections_of_the_current_format(self):
        result = run(CURRENT)
        lines = {line[:34].strip(): line[34:] for line in result.stdout.decode().splitlines()
                 if line.startswith("    ")}
        self.assertEqual(list(lines), SECTIONS)
        self.assertEqual(lines["initial conditions"],
                         "22 systems, 924 concentrations, 22 maximum concentrations dropped")
        self.assertIn("3 placeholders", lines["loads"])
        self.assertIn("1 function replaced by a later one", lines["environmental time functions"])

    def test_notes_alone(self):
        for path, verdict in ((self.file("small.inp"), b"imported, with changes"),
                              (self.changed(5, b"0"), b"imported")):
            result = run(path)
            self.check(result, 0)
            self.assertIn(b": " + verdict + b"\n", result.stdout)
            self.assertNotIn(b"warning: ", result.stderr)
            self.check(run("check", path), 0)

    def test_read_error(self):
        self.check(run(self.changed(5, b"x")), 1)

    def test_header_that_cannot_be_read(self):
        self.check(run(self.changed(1, b"   1x      2")), 1)
        self.check(run(self.file("empty.inp", b"")), 1)

    def test_file_that_cannot_be_opened(self):
        os.mkfifo(self.path("pipe"))
        for path, reason in ((self.path("missing.inp"), b"no such file"),
                             (self.folder, b"folder"),
                             (self.path("pipe"), b"not a regular file"),
                             (b"/dev/null", b"not a regular file"),
                             (self.path("x" * 300), b"too long"),
                             (b"./" * 300 + b"f", b"too long"),
                             (b"", b"no file was named")):
            result = run(path)
            self.check(result, 3)
            self.assertIn(b"cannot be opened", result.stderr)
            self.assertIn(reason, result.stderr)

    @unittest.skipIf(os.geteuid() == 0, "root may read everything")
    def test_file_that_may_not_be_read(self):
        path = self.file("secret.inp")
        os.chmod(path, 0)
        self.check(run(path), 3)

    def test_wrong_use(self):
        for arguments in ([], ["import"], ["check"], ["--wrong", LEGACY], [LEGACY, CURRENT],
                          ["--scope", "some", LEGACY], ["-q", "-v", LEGACY], ["--log"],
                          ["check", "--format", "xml", LEGACY]):
            result = run(*arguments)
            self.check(result, 2)
            self.assertEqual(result.stdout, b"")
            self.assertNotEqual(result.stderr, b"")

    def test_broken_installation(self):
        alone = self.path("kova-import")
        shutil.copy(COMMAND, alone)
        host = os.path.dirname(LIBRARY)
        bare = self.path("host")
        os.mkdir(bare)
        for name in os.listdir(host):
            if name.startswith("libprekovawdll"):
                shutil.copy(os.path.join(host, name), os.fsdecode(bare))
        # The build tree's library is found by its absolute path too, unless another stands before it.
        with open(os.path.join(bare, os.fsencode(os.path.basename(LIBRARY))), "wb"):
            pass
        result = subprocess.run([alone, LEGACY], capture_output=True, timeout=60,
                                env=environment(LD_LIBRARY_PATH=os.fsdecode(bare)))
        self.check(result, 70)
        self.assertIn(b"the installation is broken", result.stderr)
        self.assertEqual(result.stdout, b"")

    def test_results_that_cannot_be_written(self):
        with open("/dev/full", "wb") as full:
            result = subprocess.run([COMMAND, LEGACY], stdout=full, stderr=subprocess.PIPE,
                                    timeout=60, env=environment())
        self.check(result, 74)
        self.check(run(LEGACY, "--log", "/dev/full"), 74)
        self.check(run(LEGACY, "--log", self.path("no/folder")), 74)
        result = subprocess.run(["/bin/sh", "-c", '"$0" "$1" >&-', COMMAND, LEGACY],
                                stderr=subprocess.PIPE, timeout=60, env=environment())
        self.check(result, 74)


class Streams(CommandTest):
    def test_summary_goes_to_output_and_the_rest_to_error(self):
        result = run(LEGACY)
        for text in (b"eutrophication (type 11)", b"legacy (version 7), file version 2",
                     b"2019-01-01 00:00:00 to 2020-01-01 00:00:00 (365 days)",
                     b"22 of 28 in the file", b"Segments    42", b"42 segments"):
            self.assertIn(text, result.stdout)
        for name in SECTIONS:
            self.assertIn(b"    " + name.encode() + b" ", result.stdout)
        self.assertNotIn(b"Reading Segment", result.stdout + result.stderr)
        self.assertNotIn(b"\r", result.stderr)
        self.assertNotIn(b"\033", result.stdout + result.stderr)
        progress = [line for line in result.stderr.splitlines() if b" % " in line]
        self.assertEqual([int(line.split()[1]) for line in progress],
                         [0, 5, 10, 20, 30, 40, 50, 60, 70, 80, 85, 100])

    def test_sub_command_means_the_same(self):
        self.assertEqual(run(CURRENT).stdout, run("import", CURRENT).stdout)
        self.assertEqual(run(CURRENT).returncode, run("import", CURRENT).returncode)

    def test_quiet(self):
        result = run("--quiet", self.changed(5, b"x"))
        self.assertEqual(result.stdout, b"")
        self.assertNotIn(b" % ", result.stderr)
        self.assertIn(b"bad.inp:5:1: error: ", result.stderr)

    def test_verbose_shows_the_console_lines(self):
        result = run("--verbose", self.file("small.inp"))
        self.assertIn(b"library: Reading Segment: 1 Name: Upper Pool\n", result.stderr)
        self.assertNotIn(b"library:", result.stdout)
        result = run("--verbose", self.changed(24, b"1 'a\x1b[31mb'"))
        self.assertIn(b"Name: a\\x1b[31mb\n", result.stderr)
        self.assertNotIn(b"\x1b", result.stderr)

    def test_help_and_version(self):
        result = run("--help")
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        for text in (b"Examples:", b"Exit status", b"--scope", b"check", b"--index-names"):
            self.assertIn(text, result.stdout)
        self.assertEqual(run("check", "--help").returncode, 0)
        version = run("--version")
        self.assertEqual(version.returncode, 0)
        self.assertRegex(version.stdout, rb"\Akova-import \d+\.\d+\.\d+\n\Z")

    def test_log(self):
        log = self.path("commands.log")
        self.assertIn(run(LEGACY, "--log", log).returncode, (0, 4))
        with open(log, "rb") as file:
            lines = file.read().splitlines()
        self.assertIn(b'5 PDIALOG[8] text[20] "Set Verbose Option:\\0"', lines[0])
        self.assertIn(b"1 PPROGRESS[10] int 100", lines)
        self.assertTrue(any(line.startswith(b"2 PSEGNAME[9] int 42, ") for line in lines))

    def test_log_does_not_overwrite_the_import_file(self):
        path = self.file("model.inp")
        os.symlink(path, self.path("link"))
        for log in (path, self.path("link"), self.path("./model.inp")):
            self.assertEqual(run(path, "--log", log).returncode, 2)
        with open(path, "rb") as file:
            self.assertEqual(file.read(), SMALL)

    def test_options_reach_the_library(self):
        log = self.path("commands.log")
        path = self.file("small.inp")

        def answers_of(*options):
            run(path, "--log", log, *options)
            with open(log, "rb") as file:
                return [line.rsplit(b" ", 1)[1] for line in file if line.startswith(b"5 PDIALOG")]
        self.assertEqual(answers_of()[1:3], [b"1\n", b"0\n"])
        self.assertEqual(answers_of("--scope", "transport")[1:3], [b"0\n", b"0\n"])
        self.assertEqual(answers_of("--index-names", "no")[1:3], [b"1\n", b"1\n"])


class Diagnostics(CommandTest):
    def error_of(self, path, *options):
        result = run("--quiet", *options, path)
        self.assertEqual(result.returncode, 1, result.stderr)
        return result.stderr

    def test_place_line_mark_and_expectation(self):
        error = self.error_of(self.changed(27, b"1 2x 1 100.5 0.1 0.2 0.3 0.4 1 1 1 1 1"))
        lines = error.split(b"\n")
        self.assertTrue(lines[0].endswith(
            b'bad.inp:27:3: error: segments: segment geometry: cannot read "bottom segment"'))
        self.assertEqual(lines[1], b"   27 | 1 2x 1 100.5 0.1 0.2 0.3 0.4 1 1 1 1 1")
        self.assertEqual(lines[2], b"      |   ^~")
        self.assertIn(b'Found "2x"; expected an integer', lines[3])

    def test_mark_behind_tabs_and_strange_bytes(self):
        lines = self.error_of(self.changed(27, b"1\t2x")).decode().split("\n")
        self.assertEqual(lines[1], "   27 | 1\\t2x")
        self.assertEqual(lines[2], "      |    ^~")
        lines = self.error_of(self.changed(27, b"1 \xe9\x1b[2J\x00")).decode().split("\n")
        self.assertEqual(lines[1], "   27 | 1 \u00e9\\x1b[2J\\x00")
        self.assertEqual(lines[2], "      |   ^" + "~" * (len("\u00e9\\x1b[2J\\x00") - 1))
        lines = self.error_of(self.changed(27, b"1 \xc3\xa92")).decode().split("\n")
        self.assertEqual(lines[2], "      |   ^~")

    def test_long_line_is_shortened_around_the_field(self):
        line = b"1 2 1" + b" " * 300 + b"wrong" + b" " * 300 + b"1"
        lines = self.error_of(self.changed(27, line)).decode().split("\n")
        self.assertIn(":27:306: error", lines[0])
        self.assertLessEqual(len(lines[1]), 100)
        self.assertEqual(lines[2].index("^"), lines[1].index("wrong"))

    def test_end_of_the_file(self):
        error = self.error_of(self.file("short.inp", SMALL[:SMALL.index(b"names")]))
        self.assertIn(b"error: segments: caption of the segment names: cannot be read", error)
        self.assertIn(b"= help: ", error)

    def test_field_that_is_its_statement(self):
        error = self.error_of(self.changed(19, b"2x"))
        self.assertIn(b"error: segments: segment count: cannot be read\n", error)


class FileNames(CommandTest):
    NAMES = (b"a b.inp", b"it's.inp", b'quo"ted.inp', "\u00e9\u6c34.inp".encode(), b"\xff\xfe.inp",
             b"tab\tand\nline.inp", b"\x1b[31mred.inp", b"[a,b]", b"{}", b"%%s.inp", b"trailing ",
             b"#?&.inp", b"a:b.inp", b"chekc.inp")

    def test_any_name_can_be_imported(self):
        for name in self.NAMES:
            path = self.file(name, SMALL.replace(b"100.5", b"wrong"))
            for arguments in ([path], ["import", path], ["--", path]):
                result = run("--quiet", *arguments)
                self.assertEqual(result.returncode, 1, (name, result.stderr))
                self.assertIn(b":27:7: error: ", result.stderr)
                self.assertNotIn(b"\x1b", result.stderr)
            self.assertEqual(run("check", path).returncode, 1)
        result = run("--quiet", "--", "-x.inp", cwd=self.folder)
        self.assertEqual(result.returncode, 3)

    def test_blank_at_the_end_is_part_of_the_name(self):
        self.file(b"model.inp", SMALL)
        path = self.file(b"model.inp ", SMALL.replace(b"100.5", b"wrong"))
        self.assertEqual(run("--quiet", path).returncode, 1)
        self.assertEqual(run("--quiet", path + b" ").returncode, 3)

    def test_names_in_json_and_sarif(self):
        for name in self.NAMES:
            self.file(name)
            document = json.loads(run("--json", b"./" + name, cwd=self.folder).stdout)
            uri = document["uri"]
            self.assertRegex(uri, r"\A[-A-Za-z0-9._~/%]+\Z")
            self.assertEqual(unquote_to_bytes(uri), b"./" + name)
            sarif = json.loads(run("check", "--format", "sarif", b"./" + name,
                                   cwd=self.folder).stdout)
            for result in sarif["runs"][0]["results"]:
                location = result["locations"][0]["physicalLocation"]["artifactLocation"]
                self.assertEqual(location["uri"], uri)
        document = json.loads(run("--json", self.path(b"\xff\xfe.inp")).stdout)
        self.assertTrue(document["file"].endswith("/\u00ff\u00fe.inp"))
        self.assertTrue(document["uri"].startswith("file:///"))


class Json(CommandTest):
    def document(self, *arguments):
        result = run("--json", *arguments)
        document = json.loads(result.stdout)
        self.assertEqual(document["exit_status"], result.returncode)
        return document

    def test_sample(self):
        document = self.document(LEGACY)
        self.assertEqual(document["schema"], 1)
        summary = document["summary"]
        self.assertEqual(summary["model"], {"type": 11, "kind": "eutrophication"})
        self.assertEqual(summary["format"], {"file_version": 2, "family": "legacy"})
        self.assertEqual(summary["period"]["start"], "2019-01-01 00:00:00")
        self.assertEqual(summary["period"]["days"], 365)
        self.assertEqual(summary["systems"]["imported"], 22)
        self.assertEqual(summary["systems"]["in_file"], 28)
        self.assertEqual(summary["systems"]["names"][0], "Ammonia")
        self.assertEqual(summary["segments"], 42)
        self.assertEqual([section["name"] for section in summary["sections"]], SECTIONS)
        self.assertEqual(summary["sections"][1]["brought"], {"segments": 42})
        self.assertEqual(len(document["warnings"]) + len(document["notices"]),
                         sum(summary["notice_counts"].values()))
        self.assertEqual(document["errors"], [])
        self.assertEqual(document["internal_errors"], [])

    def test_data_of_imported_sections(self):
        for arguments in ([LEGACY], [CURRENT], ["--scope=transport", LEGACY],
                          [self.changed(27, b"1 2x")]):
            document = self.document("--data", *arguments)
            statuses = {section["name"].replace(" ", "_"): section["status"]
                        for section in document["summary"]["sections"]}
            self.assertEqual(list(document["data"]), [name.replace(" ", "_") for name in SECTIONS[2:]])
            for name, data in document["data"].items():
                self.assertEqual(data is not None, statuses[name] == "imported", name)
            for section in document["summary"]["sections"]:
                self.assertEqual(set(section), {"name", "status", "brought", "remarks"})
        self.assertNotIn("data", self.document(LEGACY))

    def test_data_of_the_last_sections(self):
        document = self.document("--data", LEGACY)
        data = document["data"]
        systems = data["initial_conditions"]["systems"]
        self.assertEqual([system["name"] for system in systems],
                         document["summary"]["systems"]["names"])
        for system in systems:
            self.assertEqual(len(system["concentrations"]), 42)
            self.assertEqual(len(system["dissolved_fractions"]), 42)
        brought = document["summary"]["sections"][10]["brought"]
        self.assertEqual(brought, {"systems": 22, "concentrations": 22 * 42})
        for parameter in data["segment_parameters"]["parameters"]:
            self.assertEqual(len(parameter["values"]), 42)
        # The constants 37 to 42 are time functions, from the start of the year to its end.
        functions = data["kinetic_constants"]["time_functions"]
        self.assertLessEqual({function["number"] for function in functions}, set(range(37, 43)))
        for function in functions:
            self.assertEqual(function["series"][0]["times"], [0, 365])
        for constant in data["kinetic_constants"]["constants"]:
            self.assertEqual(constant["used"], 1)
        for function in data["environmental_time_functions"]["functions"]:
            for series in function["series"]:
                self.assertEqual(len(series["times"]), series["breakpoint_count"])

    def test_names_of_what_does_not_come_across(self):
        named = [notice["section"] for notice in self.document(LEGACY)["warnings"] if notice["name"]]
        self.assertEqual(set(named), {8, 9, 10})

    def test_read_error(self):
        document = self.document(self.changed(27, b"1 2x\xe9"))
        self.assertEqual(document["result"], "stopped")
        (error,) = document["errors"]
        self.assertEqual(
            {name: error[name] for name in ("kind", "section", "section_name", "statement", "line",
                                            "column", "width", "field", "found", "line_text")},
            {"kind": "read_failed", "section": 2, "section_name": "segments",
             "statement": "segment geometry", "line": 27, "column": 3, "width": 3,
             "field": "bottom segment", "found": "2x\u00e9", "line_text": "1 2x\u00e9"})
        statuses = [section["status"] for section in document["summary"]["sections"]]
        self.assertEqual(statuses, ["imported", "failed"] + ["not_reached"] * 9)
        self.assertIsNone(document["summary"]["segments"])

    def test_file_that_cannot_be_opened(self):
        document = self.document(self.path("missing"))
        self.assertEqual(document["result"], "not_opened")
        self.assertEqual(document["errors"][0]["kind"], "open_failed")
        self.assertIsNone(document["summary"]["model"])

    def test_output_is_nothing_but_json(self):
        for path in (LEGACY, CURRENT, self.file("small.inp"), self.changed(5, b"x")):
            for options in ([], ["--verbose"], ["--quiet"]):
                json.loads(run("--json", *options, path).stdout)

    def test_small_file(self):
        summary = self.document(self.file("small.inp"))["summary"]
        self.assertEqual(summary["period"]["text"],
                         "2020-03-01 06:30:00 to 2020-03-11 18:30:00 (10.5 days)")
        self.assertEqual(summary["systems"]["names"], ["Ammonia", "Nitrate/Nitrite", "Diss Org N"])


class Check(CommandTest):
    def test_verdicts_and_total(self):
        bad = self.changed(5, b"x")
        result = run("check", LEGACY, bad, self.path("missing"))
        self.assertEqual(result.returncode, 1)
        lines = result.stdout.decode().splitlines()
        self.assertEqual(len(lines), 4)
        self.assertIn("bad.inp: not whole (1 read failure)", lines[1])
        self.assertIn("missing: not whole (1 file that cannot be opened)", lines[2])
        self.assertRegex(lines[3], r"\A3 files: \d whole, \d not whole\Z")
        self.assertIn(b"bad.inp:5:1: error: model parameters", result.stderr)
        self.assertNotIn(b" % ", result.stderr)

    def test_one_file_does_not_touch_the_next(self):
        files = [LEGACY, self.changed(5, b"x"), CURRENT, LEGACY]
        result = run("check", "--format", "json", *files)
        document = json.loads(result.stdout)
        self.assertEqual(document["exit_status"], result.returncode)
        self.assertEqual(len(document["files"]), 4)
        self.assertEqual(document["files"][0], document["files"][3])
        for path, entry in zip(files, document["files"]):
            alone = json.loads(run("--json", path).stdout)
            for name in ("schema", "tool", "exit_status"):
                del alone[name]
            self.assertEqual(entry, alone)
        self.assertEqual(document["total"]["files"], 4)
        whole = sum(entry["whole"] for entry in document["files"])
        self.assertEqual(document["total"]["whole"], whole)
        self.assertEqual(result.returncode, 0 if whole == 4 else 1)

    def test_quiet(self):
        result = run("check", "--quiet", self.changed(5, b"x"))
        self.assertEqual(result.stderr, b"")
        self.assertIn(b"not whole", result.stdout)

    def test_sarif(self):
        bad = self.changed(27, b"1 \xc3\xa92 4")
        result = run("check", "--format", "sarif", LEGACY, bad, self.path("missing"))
        self.assertEqual(result.returncode, 1)
        log = json.loads(result.stdout)
        self.assertEqual(log["version"], "2.1.0")
        self.assertIn("sarif-2.1.0", log["$schema"])
        (entry,) = log["runs"]
        self.assertEqual(entry["columnKind"], "utf16CodeUnits")
        driver = entry["tool"]["driver"]
        self.assertEqual(driver["name"], "kova-import")
        rules = [rule["id"] for rule in driver["rules"]]
        self.assertEqual(len(rules), len(set(rules)))
        for rule in driver["rules"]:
            self.assertTrue(rule["shortDescription"]["text"])
            self.assertIn(rule["defaultConfiguration"]["level"], ("note", "warning", "error"))
        for finding in entry["results"]:
            self.assertEqual(rules[finding["ruleIndex"]], finding["ruleId"])
            self.assertIn(finding["level"], ("note", "warning", "error"))
            self.assertTrue(finding["message"]["text"])
            physical = finding["locations"][0]["physicalLocation"]
            self.assertTrue(physical["artifactLocation"]["uri"])
            region = physical.get("region", {"startLine": 1})
            self.assertGreaterEqual(region["startLine"], 1)
        (failure,) = [f for f in entry["results"] if f["ruleId"] == "read_failed"]
        self.assertEqual(failure["locations"][0]["physicalLocation"]["region"],
                         {"startLine": 27, "startColumn": 3, "endColumn": 5})
        self.assertEqual(failure["properties"]["byteWidth"], 3)
        (missing,) = [f for f in entry["results"] if f["ruleId"] == "open_failed"]
        self.assertNotIn("region", missing["locations"][0]["physicalLocation"])


if __name__ == "__main__":
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)
    unittest.main()

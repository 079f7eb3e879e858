"""The library as a host sees it: what it exports, how it finds its host, and what it does to the host's process."""

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

from plain_host_lines import LEGACY, LEGACY_LINES, sections_in

LIBRARY = Path(os.environ["KOVA_LIBRARY"])
REFERENCE_HOST = Path(os.environ["KOVA_REFERENCE_HOST"])
PLAIN_HOST_FOLDER = Path(os.environ["KOVA_PLAIN_HOST_FOLDER"])
LOADER = Path(os.environ["KOVA_PLAIN_LOADER"])
FAILING_FILE = Path(os.environ["KOVA_FAILING_FILE"])
SANITIZED = os.environ.get("KOVA_SANITIZED") == "1"


def exported_names(library):
    listing = subprocess.run(["nm", "-D", "--defined-only", library], check=True, capture_output=True, text=True)
    return sorted(line.split()[-1] for line in listing.stdout.splitlines())


def dynamic_section(library):
    return subprocess.run(["readelf", "-d", library], check=True, capture_output=True, text=True).stdout


class Exports(unittest.TestCase):
    def test_the_library_exports_its_interface_and_nothing_else(self):
        self.assertEqual(exported_names(LIBRARY), [
            "IMPORT_EXPORT", "boundary", "boundary_v2", "constants", "constants_v2", "exchanges", "exchanges_v2", "flowpath",
            "flowpath_v2", "flows", "flows_v2", "importexport", "initial_conditions", "initial_conditions_v2", "intro",
            "loads", "loads_v2", "modelparam", "modelparam_v2", "seg_parameters", "seg_parameters_v2", "segments",
            "segments_v2", "timefunctions", "timefunctions_v2", "version"])

    def test_the_host_is_found_by_its_name_and_the_search_path_of_the_user_comes_first(self):
        section = dynamic_section(LIBRARY)
        self.assertRegex(section, r"NEEDED.*\[libprekovawdll\.so\]")
        self.assertNotRegex(section, r"\(RPATH\)")
        self.assertRegex(dynamic_section(REFERENCE_HOST), r"SONAME.*\[libprekovawdll\.so\]")

    def test_the_host_supplies_six_names(self):
        listing = subprocess.run(["nm", "-D", "--undefined-only", LIBRARY], check=True, capture_output=True, text=True)
        wanted = set(re.findall(r"\b(host_call_\w+)", listing.stdout))
        self.assertEqual(wanted, {f"host_call_{n}" for n in range(6)})


class PlainHost(unittest.TestCase):
    def run_loader(self, text, times=1, environment=None):
        with tempfile.TemporaryDirectory() as folder:
            model = Path(folder) / "model"
            log = Path(folder) / "log"
            if text is not None:
                model.write_text(text)
            run = subprocess.run(
                [LOADER, LIBRARY, str(times)], capture_output=True, text=True, cwd=folder,
                env=dict(os.environ, LD_LIBRARY_PATH=str(PLAIN_HOST_FOLDER), PLAIN_HOST_LOG=str(log),
                         PLAIN_HOST_FILE=str(model),
                         **{name: value.format(model=model) for name, value in (environment or {}).items()}))
            self.assertEqual(run.returncode, 0, run.stderr)
            return log.read_text().splitlines(), run.stdout

    def test_any_host_with_the_six_names_can_be_put_in_its_place(self):
        log, console = self.run_loader(LEGACY)
        half = len(log) // 2
        self.assertEqual(log[:half], log[half:], "two imports in one process")
        self.assertEqual(sections_in(log[:half]), LEGACY_LINES)
        self.assertEqual(console.splitlines().count("Setting Number of Segments to: 1"), 2)

    def test_lengths_travel_for_texts_only(self):
        log, _ = self.run_loader(LEGACY)
        self.assertIn("PCLEARINFO 11", log)
        # five lengths, the keyword's among them, and none for the answer; the plain host stops at any further one
        self.assertEqual(log[0], "PDIALOG 8 20:Set%20Verbose%20Option:%00 11:Yes%20or%20No?%00 4:Yes%00 3:No%00 -1")
        self.assertIn("GFILENAME 10 512", log)
        name = next(line for line in log if line.startswith("PFILENAME"))
        self.assertRegex(name, r"^PFILENAME 10 513:\S+%00$")

    def test_the_library_can_be_unloaded_and_loaded_again(self):
        log, _ = self.run_loader(LEGACY, times=20)
        part = len(log) // 20
        for i in range(20):
            self.assertEqual(log[:part], log[i * part:(i + 1) * part])

    def test_the_locale_does_not_matter(self):
        expected, _ = self.run_loader(LEGACY)
        with tempfile.TemporaryDirectory() as folder:
            # a locale with commas for points, made here since few machines have one
            subprocess.run(["localedef", "-f", "UTF-8", "-i", "de_DE", f"{folder}/de_DE.UTF-8"], check=True,
                           capture_output=True)
            log, _ = self.run_loader(LEGACY, environment={
                "LC_ALL": "de_DE.UTF-8", "LOCPATH": folder, "PLAIN_HOST_LOCALE": "de_DE.UTF-8"})
        self.assertEqual([line for line in log if "FILENAME" not in line],
                         [line for line in expected if "FILENAME" not in line])

    @unittest.skipIf(SANITIZED, "the sanitizers' runtime wants to be loaded first")
    def test_a_second_open_that_fails_is_reported_like_the_first(self):
        log, _ = self.run_loader(LEGACY, environment={"LD_PRELOAD": str(FAILING_FILE), "FAILING_FILE": "{model}", "FAILING_OPEN": "2"})
        first_import = log[:8]
        self.assertEqual([line.split()[0] for line in first_import],
                         ["PDIALOG"] * 3 + ["GFILENAME"] + ["PINFOHTML"] * 4)
        self.assertIn("File%20Can%20Not%20be%20Opened", first_import[5])

    @unittest.skipIf(SANITIZED, "the sanitizers' runtime wants to be loaded first")
    def test_a_record_whose_end_cannot_be_read_is_not_taken_for_a_shorter_one(self):
        # wherever reading fails, the import stops; in the middle of "19", 1 must not become the minimum depth
        for length in range(len(LEGACY)):
            log, console = self.run_loader(LEGACY, environment={
                "LD_PRELOAD": str(FAILING_FILE), "FAILING_FILE": "{model}", "FAILING_READ": str(length)})
            self.assertFalse([line for line in log if line.startswith("PSEGMENTSREFRESH")], length)
            if length < len("   11      2\n"):
                self.assertIn("File%20Can%20Not%20be%20Opened", log[5])
            else:
                self.assertIn("Error Reading Import File at Line: ", console)

    def test_a_file_that_is_missing_is_reported(self):
        log, _ = self.run_loader(None)
        self.assertEqual(len(log), 16)


if __name__ == "__main__":
    unittest.main()

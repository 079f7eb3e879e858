"""The Windows programs at work, under Wine: paths, hosts of others, and the command."""

import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(os.environ["KOVA_SOURCE_FOLDER"])
PROGRAMS = Path(os.environ["KOVA_PROGRAM_FOLDER"])
PLAIN_HOST_FOLDER = Path(os.environ["KOVA_PLAIN_HOST_FOLDER"])
WINE = SOURCE / "scripts/wine"
PREFIX = Path(os.environ.get("WINEPREFIX", SOURCE / "build/wine"))

sys.path.insert(0, str(SOURCE / "tests/binary_interface"))
from plain_host_lines import LEGACY, LEGACY_LINES, sections_in  # noqa: E402


def wine(program, *arguments, environment=None, folder=None):
    """Runs a program; its output and messages are bytes."""
    return subprocess.run([WINE, program, *arguments], capture_output=True, stdin=subprocess.DEVNULL, timeout=300,
                          env=dict(os.environ, **(environment or {})), cwd=folder)


def setUpModule():
    """Wine makes its folders before a test puts something there."""
    done = wine("cmd", "/c", "exit")
    if done.returncode != 0:
        raise AssertionError((done.stdout + done.stderr).decode(errors="replace"))


def windows_path(path):
    """A path of this machine as Windows programs see it."""
    return "Z:" + str(path).replace("/", "\\")


class Scratch(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name).resolve()


class Paths(Scratch):
    def share(self):
        """A folder that Windows programs reach under the name of a server."""
        place = PREFIX / "dosdevices/unc/kova-server"
        for folder in (place.parent, place):
            folder.mkdir(exist_ok=True)
        share = place / f"share-{os.getpid()}"
        share.symlink_to(self.folder)
        self.addCleanup(share.unlink)
        return f"\\\\kova-server\\{share.name}"

    def test_paths_and_files_as_windows_has_them(self):
        (self.folder / "model.inp").write_text(LEGACY)
        deep = self.folder.joinpath(*["p" * 90] * 3)
        deep.mkdir(parents=True)
        (deep / "model.inp").write_text(LEGACY)
        share = self.share()
        done = wine(PROGRAMS / "path_tests.exe", share + "\\model.inp", (share + "\\model.inp").replace("\\", "/"),
                    "\\\\?\\UNC" + share[1:] + "\\model.inp", share + ("\\" + "p" * 90) * 3 + "\\model.inp")
        self.assertEqual(done.returncode, 0, (done.stdout + done.stderr).decode(errors="replace"))
        self.assertEqual(done.stdout.count(b": passed"), 10)


class PlainHost(Scratch):
    """A host in plain C, of another make than the utility for all that it knows."""

    def run_loader(self, times):
        model = self.folder / "model"
        log = self.folder / "log"
        model.write_text(LEGACY)
        done = wine(PLAIN_HOST_FOLDER / "plain_loader.exe", windows_path(PROGRAMS / "kova_import.dll"), str(times),
                    environment={"PLAIN_HOST_LOG": windows_path(log), "PLAIN_HOST_FILE": windows_path(model)})
        self.assertEqual(done.returncode, 0, done.stderr)
        return log.read_text().splitlines(), done.stdout

    def test_any_host_with_the_six_ordinals_can_be_put_in_its_place(self):
        log, console = self.run_loader(1)
        half = len(log) // 2
        self.assertEqual(log[:half], log[half:], "two imports in one process")
        self.assertEqual(sections_in(log[:half]), LEGACY_LINES)
        self.assertEqual(console.split(b"\r\n").count(b"Setting Number of Segments to: 1"), 2)

    def test_the_library_can_be_unloaded_and_loaded_again(self):
        log, _ = self.run_loader(20)
        part = len(log) // 20
        for i in range(20):
            self.assertEqual(log[:part], log[i * part:(i + 1) * part])


# What differs from build to build on the version page.
STAMPED = re.compile(rb'^1 PINFOHTML\[10\] text\[\d+\] "(Built on|Model sha|Model branch|Gui sha|Gui branch|Platform|'
                     rb'Architecture|Build type): .*$', re.MULTILINE)


class Command(Scratch):
    command = PROGRAMS / "kova-import.exe"

    def run_both(self, *arguments):
        """Runs the Windows command and that of this machine, built by the preset `release`; returns both results."""
        native = SOURCE / "build/release/bin/kova-import"
        if not native.exists():
            self.fail(f"{native} is missing: build the preset `release` first")
        return (wine(self.command, *arguments, folder=self.folder),
                subprocess.run([native, *arguments], capture_output=True, stdin=subprocess.DEVNULL, cwd=self.folder))

    def test_the_samples_give_the_same_log_summary_and_messages_as_on_linux(self):
        for sample in sorted((SOURCE / "samples").glob("*.inp")):
            with self.subTest(sample.name):
                (self.folder / sample.name).write_bytes(sample.read_bytes())
                logs = []
                for name in ("windows.log", "linux.log"):
                    windows, linux = self.run_both("--log", name, sample.name)
                    logs.append(STAMPED.sub(b"stamped", (self.folder / name).read_bytes()))
                    self.assertEqual((windows.returncode, windows.stdout, windows.stderr),
                                     (linux.returncode, linux.stdout, linux.stderr))
                # both were written twice, the first one by either command last
                self.assertGreater(len(logs[0]), 10000)
                self.assertEqual(logs[0], logs[1])

    def test_names_in_any_script_reach_the_command_and_its_files(self):
        for folder in ("Größe & Länge", "with  blanks", "река", "日本語", "🌊"):
            with self.subTest(folder):
                place = self.folder / folder
                place.mkdir()
                (place / "modèle Ω.inp").write_text(LEGACY)
                path = windows_path(place / "modèle Ω.inp")
                done = wine(self.command, "--json", "--log", windows_path(place / "лог.log"), "--report",
                            windows_path(place / "отчёт.html"), path)
                result = json.loads(done.stdout.decode())
                self.assertEqual(result["file"]["path"] if isinstance(result["file"], dict) else result["file"], path)
                self.assertIn('Upper Pool', (place / "лог.log").read_text())
                self.assertIn("modèle Ω.inp", (place / "отчёт.html").read_text())

    def test_the_import_file_is_not_overwritten_whatever_its_spelling(self):
        file = self.folder / "Änderung.inp"
        file.write_text(LEGACY)
        for spelling in ("änderung.INP", ".\\Änderung.inp", windows_path(file)):
            with self.subTest(spelling):
                done = wine(self.command, "--log", spelling, "Änderung.inp", folder=self.folder)
                self.assertEqual(done.returncode, 2, done.stderr)
                self.assertIn(b"would overwrite the import file", done.stderr)
                self.assertEqual(file.read_text(), LEGACY)

    def test_sarif_has_uris_of_files(self):
        file = self.folder / "a b.inp"
        file.write_text("   11      2\nno date\n")
        done = wine(self.command, "check", "--format", "sarif", windows_path(file))
        uris = set(re.findall(r'"uri": ?"(file:[^"]*)"', done.stdout.decode()))
        self.assertEqual(uris, {"file:///Z:" + str(self.folder) + "/a%20b.inp"})

    def test_lines_of_the_library_are_kept_off_the_output(self):
        (self.folder / "model.inp").write_text(LEGACY)
        done = wine(self.command, "--json", "--verbose", "model.inp", folder=self.folder)
        json.loads(done.stdout.decode())
        self.assertIn(b"library: Setting Number of Segments to: 1\n", done.stderr)

    def test_a_stream_that_is_missing_does_no_harm(self):
        (self.folder / "model.inp").write_text(LEGACY)
        for closed, status in (("<&-", 1), (">&-", 74), ("2>&-", 1)):
            with self.subTest(closed):
                done = subprocess.run(["bash", "-c", f'exec "$0" "$@" {closed}', WINE, self.command, "--log", "x.log", "model.inp"],
                                      cwd=self.folder, capture_output=True, timeout=60)
                self.assertEqual(done.returncode, status, done.stderr)
                self.assertIn("Upper Pool", (self.folder / "x.log").read_text())

    def test_an_utility_that_is_missing_is_told(self):
        for name in ("kova-import.exe", "prekovawdll.dll"):
            (self.folder / name).write_bytes((PROGRAMS / name).read_bytes())
        done = wine(self.folder / "kova-import.exe", "x.inp")
        self.assertEqual(done.returncode, 70, done.stderr)
        self.assertIn(b"the installation is broken", done.stderr)


if __name__ == "__main__":
    unittest.main()

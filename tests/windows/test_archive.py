"""The archive for Windows: made, unpacked, and used as somebody does who has nothing else."""

import os
import re
import shlex
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

from pe_file import PeFile

BUILD = Path(os.environ["KOVA_BUILD_FOLDER"])
SOURCE = Path(os.environ["KOVA_SOURCE_FOLDER"])
VERSION = os.environ["KOVA_VERSION"]
CPACK = os.environ["KOVA_CPACK"]
C_COMPILER = os.environ["KOVA_C_COMPILER"]
DLLTOOL = os.environ["KOVA_DLLTOOL"]
BITS = 8 * int(os.environ["KOVA_POINTER_SIZE"])
RUNS = BITS == 64
WINE = SOURCE / "scripts/wine"
SAMPLE = SOURCE / "samples/river-estuary-v7.inp"

sys.path.insert(0, str(SOURCE / "tests/embedding"))
from page import marked_blocks, write_programs  # noqa: E402

SCRATCH = None
ARCHIVE = None


def run(*command, **options):
    done = subprocess.run(list(map(str, command)), capture_output=True, stdin=subprocess.DEVNULL, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command} ended with {done.returncode}:\n{done.stdout}{done.stderr}")
    return done.stdout.decode()


def setUpModule():
    global SCRATCH, ARCHIVE
    SCRATCH = tempfile.TemporaryDirectory()
    made = Path(SCRATCH.name).resolve() / "made"
    run(CPACK, "-G", "ZIP", "-B", made, cwd=BUILD)
    (ARCHIVE,) = made.glob("*.zip")


def tearDownModule():
    SCRATCH.cleanup()


class Archive(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        folder = Path(scratch.name).resolve() / "Programme für Flüsse"  # as in the wild
        with zipfile.ZipFile(ARCHIVE) as archive:
            archive.extractall(folder)
        (self.root,) = folder.iterdir()

    def build_as_the_page_says(self):
        """The programs of docs/embedding.md, in the unpacked archive."""
        write_programs(self.root)
        commands = marked_blocks("run")["windows"].replace("x86_64-w64-mingw32-gcc", shlex.quote(C_COMPILER))
        run("bash", "-euc", commands.replace(" -o ", " -Wall -Wextra -Werror -o "), cwd=self.root)

    def test_it_has_these_files(self):
        self.assertEqual(ARCHIVE.name, f"kova-import-{VERSION}-windows-{BITS}.zip")
        self.assertEqual(self.root.name, ARCHIVE.stem)
        files = {str(path.relative_to(self.root)) for path in self.root.rglob("*") if path.is_file()}
        self.assertEqual(files, {
            "README.md", "CHANGELOG.md", "LICENSE", "bin/kova_import.dll", "command/kova-import.exe",
            "command/prekovawdll.dll", "include/kova_import/host_calls.h", "include/kova_import/import_export.h",
            "lib/libkova_import.dll.a", "lib/kova_import.def", "lib/prekovawdll.def"}
            | {f"docs/{page.name}" for page in (SOURCE / "docs").glob("*.md")})

    def test_the_programs_are_stripped(self):
        for program in [*self.root.rglob("*.dll"), *self.root.rglob("*.exe")]:
            self.assertEqual(PeFile(program).symbol_count, 0, program)

    def test_the_list_of_names_makes_an_import_library(self):
        machine = "i386:x86-64" if RUNS else "i386"
        run(DLLTOOL, "--machine", machine, "--input-def", self.root / "lib/kova_import.def", "--output-lib",
            self.root / "made.a")
        self.assertGreater((self.root / "made.a").stat().st_size, 5000)

    def test_the_hosts_of_others_have_the_ordinals(self):
        self.build_as_the_page_says()
        _, exports = PeFile(self.root / "prekovawdll.dll").exports()
        self.assertEqual([exports[ordinal] for ordinal in range(2, 8)], [None] * 6)
        self.assertLessEqual(set(PeFile(self.root / "prekovawdll.dll").imports()), {"kernel32.dll", "msvcrt.dll"})

    @unittest.skipUnless(RUNS, "programs of 32 bits are not run")
    def test_the_command_imports_a_sample(self):
        shown = run(WINE, self.root / "command/kova-import.exe", SAMPLE, cwd="/")
        self.assertRegex(shown, r"(?m)^ +segments +42 segments\b")

    @unittest.skipUnless(RUNS, "programs of 32 bits are not run")
    def test_a_program_with_a_host_of_its_own_imports_a_sample(self):
        self.build_as_the_page_says()
        shown = run(WINE, self.root / "import.exe", SAMPLE, cwd=self.root)
        numbers = re.findall(r"^(\d+) Seg-(\d+)-\S", shown, re.MULTILINE)
        self.assertEqual(numbers, [(str(i), str(i)) for i in range(1, 43)])

    @unittest.skipUnless(RUNS, "programs of 32 bits are not run")
    def test_a_program_is_linked_with_the_import_library(self):
        self.build_as_the_page_says()
        (self.root / "linked.c").write_text(
            "#include <kova_import/import_export.h>\n"
            "int main(void) { importexport(); return IMPORT_EXPORT.layout == IMPORT_EXPORT_LAYOUT ? 0 : 1; }\n")
        run(C_COMPILER, "-I", "include", "-o", "linked.exe", "linked.c", "lib/libkova_import.dll.a", cwd=self.root)
        run(WINE, self.root / "linked.exe", cwd=self.root)

    @unittest.skipUnless(RUNS, "programs of 32 bits are not run")
    def test_the_reference_host_is_not_taken_for_the_host_of_another_program(self):
        self.build_as_the_page_says()
        (self.root / "prekovawdll.dll").unlink()
        (self.root / "alone.c").write_text(
            "#include <windows.h>\nint main(void) { return LoadLibraryA(\"bin\\\\kova_import.dll\") == NULL ? 0 : 1; }\n")
        run(C_COMPILER, "-o", "alone.exe", "alone.c", cwd=self.root)
        run(WINE, self.root / "alone.exe", cwd=self.root)


if __name__ == "__main__":
    unittest.main()

"""The Windows libraries and the command as the system's loader sees them. Nothing is run, so 32 bits are looked at alike."""

import os
import subprocess
import unittest
from pathlib import Path

from pe_file import PeFile

FOLDER = Path(os.environ["KOVA_PROGRAM_FOLDER"])
VERSION = os.environ["KOVA_VERSION"]
POINTER_SIZE = int(os.environ["KOVA_POINTER_SIZE"])
OBJDUMP = os.environ["KOVA_OBJDUMP"]
OBJECTS = os.environ["KOVA_OBJECTS"].split(";")
EXPORT_MAP = Path(os.environ["KOVA_EXPORT_MAP"])

X64, I386 = 0x8664, 0x14C
HOST = "prekovawdll.dll"
# Part of every Windows.
SYSTEM = {"kernel32.dll", "msvcrt.dll"}
HIGH_ADDRESSES, MOVABLE, NO_CODE_IN_DATA = 0x20, 0x40, 0x100


def library(name):
    return PeFile(FOLDER / name)


def names_in_map():
    """What the library exports on Linux."""
    public = EXPORT_MAP.read_text().split("local:")[0]
    return sorted(line.strip(" ;") for line in public.splitlines() if line.strip().endswith(";"))


class Utility(unittest.TestCase):
    utility = property(lambda self: library("kova_import.dll"))

    def test_the_host_is_imported_by_ordinal_2_to_7_and_by_no_name(self):
        self.assertEqual(sorted(self.utility.imports()[HOST], key=str), [2, 3, 4, 5, 6, 7])

    def test_nothing_but_the_host_and_the_system_is_needed(self):
        self.assertEqual(set(self.utility.imports()), SYSTEM | {HOST})

    def test_the_exported_names_are_those_of_linux_and_have_no_decoration(self):
        name, exports = self.utility.exports()
        self.assertEqual(name, "kova_import.dll")
        self.assertEqual(sorted(exports.values()), names_in_map())
        self.assertIn("IMPORT_EXPORT", exports.values())

    def test_nothing_of_the_library_runs_while_it_is_loaded(self):
        for file in OBJECTS:
            symbols = subprocess.run([OBJDUMP, "--syms", file], check=True, capture_output=True, text=True).stdout
            self.assertIn(".text", symbols, file)
            self.assertNotIn("DllMain", symbols, file)
            listing = subprocess.run([OBJDUMP, "--section-headers", file], check=True, capture_output=True, text=True).stdout
            for section in (".ctors", ".init_array", ".dtors", ".CRT$"):
                self.assertNotIn(section, listing, file)


class ReferenceHost(unittest.TestCase):
    def test_the_entry_points_have_their_ordinals_and_no_names(self):
        name, exports = library(HOST).exports()
        self.assertEqual(name, HOST)
        self.assertEqual([exports[ordinal] for ordinal in range(2, 8)], [None] * 6)
        self.assertFalse([name for name in exports.values() if name and "host_call" in name])

    def test_nothing_but_the_system_is_needed(self):
        self.assertLessEqual(set(library(HOST).imports()), SYSTEM | {"advapi32.dll"})


class Command(unittest.TestCase):
    def test_it_needs_the_reference_host_and_loads_the_utility_itself(self):
        self.assertEqual(set(library("kova-import.exe").imports()) - SYSTEM - {"shell32.dll", "advapi32.dll"}, {HOST})


class All(unittest.TestCase):
    def files(self):
        for name in ("kova_import.dll", HOST, "kova-import.exe"):
            with self.subTest(name):
                yield name, library(name)

    def test_the_machine_is_the_right_one(self):
        for _, file in self.files():
            self.assertEqual(file.machine, X64 if POINTER_SIZE == 8 else I386)

    def test_the_loader_may_put_them_anywhere_and_data_is_no_code(self):
        for _, file in self.files():
            wanted = MOVABLE | NO_CODE_IN_DATA | (HIGH_ADDRESSES if POINTER_SIZE == 8 else 0)
            self.assertEqual(file.characteristics() & wanted, wanted)

    def test_the_version_is_filled_in(self):
        major, minor, patch = map(int, VERSION.split("."))
        for name, file in self.files():
            self.assertEqual(file.version_numbers(), [(major, minor), (patch, 0)] * 2)
            texts = file.version_texts()
            self.assertEqual((texts["FileVersion"], texts["ProductVersion"]), (VERSION, VERSION))
            self.assertEqual(texts["OriginalFilename"], name)
            for field in ("CompanyName", "FileDescription", "InternalName", "LegalCopyright", "ProductName"):
                self.assertTrue(texts[field].strip(), field)


if __name__ == "__main__":
    unittest.main()

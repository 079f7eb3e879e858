"""The headers in a program whose compiler has another calling convention than cdecl by default. It is built and not run."""

import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(os.environ["KOVA_SOURCE_FOLDER"])
C_COMPILER = os.environ["KOVA_C_COMPILER"]
HEADERS = SOURCE / "Utilities/IMPORT"
# As others have it by an option: a function removes its arguments itself, with `ret` and their size.
OTHER_CONVENTION = "-mrtd"

sys.path.insert(0, str(SOURCE / "tests/embedding"))
from page import write_programs  # noqa: E402


class CallingConvention(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name).resolve()
        write_programs(self.folder)
        (self.folder / "kova_import").symlink_to(HEADERS)

    def assembly_of(self, source):
        done = subprocess.run([C_COMPILER, OTHER_CONVENTION, "-std=c11", "-O1", "-S", "-o", "-", "-Wall", "-Wextra", "-Werror",
                               "-DKOVA_HOST_BUILD", "-I", self.folder, "-I", HEADERS, source],
                              capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def returns_of(self, source):
        """Of each function what stands behind its `ret` instructions."""
        parts = re.split(r"^_(\w+(?:@\d+)?):$", self.assembly_of(source), flags=re.MULTILINE)
        return {name: re.findall(r"^\tret\b[ \t]*(.*)$", body, re.MULTILINE) for name, body in zip(parts[1::2], parts[2::2])}

    def write(self, name, text):
        (self.folder / name).write_text(text)
        return self.folder / name

    def test_the_option_does_what_is_said(self):
        source = self.write("plain.c", "void plain(int *a, int b) { *a = b; }\n")
        self.assertEqual(self.returns_of(source)["plain"], ["$8"])

    def test_the_functions_of_a_host_are_cdecl(self):
        for source in (self.folder / "host.c", SOURCE / "tests/binary_interface/plain_host.c"):
            returns = self.returns_of(source)
            for count in range(6):
                with self.subTest(source.name, count=count):
                    found = returns[f"host_call_{count}"]
                    self.assertTrue(found)
                    self.assertEqual(set(found), {""})

    def test_a_host_that_leaves_it_out_is_refused(self):
        source = self.write("left_out.c", "#include <kova_import/host_calls.h>\nvoid host_call_0(char *k, size_t n) { (void)k, (void)n; }\n")
        with self.assertRaisesRegex(AssertionError, "conflicting types for .host_call_0"):
            self.assembly_of(source)

    def test_the_functions_of_the_utility_are_cdecl(self):
        names = re.findall(r"\b(\w+)\(void\);", (HEADERS / "import_export.h").read_text())
        self.assertEqual(len(names), 25)
        uses = "".join(f"    take({name});\n" for name in names)
        text = "#include <kova_import/import_export.h>\nvoid use(void (CONVENTION *take)(void (CONVENTION *)(void))) {\n" + uses + "}\n"
        self.assembly_of(self.write("cdecl.c", "#define CONVENTION __cdecl\n" + text))
        with self.assertRaisesRegex(AssertionError, "incompatible pointer type"):
            self.assembly_of(self.write("other.c", "#define CONVENTION\n" + text))

    def test_the_function_for_notices_is_cdecl(self):
        text = ("#include <kova_import/import_export.h>\nstatic void CONVENTION tell(void *context, const import_export_notice *notice)"
                " { *(int *)context = notice->kind; }\nvoid use(import_export_data *data) { data->notice = tell; }\n")
        returns = self.returns_of(self.write("cdecl.c", "#define CONVENTION KOVA_IMPORT_CALL\n" + text))
        self.assertEqual(returns["tell"], [""])
        with self.assertRaisesRegex(AssertionError, "incompatible pointer type"):
            self.assembly_of(self.write("other.c", "#define CONVENTION\n" + text))

    def test_the_program_of_the_page_is_built(self):
        returns = self.returns_of(self.folder / "import.c")
        for name in ("take", "tell"):
            self.assertEqual(set(returns[name]), {""}, name)


if __name__ == "__main__":
    unittest.main()

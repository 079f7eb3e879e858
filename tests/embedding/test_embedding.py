"""Builds and runs the programs of docs/embedding.md as the page says."""

import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from page import marked_blocks, write_programs

SOURCE = Path(os.environ["KOVA_SOURCE_FOLDER"])
LIBRARY_FOLDER = Path(os.environ["KOVA_LIBRARY_FOLDER"])

GUARDED = """
#include "guard.hpp"
#include <stdexcept>
int main() {
    int calls = 0;
    TakeCommand take = [&calls](std::string_view keyword, void **, const std::size_t *) {
        calls += keyword == "PCLEARINFO" ? 1 : 10;
        throw std::runtime_error("caught inside");
    };
    const std::size_t length = 11;
    take_guarded(&take, 0, "PCLEARINFO", nullptr, &length);
    return calls == 1 ? 0 : 1;
}
"""


class Embedding(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name).resolve()
        write_programs(self.folder)
        shutil.copy(SOURCE / "samples/river-estuary-v7.inp", self.folder / "river.inp")
        # where the package for Debian would have put headers and library
        include = self.folder / "installed"
        include.mkdir()
        (include / "kova_import").symlink_to(SOURCE / "Utilities/IMPORT")
        self.environment = dict(os.environ, CPATH=str(include), LD_LIBRARY_PATH=str(LIBRARY_FOLDER))

    def run_here(self, command):
        return subprocess.run(["bash", "-euc", command], cwd=self.folder, env=self.environment, capture_output=True, text=True)

    def assert_prints_the_segments(self, done):
        self.assertEqual(done.returncode, 0, done.stderr)
        # between the lines of the utility itself
        numbers = re.findall(r"^(\d+) Seg-(\d+)-\S", done.stdout, re.MULTILINE)
        self.assertEqual(numbers, [(str(i), str(i)) for i in range(1, 43)])

    def test_the_programs_in_c(self):
        self.assert_prints_the_segments(self.run_here(marked_blocks("run")["linux"].replace("cc ", "cc -Wall -Wextra -Werror ")))
        done = self.run_here("./import no-such-file.inp")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("no-such-file.inp:0: ", done.stderr)

    def test_the_program_in_python(self):
        self.run_here(marked_blocks("run")["linux"])
        self.assert_prints_the_segments(self.run_here(marked_blocks("run")["python"]))
        self.assertEqual(self.run_here("python3 import.py no-such-file.inp").returncode, 1)
        (self.folder / "broken.inp").write_text("   11      2\nno date\n")
        self.assertEqual(self.run_here("python3 import.py broken.inp").returncode, 1)

    def test_a_path_that_is_too_long_is_refused(self):
        self.run_here(marked_blocks("run")["linux"])
        for program in ("./import", "python3 import.py"):
            with self.subTest(program):
                done = self.run_here(f"{program} ./{'/' * 501}river.inp")  # 512 bytes
                self.assert_prints_the_segments(done)
                done = self.run_here(f"{program} ./{'/' * 502}river.inp")
                self.assertEqual((done.returncode, done.stdout), (2, ""))

    def test_the_program_in_c_is_one_in_cpp(self):
        done = self.run_here(marked_blocks("run")["linux"].replace("cc -o import import.c", "c++ -o import -x c++ import.c"))
        self.assert_prints_the_segments(done)

    def test_the_guard_lets_nothing_out(self):
        (self.folder / "guarded.cpp").write_text(GUARDED)
        done = self.run_here("c++ -std=c++17 -Wall -Wextra -Werror -o guarded guarded.cpp && ./guarded")
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_the_host_is_short(self):
        self.assertLessEqual(len((self.folder / "host.c").read_text().splitlines()), 50)


if __name__ == "__main__":
    unittest.main()

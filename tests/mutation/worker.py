"""Builds mutants in a copy of the tree and runs the fast tests on them."""

import os
import re
import shutil
import subprocess
import time
from pathlib import Path

# In the order in which they are run: the first finds most and is the quickest for what it finds.
PROGRAMS = ("golden_tests", "unit_tests", "section_tests", "host_failures")
NEEDED = ("CMakeLists.txt", "LICENSE", "Utilities", "bench", "cli", "cmake", "docs", "host", "packaging", "samples", "tests")
LIBRARY = Path("Utilities/IMPORT")

BUILD_SECONDS = 600
TEST_CPU_SECONDS = 60  # the slowest program takes 9 s
TEST_SECONDS = 600  # of the clock, on a machine that does other things
# An endless loop must not take the machine's memory or disk.
LIMITS = ("prlimit", "--as=3000000000", "--fsize=500000000", "--core=0", f"--cpu={TEST_CPU_SECONDS}")
FAILED_TEST = re.compile(r"^\[  FAILED  \] ([\w/.]+)", re.MULTILINE)
# A test that is decided while it is compiled.
FAILED_ASSERTION = re.compile(r"/tests/[\w/]+\.\w+:[0-9:]+ error: static assertion failed")


class WorkerError(Exception):
    """Without a mutant something does not build or pass."""


class Worker:
    def __init__(self, top, folder):
        self.top = top
        self.tree = folder / "tree"
        self.build = folder / "build"
        self.scratch = folder / "scratch"
        self.noticed_by = {}  # by file: golden tests that noticed a mutant of it before

    def prepare(self):
        """Makes the copy equal to the tree, builds it, and makes sure that the tests pass without a mutant."""
        self.tree.mkdir(parents=True, exist_ok=True)
        wanted = self._wanted_files()
        for name in wanted:
            source, copy = self.top / name, self.tree / name
            if not copy.exists() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(source, copy)
        for copy in self.tree.rglob("*"):
            if copy.is_file() and str(copy.relative_to(self.tree)) not in wanted:
                copy.unlink()
        self._run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
                   "-DCMAKE_C_COMPILER=gcc", "-DCMAKE_CXX_COMPILER=g++", "-DCMAKE_CXX_FLAGS=-O0 -w",
                   "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=gold", "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST",
                   "-DKOVA_WARNINGS_AS_ERRORS=OFF", "-DKOVA_BUILD_TIME=Thu, 01 Jan 1970 00:00:00 +0000"], "configuration")
        self._run(["ninja", "-C", self.build, "-j1", *PROGRAMS], "build")
        for program in PROGRAMS:
            outcome, test = self._test(program)
            if outcome != "passed":
                raise WorkerError(f"{program} fails without a mutant: {outcome} {test}")

    def _wanted_files(self):
        listed = subprocess.run(["git", "-C", self.top, "ls-files", "-z", "--cached", "--others", "--exclude-standard", *NEEDED],
                                capture_output=True, check=True).stdout.decode()
        return {name for name in listed.split("\0") if name and (self.top / name).is_file()}

    @staticmethod
    def _run(command, what):
        done = subprocess.run(command, capture_output=True, text=True, errors="replace", check=False)
        if done.returncode != 0:
            raise WorkerError(f"The {what} fails without a mutant:\n{(done.stdout + done.stderr)[-3000:]}")

    def judge(self, mutant):
        """What becomes of a mutant: outcome, the program and the test that noticed it, seconds."""
        start = time.monotonic()
        path = self.tree / LIBRARY / mutant.file
        original = path.read_text(encoding="utf-8")
        path.write_text(mutant.applied(original), encoding="utf-8")
        try:
            outcome, program, test = self._outcome(mutant.file)
        finally:
            path.write_text(original, encoding="utf-8")
        return {"outcome": outcome, "program": program, "test": test, "seconds": round(time.monotonic() - start, 1)}

    def _outcome(self, file):
        # Most mutants are noticed by what noticed one of the same file, or else by a whole model: that takes no time.
        likely = self.noticed_by.setdefault(file, ["*whole_*"])
        for program in PROGRAMS:
            built = self._build(program)
            if built == "killed":
                return built, program, "static assertion"
            if built != "built":
                return built, "", ""
            for chosen in (likely, ["*"]) if program == PROGRAMS[0] else (["*"],):
                outcome, test = self._test(program, chosen)
                if outcome != "passed":
                    if program == PROGRAMS[0] and "/" in test and test not in likely:
                        likely.append(test)
                    return outcome, program, test
        return "survived", "", ""

    def _build(self, program):
        try:
            done = subprocess.run(["ninja", "-C", self.build, "-j1", program], capture_output=True, text=True, errors="replace",
                                  timeout=BUILD_SECONDS, check=False)
        except subprocess.TimeoutExpired:
            return "does not compile"
        if done.returncode == 0:
            return "built"
        return "killed" if FAILED_ASSERTION.search(done.stdout) else "does not compile"

    def _test(self, program, chosen=("*",)):
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir(parents=True)
        environment = {name: value for name, value in os.environ.items() if not name.startswith("GTEST_")}
        environment["TMPDIR"] = str(self.scratch)
        log = self.scratch / "log"
        with open(log, "wb") as output:
            try:
                status = subprocess.run([*LIMITS, self.build / "bin" / program, "--gtest_brief=1", "--gtest_fail_fast",
                                         "--gtest_filter=" + ":".join(chosen)],
                                        stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT, cwd=self.scratch,
                                        env=environment, timeout=TEST_SECONDS, check=False).returncode
            except subprocess.TimeoutExpired:
                return "timeout", ""
        if status == 0:
            return "passed", ""
        with open(log, "rb") as output:
            found = FAILED_TEST.search(output.read(10_000_000).decode(errors="replace"))
        # SIGXCPU, or SIGKILL after it.
        if not found and status in (-24, -9):
            return "timeout", ""
        return "killed", found.group(1) if found else f"ended by signal {-status}" if status < 0 else ""

"""An installation, seen by those who have nothing else: what is in it, and that each part of it does its work."""

import os
import pty
import re
import select
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

BUILD = Path(os.environ["KOVA_BUILD_FOLDER"])
SOURCE = Path(os.environ["KOVA_SOURCE_FOLDER"])
VERSION = os.environ["KOVA_VERSION"]
CMAKE = os.environ["KOVA_CMAKE"]
GENERATOR = os.environ["KOVA_GENERATOR"]
CONFIGURATION = os.environ["KOVA_CONFIGURATION"]
C_COMPILER = os.environ["KOVA_C_COMPILER"]
LIB = os.environ["KOVA_LIBRARY_FOLDER"]  # below the prefix: "lib"
CONSUMERS = Path(__file__).resolve().parent

FILES = {
    "bin/kova-import",
    "include/kova_import/host_calls.h",
    "include/kova_import/import_export.h",
    f"{LIB}/cmake/kova_import/kova_importConfig.cmake",
    f"{LIB}/cmake/kova_import/kova_importConfigVersion.cmake",
    f"{LIB}/kova-import/libprekovawdll.so",
    f"{LIB}/libkova_import.so",
    f"{LIB}/pkgconfig/kova_import.pc",
    "share/bash-completion/completions/kova-import",
    "share/doc/kova-import/CHANGELOG.md",
    "share/doc/kova-import/LICENSE",
    "share/doc/kova-import/README.md",
    "share/fish/vendor_completions.d/kova-import.fish",
    "share/man/man1/kova-import.1",
    "share/zsh/site-functions/_kova-import",
} | {f"share/doc/kova-import/docs/{page.name}" for page in (SOURCE / "docs").glob("*.md")}

# A segment, and neither flows, exchanges, boundaries nor loads.
LEGACY = """   11      2
1 2 2003 4 5 6
7 8 2009 10 11 12
365.1
1
5
1
2
3
4
9
0.1
0.125 0.5
1
0 0.25
0
0
0
1
1
0.25
2 0.5
Names
1 'Upper Pool'
Geometry
1 2 3 0.1 11 12 13 14 15 16 17 18 19
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

INSTALLATION = None
PREFIX = None


def setUpModule():
    """Installs, and moves the installation: nothing in it may depend on where it was made."""
    global INSTALLATION, PREFIX
    INSTALLATION = tempfile.TemporaryDirectory()
    made = Path(INSTALLATION.name).resolve() / "made"
    run(CMAKE, "--install", BUILD, "--prefix", made, *(["--config", CONFIGURATION] if CONFIGURATION else []))
    PREFIX = made.rename(made.with_name("moved"))


def tearDownModule():
    INSTALLATION.cleanup()


def environment(**changes):
    """Without what would lead a loader or a package search elsewhere."""
    strange = ("LD_", "CMAKE_", "PKG_CONFIG", "KOVA_", "DESTDIR", "CFLAGS", "LDFLAGS")
    return {name: value for name, value in os.environ.items() if not name.startswith(strange)} | changes


def run(*command, **options):
    """Runs what must succeed and returns its standard output."""
    options = {"env": environment(), "timeout": 300} | options
    done = subprocess.run(list(map(str, command)), stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                          stdin=subprocess.DEVNULL, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command} ended with {done.returncode}:\n{done.stdout}{done.stderr}")
    return done.stdout


def help_page():
    return run(PREFIX / "bin/kova-import", "--help")


def options_in_help():
    """Their long names."""
    return re.findall(r"^  +(?:-\w,)?(--[a-z-]+)", help_page(), re.MULTILINE)


class Scratch(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name).resolve()


class Files(unittest.TestCase):
    def test_the_installation_has_these_files_and_no_others(self):
        installed = {str(path.relative_to(PREFIX)) for path in PREFIX.rglob("*") if not path.is_dir()}
        self.assertEqual(sorted(installed), sorted(FILES))

    def test_no_file_is_a_link(self):
        self.assertEqual([path for path in PREFIX.rglob("*") if path.is_symlink()], [])

    def test_no_text_names_the_folders_in_which_it_was_made(self):
        for name in sorted(FILES):
            content = (PREFIX / name).read_bytes()
            if not content.startswith(b"\x7fELF"):
                for folder in (BUILD, SOURCE, PREFIX.with_name("made")):
                    self.assertNotIn(os.fsencode(folder) + b"/", content, name)


class Loading(Scratch):
    def dynamic_section(self, name):
        return run("readelf", "--dynamic", "--wide", PREFIX / name, env=environment(LC_ALL="C"))

    def search_path(self, name):
        section = self.dynamic_section(name)
        self.assertNotIn("(RPATH)", section)
        return re.findall(r"\(RUNPATH\).*\[(.*)\]", section)

    def test_only_the_command_has_a_search_path(self):
        self.assertEqual(self.search_path("bin/kova-import"), [f"$ORIGIN/../{LIB}/kova-import:$ORIGIN/../{LIB}"])
        self.assertEqual(self.search_path(f"{LIB}/libkova_import.so"), [])
        self.assertEqual(self.search_path(f"{LIB}/kova-import/libprekovawdll.so"), [])

    def test_the_libraries_are_known_by_names_without_version(self):
        self.assertIn("soname: [libkova_import.so]", self.dynamic_section(f"{LIB}/libkova_import.so"))
        self.assertIn("soname: [libprekovawdll.so]", self.dynamic_section(f"{LIB}/kova-import/libprekovawdll.so"))

    def test_the_reference_host_is_not_taken_for_the_host_of_another_program(self):
        load = "import ctypes, sys; ctypes.CDLL(sys.argv[1])"
        done = subprocess.run([sys.executable, "-c", load, PREFIX / LIB / "libkova_import.so"], capture_output=True,
                              text=True, env=environment(), cwd=self.folder)
        self.assertNotEqual(done.returncode, 0)
        self.assertRegex(done.stderr, r"libprekovawdll\.so: cannot open shared object file")

    def test_the_command_imports_with_an_empty_environment_from_any_folder(self):
        sample = SOURCE / "samples/river-estuary-v7.inp"
        for command in (PREFIX / "bin/kova-import", Path("../moved/bin/kova-import")):
            done = subprocess.run([command, sample], capture_output=True, text=True, env={}, cwd=PREFIX.parent / "moved")
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertRegex(done.stdout, r"(?m)^ +segments +42 segments\b")


class Consumers(Scratch):
    """Projects that have the installation only."""

    def setUp(self):
        super().setUp()
        self.file = self.folder / "river.inp"
        self.file.write_text(LEGACY)

    def assert_imports(self, program):
        """The program's host receives as many commands as the reference host, which logs one in a line."""
        log = self.folder / "river.log"
        subprocess.run([PREFIX / "bin/kova-import", "--log", log, self.file], capture_output=True, env=environment())
        expected = len(log.read_text().splitlines())
        self.assertGreater(expected, 30)
        self.assertEqual(run(program, self.file, cwd="/").splitlines()[-1], f"{expected} commands")

    def configure(self, source, *options):
        run(CMAKE, "-S", source, "-B", self.folder / "build", "-G", GENERATOR, f"-DCMAKE_PREFIX_PATH={PREFIX}",
            f"-DCMAKE_C_COMPILER={C_COMPILER}", "-DCMAKE_BUILD_TYPE=Release",
            "-DCMAKE_RUNTIME_OUTPUT_DIRECTORY=$<1:" + str(self.folder) + ">", *options)

    def test_a_project_that_uses_cmake(self):
        self.configure(CONSUMERS / "consumer_cmake")
        run(CMAKE, "--build", self.folder / "build", "--config", "Release")
        for program in ("load_at_run_time", "linked"):
            with self.subTest(program):
                self.assert_imports(self.folder / program)

    def test_cmake_finds_versions_that_are_compatible(self):
        major, minor, patch = map(int, VERSION.split("."))
        (self.folder / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.25)\nproject(versions LANGUAGES C)\n"
            "find_package(kova_import ${WANTED} REQUIRED)\n")
        self.configure(self.folder, f"-DWANTED={major}.{minor}.{patch}")
        for newer in (f"{major}.{minor + 1}", f"{major + 1}.0"):
            with self.subTest(newer), self.assertRaisesRegex(AssertionError, "compatible with requested version"):
                self.configure(self.folder, f"-DWANTED={newer}")

    def test_a_project_that_uses_pkg_config(self):
        packages = environment(PKG_CONFIG_PATH=str(PREFIX / LIB / "pkgconfig"), CC=C_COMPILER)
        self.assertEqual(run("pkg-config", "--modversion", "kova_import", env=packages).strip(), VERSION)
        run(CONSUMERS / "consumer_pkg_config/build", self.folder, env=packages)
        self.assert_imports(self.folder / "host")

    def test_pkg_config_leads_to_the_library_in_both_ways(self):
        packages = environment(PKG_CONFIG_PATH=str(PREFIX / LIB / "pkgconfig"))
        library = Path(run("pkg-config", "--variable=library", "kova_import", env=packages).strip())
        self.assertEqual(library.resolve(), PREFIX / LIB / "libkova_import.so")
        folder, name = run("pkg-config", "--libs", "kova_import", env=packages).split()
        self.assertEqual((Path(folder.removeprefix("-L")).resolve(), name), (PREFIX / LIB, "-lkova_import"))


class ManPage(unittest.TestCase):
    page = property(lambda self: PREFIX / "share/man/man1/kova-import.1")

    def test_it_has_no_mistakes(self):
        done = subprocess.run(["groff", "-man", "-ww", "-z", self.page], capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_it_says_what_the_help_says(self):
        shown = run("groff", "-man", "-Tascii", "-P-cbou", "-rLL=1000n", self.page)
        words = " ".join(shown.split())
        self.assertIn(f"kova-import {VERSION}", words)
        self.assertGreater(len(options_in_help()), 8)
        for line in help_page().splitlines():
            for part in re.split(r"  +", line):
                if part.endswith(":") or re.match(r"(import|check): ", part):  # a heading looks different
                    continue
                self.assertIn(" ".join(re.sub(",(?=-)", ", ", part).split()), words)

    def test_its_sections_are_those_of_a_man_page(self):
        headings = re.findall(r"^\.SH (.*)", self.page.read_text(), re.MULTILINE)
        self.assertEqual(headings, ["NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXAMPLES", "EXIT STATUS"])


class Terminal:
    """A shell with a person at it, in a folder where kova-import shows its arguments instead of importing."""

    PATIENCE = 30  # seconds

    def __init__(self, folder, *shell):
        program = folder / "kova-import"
        program.write_text("#!/bin/sh\nprintf '<%s>' \"$@\"; echo\n")
        program.chmod(0o755)
        child, self.terminal = pty.fork()
        if child == 0:
            os.chdir(folder)
            os.execvpe(shell[0], shell, {"PATH": f"{folder}:/usr/bin:/bin", "TERM": "dumb", "HOME": str(folder)})
        self.child = child
        self.seen = ""

    def type(self, keys):
        os.write(self.terminal, keys.encode())

    def await_text(self, text):
        deadline = time.monotonic() + self.PATIENCE
        while text not in self.seen:
            if not select.select([self.terminal], [], [], max(0, deadline - time.monotonic()))[0]:
                raise AssertionError(f"{text!r} does not appear in {self.seen!r}")
            try:
                self.seen += os.read(self.terminal, 4096).decode(errors="replace")
            except OSError:
                raise AssertionError(f"the shell ended without {text!r}: {self.seen!r}") from None

    def close(self):
        os.close(self.terminal)
        os.waitpid(self.child, 0)


# What is typed, with the tab key as "~", and the arguments that the command then gets.
TYPED = [
    ("--sc~ transport", "--scope transport"),
    ("--scope tr~", "--scope transport"),
    ("--scope=tr~", "--scope=transport"),
    ("--index-names n~", "--index-names no"),
    ("-v --as~ riv~", "-v --ask river.inp"),
    ("--lo~ ri~ riv~", "--log river.inp river.inp"),
    ("imp~ --sc~ all", "import --scope all"),
    ("chec~ --fo~ sa~ riv~", "check --format sarif river.inp"),
    ("check --as~", "check --as"),
    ("check --format x~", "check --format x"),
    ("--scope all chec~ --fo~ te~", "--scope all check --format text"),
    ("--vers~", "--version"),
    ("-- riv~", "-- river.inp"),
]


class Completion(Scratch):
    def setUp(self):
        super().setUp()
        (self.folder / "river.inp").touch()
        (self.folder / "xylem.txt").touch()

    def assert_completes(self, terminal):
        self.addCleanup(terminal.close)
        for typed, expected in TYPED:
            with self.subTest(typed):
                terminal.seen = ""
                terminal.type(f"kova-import {typed} end\n".replace("~", "\t"))
                terminal.await_text("<end>")
                arguments = re.findall(r"<([^<>\r\n]*)>", terminal.seen)
                # some shells write --scope=all where others write --scope all
                self.assertEqual(" ".join(arguments).replace("=", " "), f"{expected} end".replace("=", " "))

    def test_bash(self):
        terminal = Terminal(self.folder, "bash", "--norc", "--noprofile", "-i")
        terminal.type(f"bind 'set bell-style none'; . {PREFIX}/share/bash-completion/completions/kova-import\n")
        self.assert_completes(terminal)

    def test_zsh(self):
        terminal = Terminal(self.folder, "zsh", "-f", "-i")
        terminal.type(f"fpath=({PREFIX}/share/zsh/site-functions $fpath); autoload -U compinit; compinit -u -D\n")
        self.assert_completes(terminal)

    def candidates_in_bash(self, *words):
        ask = """. "$1"; shift; COMP_WORDS=(kova-import "$@"); COMP_CWORD=$#; _kova_import; printf '%s\\n' "${COMPREPLY[@]}" """
        return run("bash", "--norc", "-c", ask, "bash", PREFIX / "share/bash-completion/completions/kova-import", *words,
                   cwd=self.folder).split()

    def candidates_in_fish(self, line):
        home = environment(HOME=str(self.folder), XDG_CONFIG_HOME=str(self.folder), XDG_DATA_HOME=str(self.folder))
        ask = "source $argv[1]; complete --do-complete $argv[2]"
        shown = run("fish", "--no-config", "-c", ask, PREFIX / "share/fish/vendor_completions.d/kova-import.fish", line,
                    cwd=self.folder, env=home)
        return [candidate.split("\t")[0] for candidate in shown.splitlines()]

    def test_fish(self):
        for line, expected in [
                ("--sc", ["--scope"]), ("--scope ", ["all", "transport"]), ("--scope=t", ["--scope=transport"]),
                ("--log riv", ["river.inp"]), ("riv", ["river.inp"]), ("imp", ["import"]),
                ("check --format ", ["json", "sarif", "text"]), ("check --as", []), ("check riv", ["river.inp"])]:
            with self.subTest(line):
                self.assertEqual(self.candidates_in_fish(f"kova-import {line}"), expected)

    def test_each_option_of_the_help_is_offered(self):
        offered = {
            "bash": self.candidates_in_bash("--") + self.candidates_in_bash("check", "--"),
            "fish": self.candidates_in_fish("kova-import --") + self.candidates_in_fish("kova-import check --")}
        for shell, candidates in offered.items():
            with self.subTest(shell):
                self.assertEqual(set(candidates), set(options_in_help()))

    def test_bash_offers_sub_commands_and_files_first(self):
        (self.folder / "important.inp").touch()
        self.assertEqual(self.candidates_in_bash("--sc"), ["--scope"])
        self.assertEqual(self.candidates_in_bash("imp"), ["import", "important.inp"])
        self.assertEqual(self.candidates_in_bash("--scope", "=", ""), ["all", "transport"])
        self.assertEqual(self.candidates_in_bash("--scope", "="), ["all", "transport"])


if __name__ == "__main__":
    unittest.main()

"""The package for Debian: made, installed below a scratch folder, and used there."""

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

BUILD = Path(os.environ["KOVA_BUILD_FOLDER"])
SOURCE = Path(os.environ["KOVA_SOURCE_FOLDER"])
VERSION = os.environ["KOVA_VERSION"]
CPACK = os.environ["KOVA_CPACK"]
C_COMPILER = os.environ["KOVA_C_COMPILER"]

SCRATCH = None
PACKAGE = None
ROOT = None


def run(*command, **options):
    done = subprocess.run(list(map(str, command)), capture_output=True, text=True, stdin=subprocess.DEVNULL, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command} ended with {done.returncode}:\n{done.stdout}{done.stderr}")
    return done.stdout


def setUpModule():
    global SCRATCH, PACKAGE, ROOT
    SCRATCH = tempfile.TemporaryDirectory()
    folder = Path(SCRATCH.name).resolve()
    # made by somebody who keeps new files private, which must not reach the package
    run(CPACK, "-G", "DEB", "-B", folder / "made", cwd=BUILD, umask=0o077)
    (PACKAGE,) = (folder / "made").glob("*.deb")
    ROOT = folder / "root"
    database = ROOT / "var/lib/dpkg"
    for name in ("updates", "info"):
        (database / name).mkdir(parents=True)
    (database / "status").touch()
    if os.geteuid() == 0:
        # The root has no shell for the script that follows; what it does is a test of its own.
        run("dpkg", f"--root={ROOT}", f"--log={folder}/log", "--force-depends", "--unpack", PACKAGE)
    else:  # only root may give files to root
        run("dpkg-deb", "--extract", PACKAGE, ROOT)


def tearDownModule():
    SCRATCH.cleanup()


def control(field):
    return run("dpkg-deb", "--field", PACKAGE, field).strip()


class Package(unittest.TestCase):
    def test_it_says_what_it_is(self):
        self.assertEqual(control("Package"), "kova-import")
        self.assertEqual(control("Version"), VERSION)
        self.assertEqual(control("Architecture"), run("dpkg", "--print-architecture").strip())
        self.assertRegex(control("Description"), r"^import utility for .*\n .*libkova_import\.so")
        self.assertRegex(control("Maintainer"), r"^.+ <\S+@\S+>$")

    def test_it_depends_on_the_runtime_of_its_compiler_only(self):
        names = {re.split(r"[ (]", dependency)[0] for dependency in control("Depends").split(", ")}
        self.assertLessEqual(names, {"libc6", "libgcc-s1", "libstdc++6"})

    def test_all_that_it_runs_is_ldconfig(self):
        folder = PACKAGE.with_name("control")
        run("dpkg-deb", "--control", PACKAGE, folder)
        self.assertEqual({file.name for file in folder.iterdir()}, {"control", "md5sums", "postinst", "postrm"})
        for script, occasion in (("postinst", "configure"), ("postrm", "remove")):
            lines = [line.strip() for line in (folder / script).read_text().splitlines()]
            self.assertEqual([line for line in lines if line], ["#!/bin/sh", "set -e", f'if [ "$1" = "{occasion}" ]; then', "ldconfig", "fi"])

    def test_its_files_lie_where_debian_has_them(self):
        files = {str(path.relative_to(ROOT)) for path in (ROOT / "usr").rglob("*") if not path.is_dir()}
        self.assertEqual({name for name in files if not name.startswith("usr/share/doc/")}, {
            "usr/bin/kova-import", "usr/include/kova_import/host_calls.h", "usr/include/kova_import/import_export.h",
            "usr/lib/cmake/kova_import/kova_importConfig.cmake", "usr/lib/cmake/kova_import/kova_importConfigVersion.cmake",
            "usr/lib/kova-import/libprekovawdll.so", "usr/lib/libkova_import.so", "usr/lib/pkgconfig/kova_import.pc",
            "usr/share/bash-completion/completions/kova-import", "usr/share/fish/vendor_completions.d/kova-import.fish",
            "usr/share/man/man1/kova-import.1.gz", "usr/share/zsh/vendor-completions/_kova-import"})
        for name in ("copyright", "changelog.gz", "README.md", "docs/embedding.md"):
            self.assertIn(f"usr/share/doc/kova-import/{name}", files)

    def test_zsh_looks_for_completions_where_its_own_lies(self):
        (file,) = (ROOT / "usr/share/zsh").rglob("_kova-import")
        self.assertIn("/" + str(file.parent.relative_to(ROOT)), run("zsh", "-f", "-c", "print -l $fpath").splitlines())

    def test_modes_and_owners_are_those_of_a_system(self):
        for line in run("dpkg-deb", "--contents", PACKAGE).splitlines():
            mode, owner, name = line.split()[0], line.split()[1], line.split()[-1]
            self.assertEqual(owner, "root/root", name)
            wanted = "drwxr-xr-x" if name.endswith("/") else "-rwxr-xr-x" if "/bin/" in name else "-rw-r--r--"
            self.assertEqual(mode, wanted, name)

    def test_the_programs_are_stripped(self):
        for name in ("bin/kova-import", "lib/libkova_import.so", "lib/kova-import/libprekovawdll.so"):
            self.assertNotIn(".symtab", run("readelf", "--sections", "--wide", ROOT / "usr" / name), name)


class Use(unittest.TestCase):
    def test_the_command_imports_a_sample(self):
        shown = run(ROOT / "usr/bin/kova-import", SOURCE / "samples/river-estuary-v7.inp", env={})
        self.assertRegex(shown, r"(?m)^ +segments +42 segments\b")

    def test_the_loader_finds_the_utility_and_never_the_reference_host(self):
        # as the loader does after an installation: its index of the standard folders
        run("/sbin/ldconfig", "-r", ROOT, "-X", "-C", "/index") if os.geteuid() == 0 else self.skipTest("needs root")
        index = run("/sbin/ldconfig", "-r", ROOT, "-C", "/index", "-p")
        self.assertIn("libkova_import.so", index)
        self.assertNotIn("libprekovawdll", index)

    def test_a_program_is_built_with_the_headers_and_loads_the_utility(self):
        folder = Path(SCRATCH.name).resolve() / "consumer"
        folder.mkdir()
        build = SOURCE / "tests/install/consumer_pkg_config/build"
        run(build, folder, env=dict(os.environ, PKG_CONFIG_PATH=str(ROOT / "usr/lib/pkgconfig"), CC=C_COMPILER))
        sample = SOURCE / "samples/river-estuary-v7.inp"
        self.assertRegex(run(folder / "host", sample, cwd="/").splitlines()[-1], r"^\d{5} commands$")


if __name__ == "__main__":
    unittest.main()

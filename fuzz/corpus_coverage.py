"""Which lines of the library the corpora reach: they are run once with targets that count."""

import json
import subprocess

import targets

BUILD = targets.TOP / "build" / "fuzz-coverage"
PROGRAMS = BUILD / "bin"
LIBRARY = targets.TOP / "Utilities" / "IMPORT"


def replay(target, work, folder):
    """Runs the corpus and the seeds of a target once, and returns the file with the counts."""
    profile = folder / f"{target.name}.profraw"
    command = target.command("-runs=0", targets.corpus_of(target, work), targets.make_seeds(target, work),
                             programs=PROGRAMS)
    with (folder / f"{target.name}.log").open("wb") as log:
        subprocess.run(command, check=True, stdout=log, stderr=subprocess.STDOUT, cwd=targets.TOP,
                       env={**targets.ENVIRONMENT, "LLVM_PROFILE_FILE": str(profile)})
    return profile


def measure(work):
    """The lines of every file of the library, and how many of them all targets together have run."""
    folder = BUILD / "profiles"
    folder.mkdir(parents=True, exist_ok=True)
    profiles = [replay(target, work, folder) for target in targets.TARGETS]
    merged = folder / "all.profdata"
    subprocess.run(["llvm-profdata", "merge", "-sparse", "-o", merged, *profiles], check=True)
    programs = [target.program(PROGRAMS) for target in targets.TARGETS]
    objects = [argument for program in programs[1:] for argument in ("-object", program)]
    with (folder / "llvm-cov.log").open("wb") as log:  # functions of the targets themselves bear the same names
        exported = subprocess.run(["llvm-cov", "export", "-summary-only", f"-instr-profile={merged}", programs[0],
                                   *objects], check=True, stdout=subprocess.PIPE, stderr=log)
    for entry in json.loads(exported.stdout)["data"][0]["files"]:
        path = (BUILD / entry["filename"]).resolve()
        if path.is_relative_to(LIBRARY):
            lines = entry["summary"]["lines"]
            yield path.relative_to(LIBRARY), lines["count"], lines["covered"]

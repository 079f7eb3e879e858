"""The fuzz targets: what each is run with, its seeds, and one run of it."""

import os
import re
import shutil
import signal
import subprocess
import sys
import threading
from dataclasses import dataclass
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent
PROGRAMS = TOP / "build" / "fuzz" / "bin"
COMMITTED_SEEDS = TOP / "fuzz" / "seeds"
GOLDEN_CASES = TOP / "tests" / "golden" / "cases"
SAMPLES = TOP / "samples"
LARGEST_INPUT = 4096

LEGACY_CASES = ("v7", "flowpath", "flows", "exchanges", "boundary", "loads", "sections_3_to_7", "timefunctions",
                "seg_parameters", "constants", "initial_conditions", "whole_legacy")
CURRENT_CASES = ("v8", "flowpath_v2", "flows_v2", "exchanges_v2", "boundary_v2", "loads_v2", "timefunctions_v2",
                 "seg_parameters_v2", "constants_v2", "initial_conditions_v2", "whole_current")

# Of comparisons, only those of the record reader say much; the host compares keywords.
RECORD_OPTIONS = ("-use_value_profile=1", f"-dict={TOP}/fuzz/records.dict")
# Weighing the seeds by what they cover takes longer than an import does, or than reading records twice.
IMPORT_OPTIONS = ("-entropic=0", f"-dict={TOP}/fuzz/import.dict")
# Every command of the current format has bytes of the file behind it. What a run takes is the sanitizer's own memory.
LITTLE_MEMORY = ("-rss_limit_mb=1024", "-malloc_limit_mb=64")


@dataclass(frozen=True)
class Target:
    name: str
    options: tuple
    make_seeds: object  # called with the folder to fill

    def program(self, programs=PROGRAMS):
        return programs / f"fuzz_{self.name}"

    def command(self, *behind, programs=PROGRAMS):
        return [str(self.program(programs)), "-timeout=10", "-rss_limit_mb=2048", *self.options,
                f"-max_len={LARGEST_INPUT}", *map(str, behind)]


# --- seeds ---------------------------------------------------------------------------------------------------------

def copy_committed(folder, *names):
    for name in names:
        for seed in (COMMITTED_SEEDS / name).glob("*"):
            shutil.copy(seed, folder / f"{name}-{seed.name}")


def golden_cases(families):
    """The files of the recorded cases. Those of the current format have the name of the legacy section in theirs."""
    for family in families:
        for path in sorted({*GOLDEN_CASES.glob(f"{family}_*.inp"), *GOLDEN_CASES.glob(f"{family}.inp")}):
            if family.endswith("_v2") or not path.name.startswith(f"{family}_v2_"):
                yield path


def import_seeds(folder, name, families):
    """A seed starts with a byte of options, which also gives it a header ("A"; "I" for transport only, "Q" for names
    without numbers) or lets it keep its own ("@")."""
    copy_committed(folder, name)
    letters = {b"scope transport\n": b"I", b"index-names no\n": b"Q"}
    for path in golden_cases(families):
        options = path.with_suffix(".options")
        letter = letters.get(options.read_bytes(), b"A") if options.is_file() else b"A"
        (folder / path.name).write_bytes(letter + path.read_bytes().partition(b"\n")[2])
    for path in GOLDEN_CASES.glob("driver_*.inp"):
        (folder / path.name).write_bytes(b"@" + path.read_bytes())


def sections_of(path):
    """The sections of a file, as far as the reference importer gets in it: their numbers from 0, and their bytes. The
    last one goes to the end of the file."""
    sys.path.insert(0, str(TOP / "tests" / "reference"))
    import driver  # it stands with its tests, which nothing else here needs
    lines = re.findall(rb"[^\n]*\n|[^\n]+", path.read_bytes())
    starts = set()
    send_progress = driver.send_progress

    def note_progress(run, percentage):
        starts.add(run.reader.next_line)  # behind a failure it stays where it is
        send_progress(run, percentage)

    driver.send_progress = note_progress
    try:
        driver.import_file(path)
    finally:
        driver.send_progress = send_progress
    places = [1, *sorted(starts)[1:-1], len(lines)]  # the header is in no section
    for number, (start, end) in enumerate(zip(places, places[1:])):
        yield number, b"".join(lines[start:end])


def section_seeds(folder, name, families, sample):
    """A seed starts with bytes that say how the import is done, which section it is, and what stands before it."""
    copy_committed(folder, name)
    fronts = 2
    known = set()
    for path in (*golden_cases(families), SAMPLES / sample):
        for number, text in sections_of(path):
            if (number, text) in known:
                continue
            known.add((number, text))
            for front in range(fronts):
                seed = folder / f"{path.stem}-{number + 1}-{front}"
                seed.write_bytes(bytes((0, number, front)) + text[:LARGEST_INPUT - 3])


TARGETS = (
    Target("records", RECORD_OPTIONS, lambda folder: copy_committed(folder, "records")),
    Target("differential", (*RECORD_OPTIONS, "-entropic=0"),
           lambda folder: copy_committed(folder, "records", "differential")),
    Target("sections_legacy", IMPORT_OPTIONS,
           lambda folder: section_seeds(folder, "sections_legacy", LEGACY_CASES, "river-estuary-v7.inp")),
    Target("sections_current", (*IMPORT_OPTIONS, *LITTLE_MEMORY),
           lambda folder: section_seeds(folder, "sections_current", CURRENT_CASES, "river-estuary-v8.inp")),
    Target("import_legacy", IMPORT_OPTIONS, lambda folder: import_seeds(folder, "import_legacy", LEGACY_CASES)),
    Target("import_current", (*IMPORT_OPTIONS, *LITTLE_MEMORY),
           lambda folder: import_seeds(folder, "import_current", CURRENT_CASES)),
)


def make_seeds(target, work):
    """The folder with the seeds of a target: the committed ones and those made of other tests' files."""
    folder = work / "seeds" / target.name
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    target.make_seeds(folder)
    return folder


# --- runs ----------------------------------------------------------------------------------------------------------

ENVIRONMENT = {**os.environ, "ASAN_OPTIONS": "detect_stack_use_after_return=1:strict_string_checks=1",
               "UBSAN_OPTIONS": "print_stacktrace=1"}


@dataclass
class Outcome:
    """What a run did. Times are those of the processor."""
    status: int = 0
    seconds: float = 0
    executions: int = 0
    edges: int = 0
    broken: str = ""
    complaint: str = ""


class Processes:
    """Those that were started here, so that no other is ended with them."""

    def __init__(self):
        self.lock = threading.RLock()  # a signal can come while the main thread has it
        self.running = set()
        self.is_ended = False

    def run(self, command, log):
        """Returns the status and the seconds of the processor that the command took."""
        with self.lock:
            # In a session of its own, so that Ctrl-C comes here only.
            process = subprocess.Popen(command, stdout=log, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL, cwd=TOP,
                                       env=ENVIRONMENT, start_new_session=True)
            self.running.add(process.pid)
            if self.is_ended:
                self.end()
        os.waitid(os.P_PID, process.pid, os.WEXITED | os.WNOWAIT)
        with self.lock:
            # Its number is taken until here, and never that of another process.
            self.running.remove(process.pid)
            _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        return process.returncode, usage.ru_utime + usage.ru_stime

    def end(self):
        """Ends what runs, and whatever would start from now on."""
        with self.lock:
            self.is_ended = True
            for process in self.running:
                os.killpg(process, signal.SIGTERM)


def last_number(pattern, text):
    found = re.findall(pattern, text, re.MULTILINE)
    return int(found[-1]) if found else 0


def complaint_in(text):
    lines = [line for line in text.splitlines() if re.search("broken invariant|ERROR: |runtime error|^Base64: ", line)]
    return "\n".join(lines[:4] or text.splitlines()[-5:])


def outcome_of(log, status, seconds):
    """What the log of a run says. A target that breaks has no figures at its end, but all lines before."""
    text = log.read_text(errors="replace")
    outcome = Outcome(status, seconds)
    outcome.executions = (last_number(r"^stat::number_of_executed_units: *(\d+)", text)
                          or last_number(r"^#(\d+)\s", text))
    outcome.edges = last_number(r"\bcov: (\d+)", text)
    if status != 0:
        written = re.findall(r"Test unit written to (\S+)", text)
        outcome.broken = written[-1] if written else ""
        outcome.complaint = complaint_in(text)
    return outcome


def log_of(target, work):
    return work / f"{target.name}.log"


def run_target(target, processes, work, *behind):
    """Runs a target with options and folders of its own; an input that breaks it is kept."""
    broken, log = work / "broken", log_of(target, work)
    broken.mkdir(exist_ok=True)
    with log.open("wb") as output:
        status, seconds = processes.run(target.command(f"-artifact_prefix={broken}/{target.name}-", *behind), output)
    if processes.is_ended:
        status = 0
    return outcome_of(log, status, seconds)


def corpus_of(target, work):
    """The folder with what a target has found."""
    folder = work / "corpus" / target.name
    folder.mkdir(parents=True, exist_ok=True)
    return folder


def fuzz(target, processes, work, seconds, seeds, *options):
    """Fuzzes for so long by the clock. What is found stays in the corpus, so that the next run starts from there."""
    corpus = corpus_of(target, work)
    return run_target(target, processes, work, f"-max_total_time={seconds}", "-print_final_stats=1", *options, corpus,
                      seeds)

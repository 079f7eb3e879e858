"""The committed result: figures, and the mutants that no test notices with the reason of each."""

import json
from collections import Counter, defaultdict
from datetime import date
from pathlib import Path

HERE = Path(__file__).resolve().parent
RESULTS = HERE / "results.md"
REASONS = HERE / "survivors.json"
WANTED_SHARE = 0.98
SAME_PROGRAM = "The same program: "  # so starts the reason of a mutant that nothing can notice
NO_REASON = "**no reason given yet**"

KILLED = ("killed", "timeout")


def reasons():
    """Why survivors survive, by their identities."""
    return json.loads(REASONS.read_text(encoding="utf-8"))


def outcome_of(mutant, outcomes, known):
    """As it was found; a survivor that is the same program is told apart."""
    outcome = outcomes[mutant.identity]["outcome"]
    is_same = outcome == "survived" and known.get(mutant.identity, "").startswith(SAME_PROGRAM)
    return "same program" if is_same else outcome


class Figures:
    """Outcomes of mutants: those count that compile and are another program."""

    def __init__(self, mutants, outcomes):
        known = reasons()
        self.counts = Counter(outcome_of(mutant, outcomes, known) for mutant in mutants if mutant.identity in outcomes)
        self.killed = sum(self.counts[each] for each in KILLED)
        self.tried = self.killed + self.counts["survived"]
        self.left = len(mutants) - self.counts.total()

    @property
    def share(self):
        return self.killed / self.tried if self.tried else 0.0

    def row(self, name):
        share = f"{100 * self.share:.1f} %" if self.tried else "–"
        return (f"| {name} | {self.tried} | {self.counts['killed']} | {self.counts['timeout']} | {self.counts['survived']} | "
                f"{share} | {self.counts['same program']} | {self.counts['does not compile']} |")


def _table(title, mutants, outcomes, key):
    groups = defaultdict(list)
    for mutant in mutants:
        groups[key(mutant)].append(mutant)
    lines = [f"| {title} | Mutants | Noticed by a test | By a time limit | Survived | Share noticed | Same program | Do not compile |",
             "|---|---:|---:|---:|---:|---:|---:|---:|"]
    lines += [Figures(groups[name], outcomes).row(name) for name in sorted(groups)]
    return [*lines, Figures(mutants, outcomes).row("**all**"), ""]


def _folder(mutant):
    folder = str(Path(mutant.file).parent)
    return "(top)" if folder == "." else folder


def _survivors(mutants, outcomes):
    known = reasons()
    by_reason = defaultdict(list)
    for mutant in mutants:
        if outcomes.get(mutant.identity, {}).get("outcome") == "survived":
            by_reason[known.get(mutant.identity, NO_REASON)].append(mutant)
    lines = []
    for reason in sorted(by_reason):
        lines += [f"### {reason}", ""]
        for mutant in by_reason[reason]:
            shown = mutant.identity.replace("`", "'")
            lines.append(f"- `{shown}`")
        lines.append("")
    return lines or ["None.", ""]


def write_results(mutants, outcomes, compiler):
    figures = Figures(mutants, outcomes)
    seconds = sum(outcomes[mutant.identity]["seconds"] for mutant in mutants if mutant.identity in outcomes)
    programs = Counter(outcomes[mutant.identity]["program"] for mutant in mutants
                       if outcomes.get(mutant.identity, {}).get("outcome") in KILLED)
    same = figures.counts["same program"]
    lines = ["# Mutation testing", "",
             "Written by `scripts/mutate`, which changes the library in one place at a time and runs `golden_tests`, `unit_tests`,",
             "`section_tests` and `host_failures`, until one notices. What the compiler rejects does not count, nor what is the same",
             "program; the reason of each of these stands below.", "",
             f"{date.today()}, {compiler}, `-O0`: {figures.tried} mutants, {figures.killed} noticed "
             f"({100 * figures.share:.1f} %), {figures.counts['survived']} not. {same} more are the same program (with them "
             f"{100 * figures.killed / max(figures.tried + same, 1):.1f} % are noticed), {figures.counts['does not compile']} more do "
             f"not compile. {seconds / 60:.0f} minutes of work for one core.",
             "Noticed by " + ", ".join(f"`{name}`: {count}" for name, count in programs.most_common()) + ".", ""]
    if figures.left:
        lines += [f"**Not finished: {figures.left} mutants are left.**", ""]
    lines += _table("Folder", mutants, outcomes, _folder)
    lines += _table("Change", mutants, outcomes, lambda mutant: mutant.kind)
    lines += ["## Survivors", "", "Each with file, change, line, which of the equal lines of the file and which column.", ""]
    lines += _survivors(mutants, outcomes)
    RESULTS.write_text("\n".join(lines).rstrip("\n") + "\n", encoding="utf-8")
    return figures

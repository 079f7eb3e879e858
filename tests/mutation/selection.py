"""Which mutants are tried: a part of them that is spread over all files, tables and kinds, and the same in every run."""

import hashlib
import re
from collections import defaultdict

from mutants import find_mutants

SEED = "1"
# Half of the library is compiled again for a change in one of these; beyond one of each kind they would take most of the time.
WIDE_HEADERS = "control/"
WINDOWS_BLOCK = re.compile(r"#if defined\(_WIN32\)\n.*?\n#(?:else|endif)", re.DOTALL)
# Few, and what the formats and the host depend on.
WHOLE_KINDS = ("layout", "keyword swapped")


def all_mutants(library):
    """Those of all files of the library that this system compiles."""
    found = []
    for path in sorted([*library.rglob("*.h"), *library.rglob("*.cpp")]):
        if path.name.endswith("_windows.cpp"):
            continue
        text = path.read_text(encoding="utf-8")
        of_windows = [block.span() for block in WINDOWS_BLOCK.finditer(text)]
        found += [mutant for mutant in find_mutants(str(path.relative_to(library)), text)
                  if not any(first <= mutant.start < last for first, last in of_windows)]
    return found


def _order(mutant):
    """A place in the order of choice that does not depend on the other mutants."""
    return hashlib.sha256((SEED + mutant.identity).encode()).digest()


def selected(mutants, count):
    """All layouts and keywords, a tenth of each table, and one of each kind in each file, again and again until there are enough."""
    groups = defaultdict(list)
    for mutant in mutants:
        groups[mutant.file, mutant.kind if mutant.kind in WHOLE_KINDS else mutant.table or mutant.kind].append(mutant)
    chosen = []
    rest = []
    for (file, _), group in groups.items():
        group.sort(key=_order)
        if group[0].kind in WHOLE_KINDS:
            chosen += group
            continue
        is_wide = file.startswith(WIDE_HEADERS) and file.endswith(".h")
        first = 1 if is_wide or not group[0].table else max(1, min(12, len(group) // 10))
        chosen += group[:first]
        if not is_wide:
            rest += [(place, _order(mutant), mutant) for place, mutant in enumerate(group[first:])]
    rest.sort(key=lambda entry: entry[:2])
    return chosen + [mutant for _, _, mutant in rest[:max(0, count - len(chosen))]]

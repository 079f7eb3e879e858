"""Small model input files made at random, valid or with one fault, for comparing importers.

    python3 tests/reference/generate.py SEED OUT

writes the file of that seed and says in one line what it is. The same seed always gives the same file.
"""

import random
import sys

from generate_current import current_opening, current_system_count
from generate_current_sections import current_sections
from generate_faults import CURRENT_OPENING_FAULTS, CURRENT_SECTION_FAULTS, OPENING_FAULTS, SECTION_FAULTS
from generate_legacy import legacy_opening, legacy_sections, legacy_system_count


# --- the file around the records -------------------------------------------------------------------------------------

def whole_file(rng, records):
    lines = [line for record in records for line in record.lines]
    lines += rng.choice(([], [], [b""], [b"Next section", b"0 0"]))
    ends = rng.choice(((b"\n",), (b"\n",), (b"\r\n",), (b"\n", b"\r\n")))
    content = b"".join(line + rng.choice(ends) for line in lines)
    if rng.random() < 0.15:
        content = content.removesuffix(b"\n").removesuffix(b"\r")
    if rng.random() < 0.1:
        content = b"\xef\xbb\xbf" + content
    return content


def break_bytes(rng, content):
    """Faults that do not care about records."""
    what = rng.choice(("truncated", "changed", "removed") * 4 + ("utf-16", "second mark"))
    position = rng.randint(0, len(content))
    if what == "truncated":
        return content[:position], f"truncated at byte {position}"
    if what == "changed":
        return content[:position] + bytes([rng.randrange(256)]) + content[position + 1:], f"byte {position} changed"
    if what == "removed":
        return content[:position] + content[position + 1:], f"byte {position} removed"
    if what == "utf-16":
        return content.decode("latin-1").encode("utf-16"), "UTF-16"
    return b"\xef\xbb\xbf" * 2 + content, "two byte-order marks"


# Opening faults, section faults; up to which random number a file has no fault, and up to which only broken bytes.
FAULTS = {"legacy": (OPENING_FAULTS, SECTION_FAULTS, 0.4, 0.5),
          "current": (CURRENT_OPENING_FAULTS, CURRENT_SECTION_FAULTS, 0.4, 0.48)}


def random_records(rng, family, segment_count):
    """The records of a file: up to the segments, and of the sections behind them."""
    if family == "current":
        system_count = current_system_count(rng)
        opening, option = current_opening(rng, system_count, segment_count)
        return opening, current_sections(rng, system_count, segment_count, option)
    system_count = legacy_system_count(rng)
    return (legacy_opening(rng, system_count, segment_count),
            legacy_sections(rng, system_count, segment_count))


def plant_fault(rng, family, opening, sections):
    opening_faults, section_faults, _, _ = FAULTS[family]
    if rng.random() < 0.7:
        return rng.choice(section_faults)(rng, sections)
    return rng.choice(opening_faults)(rng, opening)


def random_segment_count(rng, family):
    if rng.random() < 0.01:
        return 1001
    return -1 if family == "current" and rng.random() < 0.04 else rng.choice((0, 1, 2, 3, 5, 12))


def generate_described(seed):
    """The file of a seed and a line about it."""
    rng = random.Random(seed)
    family = rng.choice(("legacy", "legacy", "current"))
    segment_count = random_segment_count(rng, family)
    opening, sections = random_records(rng, family, segment_count)
    description = f"seed {seed}: {family}, {segment_count} segments"
    _, _, without_fault, with_broken_bytes = FAULTS[family]
    choice = rng.random()
    if choice < without_fault:
        return whole_file(rng, opening + sections), description + ", no fault planted"
    if choice < with_broken_bytes:
        content, fault = break_bytes(rng, whole_file(rng, opening + sections))
    else:
        fault = plant_fault(rng, family, opening, sections)
        content = whole_file(rng, opening + sections)
    return content, f"{description}, {fault}"


def generate(seed):
    return generate_described(seed)[0]


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: generate.py SEED OUT")
    content, description = generate_described(int(sys.argv[1]))
    with open(sys.argv[2], "wb") as file:
        file.write(content)
    print(description)


if __name__ == "__main__":
    main()

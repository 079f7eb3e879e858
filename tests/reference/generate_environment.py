"""Records of a legacy (version 7) file, made at random, from the time functions to the initial conditions.

Like the sections before them they are joined by the counts of systems and segments, which hold where a count
is left out.
"""

from generate_records import (Record, caption_record, count_record, integer_text, list_record, list_text,
                              random_name, real_text, sparse_record)
from legacy_constant_rows import GROUPS, TIME_FUNCTIONS

LARGEST_FUNCTION_COUNT = 50
FUNCTIONS_OF_HOST = (1, 5, 5, 6, 7, 8, 9, 10, 10, 10, 11, 14, 15, 16, 19, 20, 21, 22, 25)
FUNCTIONS_WITH_WARNING = (2, 3, 4, 12, 13, 17, 18)
FURTHER_SERIES = (23, 24)
OUT_OF_RANGE = (0, -3, 51, 99, 2147483647, -2147483648)
PARAMETERS = (*range(1, 30), *range(100, 107))
OTHER_PARAMETERS = (20, 21, 30, 50, 99, 107, 0, -1, 2147483647, -2147483648)
CONSTANT_GROUPS = ([legacy for legacy, _ in TIME_FUNCTIONS],
                   *([row.legacy_number for row in group.rows] for group in GROUPS))
CONSTANTS = [number for numbers in CONSTANT_GROUPS for number in numbers]
BENTHIC_ALGAE = [row.legacy_number for group in GROUPS for row in group.rows if row.benthic_algae]
OTHER_CONSTANTS = (0, -5, 26, 45000, 97, 98, 200, 1139, 1218, 2147483647, -2147483648)


def environment_records(rng, system_count, segment_count):
    parameters, segment_count = parameter_records(rng, segment_count)
    return (time_function_records(rng) + parameters + constant_records(rng)
            + initial_records(rng, system_count, segment_count))


# --- time functions -----------------------------------------------------------------------------------------

def time_function_records(rng):
    numbers = function_numbers(rng)
    count = len(numbers) or rng.choice((0, 0, -1, -2147483648))
    records = [count_record(rng, "time_function_count", count)]
    counts = {}
    for number in numbers:
        counts[number] = breakpoint_count(rng, counts.get(number, 0))
        records += [count_record(rng, "function_number", number), function_name_record(rng),
                    count_record(rng, "function_breakpoint_count", *counts[number])]
        records += [sparse_record(rng, "function_pair", [real_text(rng), real_text(rng)])
                    for _ in range(counts[number][0])]
        counts[number] = counts[number][0] if 1 <= number <= LARGEST_FUNCTION_COUNT else 0
    return records


def function_numbers(rng):
    """Second and third series among them, in every order, with a function before them or without."""
    count = rng.choice((0, 1, 2, 4, 8)) if rng.random() < 0.97 else rng.choice((49, 50))
    numbers = []
    for _ in range(count):
        kind = rng.random()
        if numbers and kind < 0.15:
            numbers.append(rng.choice(numbers))
        elif kind < 0.35:
            numbers.append(rng.choice(FURTHER_SERIES))
        elif kind < 0.45:
            numbers.append(rng.choice(FUNCTIONS_WITH_WARNING))
        elif kind < 0.55:
            numbers.append(rng.choice((*OUT_OF_RANGE, rng.randint(26, 50))))
        else:
            numbers.append(rng.choice(FUNCTIONS_OF_HOST))
    return numbers


def breakpoint_count(rng, kept):
    """The count, and the one that holds where it is left out."""
    return (kept if rng.random() < 0.4 else rng.choice((0, 1, 1, 2, 3, 5, -2))), kept


def function_name_record(rng):
    if rng.random() < 0.1:
        return Record("function_name", "list", [rng.choice((b"/", b",", b"1*", b"''", b"' '", b",'Wind'"))])
    name = rng.choice((random_name(rng), b"Water temperature", b"0123456789" * 4, b"<b>Wind</b> & light"))
    return list_record(rng, "function_name", [list_text(rng, name)])


# --- segment parameters -------------------------------------------------------------------------------------

def parameter_records(rng, kept_count):
    """The records, and the segment count that they leave."""
    segment_count = other_count(rng, kept_count, 12)
    count = rng.choice((0, 0, 0, 1, 2, 3, 5, -1))
    records = [count_record(rng, "parameter_segment_count", segment_count, kept_count),
               count_record(rng, "parameter_count", count)]
    numbers = [parameter_number(rng) for _ in range(count)]
    records += [sparse_record(rng, "parameter", [integer_text(rng, number), real_text(rng)])
                for number in numbers]
    for segment in range(1, segment_count + 1 if count > 0 else 1):
        records.append(count_record(rng, "parameter_segment", segment))
        records += [parameter_value_record(rng, number) for number in numbers]
    return records, segment_count


def other_count(rng, kept_count, largest):
    """Mostly the count of an earlier section, unless that would make a long file."""
    if kept_count <= largest and rng.random() < 0.75:
        return kept_count
    return rng.choice((0, 1, 2, 3, 5, -1))


def parameter_number(rng):
    return rng.choice((3, 9)) if rng.random() < 0.1 else rng.choice(
        OTHER_PARAMETERS if rng.random() < 0.1 else PARAMETERS)


def parameter_value_record(rng, number):
    """Mostly of the number in the list."""
    number = number if rng.random() < 0.93 else parameter_number(rng)
    return sparse_record(rng, "parameter_value", [integer_text(rng, number), real_text(rng)])


# --- kinetic constants --------------------------------------------------------------------------------------

def constant_records(rng):
    numbers = constant_numbers(rng)
    count = len(numbers) or rng.choice((0, 0, -1, -2147483648))
    return [count_record(rng, "constant_count", count)] + [
        sparse_record(rng, "constant", [integer_text(rng, number), real_text(rng)]) for number in numbers]


def constant_numbers(rng):
    """Some from anywhere, whole groups, and now and then all of them."""
    numbers = [rng.choice(OTHER_CONSTANTS if rng.random() < 0.1 else CONSTANTS)
               for _ in range(rng.choice((0, 0, 1, 3, 10, 30, 60)))]
    for _ in range(rng.choice((0, 1, 2, 4))):
        group = rng.choice(CONSTANT_GROUPS)
        numbers += rng.sample(group, rng.randint(0, min(len(group), 26)))
    # The column that a benthic-algae row counts is often that of a constant in the list, if that is short.
    numbers += rng.sample(BENTHIC_ALGAE, rng.choice((0, 0, 1, 4, 12)))
    if rng.random() < 0.3:
        numbers += rng.choice(((22,), (17, 18, 20, 22), (119,), (119, 149), (246, 247, 248, 249, 8)))
    if rng.random() < 0.15:
        numbers += CONSTANTS
    if rng.random() < 0.6:
        rng.shuffle(numbers)
    if rng.random() < 0.2:
        numbers += numbers[:3]
    return numbers


# --- initial conditions -------------------------------------------------------------------------------------

def initial_records(rng, kept_system_count, kept_segment_count):
    segment_count = other_count(rng, kept_segment_count, 12)
    system_count = other_count(rng, kept_system_count, 100 // max(3, segment_count))
    records = [count_record(rng, "initial_system_count", system_count, kept_system_count),
               count_record(rng, "initial_segment_count", segment_count, kept_segment_count)]
    for _ in range(system_count):
        records += [caption_record(rng, "system_caption"),
                    count_record(rng, "flow_field", rng.choice((0, 1, 1, 2, 5, -1))),
                    sparse_record(rng, "density", [real_text(rng)]),
                    sparse_record(rng, "largest_concentration", [real_text(rng)]),
                    caption_record(rng, "values_caption")]
        records += [initial_value_record(rng, segment) for segment in segment_numbers(rng, segment_count)]
    return records


def segment_numbers(rng, segment_count):
    """As many as there are segments, mostly each of them once and in order."""
    numbers = list(range(1, segment_count + 1))
    if rng.random() < 0.1:
        rng.shuffle(numbers)
    if rng.random() < 0.1:
        return [rng.choice(numbers) for _ in numbers]
    return numbers


def initial_value_record(rng, segment):
    """The number cannot be left out, both values can."""
    number, concentration, fraction = integer_text(rng, segment), real_text(rng), real_text(rng)
    if rng.random() < 0.9:
        return list_record(rng, "initial_value", [number, concentration, fraction])
    left_out = rng.choice((b"%s /", b"%s,,,", b"%s 2*", b"%s, ,%s", b"%s 1* %s", b"%s,%s/", b"%s %s,,"))
    values = (number, rng.choice((concentration, fraction)))
    return Record("initial_value", "list", [left_out % values[:left_out.count(b"%s")]])

"""What the two imports of the sample do not have in common, datum by datum, and why.

Each group gives the text of a datum behind the import of the legacy file and behind that of the same model in the
current format, None where the host has no such datum.
"""

import os
import struct
import sys
from pathlib import Path

sys.path.insert(0, str(Path(os.environ["KOVA_SAMPLES"]) / "make"))

import environment  # noqa: E402  (the description of the sample lies beside it)
import river  # noqa: E402
import waters  # noqa: E402


def real(number):
    """A number of single precision as the dump writes it."""
    return format(struct.unpack("<f", struct.pack("<f", number))[0], ".9g")


def hydraulic_options():
    """A legacy file has one flow option for all segments and the host gets nothing else. A current file has a
    hydraulic option in each segment, which the host gets as well; that of segment 1 is the flow option of all."""
    return {f"segments[{segment.number}].hydraulic_option": ("0", "1") for segment in river.SEGMENTS}


def hyphens_in_names():
    """A name with its number keeps its blanks in the legacy import; the current one makes them hyphens."""
    names = {segment.number: f"Seg-{segment.number}-{segment.name}"[:40].rstrip() for segment in river.SEGMENTS}
    return {f"segments[{number}].name": (f'"{name}"', '"' + name.replace(" ", "-") + '"')
            for number, name in names.items() if " " in name}


def greatest_concentrations():
    """The current import reads them and sends 0."""
    return {f"systems[{position}].maximum_concentration": (real(system.maximum), "0")
            for position, system in enumerate(waters.SIMULATED, 1)}


def second_series():
    """Legacy number 23 is the second series of the function before it. The current import sends every record as
    series 1, so there is no way to say it."""
    series, = (function.series for function in environment.TIME_FUNCTIONS if function.number == 23)
    path = "time_functions[5].series[2]"  # The fifth that has a number in the current format: the light extinction.
    data = {f"{path}.breakpoint_count": (str(len(series)), None)}
    for position, (day, value) in enumerate(series, 1):
        data[f"{path}.breakpoints[{position}].time"] = (real(round(day, 4)), None)
        data[f"{path}.breakpoints[{position}].value"] = (real(round(value, 4)), None)
    return data


def series_behind_the_constants():
    """Six legacy constants are time functions: they come behind the constants, and the host is told once more that
    its time functions are complete. In the current file they are among the time functions."""
    return {**{f"time_functions[{position}].follows_constants": ("true", "false") for position in range(6, 12)},
            "refreshes.time_functions": ("2", "1")}


def listed_differences(scope, index_names):
    groups = [hydraulic_options]
    if index_names == "yes":
        groups.append(hyphens_in_names)
    if scope == "all":
        groups += [greatest_concentrations, second_series, series_behind_the_constants]
    return {path: pair for group in groups for path, pair in group().items()}

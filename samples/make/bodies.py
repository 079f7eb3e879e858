"""The records that both generations of the file share, section by section."""

from river import EXCHANGE_FIELDS, FLOW_FIELDS, SEGMENTS
from sources import boundaries_of, initial_conditions, loads_of


def quoted(text):
    mark = '"' if "'" in text else "'"
    return f"{mark}{text}{mark}"


def value_first(series):
    """Flows, exchanges, boundaries and loads give the value before its day."""
    return [(value, day) for day, value in series]


def write_flow_paths(writer):
    writer.values(len(FLOW_FIELDS), note="flow fields")
    for field_name, functions in FLOW_FIELDS:
        writer.line(f"Flow field: {field_name}")
        writer.values(len(functions), note="inflow functions")
        for function in functions:
            writer.line(function.description)
            writer.values(len(function.paths), note="paths: from, to, share of the flow")
            for start, end, share in function.paths:
                writer.line(f"{start:5d}{end:5d}{share:10.4f}")


def write_flow_series(writer):
    writer.values(len(FLOW_FIELDS), note="flow fields")
    for field_name, functions in FLOW_FIELDS:
        writer.line(f"Flow field: {field_name}, m3/s")
        writer.values(len(functions), note="inflow functions")
        writer.values("1.0", "1.0", note="scale, conversion")
        for function in functions:
            writer.line(function.description)
            writer.values(len(function.series), note="breakpoints: flow, day")
            writer.pairs(value_first(function.series))


def write_exchanges(writer):
    writer.values(len(EXCHANGE_FIELDS), note="exchange fields")
    for field_name, functions in EXCHANGE_FIELDS:
        writer.line(quoted(f"Exchange field: {field_name}"))
        writer.values(len(functions), note="exchange functions")
        writer.values("1.0", "1.0", note="scale, conversion")
        for function in functions:
            writer.line(function.description)
            writer.values(len(function.pairs), note="pairs: segments, area m2, length m")
            for first, second, area, length in function.pairs:
                writer.line(f"{first:5d}{second:5d}{area:15.1f}{length:12.2f}")
            writer.values(len(function.series), note="breakpoints: m2/s, day")
            small = max(value for _, value in function.series) < 0.001
            writer.pairs(value_first(function.series), "12.4E" if small else "12.4f")


def write_boundaries(writer, systems):
    writer.values(len(systems), note="systems")
    for system in systems:
        boundaries = boundaries_of(system)
        writer.line(f"{system.short_name}  {system.long_name}: boundaries")
        writer.values(len(boundaries), note="boundaries")
        if boundaries:
            writer.line(f"{1.0:10.4f}{1.0:10.4f}   scale, conversion")
        for boundary in boundaries:
            series = boundary.series(system)
            writer.values(boundary.segment, note=f"segment, {boundary.water} water")
            writer.values(len(series), note="breakpoints: concentration, day")
            writer.pairs(value_first(series))


def write_loads(writer, systems):
    writer.values(len(systems), note="systems")
    for system in systems:
        loads = loads_of(system)
        writer.line(f"{system.short_name}  {system.long_name}: loads")
        writer.values(len(loads), note="loads")
        if loads:
            writer.values("1.0", "1.0", note="scale, conversion")
        for load, series in loads:
            writer.values(load.segment, note=f"segment, {load.name}")
            writer.values(len(series), note="breakpoints: kg/day, day")
            writer.pairs(value_first(series))


def write_initial_conditions(writer, systems):
    writer.values(len(systems), note="systems")
    writer.values(len(SEGMENTS), note="segments")
    for system in systems:
        writer.line(f"{system.short_name}  {system.long_name}: initial conditions")
        writer.values(1, note="flow field that carries it")
        writer.values(f"{system.density:.2f}", note="density")
        writer.values(f"{system.maximum:.1f}", note="greatest concentration")
        writer.line("Segment  Concentration  Dissolved")
        for number, concentration, dissolved in initial_conditions(system):
            writer.line(f"{number:5d}{concentration:15.4f}{dissolved:12.4f}")

"""Reads the sample files back and checks that their numbers hold together."""

from itertools import chain

from records import RecordReader
from river import OUTSIDE, RIVER, ESTUARY, SEGMENTS, is_bed
from waters import DAYS, interpolated

_BALANCE = 1e-6  # m3/s
_GREATEST_STEP = 0.015 * 86400.0  # s


def _blocks(reader, systems, record):
    """Boundaries or loads: the number of breakpoints of each, for each system."""
    counts = []
    for _ in range(systems):
        reader.line()
        rows = reader.integer()
        if rows > 0:
            record()
        counts.append([(reader.integer(), len(reader.pairs())) for _ in range(rows)])
    return counts


def _paths(reader):
    fields = []
    for _ in range(reader.integer()):
        reader.line()
        field = []
        for _ in range(reader.integer()):
            reader.line()
            field.append([reader.list(int, int, float) for _ in range(reader.integer())])
        fields.append(field)
    return fields


def _flow_series(reader):
    fields = []
    for _ in range(reader.integer()):
        reader.line()
        functions = reader.integer()
        reader.list(float, float)
        fields.append([(reader.line(), [(day, flow) for flow, day in reader.pairs()])[1]
                       for _ in range(functions)])
    return fields


def _exchanges(reader):
    counts = []
    for _ in range(reader.integer()):
        reader.list(str)
        functions = reader.integer()
        reader.list(float, float)
        for _ in range(functions):
            reader.line()
            for _ in range(reader.integer()):
                reader.list(int, int, float, float)
            counts.append(len(reader.pairs()))
    return counts


def _initial_conditions(reader):
    systems, segments = reader.integer(), reader.integer()
    for _ in range(systems):
        reader.line()
        reader.list(int), reader.list(float), reader.list(float)
        reader.line()
        numbers = [reader.list(int, float, float)[0] for _ in range(segments)]
        assert numbers == list(range(1, segments + 1))


def _transport(reader, found, title):
    """Flow paths to exchanges."""
    found["paths"] = _paths(reader)
    title()
    found["flows"] = _flow_series(reader)
    title()
    found["exchanges"] = _exchanges(reader)
    title()


def _read_legacy(text):
    reader, found = RecordReader(text), {}
    assert reader.columns((5, int), 5, (2, int)) == [11, 2]
    for _ in range(2):
        reader.list(*[int] * 6)
    reader.list(float)
    systems = reader.integer()
    for _ in range(6):
        reader.integer()
    reader.list(float), reader.list(float, float)
    for _ in range(reader.integer()):
        reader.list(float, float)
    found["bypassed"] = [number for number, flag in enumerate(reader.list(*[int] * systems), 1)
                         if flag]
    for _ in range(2):
        for _ in range(reader.integer()):
            reader.line()
    segments = reader.integer()
    reader.integer(), reader.list(float), reader.list(float, float), reader.line()
    names = [reader.list(int, str)[1] for _ in range(segments)]
    reader.line()
    rows = [reader.list(*[int] * 3, *[float] * 10) for _ in range(segments)]
    found["volumes"] = [row[3] for row in rows]
    reader.integer()
    _transport(reader, found, lambda: None)
    found["boundaries"] = _blocks(reader, reader.integer(),
                                  lambda: reader.columns((10, float), (10, float)))
    assert reader.integer() == 0
    found["loads"] = _blocks(reader, reader.integer(), lambda: reader.list(float, float))
    found["time functions"] = [(reader.integer(), reader.list(str), len(reader.pairs()))
                               for _ in range(reader.integer())]
    assert reader.integer() == segments
    found["parameters"] = [reader.list(int, float)[0] for _ in range(reader.integer())]
    for _ in range(segments):
        reader.integer()
        assert [reader.list(int, float)[0] for _ in found["parameters"]] == found["parameters"]
    found["constants"] = [reader.list(int, _exponent) for _ in range(reader.integer())]
    _initial_conditions(reader)
    return reader, found, names


def _exponent(text):
    return float(text.upper().replace("D", "E"))


def _read_current(text):
    reader, found = RecordReader(text), {}
    assert reader.columns((5, int), 5, (2, int)) == [11, 3]
    reader.list(str)
    for _ in range(2):
        reader.list(*[int] * 6)
    reader.list(float)
    systems = reader.integer()
    for _ in range(6):
        reader.integer()
    reader.list(float), reader.list(float, float), reader.list(float)
    assert all(all(reader.columns((5, str), 5, (30, str))) for _ in range(systems))
    reader.list(str)
    segments = reader.integer()
    reader.integer(), reader.list(float), reader.list(float, float), reader.line()
    names = [reader.columns((5, int), 5, (40, str))[1] for _ in range(segments)]
    reader.line()
    rows = [reader.columns(*[(5, int)] * 4, *[(15, float)] * 16) for _ in range(segments)]
    found["volumes"] = [row[4] for row in rows]
    reader.list(str), reader.list(str)
    _transport(reader, found, lambda: reader.list(str))
    found["boundaries"] = _blocks(reader, reader.integer(),
                                  lambda: reader.columns((10, float), (10, float)))
    reader.list(str)
    if reader.integer() > 0:
        assert reader.line()
    found["loads"] = _blocks(reader, reader.integer(), lambda: reader.list(float, float))
    reader.list(str)
    found["time functions"] = [(reader.integer(), len(reader.pairs()))
                               for _ in range(reader.integer())]
    reader.list(str)
    assert reader.integer() == segments
    parameters = reader.integer()
    reader.list(str)
    found["parameters"] = [tuple(reader.columns(7, (5, int), 11, (3, int), 8, (10, float))[:2])
                           for _ in range(parameters)]
    reader.list(str)
    for _ in range(segments):
        reader.integer()
        assert [tuple(reader.columns(11, (5, int), 16, (3, int), 19, (10, float))[:2])
                for _ in range(parameters)] == found["parameters"]
    reader.list(str)
    found["constants"] = [reader.columns(7, (5, int), 11, (5, int), 18, (10, _real))
                          for _ in range(reader.integer())]
    reader.list(str)
    _initial_conditions(reader)
    return reader, found, names


def _real(text):
    assert "." in text, text
    return _exponent(text)


def _check_balance(found):
    """On every day as much water leaves a segment as enters it."""
    routes = list(zip(chain(*found["paths"]), chain(*found["flows"]), strict=True))
    for day in DAYS:
        surplus = dict.fromkeys(range(len(found["volumes"]) + 1), 0.0)
        for paths, series in routes:
            flow = interpolated(series, day)
            for start, end, share in paths:
                surplus[start] -= flow * share
                surplus[end] += flow * share
        surplus.pop(OUTSIDE)
        worst = max(surplus, key=lambda number: abs(surplus[number]))
        assert abs(surplus[worst]) < _BALANCE, f"segment {worst} on day {day}"


def _check_shape():
    for segment in SEGMENTS:
        if is_bed(segment):
            continue
        assert 0.5 <= segment.depth <= 20.0, segment
        formula = segment.depth_multiplier * segment.mean_flow ** segment.depth_exponent
        assert abs(formula - segment.depth) < 0.01 * segment.depth, segment
        velocity = segment.velocity_multiplier * segment.mean_flow ** segment.velocity_exponent
        carried = velocity * segment.depth * segment.width
        assert abs(carried - segment.mean_flow) < 0.01 * segment.mean_flow, segment
        assert segment.volume / segment.mean_flow > _GREATEST_STEP, segment
    stem = [SEGMENTS[number - 1] for number in chain(RIVER, ESTUARY)]
    assert all(upper.surface >= lower.surface for upper, lower in zip(stem, stem[1:]))
    tide = [SEGMENTS[number - 1].depth for number in ESTUARY]
    assert tide == sorted(tide) and stem[0].depth < stem[-2].depth


def _check_translation(legacy, translated):
    """All that both formats write alike is the same in both files."""
    for name in ("volumes", "paths", "flows", "exchanges"):
        assert translated[name] == legacy[name], name
    for name in ("boundaries", "loads"):
        assert translated[name] == [rows for number, rows in enumerate(legacy[name], 1)
                                    if number not in legacy["bypassed"]], name


def check(legacy_text, current_text, translated_text):
    """Raises AssertionError for the first thing that does not hold."""
    _check_shape()
    finds = []
    for read, text in ((_read_legacy, legacy_text), (_read_current, current_text),
                       (_read_current, translated_text)):
        reader, found, names = read(text)
        assert reader.finished(), "lines are left behind the last section"
        assert names == [segment.name for segment in SEGMENTS] and len(names) >= 30
        assert all(abs(volume - segment.volume) < 0.1
                   for volume, segment in zip(found["volumes"], SEGMENTS))
        assert len({segment for rows in found["loads"] for segment, _ in rows}) == 5
        assert len(found["parameters"]) >= 15 and len(found["constants"]) >= 120
        assert 200_000 <= len(text.encode("ascii")) <= 1_500_000
        _check_balance(found)
        finds.append(found)
    assert len(finds[0]["time functions"]) == 8
    _check_translation(finds[0], finds[2])

"""The sample model: the fictional Ellery River, two tributaries and the estuary they feed."""

import math
from dataclasses import dataclass

from waters import DAYS, ENDS, MONTH_STARTS, RAIN, WEEKS, season

OUTSIDE = 0
SURFACE_WATER, BED = 1, 3
KINEMATIC, WEIR_POOL, PRESCRIBED = 1, 2, 0
RIVER, ESTUARY = range(1, 17), range(17, 29)
OSTLEY, FARRIN, SEABED = range(29, 33), range(33, 37), range(37, 43)
SEGMENT_COUNT = 42
WEIR, MOUTH, FIRST_OVER_BED = 16, 28, 23
OSTLEY_JOINS, FARRIN_JOINS = 5, 12
BED_THICKNESS = 0.10

_NAMES = """Ellery River at Stonebeck Head
Ellery River, Stonebeck Gorge
Ellery River below Lowick Bridge
Ellery River, Cold Ash Meadows
Ellery River at Ostley Brook mouth
Ellery River below Brannock Dairy
Ellery River, Great Wood
Ellery River, Miller's Pool
Ellery River above Kettleford
Ellery River, Kettleford treatment works
Ellery River, Kettleford storm outfall
Ellery River at Farrin Water mouth
Ellery River, Long Reach
Ellery River, Reed Moor
Ellery River, Abbot's Reach
Ellery River, tidal weir pool
Estuary, below the tidal weir
Estuary, Saltpan Bend
Estuary, Old Quay
Estuary, Haven Bridge
Estuary, Haven Bay treatment works
Estuary, Cockle Flats
Estuary, Heron Creek
Estuary, Middle Ground
Estuary, Ferry Crossing
Estuary, Beacon Point
Estuary, South Spit
Estuary, outer bar and open sea boundary
Ostley Brook, Fell Springs
Ostley Brook, trout hatchery
Ostley Brook, Lower Meadow
Ostley Brook, mill stream
Farrin Water, Blackmire Outlet
Farrin Water, Hangman Ford
Farrin Water, Tolbrook
Farrin Water, Sluice Farm
Bed of Heron Creek
Bed of Middle Ground
Bed of Ferry Crossing
Bed of Beacon Point
Bed of South Spit
Bed of the outer bar""".split("\n")


@dataclass
class Segment:
    """Lengths in metres; velocity = multiplier * flow ** exponent, and likewise the depth."""
    number: int
    name: str
    kind: int
    hydraulic_option: int
    length: float
    width: float
    slope: float
    roughness: float
    segment_below: int = 0
    mean_flow: float = 0.0
    depth: float = 0.0
    velocity_multiplier: float = 0.0
    velocity_exponent: float = 0.0
    depth_multiplier: float = 0.0
    depth_exponent: float = 0.0
    bottom: float = 0.0
    side_slope: float = 0.0
    minimum_depth: float = 0.05
    weir_height: float = 0.0
    weir_type: float = 0.0

    @property
    def volume(self):
        return round(self.length * self.width * self.depth, 1)

    @property
    def surface(self):
        return round(self.bottom + self.depth, 3)


@dataclass
class FlowFunction:
    """Water that takes one route; each path is (from, to, share), the series (day, m3/s)."""
    description: str
    paths: list
    series: list


@dataclass
class ExchangeFunction:
    """Each pair is (segment, segment, area, mixing length), the series (day, m2/s)."""
    description: str
    pairs: list
    series: list


def mean(series):
    """Time average of a piecewise linear series."""
    area = sum((right - left) * (low + high) / 2.0
               for (left, low), (right, high) in zip(series, series[1:]))
    return area / (series[-1][0] - series[0][0])


def _catchment_flow(base, swing, response, memory):
    """Daily runoff: a seasonal base and the slow emptying of a store that the rain fills."""
    store, series = response * 2.5, []
    for day in DAYS:
        store = memory * store + (1.0 - memory) * response * RAIN[day]
        series.append((day, round(base + swing * season(day, 25) + store, 3)))
    return series


def steady_flow(mean_flow, swing, days):
    return [(day, round(mean_flow * (1.0 + swing * season(day, 25)), 3)) for day in days]


def _route(*stops):
    return [(start, end, 1.0) for start, end in zip(stops, stops[1:])]


def _downstream(segment):
    """The way from a segment of the main stem to the sea."""
    return (*range(segment, MOUTH + 1), OUTSIDE)


def _shared_route(entries):
    """Water that enters at several segments: its share grows along the main stem."""
    paths, share = [], 0.0
    first = min(target for _, target, _ in entries)
    for segment in range(first, MOUTH + 1):
        for path, target, part in entries:
            if target == segment:
                paths += path(part)
                share = round(share + part, 4)
        paths.append((segment, segment + 1 if segment < MOUTH else OUTSIDE, share))
    return paths


DIFFUSE_SHARES = {3: 0.25, 7: 0.25, 9: 0.20, 14: 0.30}
SEEPAGE_SHARES = dict(zip(SEABED, (0.10, 0.12, 0.15, 0.18, 0.20, 0.25)))


def _flow_fields():
    storm = [(day, round(0.002 + 0.06 * RAIN[day], 3)) for day in DAYS]
    diffuse = [(lambda share, to=segment: [(OUTSIDE, to, share)], segment, share)
               for segment, share in DIFFUSE_SHARES.items()]
    seepage = [(lambda share, bed=bed, to=to: [(OUTSIDE, bed, share), (bed, to, share)], to, share)
               for to, (bed, share) in zip(range(FIRST_OVER_BED, MOUTH + 1),
                                           SEEPAGE_SHARES.items())]
    surface = [
        FlowFunction("Ellery headwater at Stonebeck", _route(OUTSIDE, *_downstream(1)),
                     _catchment_flow(5.2, 2.8, 1.5, 0.70)),
        FlowFunction("Ostley Brook at Fell Springs",
                     _route(OUTSIDE, *OSTLEY, *_downstream(OSTLEY_JOINS)),
                     _catchment_flow(1.5, 0.7, 0.40, 0.55)),
        FlowFunction("Farrin Water at Blackmire",
                     _route(OUTSIDE, *FARRIN, *_downstream(FARRIN_JOINS)),
                     _catchment_flow(2.5, 1.2, 0.65, 0.62)),
        FlowFunction("Diffuse inflow to the Ellery", _shared_route(diffuse),
                     _catchment_flow(1.8, 0.9, 0.45, 0.85)),
        FlowFunction("Kettleford treatment works", _route(OUTSIDE, *_downstream(10)),
                     steady_flow(0.35, 0.12, WEEKS)),
        FlowFunction("Haven Bay treatment works", _route(OUTSIDE, *_downstream(21)),
                     steady_flow(0.62, 0.10, WEEKS)),
        FlowFunction("Brannock Dairy", _route(OUTSIDE, *_downstream(6)),
                     steady_flow(0.045, -0.15, MONTH_STARTS)),
        FlowFunction("Kettleford storm outfall", _route(OUTSIDE, *_downstream(11)), storm)]
    bed = [FlowFunction("Seepage through the bed", _shared_route(seepage),
                        steady_flow(0.16, 0.25, MONTH_STARTS))]
    return [("Surface water", surface), ("Pore water", bed)]


FLOW_FIELDS = _flow_fields()
SURFACE_FLOWS = FLOW_FIELDS[0][1]


def _mean_flows():
    flows = dict.fromkeys(range(SEGMENT_COUNT + 1), 0.0)
    for _, functions in FLOW_FIELDS:
        for function in functions:
            for start, _, share in function.paths:
                flows[start] += share * mean(function.series)
    return flows


def _between(first, last, position, count):
    """Geometric steps from first to last."""
    return first * (last / first) ** (position / (count - 1))


def _manning(segment):
    """A wide channel at its normal depth: depth grows as flow ** 0.6, velocity as flow ** 0.4."""
    factor = (segment.roughness / (segment.width * math.sqrt(segment.slope))) ** 0.6
    segment.depth_multiplier, segment.depth_exponent = round(factor, 5), 0.6
    segment.velocity_multiplier = round(1.0 / (factor * segment.width), 5)
    segment.velocity_exponent = 0.4
    segment.depth = round(factor * segment.mean_flow ** 0.6, 3)


def _fixed_depth(segment, depth):
    """The sea or a weir holds the level: only the velocity follows the flow."""
    segment.depth = segment.depth_multiplier = round(depth, 3)
    segment.depth_exponent = 0.0
    segment.velocity_multiplier = round(1.0 / (segment.width * segment.depth), 7)
    segment.velocity_exponent = 1.0


def _channel(numbers, lengths, widths, slopes, roughness):
    def row(position, number):
        def step(ends, digits):
            return round(_between(*ends, position, len(numbers)), digits)
        return Segment(number, _NAMES[number - 1], SURFACE_WATER, KINEMATIC, step(lengths, -2),
                       step(widths, 1), step(slopes, 5), step(roughness, 3), side_slope=2.0)
    return [row(position, number) for position, number in enumerate(numbers)]


def _segments():
    river = _channel(RIVER, (1500, 2200), (14, 36), (0.0018, 0.00018), (0.040, 0.028))
    estuary = _channel(ESTUARY, (1500, 2600), (60, 900), (0.00008, 0.00002), (0.025, 0.020))
    ostley = _channel(OSTLEY, (1200, 1500), (6, 8), (0.0030, 0.0012), (0.045, 0.040))
    farrin = _channel(FARRIN, (1600, 1900), (9, 12), (0.0014, 0.0007), (0.042, 0.035))
    rows = [*river, *estuary, *ostley, *farrin]
    flows = _mean_flows()
    for segment in rows:
        segment.mean_flow = flows[segment.number]
        _manning(segment)
    for position, segment in enumerate(estuary):
        _fixed_depth(segment, _between(2.6, 15.0, position, len(estuary)))
        segment.hydraulic_option, segment.minimum_depth = PRESCRIBED, 0.5
        segment.bottom, segment.side_slope = round(-segment.depth, 3), 10.0
        segment.segment_below = max(0, segment.number - FIRST_OVER_BED + SEABED[0]) \
            if segment.number >= FIRST_OVER_BED else 0
    pool = river[-1]
    _fixed_depth(pool, 2.2)
    pool.hydraulic_option, pool.weir_type = WEIR_POOL, 1.0
    pool.weir_height, pool.bottom = 1.95, round(1.6 - pool.depth, 3)
    river[-2].bottom = round(pool.surface - river[-2].depth + 0.2, 3)
    _raise_beds(river[:-1])
    for brook, joined in ((ostley, river[OSTLEY_JOINS - 1]), (farrin, river[FARRIN_JOINS - 1])):
        brook[-1].bottom = round(joined.surface - brook[-1].depth + 0.3, 3)
        _raise_beds(brook)
    for number, above in zip(SEABED, estuary[FIRST_OVER_BED - ESTUARY[0]:]):
        rows.append(Segment(number, _NAMES[number - 1], BED, PRESCRIBED, above.length, above.width,
                            0.0, 0.0, mean_flow=flows[number], depth=BED_THICKNESS,
                            bottom=round(above.bottom - BED_THICKNESS, 3), minimum_depth=0.0))
    return rows


def _raise_beds(reaches):
    """Bed levels from the last reach upward, along the slopes between reach centres."""
    for upper, lower in zip(reversed(reaches[:-1]), reversed(reaches[1:])):
        rise = (upper.slope * upper.length + lower.slope * lower.length) / 2.0
        upper.bottom = round(lower.bottom + rise, 3)


SEGMENTS = _segments()


def is_bed(segment):
    return segment.kind == BED


def _interface(first, second):
    """Area and mixing length between the centres of two neighbours."""
    a, b = SEGMENTS[first - 1], SEGMENTS[(second or first) - 1]
    area = (a.width * a.depth + b.width * b.depth) / 2.0
    return first, second, round(area, 1), round((a.length + b.length) / 2.0, 1)


def _tidal(dispersion, days):
    """Dispersion that follows spring and neap tides."""
    return [(day, round(dispersion * (1.0 + 0.3 * math.cos(2.0 * math.pi * (day - 6) / 14.765)), 3))
            for day in days]


def _exchange_fields():
    def chain(first, last):
        return [_interface(number, number + 1 if number < MOUTH else OUTSIDE)
                for number in range(first, last + 1)]
    second_days = [*range(0, 365, 2), 365]
    bed = [(bed.number, above, round(bed.length * bed.width, 1), BED_THICKNESS)
           for above, bed in zip(range(FIRST_OVER_BED, MOUTH + 1), SEGMENTS[SEABED[0] - 1:])]
    return [("Surface water", [
        ExchangeFunction("Lower river dispersion", chain(12, 15), [(day, 8.0) for day in ENDS]),
        ExchangeFunction("Upper estuary tidal mixing", chain(17, 20), _tidal(35.0, second_days)),
        ExchangeFunction("Middle estuary tidal mixing", chain(21, 24), _tidal(90.0, second_days)),
        ExchangeFunction("Lower estuary and sea mixing", chain(25, MOUTH), _tidal(180.0, DAYS))]),
        ("Pore water", [ExchangeFunction("Diffusion out of the bed", bed,
                                         [(0, 1.5e-9), (182, 2.1e-9), (365, 1.5e-9)])])]


EXCHANGE_FIELDS = _exchange_fields()

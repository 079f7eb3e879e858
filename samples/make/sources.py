"""What enters the sample river from outside, and the state that it starts from."""

from dataclasses import dataclass, field

import waters
from river import (DIFFUSE_SHARES, EXCHANGE_FIELDS, FARRIN, FLOW_FIELDS, MOUTH, OSTLEY, OUTSIDE,
                   SEABED, SEGMENT_COUNT, SEGMENTS, SURFACE_FLOWS, FlowFunction, is_bed, mean,
                   steady_flow)
from waters import (DAYS, ENDS, MONTH_STARTS, QUARTERS, SIMULATED, WEEKS, concentration,
                    interpolated)


@dataclass
class PointLoad:
    name: str
    effluent: str
    segment: int
    flow: list


@dataclass
class Boundary:
    """Where water of one kind enters; days holds the days sampled, by system number."""
    segment: int
    water: str
    usual_days: list
    flow: FlowFunction | None = None
    days: dict = field(default_factory=dict)

    def series(self, system):
        """(day, concentration) of a system."""
        scale = mean(self.flow.series) if self.flow else 1.0
        return [(day, concentration(system, self.water, day, interpolated(self.flow.series, day)
                                    / scale if self.flow else 1.0))
                for day in self.days.get(system.number, self.usual_days)]


def _boundaries():
    often = {waters.OXYGEN: WEEKS, 2: WEEKS, 21: DAYS, 22: DAYS}
    head, ostley, farrin = SURFACE_FLOWS[:3]
    return [Boundary(1, "head", MONTH_STARTS, head, {**often, waters.OXYGEN: DAYS, 23: ENDS}),
            *(Boundary(number, "diffuse", QUARTERS) for number in DIFFUSE_SHARES),
            Boundary(MOUTH, "sea", MONTH_STARTS, None, {waters.SALINITY: WEEKS, 23: ENDS}),
            Boundary(OSTLEY[0], "ostley", MONTH_STARTS, ostley, often),
            Boundary(FARRIN[0], "farrin", MONTH_STARTS, farrin, often),
            *(Boundary(number, "pore", ENDS) for number in SEABED)]


BOUNDARIES = _boundaries()


def boundaries_of(system):
    """A bypassed system has none, but for solid 3: data left from when it was still simulated."""
    if system.bypassed:
        return [row for row in BOUNDARIES if system.number in row.days]
    return BOUNDARIES


LOADS = [
    PointLoad("Kettleford treatment works", "kettleford", 10, SURFACE_FLOWS[4].series),
    PointLoad("Haven Bay treatment works", "haven", 21, SURFACE_FLOWS[5].series),
    PointLoad("Brannock Dairy", "dairy", 6, SURFACE_FLOWS[6].series),
    PointLoad("Kettleford storm outfall", "storm", 11, SURFACE_FLOWS[7].series),
    # The hatchery returns the water it takes, so it adds a load without a flow.
    PointLoad("Ostley trout hatchery", "hatchery", 30, steady_flow(0.25, 0.0, QUARTERS))]
KILOGRAMS_A_DAY = 86.4


def loads_of(system):
    """(load, series of (day, kg/day)) of each source that discharges a system."""
    if system.bypassed or system.number == waters.ACIDITY:
        return []
    return [(load, [(day, system.effluents[load.effluent] * flow * KILOGRAMS_A_DAY)
                    for day, flow in load.flow])
            for load in LOADS if system.effluents.get(load.effluent)]


def _solve(matrix, sides):
    """Gauss-Jordan elimination with a row of right-hand sides for each unknown."""
    size = len(matrix)
    for pivot in range(size):
        best = max(range(pivot, size), key=lambda row: abs(matrix[row][pivot]))
        for rows in (matrix, sides):
            rows[pivot], rows[best] = rows[best], rows[pivot]
        for row in range(size):
            factor = matrix[row][pivot] / matrix[pivot][pivot]
            if row != pivot and factor:
                matrix[row] = [a - factor * b for a, b in zip(matrix[row], matrix[pivot])]
                sides[row] = [a - factor * b for a, b in zip(sides[row], sides[pivot])]
    return [[value / matrix[row][row] for value in sides[row]] for row in range(size)]


def _starting_state():
    """Concentrations that mixing alone would settle to under the flows of the first day."""
    matrix = [[0.0] * SEGMENT_COUNT for _ in SEGMENTS]
    sides = [[0.0] * len(SIMULATED) for _ in SEGMENTS]
    outside = {row.segment: row for row in BOUNDARIES}

    def bring(segment, flow):
        if segment in outside:
            for column, system in enumerate(SIMULATED):
                sides[segment - 1][column] += flow * outside[segment].series(system)[0][1]

    for _, functions in FLOW_FIELDS:
        for function in functions:
            for start, end, share in function.paths:
                flow = share * function.series[0][1]
                if start == OUTSIDE:
                    bring(end, flow)
                    continue
                matrix[start - 1][start - 1] += flow
                if end != OUTSIDE:
                    matrix[end - 1][start - 1] -= flow
    for _, functions in EXCHANGE_FIELDS:
        for function in functions:
            for first, second, area, length in function.pairs:
                flow = function.series[0][1] * area / length
                matrix[first - 1][first - 1] += flow
                if second == OUTSIDE:
                    bring(first, flow)
                    continue
                matrix[second - 1][second - 1] += flow
                matrix[first - 1][second - 1] -= flow
                matrix[second - 1][first - 1] -= flow
    for load in LOADS:
        for column, system in enumerate(SIMULATED):
            if load.effluent == "hatchery" and system.number == waters.ACIDITY:
                continue
            sides[load.segment - 1][column] += (system.effluents.get(load.effluent, 0.0)
                                                * load.flow[0][1])
    state = _solve(matrix, sides)
    return {system.number: [row[column] for row in state]
            for column, system in enumerate(SIMULATED)}


_BED_SOLIDS = {21: 420000.0, 22: 380000.0}
_STATE = _starting_state()


def initial_conditions(system):
    """(segment number, concentration, share dissolved) of each segment."""
    if system.bypassed:
        return [(segment.number, 0.0, 0.0) for segment in SEGMENTS]
    particulate = system.bed_dissolved == 0.0
    return [(segment.number,
             _BED_SOLIDS.get(system.number, _STATE[system.number][segment.number - 1])
             if is_bed(segment) else _STATE[system.number][segment.number - 1],
             system.bed_dissolved if is_bed(segment) else 0.0 if particulate else 1.0)
            for segment in SEGMENTS]

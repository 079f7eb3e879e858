"""Segment parameters and environmental time functions of the sample river."""

from dataclasses import dataclass

import waters
from river import ESTUARY, FARRIN, OSTLEY, WEIR, is_bed
from waters import DAYS, MONTH_STARTS, WEEKS, season


@dataclass(frozen=True)
class Parameter:
    """One value a segment; number is that of version 7, code and column those of version 8."""
    number: int | None
    code: int | None
    column: int
    name: str
    scale: float
    water: object
    bed: float = 0.0


def _seaward(river, sea):
    """A value that changes from the river to the mouth along the estuary."""
    def value(segment):
        share = (segment.number - WEIR) / len(ESTUARY) if segment.number in ESTUARY else 0.0
        return river + (sea - river) * share
    return value


PARAMETERS = [
    Parameter(2, 1, 1, "Water temperature", 1.0, _seaward(1.0, 0.96), 1.0),
    Parameter(3, None, 1, "Water temperature series", 1.0,
              lambda segment: 2.0 if segment.number in ESTUARY else 1.0, 2.0),
    Parameter(None, 2, 1, "Air temperature", 1.0, _seaward(1.0, 1.0), 1.0),
    Parameter(None, 3, 1, "Air temperature series", 1.0, _seaward(1.0, 1.0), 1.0),
    Parameter(4, 17, 1, "Light extinction", 1.0, _seaward(1.30, 0.55)),
    Parameter(6, 30, 1, "Benthic ammonia flux", 0.9, _seaward(12.0, 35.0)),
    Parameter(7, 31, 1, "Benthic phosphate flux", 0.9, _seaward(0.8, 3.5)),
    Parameter(8, 32, 1, "Sediment oxygen demand", 1.05, _seaward(0.5, 1.6)),
    Parameter(9, 4, 1, "Solar radiation", 1.0,
              lambda segment: 0.72 if segment.number in (*OSTLEY, *FARRIN, 7) else 1.0),
    Parameter(None, 5, 1, "Solar radiation series", 1.0, _seaward(1.0, 1.0), 1.0),
    Parameter(14, None, 1, "Segment elevation", 1.0, lambda segment: segment.surface),
    Parameter(19, 21, 1, "Detritus settling", 1.0, _seaward(0.15, 0.40)),
    Parameter(22, 6, 1, "Wind", 1.0, _seaward(0.6, 1.25)),
    Parameter(24, 19, 1, "Solid 1 settling", 1.0, _seaward(0.4, 1.2)),
    Parameter(25, 19, 2, "Solid 2 settling", 1.0, _seaward(2.0, 4.0)),
    Parameter(26, None, 3, "Solid 3 settling", 1.0, _seaward(0.1, 0.3)),
    Parameter(27, 20, 1, "Phytoplankton 1 settling", 1.0, _seaward(0.08, 0.20)),
    Parameter(28, 20, 2, "Phytoplankton 2 settling", 1.0, _seaward(0.03, 0.06))]


def parameter_value(parameter, segment):
    return parameter.bed if is_bed(segment) else parameter.water(segment)


@dataclass(frozen=True)
class TimeFunction:
    """number is that of version 7, index that of version 8; series of (day, value)."""
    number: int | None
    index: int | None
    name: str
    series: list


LANGLEY_A_DAY = 0.48426  # W/m2


def _time_functions():
    def daily(value):
        return [(day, value(day)) for day in DAYS]
    ice = [max(0.0, 0.25 - 0.08 * waters.water_temperature(day)) for day in DAYS]
    river_light = [(day, 1.0 + 0.25 * season(day, 20)) for day in MONTH_STARTS]
    estuary_light = [(day, 1.0 + 0.12 * season(day, 120)) for day in MONTH_STARTS]
    day_length = [(day, (12.2 + 4.2 * season(day, 172)) / 24.0) for day in WEEKS]
    return [
        TimeFunction(1, 1, "Water temperature, river", daily(waters.water_temperature)),
        TimeFunction(2, None, "Water temperature, estuary", daily(waters.estuary_temperature)),
        TimeFunction(5, 4, "Solar radiation", daily(waters.solar_radiation)),
        TimeFunction(None, 3, "Fraction of daylight", day_length),
        TimeFunction(7, 21, "Wind speed at Haven Bay", daily(lambda day: waters.WIND[day])),
        TimeFunction(10, 17, "Air temperature", daily(lambda day: waters.AIR_TEMPERATURE[day])),
        TimeFunction(14, 9, "Light extinction, river", river_light),
        TimeFunction(23, 9, "Light extinction, estuary", estuary_light),
        TimeFunction(17, None, "Ice cover, upper reaches", daily(lambda day: ice[day]))]


TIME_FUNCTIONS = _time_functions()

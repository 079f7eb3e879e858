"""What the waters of the sample river carry: systems, weather, concentrations and effluents."""

import math
import random
from dataclasses import dataclass

DAYS = range(366)
MONTH_STARTS = [0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365]
QUARTERS = [0, 91, 182, 273, 365]
WEEKS = [*range(0, 365, 7), 365]
ENDS = [0, 365]


def season(day, peak):
    """A yearly wave between -1 and 1 that is 1 on the day given."""
    return math.cos(2.0 * math.pi * (day - peak) / 365.0)


def interpolated(series, day):
    """The value on a day of a series of (day, value)."""
    for (first, low), (last, high) in zip(series, series[1:]):
        if first <= day <= last:
            return low + (high - low) * (day - first) / (last - first)
    raise ValueError(f"day {day} lies outside the series")


def _daily_weather():
    """Rain (mm/day), air temperature (C), wind (m/s) and sunshine share of each day."""
    chance = random.Random(2019)
    rain, air, wind, sun, anomaly = [], [], [], [], 0.0
    for day in DAYS:
        wet = chance.random() < 0.40 + 0.10 * season(day, 15)
        rain.append(-6.5 * math.log(1.0 - chance.random()) if wet else 0.0)
        anomaly = 0.75 * anomaly + 3.0 * (chance.random() - 0.5)
        air.append(10.0 - 8.5 * season(day, 22) + anomaly)
        wind.append(1.5 + 3.5 * chance.random() + (1.5 if wet else 0.0) + 0.6 * season(day, 10))
        sun.append(0.45 if wet else 0.7 + 0.3 * chance.random())
    return rain, air, wind, sun


RAIN, AIR_TEMPERATURE, WIND, SUNSHINE = _daily_weather()


def water_temperature(day):
    """Of the river; the water follows the mean air of the last ten days."""
    days = [max(0, int(day) - back) for back in range(10)]
    return max(0.8, 0.5 + sum(AIR_TEMPERATURE[d] for d in days) / len(days))


def estuary_temperature(day):
    return 11.5 - 5.5 * season(day, 45)


def solar_radiation(day):
    """Langleys a day on the ground, at a latitude of about 50 degrees."""
    return SUNSHINE[day] * (385.0 + 305.0 * season(day, 172))


def oxygen_saturation(temperature, salinity):
    """mg/L at sea level."""
    fresh = 14.652 + temperature * (-0.41022 + temperature * (0.007991 - 0.000077774 * temperature))
    return fresh * (1.0 - 0.0055 * salinity)


@dataclass(frozen=True)
class System:
    """A constituent by its number in version 7; waters holds its yearly means (mg/L)."""
    number: int
    short_name: str
    long_name: str
    bypassed: bool
    swing: float
    peak: int
    waters: dict
    effluents: dict
    density: float
    maximum: float
    bed_dissolved: float


WATERS = ("head", "ostley", "farrin", "diffuse", "sea", "pore")
EFFLUENTS = ("kettleford", "haven", "dairy", "storm", "hatchery")

# Number, names, swing and peak day of the season; means in the six waters; concentrations in the
# five effluents; density, greatest concentration and share dissolved in the bed. pH is no mass and
# makes no load: its effluent values only serve the starting state.
_SYSTEMS = """
1|NH-34|Ammonia|.30 20|.05 .11 .16 .08 .03 1.5|1.8 2.5 3.0 .9 .35|1.0 100 .90
2|NO3O2|Nitrate/Nitrite|.25 30|2.1 2.7 4.4 5.2 .15 .4|12 14 4 1.4 .1|1.0 100 1.0
3|ORG-N|Diss Org N|.15 230|.25 .30 .40 .35 .15 .8|1.2 1.5 4.5 .8 .15|1.0 100 1.0
4|D-DIP|Inorganic P|.25 250|.03 .045 .09 .05 .02 .25|.70 .90 2.2 .20 .05|1.0 50 .35
5|ORG-P|Diss Org P|.15 230|.018 .022 .035 .025 .01 .05|.15 .20 .50 .08 .02|1.0 50 1.0
6|IN-SI|Inorganic Si|.20 15|4.5 4.1 4.9 5.4 .6 6.0|5 5 2 1.0 0|1.0 200 .80
7|ORGSI|Organic Si|.20 110|.40 .38 .50 .30 .15 .30|.2 .2 .1 .1 0|1.0 100 1.0
8|CBODU|CBOD-1|.20 220|1.2 1.5 1.9 1.4 .5 4.0|9 12 60 14 2.5|1.0 1000 1.0
9|CBODU|CBOD-2|.20 220|.6 .7 .9 .8 .3 2.0|4 5 12 6 .4|1.0 1000 1.0
10|CBODU|CBOD-3|0 0|||1.0 1000 1.0
11|DISOX|Dissolved Oxygen|0 0|.97 .96 .93 .80 .98 .05|5.0 4.5 3.0 6.5 0|1.0 20 1.0
12|DET-C|Detrital Carbon|.30 300|.50 .55 .70 .45 .25 0|3 4 9 8 1.2|1.1 1000 0
13|DET-N|Detrital N|.30 300|.07 .08 .10 .06 .035 0|.45 .6 1.3 .9 .2|1.1 100 0
14|DET-P|Detrital P|.30 300|.008 .009 .012 .008 .005 0|.1 .12 .3 .2 .05|1.1 100 0
15|DETSI|Detrital Si|.30 110|.20 .20 .25 .15 .10 0|.2 .2 .1 .5 0|1.1 100 0
16|TOTDE|Total Detritus|.30 300|1.25 1.38 1.75 1.13 .63 0|7.5 10 22.5 20 3|1.1 5000 0
17|SALIN|Salinity|.02 240|.08 .10 .14 .18 33.8 20|.45 .60 .90 .10 0|1.0 60 1.0
18|MALGA|Benthic Algae|0 0|||1.0 1000 1.0
19|MALGN|Benthic Algae-N|0 0|||1.0 1000 1.0
20|MALGP|Benthic Algae-P|0 0|||1.0 1000 1.0
21|SOLID|Solid 1|.40 20|9 11 15 6 5 0|10 12 20 120 5|2.65 1000000 0
22|SOLID|Solid 2|.40 20|3 4 5 2 1.5 0|2 3 4 60 1|2.65 1000000 0
23|SOLID|Solid 3|.40 20|1 1.2 1.6 .5 2.0 0||2.65 1000000 0
24|PHYTO|Phytoplankton 1|.55 120|.12 .10 .18 0 .20 0||1.0 100 0
25|PHYTO|Phytoplankton 2|.60 205|.06 .05 .10 0 .08 0||1.0 100 0
26|PHYTO|Phytoplankton 3|0 0|||1.0 100 0
27|PH-SU|pH|.02 170|7.4 7.6 7.8 7.1 8.1 7.2|7.2 7.2 6.8 7.0 7.4|1.0 14 1.0
28|ALKAL|Alkalinity|.08 240|62 85 140 175 116 200|160 180 220 40 0|1.0 1000 1.0
"""
BYPASSED = (10, 18, 19, 20, 23, 26)


def _system(line):
    number, short_name, long_name, yearly, means, effluents, bulk = line.split("|")
    swing, peak = yearly.split()
    density, maximum, bed_dissolved = (float(word) for word in bulk.split())
    return System(int(number), short_name, long_name, int(number) in BYPASSED, float(swing),
                  int(peak), dict(zip(WATERS, (float(word) for word in means.split()))),
                  dict(zip(EFFLUENTS, (float(word) for word in effluents.split()))),
                  density, maximum, bed_dissolved)


SYSTEMS = [_system(line) for line in _SYSTEMS.strip().split("\n")]
OXYGEN, SALINITY, ACIDITY, SOLIDS = 11, 17, 27, (21, 22, 23)
SIMULATED = [system for system in SYSTEMS if not system.bypassed]


def concentration(system, water, day, relative_flow=1.0):
    """mg/L (pH units, g/L of salt) in a water outside the model on a day."""
    mean = system.waters.get(water, 0.0)
    if system.number == OXYGEN:
        temperature = estuary_temperature(day) if water == "sea" else water_temperature(day)
        salinity = 33.8 if water == "sea" else 0.1
        return mean * oxygen_saturation(temperature, salinity)
    if water in ("diffuse", "pore"):
        return mean
    wash = relative_flow ** 0.8 if system.number in SOLIDS else 1.0
    return mean * (1.0 + system.swing * season(day, system.peak)) * wash

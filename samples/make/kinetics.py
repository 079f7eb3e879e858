"""Kinetic constants of the sample river, with their numbers in both model versions."""

from dataclasses import dataclass

# Columns: number in version 7; number in version 8 ("-": no counterpart here, "tNN": a time
# function of that number); column in version 8; value; meaning.
_TABLE = """
1 52 1 1. water body type for wind reaeration
2 t37 1 0.65 background supply rate 1
3 t38 1 0.48 background supply rate 2
4 t39 1 0.02 background supply rate 3
5 t42 1 0.30 background supply rate 4
6 t40 1 0.15 background supply rate 5
7 t41 1 0.01 background supply rate 6
8 9 1 0.00041 carbon dioxide partial pressure (atm)
9 53 1 25. light at the bottom that inhibits oxygen demand (W/m2)
10 27 1 0.12 nitrification rate at 20 C (1/day)
11 28 1 1.07 nitrification temperature coefficient
12 29 1 0.5 nitrification oxygen half saturation (mg O2/L)
13 30 1 4.0 lowest temperature for nitrification (C)
14 31 1 0.09 denitrification rate at 20 C (1/day)
15 32 1 1.045 denitrification temperature coefficient
16 33 1 0.1 denitrification oxygen half saturation (mg O2/L)
17 34 1 500. ammonia partitioning to silt (L/kg)
18 35 1 4000. orthophosphate partitioning to silt (L/kg)
19 36 1 300. silica partitioning to silt (L/kg)
20 34 2 100. ammonia partitioning to sand (L/kg)
21 35 2 600. orthophosphate partitioning to sand (L/kg)
22 36 2 50. silica partitioning to sand (L/kg)
23 - 3 900. ammonia partitioning to clay (L/kg)
24 - 3 9000. orthophosphate partitioning to clay (L/kg)
26 - 1 0.0 retired in an earlier release
30 37 1 0.08 detritus dissolution rate (1/day)
31 38 1 1.06 detritus dissolution temperature coefficient
32 39 1 0.05 organic nitrogen mineralization rate (1/day)
33 40 1 1.08 organic nitrogen temperature coefficient
34 41 1 0.10 organic phosphorus mineralization rate (1/day)
35 42 1 1.08 organic phosphorus temperature coefficient
36 43 1 0.03 organic silica mineralization rate (1/day)
37 44 1 1.08 organic silica temperature coefficient
40 47 1 0.20 CBOD 1 decay rate at 20 C (1/day)
41 48 1 1.047 CBOD 1 temperature coefficient
42 49 1 0.5 CBOD 1 oxygen half saturation (mg O2/L)
43 50 1 0.7 share of dissolved detritus that becomes CBOD 1
44 51 1 0.8 share of CBOD 1 in denitrification
45 47 2 0.06 CBOD 2 decay rate at 20 C (1/day)
46 48 2 1.047 CBOD 2 temperature coefficient
47 49 2 0.5 CBOD 2 oxygen half saturation (mg O2/L)
48 50 2 0.3 share of dissolved detritus that becomes CBOD 2
49 51 2 0.2 share of CBOD 2 in denitrification
50 - 3 0.02 CBOD 3 decay rate at 20 C (1/day)
51 - 3 1.047 CBOD 3 temperature coefficient
52 - 3 0.5 CBOD 3 oxygen half saturation (mg O2/L)
60 54 1 2.667 oxygen to carbon ratio
61 55 1 0.8 global reaeration rate at 20 C (1/day)
62 56 1 2. reaeration option
63 57 1 12. elevation above the sea (m)
64 58 1 0. formula for calculated reaeration
65 59 1 0.05 lowest reaeration rate (1/day)
66 60 1 1.024 reaeration temperature coefficient
67 61 1 1.065 sediment oxygen demand temperature coefficient
69 92 1 1.0 percent of light that bounds the photic zone
70 93 1 2. light option
71 94 1 0.0587 self shading multiplier
72 95 1 0.778 self shading exponent
73 96 1 0. self shading in the light formula
74 97 1 0.35 background light extinction (1/m)
75 98 1 0.05 light extinction by detritus and solids
76 99 1 0.02 light extinction by dissolved organic carbon
77 100 1 0.02 light extinction by dissolved carbon 1
78 100 2 0.04 light extinction by dissolved carbon 2
79 - 3 0.04 light extinction by dissolved carbon 3
80 - 1 2.5 benthic algae dry weight to carbon
81 - 1 0.18 benthic algae nitrogen to carbon
82 - 1 0.025 benthic algae phosphorus to carbon
83 - 1 0.02 benthic algae chlorophyll to carbon
84 - 1 2.69 benthic algae oxygen production
86 - 1 15. benthic algae greatest growth rate
87 - 1 1.07 benthic algae growth temperature coefficient
88 - 1 60. benthic algae carrying capacity (g D/m2)
89 - 1 0.10 benthic algae respiration rate (1/day)
93 - 1 0.05 benthic algae death rate (1/day)
95 - 1 0.30 benthic algae nitrogen half saturation
96 - 1 0.06 benthic algae phosphorus half saturation
97 - 1 0.0 retired in an earlier release
100 - 1 0.025 benthic algae ammonia preference
107 - 1 0.5 benthic algae share recycled to organic nitrogen
108 - 1 0.5 benthic algae share recycled to organic phosphorus
110 64 1 2.5 diatoms: detritus to carbon
111 65 1 0.18 diatoms: nitrogen to carbon
112 66 1 0.025 diatoms: phosphorus to carbon
113 67 1 0.45 diatoms: silica to carbon
114 68 1 45. diatoms: carbon to chlorophyll
115 69 1 2.3 diatoms: greatest growth rate (1/day)
116 70 1 1.05 diatoms: growth temperature coefficient
117 71 1 16. diatoms: best temperature (C)
118 72 1 0.006 diatoms: shape below the best temperature
119 73 1 0.012 diatoms: shape above the best temperature
120 74 1 0.08 diatoms: respiration rate (1/day)
121 75 1 1.045 diatoms: respiration temperature coefficient
122 76 1 0.04 diatoms: death rate (1/day)
123 77 1 0.10 diatoms: death rate by salinity (1/day)
124 78 1 12. diatoms: salinity of half death rate (g/L)
125 79 1 0.02 diatoms: grazing rate (1/day)
126 80 1 1.0 diatoms: grazability
127 81 1 0.025 diatoms: nitrogen half saturation (mg N/L)
128 82 1 0.002 diatoms: phosphorus half saturation (mg P/L)
129 83 1 0.04 diatoms: silica half saturation (mg Si/L)
130 84 1 0. diatoms: nitrogen fixation
131 85 1 220. diatoms: best light (Ly/day)
132 86 1 0.5 diatoms: death recycled to organic nitrogen
133 87 1 0.5 diatoms: death recycled to organic phosphorus
134 88 1 0.9 diatoms: death recycled to organic silica
140 64 2 2.5 greens: detritus to carbon
141 65 2 0.18 greens: nitrogen to carbon
142 66 2 0.025 greens: phosphorus to carbon
143 67 2 0.0 greens: silica to carbon
144 68 2 35. greens: carbon to chlorophyll
145 69 2 1.9 greens: greatest growth rate (1/day)
146 70 2 1.068 greens: growth temperature coefficient
147 71 2 24. greens: best temperature (C)
148 72 2 0.006 greens: shape below the best temperature
149 73 2 0.008 greens: shape above the best temperature
150 74 2 0.06 greens: respiration rate (1/day)
151 75 2 1.045 greens: respiration temperature coefficient
152 76 2 0.03 greens: death rate (1/day)
153 77 2 0.30 greens: death rate by salinity (1/day)
154 78 2 5. greens: salinity of half death rate (g/L)
155 79 2 0.02 greens: grazing rate (1/day)
156 80 2 0.8 greens: grazability
157 81 2 0.025 greens: nitrogen half saturation (mg N/L)
158 82 2 0.003 greens: phosphorus half saturation (mg P/L)
160 84 2 0. greens: nitrogen fixation
161 85 2 300. greens: best light (Ly/day)
162 86 2 0.5 greens: death recycled to organic nitrogen
163 87 2 0.5 greens: death recycled to organic phosphorus
170 - 3 2.5 blue-greens: detritus to carbon
171 - 3 0.18 blue-greens: nitrogen to carbon
172 - 3 0.025 blue-greens: phosphorus to carbon
174 - 3 50. blue-greens: carbon to chlorophyll
175 - 3 1.2 blue-greens: greatest growth rate (1/day)
195 62 1 24. greatest calculated reaeration rate (1/day)
200 - 1 1.0 not used by this model type
246 5 1 1. sulfate acidity option
247 6 1 1. bisulfate constant option for sea water
248 7 1 1. pH scale of the output
249 8 1 1. salinity option
1140 178 1 0. sediment diagenesis on or off
1141 179 1 0. steady state before the start
1142 180 1 1.0D-4 convergence of the steady state
1143 181 1 500. iterations of the steady state
1144 182 1 1.0 salinity between methane and sulfide demand (ppt)
1145 183 1 1.0 salinity between fresh and salt water rates (ppt)
1146 184 1 0.5 solids in layer 1 (kg/L)
1147 185 1 0.5 solids in layer 2 (kg/L)
1148 186 1 0.001 diffusion between layers (m2/day)
1149 187 1 1.08 diffusion temperature coefficient
1150 188 1 10. thickness of the active layer (cm)
1151 189 1 6.85E-06 burial velocity (m/day)
1152 190 1 6.0E-05 particle mixing (m2/day)
1153 191 1 1.117 particle mixing temperature coefficient
1157 195 1 0.65 organic nitrogen to class 1
1158 196 1 0.25 organic nitrogen to class 2
1159 197 1 0.035 nitrogen diagenesis rate, class 1
1160 198 1 1.10 nitrogen diagenesis temperature coefficient, class 1
1161 199 1 0.0018 nitrogen diagenesis rate, class 2
1162 200 1 1.15 nitrogen diagenesis temperature coefficient, class 2
1165 203 1 0.1313 nitrification velocity, fresh water (m/day)
1166 204 1 0.1313 nitrification velocity, salt water (m/day)
1167 205 1 1.123 nitrification velocity temperature coefficient
1173 211 1 0.10 denitrification velocity, fresh water (m/day)
1174 212 1 0.10 denitrification velocity, salt water (m/day)
1178 216 1 0.65 organic phosphorus to class 1
1179 217 1 0.20 organic phosphorus to class 2
1190 228 1 0.65 carbon to class 1
1191 229 1 0.20 carbon to class 2
1198 236 1 0.70 methane oxidation velocity (m/day)
1201 239 1 0.20 dissolved sulfide oxidation velocity (m/day)
1211 249 1 0.50 biogenic silica dissolution rate (1/day)
1213 251 1 40. silica saturation in pore water
1218 - 1 2.0 not used by this model type
"""


@dataclass(frozen=True)
class Constant:
    number: int
    current_number: int | None
    current_column: int
    current_series: int | None
    value: str
    meaning: str


def _constant(line):
    number, current, column, value, meaning = line.split(None, 4)
    return Constant(int(number), int(current) if current.isdigit() else None, int(column),
                    int(current[1:]) if current.startswith("t") else None, value, meaning)


CONSTANTS = [_constant(line) for line in _TABLE.strip().split("\n")]

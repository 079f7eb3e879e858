"""Changes of one value in a file, with the data of the host that must then differ."""

from dataclasses import dataclass

SECTIONS = ["model parameters", "segments", "flow paths", "flow time series", "exchanges", "boundary conditions",
            "loads", "environmental time functions", "segment parameters", "kinetic constants", "initial conditions"]


@dataclass(frozen=True)
class Change:
    """The first `old` behind `mark` becomes `new`."""
    section: str
    mark: str
    old: str
    new: str
    paths: tuple


def planted(content, change):
    text = content.decode("ascii")
    start = text.index(change.old, text.index(change.mark))
    return (text[:start] + change.new + text[start + len(change.old):]).encode("ascii")


def changes(rows):
    """`mark | old | new | path...` in a line, under the name of its section."""
    result = []
    section = None
    for line in rows.strip("\n").split("\n"):
        if "|" not in line:
            section = line
            continue
        mark, old, new, paths = (cell.strip("~").replace("\\n", "\n") for cell in line.split("|"))
        assert old != new
        result.append(Change(section, mark, old, new, tuple(paths.split())))
    return result


# A tilde guards blanks at the end of a cell.
CHANGES_OF_CURRENT = changes("""\
model parameters
   11|   11|    8|settings.model_type
Ellery|1  1  2019|2  1  2019|settings.start_date.month
Ellery|1  1  2019|1  2  2019|settings.start_date.day
Ellery|2019  0  0  0   start|2020  0  0  0   start|settings.start_date.year
Ellery|0  0  0   start|7  0  0   start|settings.start_time.hour
Ellery|0  0  0   start|0  7  0   start|settings.start_time.minute
Ellery|0  0  0   start|0  0  7   start|settings.start_time.second
start:|1  1  2019|2  1  2019|settings.hydrodynamic_skip_date.month
start:|1  1  2019|1  2  2019|settings.hydrodynamic_skip_date.day
start:|2019  0  0  0   hyd|2020  0  0  0   hyd|settings.hydrodynamic_skip_date.year
start:|0  0  0   hyd|7  0  0   hyd|settings.hydrodynamic_skip_time.hour
start:|0  0  0   hyd|0  7  0   hyd|settings.hydrodynamic_skip_time.minute
start:|0  0  0   hyd|0  0  7   hyd|settings.hydrodynamic_skip_time.second
start:|365.0|366.0|settings.simulation_length
restart|1   solution|2   solution|settings.solution_type
restart|0   negative|1   negative|settings.negative_solution_option
restart|0   initial|1   initial|settings.icrd_option
restart|1   interpolation|0   interpolation|settings.intyp_option
not used|0.9|0.8|settings.maximum_time_step_fraction
not used|0.0001|0.0002|settings.minimum_time_step
not used|0.015|0.016|settings.maximum_time_step
time step, days|0.25|0.5|settings.output_interval
output interval|NH-34|NH-35|systems[1].short_name
output interval|CBOD-2|CBOD-3|systems[9].long_name
segments
number of segments|0   bed|1   bed|settings.bed_volume_option
number of segments|1.0   bed|1.1   bed|settings.bed_volume_time_step
bed time step|1.0  1.0|1.1  1.0|settings.volume_scale_factor
bed time step|1.0  1.0|1.0  1.1|settings.volume_conversion_factor
Segment names|Gorge|gorge|segments[2].name
Segment geometry|   22    0    1    1|   22    0    1    2|segments[22].hydraulic_option
Segment geometry|~   37    0    3~|~   37   23    3~|segments[37].bottom_segment
Segment geometry|~    2    0    1~|~    2    0    2~|segments[2].type
Segment geometry|15435.0|15435.1|segments[1].volume
Segment geometry|0.3604900|0.3604901|segments[1].velocity_multiplier
Segment geometry|0.400|0.401|segments[1].velocity_exponent
Segment geometry|0.19814|0.19815|segments[1].depth_multiplier
Segment geometry|0.600|0.601|segments[1].depth_exponent
Segment geometry|1500.0|1500.1|segments[1].length
Segment geometry|0.00180|0.00181|segments[1].slope
Segment geometry|14.00|14.01|segments[1].width
Segment geometry|0.0400|0.0401|segments[1].roughness
Segment geometry|0.050|0.051|segments[1].minimum_depth
Segment geometry|~0.050~|~0.050           2.11~|segments[1].initial_surface_elevation
Segment geometry|~0.050~|~0.050                          2.11~|segments[1].bottom_elevation
Segment geometry|~0.050~|~0.050                                         2.11~|segments[1].side_slope
Segment geometry|~0.050~|~0.050                                                        2.11~|segments[1].initial_depth
Segment geometry|~0.050~|~0.050                                                                       2.11~|segments[1].weir_height
Segment geometry|~0.050~|~0.050                                                                                      2.11~|segments[1].weir_type
flow paths
FLOW_PATHS|Stonebeck|stonebeck|flow_fields[1].functions[1].description
29   paths|~   12   13~|~   11   13~|flow_fields[1].functions[1].pairs[13].first_segment
29   paths|~   12   13~|~   12   14~|flow_fields[1].functions[1].pairs[13].second_segment
29   paths|1.0000|0.9999|flow_fields[1].functions[1].pairs[1].routing_fraction
flow time series
FLOW_SERIES|10.3700|10.3701|flow_fields[1].functions[1].breakpoints[1].first_value
FLOW_SERIES|~      1.0000~|~      1.0001~|flow_fields[1].functions[1].breakpoints[2].second_value
Flow field: Pore water, m3/s|1.0  1.0|2.0  1.0|flow_fields[1].scale_factor flow_fields[2].scale_factor
Flow field: Pore water, m3/s|1.0  1.0|1.0  2.0|flow_fields[1].conversion_factor flow_fields[2].conversion_factor
exchanges
EXCHANGES|Lower river|lower river|exchange_fields[1].functions[1].description
Lower river|~   13   14~|~   12   14~|exchange_fields[1].functions[1].pairs[2].first_segment
Lower river|~   13   14~|~   13   15~|exchange_fields[1].functions[1].pairs[2].second_segment
Lower river|32.4|32.5|exchange_fields[1].functions[1].pairs[2].interfacial_area
Lower river|2050.00|2050.01|exchange_fields[1].functions[1].pairs[2].mixing_length
Lower river|~      8.0000      0.0000~|~      8.0001      0.0000~|exchange_fields[1].functions[1].breakpoints[1].value
Lower river|365.0000|366.0000|exchange_fields[1].functions[1].breakpoints[2].time
Exchange field: Pore water|1.0  1.0|2.0  1.0|exchange_fields[1].scale_factor exchange_fields[2].scale_factor
Exchange field: Pore water|1.0  1.0|1.0  2.0|exchange_fields[1].conversion_factor exchange_fields[2].conversion_factor
boundary conditions
Ammonia: boundaries|    1.0000    1.0000|    1.0001    1.0000|systems[1].boundary_scale_factor
pH: boundaries|~         3   segment~|~         4   segment~|systems[21].boundaries[2].segment
Ammonia: boundaries|0.0641|0.0642|systems[1].boundaries[1].series[1].value
Ammonia: boundaries|31.0000|31.0001|systems[1].boundaries[1].series[2].time
loads
LOADS|0   no file|-1   no file|settings.load_option
LOADS|~0   no file of diffuse loads~|~1\\nfields.nps~|settings.load_option settings.non_point_source_file
Ammonia: loads|1.0  1.0|1.1  1.0|systems[1].load_conversion_factor
Ammonia: loads|10   segment|12   segment|systems[1].loads[1].segment
Ammonia: loads|60.3418|60.3419|systems[1].loads[1].series[1].value
Ammonia: loads|7.0000|7.0001|systems[1].loads[1].series[2].time
environmental time functions
TIME_FUNCTIONS|~         4   Solar~|~         5   Solar~|time_functions[2].number
TIME_FUNCTIONS|30.78528|30.78529|time_functions[2].series[1].breakpoints[1].value
Solar radiation|99.0000|99.0001|time_functions[2].series[1].breakpoints[100].time
~        40   background~|0.15|0.16|time_functions[10].series[1].breakpoints[1].value
segment parameters
SEGMENT_PARAMETERS|~Scale:      0.900~|~Scale:      0.901~|segment_parameters[3].scale_factor
Values by segment|12.0000|12.0001|segment_parameters[3].values[1]
42   Bed|~Parameter:     5~|~Parameter:    95~|segment_parameters[7].number
42   Bed|~Parameter:    20        Column:   2~|~Parameter:    20        Column:   3~|segment_parameters[14].class_index
kinetic constants
CONSTANTS|~Const:     9~|~Const:   209~|constants[2].number
CONSTANTS|0.00041|0.00042|constants[2].value
CONSTANTS|~    52   Column:     1~|~    52   Column:     2~|constants[1].column
initial conditions
Ammonia: initial|1   flow|2   flow|systems[1].flow_field
Ammonia: initial|1.00|1.01|systems[1].density
Ammonia: initial|~0.0641      1.0000~|~0.0642      1.0000~|systems[1].initial_conditions[1].concentration
Ammonia: initial|~0.0641      1.0000~|~0.0641      0.9999~|systems[1].initial_conditions[1].dissolved_fraction
""")
# The option of the first segment is the flow option of all.
CHANGES_OF_CURRENT.append(Change("segments", "Segment geometry", "    1    0    1    1", "    1    0    1    2",
                                 ("segments[1].hydraulic_option",
                                  *(f"segments[{number}].flow_option" for number in range(1, 43)))))

# Counts go with the records that they count; the others come from the import, not from a record.
KINDS_THAT_NO_CHANGE_HAS = set("""
system_count systems[].boundary_count systems[].boundaries[].breakpoint_count systems[].loads[].breakpoint_count
segment_count flow_field_count flow_fields[].function_count flow_fields[].functions[].pair_count
flow_fields[].functions[].breakpoint_count exchange_field_count exchange_fields[].function_count
exchange_fields[].functions[].pair_count exchange_fields[].functions[].breakpoint_count
time_functions[].series[].breakpoint_count
settings.file_name settings.hydrodynamic_file systems[].has_no_load_factors systems[].no_load_scale_factor
systems[].no_load_conversion_factor systems[].loads[].times_announced systems[].has_initial_settings
systems[].maximum_concentration time_functions[].follows_constants constants[].used
refreshes.systems refreshes.segments refreshes.flows refreshes.exchanges refreshes.time_functions
refreshes.segment_parameters refreshes.constants""".split())

CHANGES_OF_LEGACY = changes("""\
model parameters
output intervals|0.25|0.5|settings.output_interval
segments
Segment geometry|15435.0|15435.1|segments[1].volume
flow paths
inflow functions|1.0000|0.9999|flow_fields[1].functions[1].pairs[1].routing_fraction
flow time series
m3/s|10.3700|10.3701|flow_fields[1].functions[1].breakpoints[1].first_value
exchanges
Lower river|32.4|32.5|exchange_fields[1].functions[1].pairs[2].interfacial_area
boundary conditions
pH: boundaries|~         3   segment~|~         4   segment~|systems[21].boundaries[2].segment
loads
Alkalinity: loads|1.0  1.0|1.1  1.0|systems[22].load_conversion_factor
environmental time functions
'Solar radiation'|63.5718|63.5719|time_functions[2].series[1].breakpoints[1].value
segment parameters
parameters: number|0.900|0.901|segment_parameters[3].scale_factor
kinetic constants
greens: best light|0.5|0.6|constants[92].value
initial conditions
Alkalinity: initial|1   flow|2   flow|systems[22].flow_field
""")
# The constants that are time functions hold to the end.
CHANGES_OF_LEGACY.append(Change("model parameters", "skipped up to", "365.0", "366.0",
                                ("settings.simulation_length",
                                 *(f"time_functions[{row}].series[1].breakpoints[2].time" for row in range(6, 12)))))

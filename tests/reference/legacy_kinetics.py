"""Kinetic constants and initial conditions of a legacy (version 7) file."""

from dataclasses import dataclass, field

from legacy_constant_rows import GROUPS, TIME_FUNCTIONS
from records import fit, integers, reals
from shared import LARGEST_UNBACKED_SEGMENT_COUNT, read_integer, read_values, send_notice
from shared_environment import TimeSeries, send_time_series
from shared_kinetics import (NO_SYSTEM, read_initial_systems, send_constants, send_initial_conditions,
                             send_initial_notice)

# --- kinetic constants --------------------------------------------------------------------------------------

CONSTANT_TABLE_LENGTH = 3000
CONSTANT_NAME_WIDTH = 60
SECOND_SILICA_PARTITION = 22


@dataclass
class ConstantTable:
    """Constants of the current model in the order in which they came, and what is known of each number."""
    mapped: list = field(default_factory=list)
    column_count: dict = field(default_factory=dict)
    values: dict = field(default_factory=dict)
    names: dict = field(default_factory=dict)
    time_functions: list = field(default_factory=list)

    def constants(self):
        """Number, column and value of everything in use; a column that no record filled is zero."""
        return [(number, column, self.values.get((number, column), 0.0))
                for number in self.mapped for column in range(1, self.column_count.get(number, 0) + 1)]


def constants(run):
    count = read_integer(run, "constant_count")
    records = [read_values(run, integers("constant_number") + reals("constant_value")) for _ in range(count)]
    if run.state.transport_only:
        return
    table = translate_constants(run.state, records)
    send_notice(run, "Importing Kinetic Constants")
    send_constants(run.host, table.constants())
    send_constant_time_functions(run, table.time_functions)


def translate_constants(state, records):
    table = ConstantTable()
    for number, value in records:
        for legacy_number, function in TIME_FUNCTIONS:
            if legacy_number == number:
                table.time_functions.append((function, value))
        for group in GROUPS:
            if holds(state, group):
                for row in group.rows:
                    if row.legacy_number == number:
                        apply(table, row, value)
    return table


def holds(state, group):
    if group.flag is not None:
        return group.flag in state.presence_flags
    return group.count_name is None or getattr(state, group.count_name) >= group.smallest_count


def apply(table, row, value):
    """Only a first column enters the constant in the list.

    A benthic-algae row counts a column for the constant whose number is the new length of the list, and none
    for its own. Legacy 22 takes the place of whatever stands last in the list.
    """
    table.values[row.constant, row.column] = value
    table.names[row.constant] = fit(row.name.encode("latin-1"), CONSTANT_NAME_WIDTH)
    if row.column == 1:
        table.mapped.append(row.constant)
    if row.legacy_number == SECOND_SILICA_PARTITION and table.mapped:
        table.mapped[-1] = row.constant
    if not row.benthic_algae:
        table.column_count[row.constant] = row.column
    elif len(table.mapped) <= CONSTANT_TABLE_LENGTH:
        table.column_count[len(table.mapped)] = 1


def send_constant_time_functions(run, time_functions):
    """A value that the current model wants over time holds from the start to the end of the simulation."""
    if not time_functions:
        return
    for function, value in time_functions:
        send_time_series(run.host, function, 1,
                         TimeSeries(2, [(0.0, value), (run.state.simulation_length, value)]))
    run.host.call("PTFSREFRESH")


# --- initial conditions -------------------------------------------------------------------------------------

def initial_conditions(run):
    """Both counts replace those that the sections share."""
    run.console(b"Reading Initial Conditions")
    state = run.state
    state.system_count = read_integer(run, "system_count", state.system_count)
    state.segment_count = read_integer(run, "segment_count", state.segment_count)
    if (state.system_count <= 0 < state.state_variable_count and not state.transport_only
            and state.segment_count > LARGEST_UNBACKED_SEGMENT_COUNT):
        raise run.reader.refusal("segment_count", "too many segments for a file without their records")
    systems = read_initial_systems(run)
    send_initial_notice(run)
    if not state.transport_only:
        send_initial_conditions(run, [systems[system - 1] if system <= len(systems) else NO_SYSTEM
                                      for system in state.system_of_state_variable])

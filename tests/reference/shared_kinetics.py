"""Kinetic constants and initial conditions, in both families."""

from dataclasses import dataclass, field

from command_log import Integer, Real
from records import integers, reals
from shared import read_integer, read_values, send_integers, send_notice


# --- kinetic constants --------------------------------------------------------------------------------------

def send_constants(host, constants):
    """`constants` are (number, column, value). All are announced before the first value goes out."""
    for number, column, _ in constants:
        send_integers(host, "PADDCONST", number, column)
    host.call("PCONSTANTSREFRESH")
    for number, column, value in constants:
        host.call("PCONSTVALUEBYISC", Integer(number), Integer(column), Real(value))
        send_integers(host, "PCONSTISUSED", number, column, 1)
    host.call("PCONSTANTSREFRESH")


# --- initial conditions -------------------------------------------------------------------------------------

@dataclass
class InitialSystem:
    """Concentration and dissolved fraction are by segment number, 0.0 where no record names it."""
    flow_field: int = 0
    density: float = 0.0
    largest_concentration: float = 0.0
    concentration: dict = field(default_factory=dict)
    dissolved_fraction: dict = field(default_factory=dict)


NO_SYSTEM = InitialSystem()


def read_initial_systems(run):
    return [read_initial_system(run) for _ in range(run.state.system_count)]


def read_initial_system(run):
    """The captions are read without an error branch."""
    run.reader.caption()
    system = InitialSystem(read_integer(run, "flow_field"), *read_values(run, reals("density")),
                           *read_values(run, reals("largest_concentration")))
    run.reader.caption()
    for _ in range(run.state.segment_count):
        read_segment_values(run, system)
    return system


def read_segment_values(run, system):
    """The number in the record says which segment it is; what the record leaves out stays."""
    values = run.reader.list(integers("segment_number") + reals("concentration", "dissolved_fraction"))
    segment = values.get("segment_number", 0)
    if not 1 <= segment <= run.state.segment_count:
        raise run.reader.refusal("segment_number", "no such segment")
    for name in ("concentration", "dissolved_fraction"):
        if name in values:
            getattr(system, name)[segment] = values[name]


def send_initial_conditions(run, systems):
    """`systems` in the host's numbering."""
    host = run.host
    for number, system in enumerate(systems, start=1):
        host.call("PCMAX", Integer(number), Real(system.largest_concentration))
        host.call("PDENSITY", Integer(number), Real(system.density))
        send_integers(host, "PIFIELD", number, system.flow_field)
        for segment in range(1, run.state.segment_count + 1):
            place = (Integer(number), Integer(segment))
            host.call("PINITC", *place, Real(system.concentration.get(segment, 0.0)))
            host.call("PFDISS", *place, Real(system.dissolved_fraction.get(segment, 0.0)))


def send_initial_notice(run):
    send_notice(run, "Importing Initial Conditions")

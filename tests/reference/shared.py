"""What the sections of both families share: the state of an import, and the sends that do not differ."""

from dataclasses import dataclass, field

from command_log import Integer, RecordingHost, Real, SendBuffers, Text, with_nul
from records import LARGEST_INTEGER, RecordReader, fit, integers, reals

ADVANCED_EUTROPHICATION = 11
ADVANCED_TOXICANT = 8
MESSAGE_WIDTH = 132
ERROR_LINE_WIDTH = 80
NAME_WIDTH = 40
SHORT_NAME_WIDTH = 5
LONG_NAME_WIDTH = 30
MODEL_FILE_NAME_WIDTH = 512
HYDRO_FILE_NAME_WIDTH = 512
# Commands for each segment without a record for it: a few bytes must not ask for thousands of millions.
LARGEST_UNBACKED_SEGMENT_COUNT = 100000

BLUE_PREFIX = '<li><span style="font-weight: bold; color: blue;">'


@dataclass
class ImportState:
    """Everything that the sections leave for each other; every import starts from these values."""
    transport_only: int = 0
    index_segment_names: int = 1
    import_error: int = 0
    report_tables: int = 0
    model_type: int = 0
    file_version: int = 0
    start_month: int = 0
    start_day: int = 0
    start_year: int = 0
    start_hour: int = 0
    start_minute: int = 0
    start_second: int = 0
    skip_month: int = 0
    skip_day: int = 0
    skip_year: int = 0
    skip_hour: int = 0
    skip_minute: int = 0
    skip_second: int = 0
    simulation_length: float = 0.0
    system_count: int = 0
    unsent_option: int = 0
    solution_type: int = 0
    negative_solution_option: int = 0
    icrd_option: int = 0
    intyp_option: int = 0
    time_step_fraction: float = 0.0
    minimum_time_step: float = 0.0
    maximum_time_step: float = 0.0
    output_interval: float = 0.0
    system_of_state_variable: list = field(default_factory=list)
    presence_flags: set = field(default_factory=set)
    cbod_count: int = 0
    solids_count: int = 0
    phytoplankton_count: int = 0
    segment_count: int = 0
    segment_names: list = field(default_factory=list)
    bed_volume_option: int = 0
    bed_time_step: float = 0.0
    volume_scale_factor: float = 0.0
    volume_conversion_factor: float = 0.0
    flow_option: list = field(default_factory=list)
    flow_field_count: int = 0
    inflow_count: list = field(default_factory=list)
    hydro_file_name: bytes = b"\0" * HYDRO_FILE_NAME_WIDTH
    flow_scale_factor: float = 0.0
    flow_conversion_factor: float = 0.0
    exchange_scale_factor: float = 0.0
    exchange_conversion_factor: float = 0.0
    tf5_present: int = 0
    tf10_present: int = 0

    @property
    def state_variable_count(self):
        return len(self.system_of_state_variable)

    def keep(self, values):
        """Take the values that a record gave; what it left out keeps what it was."""
        for name, value in values.items():
            if not hasattr(self, name):
                raise AttributeError(name)
            setattr(self, name, value)


@dataclass
class ImportRun:
    """One import: where it reads, whom it tells, what it knows."""
    host: RecordingHost
    reader: RecordReader
    state: ImportState
    model_file_name: bytes
    send_buffers: SendBuffers = field(default_factory=SendBuffers)
    console_lines: list = field(default_factory=list)

    def console(self, line):
        self.console_lines.append(line)


def console_text(text):
    """A text on the console ends at its first NUL and loses its trailing blanks."""
    return text.split(b"\0")[0].rstrip(b" ")


def read_integer(run, name, kept=0, largest=LARGEST_INTEGER):
    """The only integer of a free-form record; left out, it is what was kept."""
    return run.reader.list(integers(name, largest=largest)).get(name, kept)


def read_values(run, items):
    """The numbers of a free-form record in the order of its items; what is left out is zero."""
    filled = run.reader.list(items)
    return tuple(filled.get(item.name, 0 if item.kind == "integer" else 0.0) for item in items)


def send_progress(run, percentage):
    run.host.call("PPROGRESS", Integer(percentage))


def send_notice(run, message):
    """A line of the information pane."""
    send_all(run, (BLUE_PREFIX, message + '</span></li>'))


def report_read_error(run, line_counter, reports_to_pane):
    run.console(b"Error Reading Import File at Line: %d" % line_counter)
    if reports_to_pane:
        line = run.host.formatted_integer(ERROR_LINE_WIDTH, "Error Reading Import File at Line # %d </span></li>",
                                          min(line_counter, 2147483647))
        run.host.information(BLUE_PREFIX)
        run.host.information(Text(line))
    run.state.import_error = 1


# --- model parameters ----------------------------------------------------------------------------------------------

LABEL_CELL = '<tr><td style="text-align: right; font-weight: bold; width: 202px;">'
VALUE_CELL = '</td><td style="width: 214px;">'


def send_model_parameter_table(run, title):
    send_all(run, (
        '<body><center><table style="text-align: left; width: 436px; height: 192px;"',
        'border="1" cellpadding="2" cellspacing="2"><tbody><tr align="center">',
        '<td style="width: 214px;" colspan="2" rowspan="1">',
        f'<span style="font-weight: bold;">{title}</span></td>',
        '</tr>' + LABEL_CELL,
        'Module:' + VALUE_CELL))
    run.host.information(with_nul(fit(module_name(run.state.model_type), MESSAGE_WIDTH)))
    send_integer_row(run, "Starting Month:", run.state.start_month)
    send_integer_row(run, "Starting Day:", run.state.start_day)
    send_integer_row(run, "Starting Year:", run.state.start_year)
    send_real_row(run, ('</td></tr>' + LABEL_CELL,), "Simulation Length (days):", "%f", run.state.simulation_length)
    send_integer_row(run, "Number of Systems:", run.state.system_count)
    send_real_row(run, ('</td></tr>', LABEL_CELL), "Output Interval:", "%F", run.state.output_interval)
    run.host.information('</td></tr></tbody></table><br></center></body>')


def send_all(run, fragments):
    for fragment in fragments:
        run.host.information(fragment)


def module_name(model_type):
    names = {ADVANCED_EUTROPHICATION: b"Adv. Eutrophication", ADVANCED_TOXICANT: b"Advanced Toxicant"}
    return names.get(model_type, b"")


def send_integer_row(run, label, value):
    send_all(run, ('</td></tr>' + LABEL_CELL, label + VALUE_CELL))
    run.host.information(with_nul(run.host.formatted_integer(MESSAGE_WIDTH, "%d", value)))


def send_real_row(run, separator_fragments, label, conversion, value):
    send_all(run, (*separator_fragments, label + VALUE_CELL))
    run.host.information(with_nul(run.host.formatted_real(MESSAGE_WIDTH, conversion, value)))


def read_dates_and_options(run):
    """The records between the header and the output interval, which both formats have in common."""
    reader, state = run.reader, run.state
    state.keep(reader.list(integers("start_month", "start_day", "start_year",
                                    "start_hour", "start_minute", "start_second")))
    state.keep(reader.list(integers("skip_month", "skip_day", "skip_year", "skip_hour", "skip_minute", "skip_second")))
    state.keep(reader.list(reals("simulation_length")))
    for name in ("system_count", "unsent_option", "solution_type", "negative_solution_option", "icrd_option",
                 "intyp_option"):
        state.keep(reader.list(integers(name)))
    reader.list(integers("discarded_option"))
    state.keep(reader.list(reals("time_step_fraction")))
    state.keep(reader.list(reals("minimum_time_step", "maximum_time_step")))


def send_model_settings(run, system_count, names):
    """Everything from the model file name to the output interval.

    `names` are the (short name, long name) of the systems in the host's numbering; `system_count` is what the host is
    told, a negative count as it was read.
    """
    host, state = run.host, run.state
    host.call("PFILENAME", with_nul(run.model_file_name.rstrip(b" ")))
    host.call("PMODELTYPE", Integer(state.model_type))
    send_integers(host, "PSEEDTIME", state.start_hour, state.start_minute, state.start_second)
    send_integers(host, "PSEEDDATE", state.start_month, state.start_day, state.start_year)
    send_integers(host, "PHYDSKIPDATE", state.skip_month, state.skip_day, state.skip_year)
    send_integers(host, "PHYDSKIPTIME", state.skip_hour, state.skip_minute, state.skip_second)
    host.call("PENDJULIAN", Real(state.simulation_length))
    host.call("PNUMSYS", Integer(system_count))
    send_state_variable_table(run, names)
    host.call("PSYSTEMSREFRESH")
    host.call("PSOLUTIONTYPE", Integer(state.solution_type))
    host.call("PNEGSLN", Integer(state.negative_solution_option))
    host.call("PICRD", Integer(state.icrd_option))
    host.call("PINTYP", Integer(state.intyp_option))
    host.call("PFRACMAXTS", Real(state.time_step_fraction))
    host.call("PMAXDT", Real(state.maximum_time_step))
    host.call("PMINDT", Real(state.minimum_time_step))
    host.call("PMODELOUTPUTINTERVAL", Real(state.output_interval))


def send_integers(host, keyword, *values):
    host.call(keyword, *(Integer(value) for value in values))


def send_state_variable_table(run, names):
    send_all(run, (
        '<body><center><table style="text-align: left; width: 436px; height: 172px;"',
        'border="1" cellpadding="2" cellspacing="2"><tbody><tr align="center">',
        '<td style="width: 331px;" colspan="2" rowspan="1"><big><big><span',
        'style="font-weight: bold;">KOVA 8 State Variables Imported</span></big>',
        '</big></td></tr><tr><td style="width: 222px; text-align: center; ',
        'font-weight: bold;">KOVA8 System</td><td',
        ' style="width: 331px; text-align: center; font-weight: bold;">System Name ',
        '</td>'))
    for number, (short_name, long_name) in enumerate(names, start=1):
        run.host.call("PSYSNAME", Integer(number), with_nul(long_name), with_nul(short_name))
        run.host.information('<tr><td style="width: 222px; text-align: center;">')
        run.host.information(with_nul(short_name))
        run.host.information('</td>')
        run.host.information('<td style="width: 331px; text-align: center;">')
        run.host.information(with_nul(long_name))
        run.host.information('</td></tr>')
    run.host.information('</tbody></table><br></center></body>')


# --- segments ------------------------------------------------------------------------------------------------------

# Keyword, item of the geometry record, kind. The host wants slope before length, the files have length before slope.
SEGMENT_COMMANDS = (
    ("PBOTSEG", "bottom_segment", Integer), ("PSEGTYPE", "segment_type", Integer), ("PVOLUME", "volume", Real),
    ("PVMULT", "velocity_multiplier", Real), ("PVEXP", "velocity_exponent", Real),
    ("PDMULT", "depth_multiplier", Real), ("PDEXP", "depth_exponent", Real), ("PSEGSLOPE", "slope", Real),
    ("PSEGLENGTH", "length", Real), ("PSEGWIDTH", "width", Real), ("PSEGROUGH", "roughness", Real),
    ("PSEGMINDEPTH", "minimum_depth", Real))


def name_with_nul(text):
    """A name without its trailing blanks and with a NUL behind it, in its field of 40, if there is room for the NUL."""
    return fit(text.rstrip(b" ") + b"\0", NAME_WIDTH)


def index_digits(index):
    """The index as it stands in an indexed name, or None: 999 and everything from 9999 on never got an indexed name."""
    if index == 999 or index >= 9999:
        return None
    return b"%d" % index


def send_segments(run, segments, commands, before_name=lambda index, name: None, after_count=lambda: None):
    """All commands of the section; `segments` are the geometry records in order, one for each segment name."""
    host, state = run.host, run.state
    host.call("PNUMSEG", Integer(state.segment_count))
    after_count()
    host.call("PBEDOPT", Integer(state.bed_volume_option))
    host.call("PBEDDT", Real(state.bed_time_step))
    host.call("PSCALV", Real(state.volume_scale_factor))
    host.call("PCONVV", Real(state.volume_conversion_factor))
    send_notice(run, "Importing Segment Information")
    for index, (name, geometry) in enumerate(zip(state.segment_names, segments, strict=True), start=1):
        before_name(index, name)
        host.call("PSEGNAME", Integer(index), Text(name))
        for keyword, item, kind in commands:
            host.call(keyword, Integer(index), kind(geometry[item]))
    host.call("PSEGMENTSREFRESH")

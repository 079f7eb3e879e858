"""One import from the first question to the completion note."""

import os
import stat
from dataclasses import dataclass

import current
import current_environment
import current_kinetics
import current_network
import current_series
import legacy
import legacy_environment
import legacy_kinetics
import legacy_network
import legacy_series
from command_log import FILE_NAME_WIDTH, Answers, RecordingHost, SendBuffers, Text, with_nul
from records import ReadFailure, RecordReader, fit, split_lines
from shared import (BLUE_PREFIX, MESSAGE_WIDTH, MODEL_FILE_NAME_WIDTH, ImportRun, ImportState, report_read_error,
                    send_all, send_progress)

FIRST_CURRENT_VERSION = 3
WEB_SITE = "https://kova.example"


@dataclass(frozen=True)
class Section:
    """A row of a family."""
    name: str
    percentage: int
    routine: object
    reports_to_pane: bool


@dataclass(frozen=True)
class Family:
    sections: tuple
    completion_note: tuple


@dataclass(frozen=True)
class Failure:
    """What stopped an import: statement is the line counter, line and column count from 1; None where unknown."""
    section: str
    statement: int | None = None
    line: int | None = None
    column: int | None = None
    field: str | None = None
    reason: str = ""


@dataclass
class Result:
    log_lines: list
    console_lines: list
    failure: Failure | None
    model_file_name: bytes


LEGACY = Family(
    sections=(
        Section("modelparam", 0, legacy.modelparam, False),
        Section("segments", 5, legacy.segments, False),
        Section("flowpath", 10, legacy_network.flowpath, False),
        Section("flows", 20, legacy_network.flows, False),
        Section("exchanges", 30, legacy_network.exchanges, False),
        Section("boundary", 40, legacy_series.boundary, False),
        Section("loads", 50, legacy_series.loads, False),
        Section("timefunctions", 60, legacy_environment.timefunctions, False),
        Section("seg_parameters", 70, legacy_environment.seg_parameters, False),
        Section("constants", 80, legacy_kinetics.constants, False),
        Section("initial_conditions", 85, legacy_kinetics.initial_conditions, False)),
    completion_note=(
        '<body><big style="font-weight: bold; color: Black;">Import Utility ',
        'has completed. User should do a visible inspection between data in the KOVA7 ',
        'interface &amp; KOVA8 Interface.  Because of drastic changes in the data ',
        'structures, data may not be imported. If you did multiple BOD and ',
        'Phytoplankton groups in KOVA7, you will need to check the "Use" Box for ',
        'all constants, whether they were used in KOVA7.  ',
        'If you simulated Benthic Algae in KOVA you will need to parameterize in ',
        'KOVA8 without the aid of the import ',
        'utility. So much has changed that it is virtually impossible ',
        'to import correctly.  ',
        f'See {WEB_SITE} under FAQ for more information about importing ',
        'KOVA7 Files</big></body>'))

CURRENT = Family(
    sections=(
        Section("modelparam_v2", 0, current.modelparam_v2, True),
        Section("segments_v2", 5, current.segments_v2, True),
        Section("flowpath_v2", 10, current_network.flowpath_v2, False),
        Section("flows_v2", 20, current_network.flows_v2, True),
        Section("exchanges_v2", 30, current_network.exchanges_v2, True),
        Section("boundary_v2", 40, current_series.boundary_v2, True),
        Section("loads_v2", 50, current_series.loads_v2, True),
        Section("timefunctions_v2", 60, current_environment.timefunctions_v2, True),
        Section("seg_parameters_v2", 70, current_environment.seg_parameters_v2, True),
        Section("constants_v2", 80, current_kinetics.constants_v2, True),
        Section("initial_conditions_v2", 85, current_kinetics.initial_conditions_v2, True)),
    completion_note=(
        '<body><big style="font-weight: bold; color: Black;">Import Utility ',
        'has completed. Your import file was from a KOVA8 input file.  You will need to',
        ' re-select your output variables and review segment parameter screen due to ',
        'changes and bug fixes in the interface.',
        f'  See {WEB_SITE} under FAQ for more information about importing ',
        'Files</big></body>'))


def run_import(read_content, answers, path_text, earlier_model_file_name=b"\0" * MODEL_FILE_NAME_WIDTH,
               send_buffers=None, report_tables=0):
    """`read_content(path)` gives the bytes of the file that the host names, or None when it cannot be opened.

    The model file name and the send buffers live from one import of a process to the next; a first import finds
    NULs and zeros. `report_tables` is what the host writes into the flag of that name while it is asked the
    first question.
    """
    host = RecordingHost(answers, path_text)
    run = ImportRun(host, RecordReader([]), ImportState(), earlier_model_file_name,
                    send_buffers or SendBuffers())
    ask_questions(run, report_tables)
    host_file_name, path = terminated_path(host.file_name())
    run.model_file_name = derive_model_file_name(host_file_name, earlier_model_file_name)
    failure = open_and_choose(run, read_content(path))
    if failure:
        report_open_failure(run, host_file_name)
    else:
        family = CURRENT if run.state.file_version >= FIRST_CURRENT_VERSION else LEGACY
        send_introduction(run)
        failure = run_sections(run, family)
        host.dialog("Continue", "Click Okay to Continue", "Okay", "No")
        send_all(run, family.completion_note)
    return Result(host.log_lines, run.console_lines, failure, run.model_file_name)


def ask_questions(run, report_tables):
    """The verbose question stays although nothing depends on it: hosts answer the questions in order."""
    run.host.dialog("Set Verbose Option:", "Yes or No?", "Yes", "No")
    run.state.report_tables = report_tables
    if run.host.dialog("Import Options", "Import Network/Transport or All ?", "Transport Only", "All") == 0:
        run.state.transport_only = 1
    if run.host.dialog("Index Segment Names", "Add Index to Segment Name to Insure Unique Name", "Yes", "No") == 1:
        run.state.index_segment_names = 0


def terminated_path(field):
    """The host's file name field with a NUL behind it, where there is room, and the path, which ends at the first NUL."""
    path = field.split(b"\0")[0] if b"\0" in field else field.rstrip(b" ")
    return fit(field.rstrip(b" ") + b"\0", FILE_NAME_WIDTH), path


def derive_model_file_name(host_file_name, earlier):
    """The path up to its first full stop, with ".KIF" in place of what follows.

    Behind that, and in the last position when there is no full stop, the name of an earlier import shows through.
    """
    scanned = host_file_name[:MODEL_FILE_NAME_WIDTH - 1]
    stop = scanned.find(b".")
    front = scanned if stop < 0 else scanned[:stop] + b".KIF"
    return (front + earlier[len(front):])[:MODEL_FILE_NAME_WIDTH]


def open_and_choose(run, content):
    """Read the header for the version, then start again at the first line. A header that cannot be read is no file."""
    if content is None:
        return Failure("open", reason="the file cannot be opened")
    lines = split_lines(content)
    try:
        run.state.keep(RecordReader(lines).read_columns("(I5,5x,I2)", ("model_type", "file_version")))
    except ReadFailure as problem:
        return Failure("header", None, problem.line, problem.column, problem.field, problem.reason)
    run.reader = RecordReader(lines)
    return None


def report_open_failure(run, host_file_name):
    """The message is as wide as its field: of a name of 512, what fits behind "File: "."""
    run.host.information(BLUE_PREFIX)
    run.host.information('File Can Not be Opened</span></li>')
    run.host.information(BLUE_PREFIX)
    run.host.information(Text(fit(b"File: " + host_file_name + b"</span></li>\0", MESSAGE_WIDTH)))


def run_sections(run, family):
    """Every percentage goes out; behind a failure no section runs."""
    failure = None
    for section in family.sections:
        send_progress(run, section.percentage)
        if run.state.import_error:
            continue
        try:
            section.routine(run)
        except ReadFailure as problem:
            report_read_error(run, problem.statement, section.reports_to_pane)
            failure = Failure(section.name, problem.statement, problem.line, problem.column, problem.field,
                              problem.reason)
    send_progress(run, 100)
    return failure


# --- information pages ---------------------------------------------------------------------------------------------

RELEASE_LINE = b"ORVEN -- KOVA Version 8.4.3"
DETAIL_WIDTH = 30
BUILD_TIME_WIDTH = 50
ROW_SEPARATOR = '</td></tr><tr style="font-weight: bold;" align="Left"><td>'


def send_introduction(run):
    run.host.call("PCLEARINFO")
    send_version_page(run)


def send_version_page(run):
    send_all(run, (
        '<center><body><table style="text-align: left; width: 332px; height: 284px;"',
        'border="1" cellpadding="2" cellspacing="2"><tbody>',
        '<tr style="font-weight: bold; color: white;"align="center">',
        '<td style="background-color: blue;">',
        'KOVA Import Utility Version Information</td></tr>',
        '<tr style="font-weight: bold;" align="Left"><td>',
        with_nul(fit(RELEASE_LINE, DETAIL_WIDTH)),
        ROW_SEPARATOR,
        with_nul(fit(b"Model sha: ", DETAIL_WIDTH)),
        '</td></tr>',
        '<tr style="font-weight: bold;" align="Left"><td>',
        with_nul(fit(b"Built on: ", BUILD_TIME_WIDTH))))
    for detail in (b"Model branch: ", b"Gui sha: ", b"Gui branch: ", b"Platform: ", b"Architecture: ", b"Build type: "):
        send_all(run, (ROW_SEPARATOR, with_nul(fit(detail, DETAIL_WIDTH))))
    run.host.information('</td></tr></tbody></table><br></body></Center>')


# --- use as a module -----------------------------------------------------------------------------------------------

def import_file(source, answers=None, path_text=None, earlier_model_file_name=b"\0" * MODEL_FILE_NAME_WIDTH,
                send_buffers=None, report_tables=0):
    """Import a file (a path, or its content as bytes) and give back what a host and a console would see of it."""
    answers = answers or Answers()
    if isinstance(source, bytes):
        return run_import(lambda path: source, answers, path_text or b"model.inp", earlier_model_file_name,
                          send_buffers, report_tables)
    named = os.fsencode(source)
    if path_text is None:
        return run_import(content_of, answers, named, earlier_model_file_name, send_buffers,
                          report_tables)
    return run_import(lambda path: content_of(named), answers, path_text, earlier_model_file_name,
                      send_buffers, report_tables)


def content_of(path):
    """The bytes of a regular file. Folders, pipes and devices count as files that cannot be opened."""
    try:
        if not stat.S_ISREG(os.stat(path).st_mode):
            return None
        with open(path, "rb") as file:
            return file.read()
    except OSError:
        return None

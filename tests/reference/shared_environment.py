"""Environmental time functions and segment parameters, in both families."""

from dataclasses import dataclass

import single
from command_log import Integer, Real, with_nul
from shared import MESSAGE_WIDTH, send_all, send_integers, send_notice


# --- time functions -----------------------------------------------------------------------------------------

@dataclass(frozen=True)
class TimeSeries:
    """Breakpoints, each a time and its value; a count is sent as it was read, also a negative one."""
    breakpoint_count: int
    breakpoints: list


NO_SERIES = TimeSeries(0, [])


def send_time_series(host, function, number, series):
    send_integers(host, "PNBRKTF", function, number, series.breakpoint_count)
    for position, (time, value) in enumerate(series.breakpoints, start=1):
        host.call("PBRKTF", Integer(function), Integer(number), Integer(position), Real(time), Real(value))


def average(series):
    """Over the count as it was read, so that an empty series has no number for an average."""
    total = 0.0
    for _, value in series.breakpoints:
        total = single.add(total, value)
    return single.divide(total, single.to_single(float(series.breakpoint_count)))


def send_time_function_head(run):
    if not run.state.report_tables:
        send_notice(run, "Importing Time Function Information")
        return
    send_all(run, (
        '<body><center><table style="text-align: left; height: 95px; width: ',
        '436px; "border="1" cellpadding="2" cellspacing="2"><tbody>',
        '<tr style="font-weight: bold;" align="center"> <td style=',
        '"width: 116px;" colspan="4" rowspan="1"><big>Time Functions</big>',
        '</td></tr><tr><td style="font-weight: bold; text-align: center; ',
        'color: rgb(0, 0, 153); width: 183px;">Time Function</td>',
        '<td style="font-weight: bold; text-align: center; color: rgb(0, 0, 153);',
        'width: 78px;">Index</td><td style="font-weight: bold; text-align:',
        ' center; color: rgb(0, 0, 153); width: 136px;">Num Data Points</td>',
        '<td style="font-weight: bold; text-align: center; color: rgb(0, 0, 153);',
        ' width: 116px;">Average</td></tr>'))


def send_time_function_row(run, name, function, series):
    if not run.state.report_tables:
        return
    host = run.host
    send_all(run, ('<tr><td style="text-align: center; width: 183px;">', with_nul(name),
                   '</td><td style="text-align: center; width: 78px;">'))
    host.information(with_nul(host.formatted_integer(MESSAGE_WIDTH, "%d", function)))
    host.information('</td><td style="text-align: center; width: 136px;"> ')
    host.information(with_nul(host.formatted_integer(MESSAGE_WIDTH, "%d", series.breakpoint_count)))
    host.information('</td><td style="text-align: center; width: 116px;">')
    host.information(with_nul(host.formatted_real(MESSAGE_WIDTH, "%f", average(series))))
    host.information('</td></tr>')


def send_time_function_end(run):
    if run.state.report_tables:
        run.host.information('</tbody></table><br></center></body>')


# --- segment parameters -------------------------------------------------------------------------------------

@dataclass(frozen=True)
class Parameter:
    """A parameter of the host; `value_of` gives its value for a segment number."""
    code: int
    class_index: int
    scale: float
    value_of: object


def send_parameters(run, parameters):
    """Without parameters nothing but the last refresh goes out."""
    host = run.host
    if parameters:
        send_notice(run, "Importing Segment Parameter Information")
        for parameter in parameters:
            send_integers(host, "PADDPARAM", parameter.code, parameter.class_index)
            host.call("PSCALEPARAMBYISC", Integer(parameter.code), Integer(parameter.class_index),
                      Real(parameter.scale))
        host.call("PPARAMSREFRESH")
        for parameter in parameters:
            for segment in range(1, run.state.segment_count + 1):
                host.call("PCONSTPARAM", Integer(segment), Integer(parameter.code),
                          Integer(parameter.class_index), Real(parameter.value_of(segment)))
    host.call("PPARAMSREFRESH")

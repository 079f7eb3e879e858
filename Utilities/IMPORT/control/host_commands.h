#pragma once

// Every host command that the utility can send, as data. The typed send of the host link, the
// reference host, its command log and the documentation all read this one table.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kova_import {

/// Entries of each of the two send buffers.
inline constexpr std::size_t send_buffer_size = 170000;

/// What one argument of a host command is.
enum class ArgumentKind : std::uint8_t {
    none,
    integer,          ///< 32-bit signed integer
    real,             ///< single-precision real
    literal,          ///< text of any length whose last character is its NUL
    field,            ///< text of exactly `width` characters, blank-padded
    terminated_field, ///< text of exactly `width` characters, the last of which is a NUL
    fragment,         ///< HTML: ends in its NUL, or is a report field of 80 or 132 characters
    answer,           ///< 32-bit integer that the host writes
    result,      ///< text that the host writes; `width` characters, or 80 or 132 where `width` is 0
    send_buffer, ///< real[170000], passed as it stands
};

/// Whether a report field is so wide.
[[nodiscard]] constexpr bool is_report_width(std::size_t width) {
    return width == 80 || width == 132;
}

struct Argument {
    ArgumentKind kind = ArgumentKind::none;
    std::uint16_t width = 0;
    std::string_view name;
};

inline constexpr std::size_t maximum_argument_count = 5;

/// Whether a command puts data into the host or gets data from it.
enum class Direction : std::uint8_t { put, get };

struct HostCommand {
    std::string_view keyword;
    std::string_view effect; ///< what the host does with it, in the words of the documentation
    std::array<Argument, maximum_argument_count> arguments{};

    /// Number of arguments behind the keyword; the command goes through `host_call_<count>`.
    [[nodiscard]] constexpr std::size_t argument_count() const {
        std::size_t count = 0;
        while (count < arguments.size() && arguments[count].kind != ArgumentKind::none)
            ++count;
        return count;
    }

    /// Told by what the arguments do, not by the first letter: "GWEIRTYPE" carries data to the
    /// host.
    [[nodiscard]] constexpr Direction direction() const {
        for (const Argument &argument : arguments)
            if (argument.kind == ArgumentKind::answer || argument.kind == ArgumentKind::result)
                return Direction::get;
        return Direction::put;
    }
};

[[nodiscard]] constexpr bool is_text(ArgumentKind kind) {
    return kind == ArgumentKind::literal || kind == ArgumentKind::field ||
           kind == ArgumentKind::terminated_field || kind == ArgumentKind::fragment ||
           kind == ArgumentKind::result;
}

namespace host_command_table {

constexpr Argument integer(std::string_view name) { return {ArgumentKind::integer, 0, name}; }
constexpr Argument real(std::string_view name) { return {ArgumentKind::real, 0, name}; }
constexpr Argument literal(std::string_view name) { return {ArgumentKind::literal, 0, name}; }
constexpr Argument field(std::uint16_t width, std::string_view name) {
    return {ArgumentKind::field, width, name};
}
constexpr Argument terminated_field(std::uint16_t width, std::string_view name) {
    return {ArgumentKind::terminated_field, width, name};
}
constexpr Argument send_buffer(std::string_view name) {
    return {ArgumentKind::send_buffer, 0, name};
}

inline constexpr Argument segment = integer("segment");
inline constexpr Argument flow_field = integer("flow field");
inline constexpr Argument exchange_field = integer("exchange field");
inline constexpr Argument function = integer("function");
inline constexpr Argument pair = integer("pair");
inline constexpr Argument system = integer("system");
inline constexpr Argument boundary = integer("boundary");
inline constexpr Argument breakpoint = integer("breakpoint");
inline constexpr Argument breakpoint_count = integer("breakpoint count");
inline constexpr Argument time_function = integer("time function");
inline constexpr Argument series = integer("series");
inline constexpr Argument parameter = integer("parameter");
inline constexpr Argument class_index = integer("class");
inline constexpr Argument constant = integer("constant");
inline constexpr Argument column = integer("column");
inline constexpr Argument month = integer("month");
inline constexpr Argument day = integer("day");
inline constexpr Argument year = integer("year");
inline constexpr Argument hour = integer("hour");
inline constexpr Argument minute = integer("minute");
inline constexpr Argument second = integer("second");
inline constexpr Argument time = real("time");
inline constexpr Argument value = real("value");
inline constexpr Argument factor = real("factor");
inline constexpr Argument values = send_buffer("values");
inline constexpr Argument times = send_buffer("times");
inline constexpr Argument file_name_result = {ArgumentKind::result, 512, "file name"};
inline constexpr Argument number_text = {ArgumentKind::result, 0, "formatted number"};
inline constexpr Argument format = literal("format");

// clang-format off
/// In the order of the alphabet, so that a keyword is found by bisection.
inline constexpr std::array host_commands = {
    HostCommand{"GFILENAME", "asks for the path of the import file", {file_name_result}},
    HostCommand{"GSPRINTFI", "formats an integer", {number_text, format, integer("value")}},
    HostCommand{"GSPRINTFR", "formats a real", {number_text, format, value}},
    HostCommand{"GWEIRTYPE", "sets the weir type of a segment", {segment, real("weir type")}},
    HostCommand{"PADDCONST", "adds a constant", {constant, column}},
    HostCommand{"PADDPARAM", "adds a segment parameter", {parameter, class_index}},
    HostCommand{"PALLBOUNDFUNC", "sets the series of a boundary", {system, boundary, values, times}},
    HostCommand{"PALLLOADFUNC", "sets the series of a load", {system, segment, values, times}},
    HostCommand{"PBEDDT", "sets the bed-volume time step", {real("time step")}},
    HostCommand{"PBEDOPT", "sets the bed-volume option", {integer("option")}},
    HostCommand{"PBOTSEG", "sets the segment beneath a segment", {segment, integer("bottom segment")}},
    HostCommand{"PBOTTOMELEVATION", "sets the bottom elevation of a segment", {segment, real("elevation")}},
    HostCommand{"PBQ", "sets the routing fraction of a flow pair", {flow_field, function, pair, real("fraction")}},
    HostCommand{"PBRKTF", "sets a breakpoint of a time function", {time_function, series, breakpoint, time, value}},
    HostCommand{"PCLEARINFO", "empties the information pane", {}},
    HostCommand{"PCMAX", "sets the maximum concentration of a system", {system, real("concentration")}},
    HostCommand{"PCONSTANTSREFRESH", "tells that the constants are complete", {}},
    HostCommand{"PCONSTISUSED", "tells whether a constant is used", {constant, column, integer("used")}},
    HostCommand{"PCONSTPARAM", "sets the value of a parameter in a segment", {segment, parameter, class_index, value}},
    HostCommand{"PCONSTVALUEBYISC", "sets the value of a constant", {constant, column, value}},
    HostCommand{"PCONVB", "sets the conversion factor of a system's loads", {system, factor}},
    HostCommand{"PCONVQ", "sets the conversion factor of a flow field", {flow_field, factor}},
    HostCommand{"PCONVR", "sets the conversion factor of an exchange field", {exchange_field, factor}},
    HostCommand{"PCONVV", "sets the conversion factor of the volumes", {factor}},
    HostCommand{"PCONVW", "sets the conversion factor of a system without loads", {system, factor}},
    HostCommand{"PDENSITY", "sets the density of a system", {system, real("density")}},
    HostCommand{"PDEXP", "sets the depth exponent of a segment", {segment, real("exponent")}},
    HostCommand{"PDIALOG", "asks a question with two buttons", {literal("title"), literal("question"), literal("first button"), literal("second button"), Argument{ArgumentKind::answer, 0, "answer"}}},
    HostCommand{"PDMULT", "sets the depth multiplier of a segment", {segment, real("multiplier")}},
    HostCommand{"PENDJULIAN", "sets the length of the simulation", {real("days")}},
    HostCommand{"PEXCHANGEFUNCDESC", "describes an exchange function", {exchange_field, function, field(30, "description")}},
    HostCommand{"PEXCHANGESREFRESH", "tells that the exchanges are complete", {}},
    HostCommand{"PFDISS", "sets the initial dissolved fraction of a system in a segment", {system, segment, real("fraction")}},
    HostCommand{"PFILENAME", "sets the name of the model file", {terminated_field(513, "file name")}},
    HostCommand{"PFLOWFUNCDESC", "describes a flow function", {flow_field, function, field(30, "description")}},
    HostCommand{"PFLOWSREFRESH", "tells that the flows are complete", {}},
    HostCommand{"PFLOWTYPE", "sets the flow option of a segment", {segment, integer("option")}},
    HostCommand{"PFRACMAXTS", "sets the fraction of the maximum time step", {real("fraction")}},
    HostCommand{"PHYDROFILE", "sets the hydrodynamic linkage file", {field(512, "file name")}},
    HostCommand{"PHYDSKIPDATE", "sets the date to skip to in the hydrodynamic file", {month, day, year}},
    HostCommand{"PHYDSKIPTIME", "sets the time to skip to in the hydrodynamic file", {hour, minute, second}},
    HostCommand{"PIBC", "sets the segment of a boundary", {system, boundary, segment}},
    HostCommand{"PICRD", "sets the ICRD option", {integer("option")}},
    HostCommand{"PIFIELD", "sets the flow field of a system", {system, flow_field}},
    HostCommand{"PINFOHTML", "appends to the information pane", {Argument{ArgumentKind::fragment, 0, "fragment"}}},
    HostCommand{"PINITC", "sets the initial concentration of a system in a segment", {system, segment, real("concentration")}},
    HostCommand{"PINITIALDEPTH", "sets the initial depth of a segment", {segment, real("depth")}},
    HostCommand{"PINITIALSURFACEELEVATION", "sets the initial surface elevation of a segment", {segment, real("elevation")}},
    HostCommand{"PINTYP", "sets the INTYP option", {integer("option")}},
    HostCommand{"PIQ", "sets the second segment of a flow pair", {flow_field, function, pair, segment}},
    HostCommand{"PIQOPT", "sets the hydraulic option of a segment", {segment, integer("option")}},
    HostCommand{"PIRSEG", "sets the second segment of an exchange pair", {exchange_field, function, pair, segment}},
    HostCommand{"PJQ", "sets the first segment of a flow pair", {flow_field, function, pair, segment}},
    HostCommand{"PJRSEG", "sets the first segment of an exchange pair", {exchange_field, function, pair, segment}},
    HostCommand{"PLENGTH", "sets the mixing length of an exchange pair", {exchange_field, function, pair, real("length")}},
    HostCommand{"PLOPT", "sets the load option", {integer("option")}},
    HostCommand{"PMAXDT", "sets the maximum time step", {real("time step")}},
    HostCommand{"PMINDT", "sets the minimum time step", {real("time step")}},
    HostCommand{"PMODELOUTPUTINTERVAL", "sets the output interval", {real("interval")}},
    HostCommand{"PMODELTYPE", "sets the kind of model", {integer("model type")}},
    HostCommand{"PNBFP", "sets the breakpoint count of a boundary", {system, boundary, breakpoint_count}},
    HostCommand{"PNBRKQ", "sets the breakpoint count of a flow function", {flow_field, function, breakpoint_count}},
    HostCommand{"PNBRKTF", "sets the breakpoint count of a time function", {time_function, series, breakpoint_count}},
    HostCommand{"PNBWK", "sets the breakpoint count of a load", {system, segment, breakpoint_count}},
    HostCommand{"PNEGSLN", "sets the negative-solution option", {integer("option")}},
    HostCommand{"PNFIELD", "sets the number of flow fields", {integer("field count")}},
    HostCommand{"PNINQ", "sets the number of functions of a flow field", {flow_field, integer("function count")}},
    HostCommand{"PNOBC", "sets the number of boundaries of a system", {system, integer("boundary count")}},
    HostCommand{"PNOBRKS", "sets the breakpoint count of an exchange function", {exchange_field, function, breakpoint_count}},
    HostCommand{"PNOQFUNC", "sets a breakpoint of a flow function", {flow_field, function, breakpoint, real("first value"), real("second value")}},
    HostCommand{"PNOQS", "sets the pair count of a flow function", {flow_field, function, integer("pair count")}},
    HostCommand{"PNORFUNC", "sets a breakpoint of an exchange function", {exchange_field, function, breakpoint, value, time}},
    HostCommand{"PNORS", "sets the pair count of an exchange function", {exchange_field, function, integer("pair count")}},
    HostCommand{"PNPSFILE", "sets the non-point-source file", {field(512, "file name")}},
    HostCommand{"PNRFLD", "sets the number of exchange fields", {integer("field count")}},
    HostCommand{"PNTEX", "sets the number of functions of an exchange field", {exchange_field, integer("function count")}},
    HostCommand{"PNUMSEG", "sets the number of segments", {integer("segment count")}},
    HostCommand{"PNUMSYS", "sets the number of systems", {integer("system count")}},
    HostCommand{"PPARAMSREFRESH", "tells that the segment parameters are complete", {}},
    HostCommand{"PPROGRESS", "moves the progress indicator", {integer("per cent")}},
    HostCommand{"PSCALB", "sets the scale factor of a system's boundaries", {system, factor}},
    HostCommand{"PSCALEPARAMBYISC", "sets the scale factor of a segment parameter", {parameter, class_index, factor}},
    HostCommand{"PSCALEQ", "sets the scale factor of a flow field", {flow_field, factor}},
    HostCommand{"PSCALER", "sets the scale factor of an exchange field", {exchange_field, factor}},
    HostCommand{"PSCALV", "sets the scale factor of the volumes", {factor}},
    HostCommand{"PSCALW", "sets the scale factor of a system without loads", {system, factor}},
    HostCommand{"PSEEDDATE", "sets the start date", {month, day, year}},
    HostCommand{"PSEEDTIME", "sets the start time", {hour, minute, second}},
    HostCommand{"PSEGLENGTH", "sets the length of a segment", {segment, real("length")}},
    HostCommand{"PSEGMENTSREFRESH", "tells that the segments are complete", {}},
    HostCommand{"PSEGMINDEPTH", "sets the minimum depth of a segment", {segment, real("depth")}},
    HostCommand{"PSEGNAME", "names a segment", {segment, field(40, "name")}},
    HostCommand{"PSEGROUGH", "sets the roughness of a segment", {segment, real("roughness")}},
    HostCommand{"PSEGSLOPE", "sets the slope of a segment", {segment, real("slope")}},
    HostCommand{"PSEGTYPE", "sets the type of a segment", {segment, integer("type")}},
    HostCommand{"PSEGWIDTH", "sets the width of a segment", {segment, real("width")}},
    HostCommand{"PSIDESLOPE", "sets the side slope of a segment", {segment, real("slope")}},
    HostCommand{"PSOLUTIONTYPE", "sets the solution type", {integer("type")}},
    HostCommand{"PSYSNAME", "names a system", {system, terminated_field(31, "long name"), terminated_field(6, "short name")}},
    HostCommand{"PSYSTEMSREFRESH", "tells that the systems are complete", {}},
    HostCommand{"PTFSREFRESH", "tells that the time functions are complete", {}},
    HostCommand{"PVEXP", "sets the velocity exponent of a segment", {segment, real("exponent")}},
    HostCommand{"PVMULT", "sets the velocity multiplier of a segment", {segment, real("multiplier")}},
    HostCommand{"PVOLUME", "sets the volume of a segment", {segment, real("volume")}},
    HostCommand{"PWEIRHEIGHT", "sets the weir height of a segment", {segment, real("height")}},
    HostCommand{"PXAREA", "sets the interfacial area of an exchange pair", {exchange_field, function, pair, real("area")}},
};
// clang-format on

} // namespace host_command_table

using host_command_table::host_commands;

/// The command of a keyword (without its NUL), or null when there is none.
[[nodiscard]] constexpr const HostCommand *find_host_command(std::string_view keyword) {
    std::size_t first = 0;
    std::size_t last = host_commands.size();
    while (first < last) {
        const std::size_t middle = first + (last - first) / 2;
        if (host_commands[middle].keyword < keyword)
            first = middle + 1;
        else
            last = middle;
    }
    if (first < host_commands.size() && host_commands[first].keyword == keyword)
        return &host_commands[first];
    return nullptr;
}

} // namespace kova_import

#include "host/handlers.h"

#include "host/actions.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace kova_host {

using kova_import::host_commands;
using kova_import::send_buffer_size;

namespace {

void assign(std::int32_t &member, const ReceivedCommand &command, std::size_t index) {
    member = command.integer(index);
}

void assign(float &member, const ReceivedCommand &command, std::size_t index) {
    member = command.real(index);
}

void assign(std::string &member, const ReceivedCommand &command, std::size_t index) {
    member = field_text(command.text(index));
}

/// How many numbers, the first arguments of a command, tell which record it means.
template <class Record, class... Numbers>
constexpr std::size_t number_count(Record *(ModelStore::*)(Numbers...)) {
    return sizeof...(Numbers);
}

template <auto find>
auto *record_of(HostState &host, const ReceivedCommand &command) {
    return [&]<std::size_t... index>(std::index_sequence<index...>) {
        return (host.received.store.*find)(command.integer(index)...);
    }
    (std::make_index_sequence<number_count(find)>());
}

/// Sets members of a record, or the record itself, to the arguments behind its numbers.
template <auto find, auto... members>
void set(HostState &host, const ReceivedCommand &command) {
    auto *record = record_of<find>(host, command);
    if (record == nullptr)
        return;
    std::size_t index = number_count(find);
    if constexpr (sizeof...(members) == 0)
        assign(*record, command, index);
    else
        (assign(record->*members, command, index++), ...);
}

/// Makes a record without saying more of it.
template <auto find>
void add(HostState &host, const ReceivedCommand &command) {
    record_of<find>(host, command);
}

/// Sets the count of a list; what the list holds behind it goes.
template <auto find, auto count, auto list>
void announce(HostState &host, const ReceivedCommand &command) {
    auto *record = record_of<find>(host, command);
    if (record == nullptr)
        return;
    record->*count = command.integer(number_count(find));
    const auto size = static_cast<std::size_t>(std::max(record->*count, 0));
    if (size < (record->*list).size())
        (record->*list).resize(size);
}

/// Sets the breakpoint count of a series that will come in the send buffers.
template <auto find, auto count>
void announce_series(HostState &host, const ReceivedCommand &command) {
    host.received.announced = command.integer(number_count(find));
    set<find, count>(host, command);
}

/// Sets the breakpoint count of a load; a load that was announced before is replaced by this one.
void announce_load(HostState &host, const ReceivedCommand &command) {
    announce_series<&ModelStore::load, &Load::breakpoint_count>(host, command);
    if (Load *load = record_of<&ModelStore::load>(host, command))
        ++load->times_announced;
}

/// Sets the breakpoint count of a series. What comes after the constants are constants that the
/// model has as time functions.
void announce_time_function(HostState &host, const ReceivedCommand &command) {
    ModelStore &store = host.received.store;
    announce<&ModelStore::time_function_series, &TimeFunctionSeries::breakpoint_count,
             &TimeFunctionSeries::breakpoints>(host, command);
    store.time_function(command.integer(0))->follows_constants = store.refreshes()->constants > 0;
}

/// Sets what the initial conditions say of a system as a whole.
template <auto member>
void set_initial_setting(HostState &host, const ReceivedCommand &command) {
    set<&ModelStore::system, member>(host, command);
    if (System *system = record_of<&ModelStore::system>(host, command))
        system->has_initial_settings = true;
}

/// Sets a factor that only a system without loads has.
template <auto member>
void set_no_load_factor(HostState &host, const ReceivedCommand &command) {
    set<&ModelStore::system, member>(host, command);
    if (System *system = record_of<&ModelStore::system>(host, command))
        system->has_no_load_factors = true;
}

/// Takes the entries of the send buffers that were announced for this record, whatever was
/// announced for others since: values first, then times.
template <auto find, auto count, auto series>
void take_series(HostState &host, const ReceivedCommand &command) {
    auto *record = record_of<find>(host, command);
    if (record == nullptr)
        return;
    const auto *values = static_cast<const char *>(command.arguments[number_count(find)]);
    const auto *times = static_cast<const char *>(command.arguments[number_count(find) + 1]);
    const auto most = static_cast<std::int32_t>(send_buffer_size);
    const auto size = static_cast<std::size_t>(std::clamp(record->*count, 0, most));
    (record->*series).resize(size);
    for (std::size_t row = 0; row < size; ++row) {
        Breakpoint &breakpoint = (record->*series)[row];
        std::memcpy(&breakpoint.value, values + row * sizeof(float), sizeof(float));
        std::memcpy(&breakpoint.time, times + row * sizeof(float), sizeof(float));
    }
}

template <auto member>
void count_refresh(HostState &host, const ReceivedCommand &) {
    ++(host.received.store.refreshes()->*member);
}

struct Row {
    std::string_view keyword;
    Handler handler;
};

using Store = ModelStore;
using Settings = ModelSettings;
using Refreshes = RefreshCounts;

// clang-format off
/// In the order of the table of commands.
constexpr std::array rows = {
    Row{"GFILENAME", give_file_name},
    Row{"GSPRINTFI", format_integer_field},
    Row{"GSPRINTFR", format_real_field},
    Row{"GWEIRTYPE", set<&Store::segment, &Segment::weir_type>},
    Row{"PADDCONST", add<&Store::constant>},
    Row{"PADDPARAM", add<&Store::segment_parameter>},
    Row{"PALLBOUNDFUNC", take_series<&Store::boundary, &Boundary::breakpoint_count, &Boundary::series>},
    Row{"PALLLOADFUNC", take_series<&Store::load, &Load::breakpoint_count, &Load::series>},
    Row{"PBEDDT", set<&Store::settings, &Settings::bed_volume_time_step>},
    Row{"PBEDOPT", set<&Store::settings, &Settings::bed_volume_option>},
    Row{"PBOTSEG", set<&Store::segment, &Segment::bottom_segment>},
    Row{"PBOTTOMELEVATION", set<&Store::segment, &Segment::bottom_elevation>},
    Row{"PBQ", set<&Store::flow_pair, &FlowPair::routing_fraction>},
    Row{"PBRKTF", set<&Store::time_function_breakpoint, &Breakpoint::time, &Breakpoint::value>},
    Row{"PCLEARINFO", clear_pane},
    Row{"PCMAX", set_initial_setting<&System::maximum_concentration>},
    Row{"PCONSTANTSREFRESH", count_refresh<&Refreshes::constants>},
    Row{"PCONSTISUSED", set<&Store::constant, &Constant::used>},
    Row{"PCONSTPARAM", set<&Store::segment_parameter_value>},
    Row{"PCONSTVALUEBYISC", set<&Store::constant, &Constant::value>},
    Row{"PCONVB", set<&Store::system, &System::load_conversion_factor>},
    Row{"PCONVQ", set<&Store::flow_field, &FlowField::conversion_factor>},
    Row{"PCONVR", set<&Store::exchange_field, &ExchangeField::conversion_factor>},
    Row{"PCONVV", set<&Store::settings, &Settings::volume_conversion_factor>},
    Row{"PCONVW", set_no_load_factor<&System::no_load_conversion_factor>},
    Row{"PDENSITY", set_initial_setting<&System::density>},
    Row{"PDEXP", set<&Store::segment, &Segment::depth_exponent>},
    Row{"PDIALOG", ask_dialog},
    Row{"PDMULT", set<&Store::segment, &Segment::depth_multiplier>},
    Row{"PENDJULIAN", set<&Store::settings, &Settings::simulation_length>},
    Row{"PEXCHANGEFUNCDESC", set<&Store::exchange_function, &ExchangeFunction::description>},
    Row{"PEXCHANGESREFRESH", count_refresh<&Refreshes::exchanges>},
    Row{"PFDISS", set<&Store::initial_condition, &InitialCondition::dissolved_fraction>},
    Row{"PFILENAME", set<&Store::settings, &Settings::file_name>},
    Row{"PFLOWFUNCDESC", set<&Store::flow_function, &FlowFunction::description>},
    Row{"PFLOWSREFRESH", count_refresh<&Refreshes::flows>},
    Row{"PFLOWTYPE", set<&Store::segment, &Segment::flow_option>},
    Row{"PFRACMAXTS", set<&Store::settings, &Settings::maximum_time_step_fraction>},
    Row{"PHYDROFILE", set<&Store::settings, &Settings::hydrodynamic_file>},
    Row{"PHYDSKIPDATE", set<&Store::skip_date, &Date::month, &Date::day, &Date::year>},
    Row{"PHYDSKIPTIME", set<&Store::skip_time, &TimeOfDay::hour, &TimeOfDay::minute, &TimeOfDay::second>},
    Row{"PIBC", set<&Store::boundary, &Boundary::segment>},
    Row{"PICRD", set<&Store::settings, &Settings::icrd_option>},
    Row{"PIFIELD", set_initial_setting<&System::flow_field>},
    Row{"PINFOHTML", append_to_pane},
    Row{"PINITC", set<&Store::initial_condition, &InitialCondition::concentration>},
    Row{"PINITIALDEPTH", set<&Store::segment, &Segment::initial_depth>},
    Row{"PINITIALSURFACEELEVATION", set<&Store::segment, &Segment::initial_surface_elevation>},
    Row{"PINTYP", set<&Store::settings, &Settings::intyp_option>},
    Row{"PIQ", set<&Store::flow_pair, &FlowPair::second_segment>},
    Row{"PIQOPT", set<&Store::segment, &Segment::hydraulic_option>},
    Row{"PIRSEG", set<&Store::exchange_pair, &ExchangePair::second_segment>},
    Row{"PJQ", set<&Store::flow_pair, &FlowPair::first_segment>},
    Row{"PJRSEG", set<&Store::exchange_pair, &ExchangePair::first_segment>},
    Row{"PLENGTH", set<&Store::exchange_pair, &ExchangePair::mixing_length>},
    Row{"PLOPT", set<&Store::settings, &Settings::load_option>},
    Row{"PMAXDT", set<&Store::settings, &Settings::maximum_time_step>},
    Row{"PMINDT", set<&Store::settings, &Settings::minimum_time_step>},
    Row{"PMODELOUTPUTINTERVAL", set<&Store::settings, &Settings::output_interval>},
    Row{"PMODELTYPE", set<&Store::settings, &Settings::model_type>},
    Row{"PNBFP", announce_series<&Store::boundary, &Boundary::breakpoint_count>},
    Row{"PNBRKQ", announce<&Store::flow_function, &FlowFunction::breakpoint_count, &FlowFunction::breakpoints>},
    Row{"PNBRKTF", announce_time_function},
    Row{"PNBWK", announce_load},
    Row{"PNEGSLN", set<&Store::settings, &Settings::negative_solution_option>},
    Row{"PNFIELD", announce<&Store::whole, &Model::flow_field_count, &Model::flow_fields>},
    Row{"PNINQ", announce<&Store::flow_field, &FlowField::function_count, &FlowField::functions>},
    Row{"PNOBC", announce<&Store::system, &System::boundary_count, &System::boundaries>},
    Row{"PNOBRKS", announce<&Store::exchange_function, &ExchangeFunction::breakpoint_count, &ExchangeFunction::breakpoints>},
    Row{"PNOQFUNC", set<&Store::flow_breakpoint, &FlowBreakpoint::first_value, &FlowBreakpoint::second_value>},
    Row{"PNOQS", announce<&Store::flow_function, &FlowFunction::pair_count, &FlowFunction::pairs>},
    Row{"PNORFUNC", set<&Store::exchange_breakpoint, &Breakpoint::value, &Breakpoint::time>},
    Row{"PNORS", announce<&Store::exchange_function, &ExchangeFunction::pair_count, &ExchangeFunction::pairs>},
    Row{"PNPSFILE", set<&Store::settings, &Settings::non_point_source_file>},
    Row{"PNRFLD", announce<&Store::whole, &Model::exchange_field_count, &Model::exchange_fields>},
    Row{"PNTEX", announce<&Store::exchange_field, &ExchangeField::function_count, &ExchangeField::functions>},
    Row{"PNUMSEG", announce<&Store::whole, &Model::segment_count, &Model::segments>},
    Row{"PNUMSYS", announce<&Store::whole, &Model::system_count, &Model::systems>},
    Row{"PPARAMSREFRESH", count_refresh<&Refreshes::segment_parameters>},
    Row{"PPROGRESS", move_progress},
    Row{"PSCALB", set<&Store::system, &System::boundary_scale_factor>},
    Row{"PSCALEPARAMBYISC", set<&Store::segment_parameter, &SegmentParameter::scale_factor>},
    Row{"PSCALEQ", set<&Store::flow_field, &FlowField::scale_factor>},
    Row{"PSCALER", set<&Store::exchange_field, &ExchangeField::scale_factor>},
    Row{"PSCALV", set<&Store::settings, &Settings::volume_scale_factor>},
    Row{"PSCALW", set_no_load_factor<&System::no_load_scale_factor>},
    Row{"PSEEDDATE", set<&Store::start_date, &Date::month, &Date::day, &Date::year>},
    Row{"PSEEDTIME", set<&Store::start_time, &TimeOfDay::hour, &TimeOfDay::minute, &TimeOfDay::second>},
    Row{"PSEGLENGTH", set<&Store::segment, &Segment::length>},
    Row{"PSEGMENTSREFRESH", count_refresh<&Refreshes::segments>},
    Row{"PSEGMINDEPTH", set<&Store::segment, &Segment::minimum_depth>},
    Row{"PSEGNAME", set<&Store::segment, &Segment::name>},
    Row{"PSEGROUGH", set<&Store::segment, &Segment::roughness>},
    Row{"PSEGSLOPE", set<&Store::segment, &Segment::slope>},
    Row{"PSEGTYPE", set<&Store::segment, &Segment::type>},
    Row{"PSEGWIDTH", set<&Store::segment, &Segment::width>},
    Row{"PSIDESLOPE", set<&Store::segment, &Segment::side_slope>},
    Row{"PSOLUTIONTYPE", set<&Store::settings, &Settings::solution_type>},
    Row{"PSYSNAME", set<&Store::system, &System::long_name, &System::short_name>},
    Row{"PSYSTEMSREFRESH", count_refresh<&Refreshes::systems>},
    Row{"PTFSREFRESH", count_refresh<&Refreshes::time_functions>},
    Row{"PVEXP", set<&Store::segment, &Segment::velocity_exponent>},
    Row{"PVMULT", set<&Store::segment, &Segment::velocity_multiplier>},
    Row{"PVOLUME", set<&Store::segment, &Segment::volume>},
    Row{"PWEIRHEIGHT", set<&Store::segment, &Segment::weir_height>},
    Row{"PXAREA", set<&Store::exchange_pair, &ExchangePair::interfacial_area>},
};
// clang-format on

constexpr bool rows_match_the_commands() {
    if (rows.size() != host_commands.size())
        return false;
    for (std::size_t index = 0; index < rows.size(); ++index)
        if (rows[index].keyword != host_commands[index].keyword || rows[index].handler == nullptr)
            return false;
    return true;
}

static_assert(rows_match_the_commands(), "every command has a handler, in the same order");

} // namespace

Handler handler_of(const kova_import::HostCommand &command) {
    return rows[static_cast<std::size_t>(&command - host_commands.data())].handler;
}

} // namespace kova_host

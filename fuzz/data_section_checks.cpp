#include "fuzz/section_checks.h"

#include "fuzz/fuzz_support.h"
#include "fuzz/section_walk.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace kova_fuzz {

namespace {

constexpr std::int32_t eutrophication = 11;
constexpr std::int32_t one = std::bit_cast<std::int32_t>(1.0F);

constexpr std::int32_t red_start_length =
    length_of("<li><span style=\"font-weight: bold; color: Red;\">");
constexpr std::int32_t cell_length = 133;

bool is_at_fragment(const Walk &walk, std::int32_t length) {
    return walk.is_at("PINFOHTML") && walk.next()->bits[0] == length;
}

// Time functions

constexpr std::int32_t solar_radiation = 4;
constexpr std::int32_t air_temperature = 17;
constexpr std::int32_t most_records = 50;

bool is_time_function(std::int32_t number) {
    constexpr std::array<std::int32_t, 16> known = {1,  2,  3,  4,  8,  9,  10, 11,
                                                    12, 14, 15, 16, 17, 21, 22, 33};
    return std::find(known.begin(), known.end(), number) != known.end();
}

/// The series of a legacy number: what stands for it is the same wherever it comes up.
struct Series {
    std::vector<std::int32_t> bits;

    bool operator==(const Series &) const = default;
};

/// What the messages and series of a time-function section tell of its records.
struct TimeFunctionRecords {
    std::int32_t count = 0; ///< records of functions and messages that are certain
    std::int32_t converted = 0;
    std::int32_t messages_of_conversion = 0;
    std::map<std::int32_t, Series> by_number; ///< series 2 and 3 under their negative number
    std::set<std::int32_t> sent;
};

void take_messages(Walk &walk, TimeFunctionRecords &records) {
    while (is_at_fragment(walk, red_start_length)) {
        take_fragment(walk, red_start_length);
        const std::int32_t start = take_fragment(walk, cell_length).bits[1];
        const bool is_conversion = start == first_bytes("Solar");
        require(is_conversion || start == first_bytes("Water") || start == first_bytes("Time ") ||
                    start == first_bytes("Ice C"),
                "a red message is one of those that there are");
        is_conversion ? ++records.messages_of_conversion : ++records.count;
    }
}

void take_table_head(Walk &walk) {
    for_each(11, [&](std::int32_t) { walk.take("PINFOHTML"); });
}

void take_table_row(Walk &walk, std::int32_t number, std::int32_t breakpoint_count, float average) {
    constexpr std::int32_t name_length = 31;
    walk.take("PINFOHTML");
    take_fragment(walk, name_length);
    for (const std::int32_t value : {number, breakpoint_count}) {
        walk.take("PINFOHTML");
        require(walk.take("GSPRINTFI").integer(2) == value, "a row shows what was sent");
        take_fragment(walk, cell_length);
    }
    walk.take("PINFOHTML");
    const float shown = walk.take("GSPRINTFR").real(2);
    require(shown == average || (std::isnan(shown) && std::isnan(average)),
            "the average is that of the values sent");
    take_fragment(walk, cell_length);
    walk.take("PINFOHTML");
}

Series take_series(Walk &walk, std::int32_t number, std::int32_t place, bool has_tables) {
    Series series;
    const std::int32_t count = walk.take("PNBRKTF", {number, place}).integer(2);
    series.bits.push_back(count);
    float sum = 0;
    for_each(count, [&](std::int32_t row) {
        const Sent &sent = walk.take("PBRKTF", {number, place, row});
        require_number(sent.real(3));
        require_number(sent.real(4));
        sum += sent.real(4);
        series.bits.insert(series.bits.end(), {sent.bits[3], sent.bits[4]});
    });
    if (has_tables)
        take_table_row(walk, number, count, sum / static_cast<float>(count));
    return series;
}

void add(TimeFunctionRecords &records, std::int32_t legacy, const Series &series) {
    const auto [known, is_new] = records.by_number.try_emplace(legacy, series);
    require(is_new || known->second == series, "all records of a number have the same breakpoints");
}

void take_time_function(Walk &walk, TimeFunctionRecords &records, bool has_tables) {
    const std::int32_t number = walk.next()->integer(0);
    require(is_time_function(number), "the current model has the time function");
    ++records.count;
    records.converted += number == solar_radiation ? 1 : 0;
    records.sent.insert(number);
    add(records, number, take_series(walk, number, 1, has_tables));
    const auto follows = [&](std::int32_t place) {
        return walk.is_at("PNBRKTF", number) && walk.next()->integer(1) == place;
    };
    if (!follows(2))
        return;
    const Series second = take_series(walk, number, 2, has_tables);
    if (follows(3)) {
        // The second of three may be one that no record gives.
        add(records, -3, take_series(walk, number, 3, has_tables));
        if (second.bits == std::vector<std::int32_t>{0})
            return;
    }
    add(records, -2, second);
}

std::int64_t statements_of(const TimeFunctionRecords &records) {
    std::int64_t statements = 1 + 3 * std::int64_t{records.count};
    for (const auto &[number, series] : records.by_number)
        statements += at_least_none(series.bits.front());
    for (const std::int32_t other : {-2, -3})
        statements += records.by_number.contains(other) ? 3 : 0;
    return statements;
}

void check_time_functions(Walk &walk, std::int64_t moved, bool has_tables) {
    TimeFunctionRecords records;
    if (!is_transport_only()) {
        take_messages(walk, records);
        if (has_tables)
            take_table_head(walk);
        else
            take_blue_line(walk, "Importing Time Function Information</span></li>");
        while (walk.is_at("PNBRKTF"))
            take_time_function(walk, records, has_tables);
        if (has_tables)
            walk.take("PINFOHTML");
    }
    walk.take("PTFSREFRESH");
    require(records.count <= most_records, "there are no more functions than records");
    require(IMPORT_EXPORT.model_type == eutrophication ||
                records.count + records.messages_of_conversion == 0,
            "only functions of eutrophication models come across");
    require(records.converted == records.messages_of_conversion,
            "solar radiation comes across with its message");
    require(IMPORT_EXPORT.tf5_present == (records.sent.contains(solar_radiation) ? 1 : 0) &&
                IMPORT_EXPORT.tf10_present == (records.sent.contains(air_temperature) ? 1 : 0),
            "the flags tell which functions were sent");
    require(moved >= statements_of(records), "every series has its records");
}

// Segment parameters

/// A parameter number and its class.
using Parameter = std::pair<std::int32_t, std::int32_t>;

constexpr Parameter air_multiplier{2, 1};
constexpr Parameter air_function{3, 1};
constexpr Parameter solar_multiplier{4, 1};
constexpr Parameter solar_function{5, 1};

bool is_one(const Parameter &parameter) {
    return parameter == air_multiplier || parameter == air_function || parameter == solar_function;
}

void check_class(const Parameter &parameter) {
    constexpr std::int32_t last_parameter = 42;
    constexpr std::int32_t solids_settling = 19;
    constexpr std::int32_t phytoplankton_settling = 20;
    const auto [number, class_index] = parameter;
    std::int32_t most = 1;
    if (number == solids_settling)
        most = IMPORT_EXPORT.solids_count;
    else if (number == phytoplankton_settling)
        most = IMPORT_EXPORT.phytoplankton_count;
    require(number >= 1 && number <= last_parameter && class_index >= 1 && class_index <= most,
            "the host simulates the class of a parameter");
}

std::vector<Parameter> take_parameters(Walk &walk) {
    std::vector<Parameter> entries;
    while (walk.is_at("PADDPARAM")) {
        const Sent &sent = walk.take("PADDPARAM");
        const Parameter parameter{sent.integer(0), sent.integer(1)};
        check_class(parameter);
        const Sent &scale = walk.take("PSCALEPARAMBYISC", {parameter.first, parameter.second});
        require_number(scale.real(2));
        require(!is_one(parameter) || scale.bits[2] == one, "what is always 1 is not scaled");
        require((parameter == solar_function) ==
                    (!entries.empty() && entries.back() == solar_multiplier),
                "the function of solar radiation follows its multiplier");
        entries.push_back(parameter);
    }
    require(entries.empty() || entries.back() != solar_multiplier,
            "the multiplier of solar radiation has its function");
    return entries;
}

void check_air_temperature(const std::vector<Parameter> &entries) {
    const bool is_there = IMPORT_EXPORT.tf10_present != 0;
    const std::ptrdiff_t expected = is_there ? 1 : 0;
    require(std::count(entries.begin(), entries.end(), air_multiplier) == expected &&
                std::count(entries.begin(), entries.end(), air_function) == expected,
            "air temperature comes across when the file gives it, once");
    require(!is_there || (entries.size() >= 2 && entries.back() == air_function &&
                          *(entries.end() - 2) == air_multiplier),
            "air temperature comes last");
}

void take_parameter_values(Walk &walk, const std::vector<Parameter> &entries,
                           std::int32_t segment_count) {
    std::map<Parameter, std::vector<std::int32_t>> known;
    for (const Parameter &entry : entries) {
        std::vector<std::int32_t> values;
        for_each(segment_count, [&](std::int32_t segment) {
            const Sent &sent = walk.take("PCONSTPARAM", {segment, entry.first, entry.second});
            require_number(sent.real(3));
            require(!is_one(entry) || sent.bits[3] == one, "what is always 1 is 1 everywhere");
            values.push_back(sent.bits[3]);
        });
        const auto [before, is_new] = known.try_emplace(entry, values);
        require(is_new || before->second == values, "a parameter has the same values every time");
    }
}

/// Returns how many places of the list are certain.
std::int64_t take_segment_parameters(Walk &walk, std::int32_t segment_count) {
    constexpr std::string_view second_temperature =
        "There is only 1 Water Temperature Time Function in KOVA8</span></li>";
    std::int64_t places = 0;
    bool has_entries = false;
    while (walk.is_at("PINFOHTML") && !has_entries) {
        take_fragment(walk, blue_start_length);
        has_entries =
            walk.is_at("PINFOHTML") && walk.next()->bits[1] != first_bytes(second_temperature);
        if (has_entries)
            walk.take("PINFOHTML");
        else
            take_fragment(walk, length_of(second_temperature));
        places += has_entries ? 0 : 1;
    }
    std::vector<Parameter> entries;
    if (has_entries) {
        entries = take_parameters(walk);
        require(!entries.empty(), "parameters are announced when there are some");
        walk.take("PPARAMSREFRESH");
        take_parameter_values(walk, entries, segment_count);
    }
    walk.take("PPARAMSREFRESH");
    check_air_temperature(entries);
    places += std::count_if(entries.begin(), entries.end(),
                            [](const Parameter &parameter) { return !is_one(parameter); });
    require(IMPORT_EXPORT.model_type == eutrophication || places == 0,
            "only parameters of eutrophication models come across");
    return places;
}

void check_segment_parameters(Walk &walk, std::int64_t moved, std::int32_t segment_count) {
    const std::int64_t places =
        is_transport_only() ? 0 : take_segment_parameters(walk, segment_count);
    // Two counts; then a record for each place of the list, and for each segment one for itself and
    // one for each place.
    if (moved == 2) {
        require(places == 0, "parameters have records");
        return;
    }
    const std::int64_t segments = at_least_none(segment_count);
    const std::int64_t for_places = moved - 2 - segments;
    require(for_places % (segments + 1) == 0 &&
                for_places / (segments + 1) >= std::max<std::int64_t>(places, 1),
            "every segment has a value record for each place of the list");
}

// Constants

/// A constant number and its column.
using Column = std::pair<std::int32_t, std::int32_t>;

void check_column(const Column &column) {
    const auto [number, place] = column;
    std::int32_t most = 1;
    if (number >= 34 && number <= 36)
        most = IMPORT_EXPORT.solids_count;
    else if ((number >= 47 && number <= 51) || number == 100)
        most = IMPORT_EXPORT.cbod_count;
    else if (number >= 64 && number <= 88)
        most = IMPORT_EXPORT.phytoplankton_count;
    constexpr std::int32_t last_constant = 255;
    require(number >= 1 && number <= last_constant && place >= 1 && place <= most,
            "the host simulates the column of a constant");
}

std::vector<Column> take_columns(Walk &walk) {
    std::vector<Column> columns;
    while (walk.is_at("PADDCONST")) {
        const Sent &sent = walk.take("PADDCONST");
        const Column column{sent.integer(0), sent.integer(1)};
        check_column(column);
        const Column before{column.first, column.second - 1};
        require(column.second == 1 || (!columns.empty() && columns.back() == before),
                "the columns of a constant come one after the other");
        columns.push_back(column);
    }
    return columns;
}

// A constant that stands on the list more than once has the same columns every time.
void check_column_counts(const std::vector<Column> &columns) {
    std::map<std::int32_t, std::int32_t> counts;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const bool is_last = i + 1 == columns.size() || columns[i + 1].second == 1;
        if (!is_last)
            continue;
        const auto [before, is_new] = counts.insert(columns[i]);
        require(is_new || before->second == columns[i].second,
                "a constant has the same columns every time");
    }
}

void take_column_values(Walk &walk, const std::vector<Column> &columns) {
    std::map<Column, std::int32_t> values;
    for (const Column &column : columns) {
        const Sent &sent = walk.take("PCONSTVALUEBYISC", {column.first, column.second});
        require_number(sent.real(2));
        const auto [before, is_new] = values.insert({column, sent.bits[2]});
        require(is_new || before->second == sent.bits[2],
                "a constant has the same value every time");
        walk.take("PCONSTISUSED", {column.first, column.second, 1});
    }
}

/// Returns the number of series.
std::int64_t take_constant_series(Walk &walk, std::int32_t simulation_length) {
    constexpr std::int32_t first_number = 37;
    constexpr std::int32_t last_number = 42;
    constexpr std::int32_t zero = 0; // the bits of 0.0
    std::int64_t series = 0;
    while (walk.is_at("PNBRKTF")) {
        const std::int32_t number = walk.take("PNBRKTF").integer(0);
        require(number >= first_number && number <= last_number,
                "the series is one of those that were constants");
        const Sent &start = walk.take("PBRKTF", {number, 1, 1, zero});
        require_number(start.real(4));
        walk.take("PBRKTF", {number, 1, 2, simulation_length, start.bits[4]});
        ++series;
    }
    if (series > 0)
        walk.take("PTFSREFRESH");
    return series;
}

void check_constants(Walk &walk, std::int64_t moved, const Stage &opening) {
    std::int64_t statements = 1;
    if (!is_transport_only()) {
        take_blue_line(walk, "Importing Kinetic Constants</span></li>");
        const std::vector<Column> columns = take_columns(walk);
        check_column_counts(columns);
        walk.take("PCONSTANTSREFRESH");
        take_column_values(walk, columns);
        walk.take("PCONSTANTSREFRESH");
        const auto length =
            std::find_if(opening.commands.begin(), opening.commands.end(),
                         [](const Sent &sent) { return sent.keyword == "PENDJULIAN"; });
        require(length != opening.commands.end(), "the length of the simulation is known");
        statements += take_constant_series(walk, length->bits[0]);
        statements += std::count_if(columns.begin(), columns.end(),
                                    [](const Column &column) { return column.second == 1; });
    }
    require(moved >= statements, "every constant on the list has a record");
}

// Initial conditions

void take_initial_conditions(Walk &walk, std::int32_t system, bool is_in_file,
                             std::int32_t segment_count) {
    const auto take = [&](std::string_view keyword, std::size_t place,
                          std::initializer_list<std::int32_t> numbers) {
        const Sent &sent = walk.take(keyword, numbers);
        if (keyword != "PIFIELD")
            require_number(sent.real(place));
        require(is_in_file || sent.bits[place] == 0, "what the file does not have is 0");
    };
    take("PCMAX", 1, {system});
    take("PDENSITY", 1, {system});
    take("PIFIELD", 1, {system});
    for_each(segment_count, [&](std::int32_t segment) {
        take("PINITC", 2, {system, segment});
        take("PFDISS", 2, {system, segment});
    });
}

void check_initial_conditions(Walk &walk, std::int64_t moved) {
    take_blue_line(walk, "Importing Initial Conditions</span></li>");
    const std::int32_t system_count = IMPORT_EXPORT.system_count;
    const std::int32_t segment_count = IMPORT_EXPORT.segment_count;
    // A system of the host is none of those before it in the file.
    if (!is_transport_only())
        for_each(IMPORT_EXPORT.state_variable_count, [&](std::int32_t system) {
            take_initial_conditions(walk, system, system <= system_count, segment_count);
        });
    constexpr std::int64_t records_of_system = 5;
    require(moved == 2 + at_least_none(system_count) *
                             (records_of_system + at_least_none(segment_count)),
            "the line counter moves by one for every read statement");
}

} // namespace

void check_data_section(const Trace &trace, std::int32_t section, bool has_tables) {
    if (is_current_format()) {
        check_current_data_section(trace, section);
        return;
    }
    constexpr std::int32_t time_functions = 8;
    constexpr std::int32_t segment_parameters = 9;
    constexpr std::int32_t constants = 10;
    const Stage &stage = trace.section(section);
    const Stage &next = trace.section(section + 1);
    const std::int64_t moved = std::int64_t{next.line_counter} - stage.line_counter;
    Walk walk(stage);
    if (section == time_functions)
        check_time_functions(walk, moved, has_tables);
    else if (section == segment_parameters)
        check_segment_parameters(walk, moved, next.segment_count);
    else if (section == constants)
        check_constants(walk, moved, trace.section(1));
    else
        check_initial_conditions(walk, moved);
    walk.end();
}

} // namespace kova_fuzz

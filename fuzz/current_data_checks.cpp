#include "fuzz/section_checks.h"

#include "fuzz/fuzz_support.h"
#include "fuzz/section_walk.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace kova_fuzz {

namespace {

/// A parameter or constant as the host knows it: its number, and its class or column. Nothing is
/// translated, so that any number may come.
using Identity = std::pair<std::int32_t, std::int32_t>;

constexpr const char *one_for_each_statement =
    "the line counter moves by one for every read statement";

void check_time_functions(Walk &walk, std::int64_t moved) {
    constexpr std::int32_t series = 1;
    std::int64_t statements = 2;
    while (walk.is_at("PNBRKTF")) {
        const Sent &function = walk.take("PNBRKTF");
        const std::int32_t number = function.integer(0);
        const std::int32_t count = function.integer(2);
        require(function.integer(1) == series, "every record is the first series of its function");
        for_each(count, [&](std::int32_t row) { walk.take("PBRKTF", {number, series, row}); });
        statements += 2 + at_least_none(count);
    }
    walk.take("PTFSREFRESH");
    require(!is_transport_only() || statements == 2, "time functions are no transport");
    require(is_transport_only() ? moved >= statements : moved == statements,
            one_for_each_statement);
    require(IMPORT_EXPORT.tf5_present == 0 && IMPORT_EXPORT.tf10_present == 0,
            "the flags of the legacy time functions stay clear");
}

/// Returns the length of the list.
std::int64_t take_segment_parameters(Walk &walk, std::int32_t segment_count) {
    std::vector<Identity> entries;
    if (walk.is_at("PINFOHTML")) {
        take_blue_line(walk, "Importing Segment Parameter Information</span></li>");
        while (walk.is_at("PADDPARAM")) {
            const Sent &sent = walk.take("PADDPARAM");
            entries.emplace_back(sent.integer(0), sent.integer(1));
            walk.take("PSCALEPARAMBYISC", {sent.integer(0), sent.integer(1)});
        }
        require(!entries.empty(), "parameters are announced when there are some");
        walk.take("PPARAMSREFRESH");
        for (const auto &[number, class_index] : entries)
            for_each(segment_count,
                     [&, number = number, class_index = class_index](std::int32_t segment) {
                         walk.take("PCONSTPARAM", {segment, number, class_index});
                     });
    }
    walk.take("PPARAMSREFRESH");
    return static_cast<std::int64_t>(entries.size());
}

void check_segment_parameters(Walk &walk, std::int64_t moved, std::int32_t segment_count) {
    // Two headings and two counts. A list has its records and another heading, and each segment one
    // record for itself and one for each place of the list.
    constexpr std::int64_t always = 4;
    const std::int64_t blocks = at_least_none(segment_count) + 1;
    if (is_transport_only()) {
        require(moved == always || ((moved - always) % blocks == 0 && moved - always > blocks),
                "every segment has a value record for each place of the list");
        return;
    }
    const std::int64_t places = take_segment_parameters(walk, segment_count);
    require(moved == always + (places == 0 ? 0 : (places + 1) * blocks), one_for_each_statement);
}

void check_constants(Walk &walk, std::int64_t moved) {
    constexpr std::int64_t always = 2;
    if (is_transport_only()) {
        require(moved >= always, one_for_each_statement);
        return;
    }
    std::vector<Identity> columns;
    while (walk.is_at("PADDCONST")) {
        const Sent &sent = walk.take("PADDCONST");
        columns.emplace_back(sent.integer(0), sent.integer(1));
    }
    walk.take("PCONSTANTSREFRESH");
    for (const auto &[number, column] : columns) {
        walk.take("PCONSTVALUEBYISC", {number, column});
        walk.take("PCONSTISUSED", {number, column, 1});
    }
    walk.take("PCONSTANTSREFRESH");
    require(moved == always + static_cast<std::int64_t>(columns.size()), one_for_each_statement);
}

void check_initial_conditions(Walk &walk, std::int64_t moved) {
    constexpr std::int32_t zero = 0; // the bits of 0.0
    take_blue_line(walk, "Importing Initial Conditions</span></li>");
    const std::int32_t system_count = IMPORT_EXPORT.system_count;
    const std::int32_t segment_count = IMPORT_EXPORT.segment_count;
    if (!is_transport_only())
        for_each(system_count, [&](std::int32_t system) {
            walk.take("PCMAX", {system, zero});
            walk.take("PDENSITY", {system});
            walk.take("PIFIELD", {system});
            for_each(segment_count, [&](std::int32_t segment) {
                walk.take("PINITC", {system, segment});
                walk.take("PFDISS", {system, segment});
            });
        });
    constexpr std::int64_t records_of_system = 5;
    require(moved == 3 + at_least_none(system_count) *
                             (records_of_system + at_least_none(segment_count)),
            one_for_each_statement);
}

} // namespace

void check_current_data_section(const Trace &trace, std::int32_t section) {
    constexpr std::int32_t time_functions = 8;
    constexpr std::int32_t segment_parameters = 9;
    constexpr std::int32_t constants = 10;
    const Stage &stage = trace.section(section);
    const Stage &next = trace.section(section + 1);
    const std::int64_t moved = std::int64_t{next.line_counter} - stage.line_counter;
    Walk walk(stage);
    if (section == time_functions)
        check_time_functions(walk, moved);
    else if (section == segment_parameters)
        check_segment_parameters(walk, moved, next.segment_count);
    else if (section == constants)
        check_constants(walk, moved);
    else
        check_initial_conditions(walk, moved);
    walk.end();
}

} // namespace kova_fuzz

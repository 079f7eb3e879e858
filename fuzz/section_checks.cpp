#include "fuzz/section_checks.h"

#include "fuzz/fuzz_support.h"
#include "fuzz/section_walk.h"

namespace kova_fuzz {

namespace {

constexpr std::int32_t flow_paths = 3;
constexpr std::int32_t flow_series = 4;
constexpr std::int32_t exchanges = 5;
constexpr std::int32_t boundaries = 6;
constexpr std::int32_t loads = 7;

/// The hydraulic option of the first segment; 0 when there is none.
std::int32_t first_hydraulic_option(const Stage &segments) {
    for (const Sent &sent : segments.commands)
        if (sent.keyword == "PIQOPT")
            return sent.integer(1);
    return 0;
}

// Each of these gives the number of read statements that the commands tell of.

std::int64_t take_flow_paths(Walk &walk, const Stage &segments, std::int32_t segment_count) {
    constexpr std::int32_t hydrodynamic_linkage = 3;
    const bool is_current = is_current_format();
    std::int64_t statements = is_current ? 3 : 2;
    walk.take_report_line();
    std::int32_t flow_option = is_current ? first_hydraulic_option(segments) : 0;
    for_each(segment_count, [&](std::int32_t segment) {
        const std::int32_t option = walk.take("PFLOWTYPE", {segment}).integer(1);
        require((segment == 1 && !is_current) || option == flow_option,
                "all segments get one flow option, in the current format that of the first");
        flow_option = option;
    });
    const std::int32_t field_count = walk.take("PNFIELD").integer(0);
    for_each(field_count, [&](std::int32_t field) {
        // Without segments the flow option of a legacy file is not to be seen.
        const bool is_seen = is_current || segment_count > 0;
        const bool has_file = field == 1 && (is_seen ? flow_option == hydrodynamic_linkage
                                                     : walk.is_at("PHYDROFILE"));
        if (has_file)
            walk.take("PHYDROFILE");
        statements += has_file ? 3 : 2;
        for_each(walk.take("PNINQ", {field}).integer(1), [&](std::int32_t function) {
            const std::int32_t pair_count = walk.take("PNOQS", {field, function}).integer(2);
            walk.take("PFLOWFUNCDESC", {field, function});
            for_each(pair_count, [&](std::int32_t pair) {
                for (const char *const keyword : {"PJQ", "PIQ", "PBQ"})
                    walk.take(keyword, {field, function, pair});
            });
            statements += 2 + at_least_none(pair_count);
        });
    });
    return statements;
}

std::int64_t take_flow_series(Walk &walk) {
    std::int64_t statements = is_current_format() ? 2 : 1;
    walk.take_report_line();
    const std::int32_t field_count = walk.take("PNFIELD").integer(0);
    require(field_count == IMPORT_EXPORT.flow_field_count, "the flow-field counts agree");
    std::int32_t scale = 0;
    std::int32_t conversion = 0;
    bool any_factors = false;
    for_each(field_count, [&](std::int32_t field) {
        const std::int32_t function_count = walk.take("PNINQ", {field}).integer(1);
        statements += 2;
        if (function_count > 0) {
            const std::int32_t field_scale = walk.take("PSCALEQ", {field}).bits[1];
            const std::int32_t field_conversion = walk.take("PCONVQ", {field}).bits[1];
            require(!any_factors || (field_scale == scale && field_conversion == conversion),
                    "all flow fields get the factors of one");
            scale = field_scale;
            conversion = field_conversion;
            any_factors = true;
            ++statements;
        }
        for_each(function_count, [&](std::int32_t function) {
            const std::int32_t breakpoint_count = walk.take("PNBRKQ", {field, function}).integer(2);
            for_each(breakpoint_count, [&](std::int32_t place) {
                walk.take("PNOQFUNC", {field, function, place});
            });
            statements += 2 + at_least_none(breakpoint_count);
        });
    });
    walk.take("PFLOWSREFRESH");
    return statements;
}

std::int64_t take_exchange_function(Walk &walk, std::int32_t field, std::int32_t function) {
    walk.take("PEXCHANGEFUNCDESC", {field, function});
    const std::int32_t pair_count = walk.take("PNORS", {field, function}).integer(2);
    for_each(pair_count, [&](std::int32_t pair) {
        for (const char *const keyword : {"PJRSEG", "PIRSEG", "PXAREA", "PLENGTH"})
            walk.take(keyword, {field, function, pair});
    });
    const std::int32_t breakpoint_count = walk.take("PNOBRKS", {field, function}).integer(2);
    for_each(breakpoint_count, [&](std::int32_t place) {
        walk.take("PNORFUNC", {field, function, place});
    });
    return 3 + at_least_none(pair_count) + at_least_none(breakpoint_count);
}

std::int64_t take_exchanges(Walk &walk) {
    walk.take_report_line();
    const std::int32_t field_count = walk.take("PNRFLD").integer(0);
    std::int64_t statements = (is_current_format() ? 2 : 1) + 2 * at_least_none(field_count);
    std::int32_t scale = 0;
    std::int32_t conversion = 0;
    bool any_factors = false;
    for_each(field_count, [&](std::int32_t field) {
        if (!walk.is_at("PNTEX", field))
            return;
        const std::int32_t function_count = walk.take("PNTEX").integer(1);
        require(function_count > 0, "only fields with functions are told");
        const std::int32_t field_scale = walk.take("PSCALER", {field}).bits[1];
        const std::int32_t field_conversion = walk.take("PCONVR", {field}).bits[1];
        require(!any_factors || (field_scale == scale && field_conversion == conversion),
                "all exchange fields get the factors of one");
        scale = field_scale;
        conversion = field_conversion;
        any_factors = true;
        ++statements;
        for_each(function_count, [&](std::int32_t function) {
            statements += take_exchange_function(walk, field, function);
        });
    });
    walk.take("PEXCHANGESREFRESH");
    return statements;
}

/// As many systems as the host gets of a section that holds `system_count`.
std::int32_t sent_systems(std::int32_t system_count) {
    return is_current_format() ? system_count : IMPORT_EXPORT.state_variable_count;
}

std::int32_t percentage(std::int32_t done, std::int32_t total) {
    constexpr std::int32_t hundred = 100;
    return total == 0 ? 0 : done / total * hundred;
}

std::int64_t take_boundaries(Walk &walk, std::int32_t system_count) {
    const std::int32_t sent_count = sent_systems(system_count);
    std::int64_t statements = is_current_format() ? 2 : 1;
    walk.take("PPROGRESS", {0});
    for_each(system_count, [&](std::int32_t system) {
        walk.take("PPROGRESS", {percentage(system, sent_count)});
        statements += 2;
    });
    if (IMPORT_EXPORT.transport_only != 0)
        return statements;
    walk.take_report_line();
    walk.take("PPROGRESS", {0});
    for_each(sent_count, [&](std::int32_t system) {
        walk.take("PPROGRESS", {percentage(system, sent_count)});
        const std::int32_t count = walk.take("PNOBC", {system}).integer(1);
        if (count < 1)
            return;
        walk.take("PSCALB", {system});
        ++statements;
        for_each(count, [&](std::int32_t number) {
            walk.take("PIBC", {system, number});
            statements += 2 + at_least_none(walk.take("PNBFP", {system, number}).integer(2));
            walk.take("PALLBOUNDFUNC", {system, number});
        });
    });
    return statements;
}

std::int64_t take_loads(Walk &walk, std::int32_t system_count) {
    std::int64_t statements = (is_current_format() ? 3 : 2) + 2 * at_least_none(system_count);
    if (IMPORT_EXPORT.transport_only != 0)
        return statements;
    walk.take_report_line();
    if (walk.take("PLOPT").integer(0) > 0) {
        walk.take("PNPSFILE");
        ++statements;
    }
    for_each(sent_systems(system_count), [&](std::int32_t system) {
        if (!walk.is_at("PCONVB")) {
            constexpr std::int32_t none = 0; // the bits of 0.0
            walk.take("PSCALW", {system, none});
            walk.take("PCONVW", {system, none});
            walk.take("PNBWK", {system, 1, 2});
            walk.take("PALLLOADFUNC", {system, 1});
            return;
        }
        walk.take("PCONVB", {system});
        ++statements;
        do {
            const Sent &load = walk.take("PNBWK", {system});
            statements += 2 + at_least_none(load.integer(2));
            walk.take("PALLLOADFUNC", {system, load.integer(1)});
        } while (walk.is_at("PNBWK"));
    });
    return statements;
}

std::int64_t take_section(Walk &walk, std::int32_t section, const Trace &trace) {
    // The section behind starts with the counts that this one has read.
    const Stage &next = trace.section(section + 1);
    switch (section) {
    case flow_paths:
        return take_flow_paths(walk, trace.section(section - 1), next.segment_count);
    case flow_series:
        return take_flow_series(walk);
    case exchanges:
        return take_exchanges(walk);
    case boundaries:
        return take_boundaries(walk, next.system_count);
    case loads:
        return take_loads(walk, next.system_count);
    default:
        require(false, "the section is one of these");
        return 0;
    }
}

// What belongs to systems that the host does not simulate is read, but not to be seen. Behind the
// exchanges all of a legacy file is seen when no system is bypassed and the section has no system
// more, and all of a current one.
bool all_is_seen(const Trace &trace, std::int32_t section) {
    if (is_current_format())
        return section <= exchanges || IMPORT_EXPORT.transport_only == 0;
    const std::int32_t simulated = IMPORT_EXPORT.state_variable_count;
    return section <= exchanges || (IMPORT_EXPORT.transport_only == 0 &&
                                    trace.section(boundaries).system_count == simulated &&
                                    trace.section(section + 1).system_count <= simulated);
}

template <class List>
void require_size(const List &list, std::int32_t announced) {
    require(std::ssize(list) == at_least_none(announced), "a list has its announced size");
}

void take_error_line(Walk &walk) {
    constexpr std::int32_t line_length = 80;
    require(walk.take("GSPRINTFI").integer(2) == IMPORT_EXPORT.line_counter,
            "the pane shows the line counter of the failed read");
    walk.take("PINFOHTML");
    walk.take("PINFOHTML", {line_length});
}

} // namespace

void check_network_section(const Trace &trace, std::int32_t section) {
    const Stage &stage = trace.section(section);
    const Stage &next = trace.section(section + 1);
    Walk walk(stage);
    const std::int64_t statements = take_section(walk, section, trace);
    walk.end();
    const std::int64_t moved = std::int64_t{next.line_counter} - stage.line_counter;
    require(all_is_seen(trace, section) ? moved == statements : moved >= statements,
            "the line counter moves by one for every read statement");
}

void check_failed_section(const Trace &trace, std::int32_t section) {
    const Stage &stage = trace.section(section);
    Walk walk(stage);
    if (section == boundaries && walk.is_at("PPROGRESS")) {
        const std::int32_t system_count = trace.section(section + 1).system_count;
        const std::int32_t total = sent_systems(system_count);
        walk.take("PPROGRESS", {0});
        for (std::int32_t system = 1; walk.is_at("PPROGRESS"); ++system) {
            require(system <= system_count, "progress tells of systems that there are");
            walk.take("PPROGRESS", {percentage(system, total)});
        }
    }
    // The flow paths tell it on the console alone, as legacy sections do.
    if (is_current_format() && section != flow_paths)
        take_error_line(walk);
    walk.end();
}

void check_model(const kova_host::Model &model) {
    require_size(model.flow_fields, model.flow_field_count);
    for (const kova_host::FlowField &field : model.flow_fields) {
        require_size(field.functions, field.function_count);
        for (const kova_host::FlowFunction &function : field.functions) {
            require_size(function.pairs, function.pair_count);
            require_size(function.breakpoints, function.breakpoint_count);
        }
    }
    require(std::ssize(model.exchange_fields) <= at_least_none(model.exchange_field_count),
            "there are no more exchange fields than announced");
    for (const kova_host::ExchangeField &field : model.exchange_fields) {
        require_size(field.functions, field.function_count);
        for (const kova_host::ExchangeFunction &function : field.functions) {
            require_size(function.pairs, function.pair_count);
            require_size(function.breakpoints, function.breakpoint_count);
        }
    }
    for (const kova_host::System &system : model.systems) {
        require_size(system.boundaries, system.boundary_count);
        for (const kova_host::Boundary &boundary : system.boundaries)
            require_size(boundary.series, boundary.breakpoint_count);
        for (const kova_host::Load &load : system.loads)
            require_size(load.series, load.breakpoint_count);
    }
    for (const kova_host::TimeFunction &function : model.time_functions) {
        require(std::ssize(function.series) <= 3, "a time function has three series at most");
        for (const kova_host::TimeFunctionSeries &series : function.series)
            require_size(series.breakpoints, series.breakpoint_count);
    }
    for (const kova_host::Constant &constant : model.constants)
        require(constant.used == 1, "every constant that is added is used");
}

} // namespace kova_fuzz

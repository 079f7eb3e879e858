#include "host/model_store.h"

#include <utility>

namespace kova_host {

namespace {

constexpr unsigned number_bits = 32;

std::uint64_t key_of(std::int32_t first, std::int32_t second) {
    return (std::uint64_t{static_cast<std::uint32_t>(first)} << number_bits) |
           static_cast<std::uint32_t>(second);
}

} // namespace

std::string ModelStore::take_problem() { return std::exchange(problem_, {}); }

/// The record of a key in a list in order of arrival; a new one gets its numbers from `name`. A row
/// that was cut off its list is stale: it is found by `same`, which tells whether a record has the
/// numbers.
template <class Record, class Same, class Name>
Record &ModelStore::keyed(Rows &rows, std::vector<Record> &list, std::uint64_t key, Same same,
                          Name name) {
    if (rows.has_last && rows.last_key == key && rows.last_row < list.size() &&
        same(list[rows.last_row]))
        return list[rows.last_row];
    const auto [position, is_new] = rows.all.try_emplace(key, list.size());
    if (is_new || position->second >= list.size() || !same(list[position->second])) {
        position->second = list.size();
        name(list.emplace_back());
    }
    rows.last_key = key;
    rows.last_row = position->second;
    rows.has_last = true;
    return list[position->second];
}

template <class Record>
Record *ModelStore::numbered(std::vector<Record> &list, std::int32_t number,
                             std::string_view what) {
    if (number >= 1 && static_cast<std::size_t>(number) <= list.size())
        return &list[static_cast<std::size_t>(number) - 1];
    return grown(list, number, what);
}

template <class Record>
Record *ModelStore::grown(std::vector<Record> &list, std::int32_t number, std::string_view what) {
    if (number < 1) {
        problem_ = "the number of the " + std::string(what) + " is " + std::to_string(number) +
                   ", 1 or more was expected";
        return nullptr;
    }
    const auto size = static_cast<std::size_t>(number);
    const std::size_t gap = size - list.size() - 1;
    if (gap == 0)
        return &list.emplace_back();
    if (gap > most_gaps - gaps_) {
        problem_ = "the number of the " + std::string(what) + " is " + std::to_string(number) +
                   ", a number near " + std::to_string(list.size()) + " was expected";
        return nullptr;
    }
    list.resize(size);
    gaps_ += gap;
    return &list.back();
}

Segment *ModelStore::segment(std::int32_t number) {
    return numbered(model_.segments, number, "segment");
}

System *ModelStore::system(std::int32_t number) {
    return numbered(model_.systems, number, "system");
}

Boundary *ModelStore::boundary(std::int32_t system_number, std::int32_t number) {
    System *parent = system(system_number);
    return parent != nullptr ? numbered(parent->boundaries, number, "boundary") : nullptr;
}

Load *ModelStore::load(std::int32_t system_number, std::int32_t segment_number) {
    System *parent = system(system_number);
    if (parent == nullptr)
        return nullptr;
    return &keyed(
        load_rows_, parent->loads, key_of(system_number, segment_number),
        [&](const Load &load) { return load.segment == segment_number; },
        [&](Load &load) { load.segment = segment_number; });
}

InitialCondition *ModelStore::initial_condition(std::int32_t system_number,
                                                std::int32_t segment_number) {
    System *parent = system(system_number);
    return parent != nullptr ? numbered(parent->initial_conditions, segment_number, "segment")
                             : nullptr;
}

FlowField *ModelStore::flow_field(std::int32_t number) {
    return numbered(model_.flow_fields, number, "flow field");
}

FlowFunction *ModelStore::flow_function(std::int32_t field, std::int32_t number) {
    FlowField *parent = flow_field(field);
    return parent != nullptr ? numbered(parent->functions, number, "flow function") : nullptr;
}

FlowPair *ModelStore::flow_pair(std::int32_t field, std::int32_t function, std::int32_t number) {
    FlowFunction *parent = flow_function(field, function);
    return parent != nullptr ? numbered(parent->pairs, number, "flow pair") : nullptr;
}

FlowBreakpoint *ModelStore::flow_breakpoint(std::int32_t field, std::int32_t function,
                                            std::int32_t number) {
    FlowFunction *parent = flow_function(field, function);
    return parent != nullptr ? numbered(parent->breakpoints, number, "breakpoint") : nullptr;
}

ExchangeField *ModelStore::exchange_field(std::int32_t number) {
    return numbered(model_.exchange_fields, number, "exchange field");
}

ExchangeFunction *ModelStore::exchange_function(std::int32_t field, std::int32_t number) {
    ExchangeField *parent = exchange_field(field);
    return parent != nullptr ? numbered(parent->functions, number, "exchange function") : nullptr;
}

ExchangePair *ModelStore::exchange_pair(std::int32_t field, std::int32_t function,
                                        std::int32_t number) {
    ExchangeFunction *parent = exchange_function(field, function);
    return parent != nullptr ? numbered(parent->pairs, number, "exchange pair") : nullptr;
}

Breakpoint *ModelStore::exchange_breakpoint(std::int32_t field, std::int32_t function,
                                            std::int32_t number) {
    ExchangeFunction *parent = exchange_function(field, function);
    return parent != nullptr ? numbered(parent->breakpoints, number, "breakpoint") : nullptr;
}

TimeFunction *ModelStore::time_function(std::int32_t number) {
    return &keyed(
        time_function_rows_, model_.time_functions, key_of(0, number),
        [&](const TimeFunction &function) { return function.number == number; },
        [&](TimeFunction &function) { function.number = number; });
}

TimeFunctionSeries *ModelStore::time_function_series(std::int32_t function, std::int32_t number) {
    return numbered(time_function(function)->series, number, "series");
}

Breakpoint *ModelStore::time_function_breakpoint(std::int32_t function, std::int32_t series_number,
                                                 std::int32_t number) {
    TimeFunctionSeries *parent = time_function_series(function, series_number);
    return parent != nullptr ? numbered(parent->breakpoints, number, "breakpoint") : nullptr;
}

SegmentParameter *ModelStore::segment_parameter(std::int32_t number, std::int32_t class_index) {
    return &keyed(
        segment_parameter_rows_, model_.segment_parameters, key_of(number, class_index),
        [&](const SegmentParameter &parameter) {
            return parameter.number == number && parameter.class_index == class_index;
        },
        [&](SegmentParameter &parameter) {
            parameter.number = number;
            parameter.class_index = class_index;
        });
}

float *ModelStore::segment_parameter_value(std::int32_t segment_number, std::int32_t number,
                                           std::int32_t class_index) {
    return numbered(segment_parameter(number, class_index)->values, segment_number, "segment");
}

Constant *ModelStore::constant(std::int32_t number, std::int32_t column) {
    return &keyed(
        constant_rows_, model_.constants, key_of(number, column),
        [&](const Constant &constant) {
            return constant.number == number && constant.column == column;
        },
        [&](Constant &constant) {
            constant.number = number;
            constant.column = column;
        });
}

} // namespace kova_host

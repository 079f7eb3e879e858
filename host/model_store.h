#pragma once

// The model while it is being built: finds the record that a command means, and makes it when it is
// not there.

#include "host/model.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kova_host {

/// Every function takes the numbers of a command in the command's order and gives the record, or
/// null when there is no room for it: `take_problem` then has the reason.
///
/// Numbers come from files. Those that a file chooses freely (time functions, parameters,
/// constants, the segments of loads) are keys. The others count upwards; a list grows to the number
/// that a command names. Entries that come into being only because a later one was named are
/// limited to `most_gaps` in a model, so a wild number cannot take the memory of the machine.
class ModelStore {
  public:
    static constexpr std::size_t most_gaps = 100'000;

    [[nodiscard]] const Model &model() const { return model_; }
    [[nodiscard]] bool has_problem() const { return !problem_.empty(); }
    /// Why the last record was not found; empties it.
    std::string take_problem();

    Model *whole() { return &model_; }
    ModelSettings *settings() { return &model_.settings; }
    Date *start_date() { return &model_.settings.start_date; }
    TimeOfDay *start_time() { return &model_.settings.start_time; }
    Date *skip_date() { return &model_.settings.hydrodynamic_skip_date; }
    TimeOfDay *skip_time() { return &model_.settings.hydrodynamic_skip_time; }
    RefreshCounts *refreshes() { return &model_.refreshes; }

    Segment *segment(std::int32_t number);
    System *system(std::int32_t number);
    Boundary *boundary(std::int32_t system_number, std::int32_t number);
    Load *load(std::int32_t system_number, std::int32_t segment_number);
    InitialCondition *initial_condition(std::int32_t system_number, std::int32_t segment_number);

    FlowField *flow_field(std::int32_t number);
    FlowFunction *flow_function(std::int32_t field, std::int32_t number);
    FlowPair *flow_pair(std::int32_t field, std::int32_t function, std::int32_t number);
    FlowBreakpoint *flow_breakpoint(std::int32_t field, std::int32_t function, std::int32_t number);

    ExchangeField *exchange_field(std::int32_t number);
    ExchangeFunction *exchange_function(std::int32_t field, std::int32_t number);
    ExchangePair *exchange_pair(std::int32_t field, std::int32_t function, std::int32_t number);
    Breakpoint *exchange_breakpoint(std::int32_t field, std::int32_t function, std::int32_t number);

    TimeFunction *time_function(std::int32_t number);
    TimeFunctionSeries *time_function_series(std::int32_t function, std::int32_t number);
    Breakpoint *time_function_breakpoint(std::int32_t function, std::int32_t series_number,
                                         std::int32_t number);

    SegmentParameter *segment_parameter(std::int32_t number, std::int32_t class_index);
    float *segment_parameter_value(std::int32_t segment_number, std::int32_t number,
                                   std::int32_t class_index);
    Constant *constant(std::int32_t number, std::int32_t column);

  private:
    /// The rows of records by their key. Commands about one record mostly follow each other. The
    /// file chooses the keys, so nothing may depend on how they would be spread over a hash table.
    struct Rows {
        std::map<std::uint64_t, std::size_t> all;
        std::uint64_t last_key = 0;
        std::size_t last_row = 0;
        bool has_last = false;
    };

    template <class Record>
    Record *numbered(std::vector<Record> &list, std::int32_t number, std::string_view what);
    template <class Record>
    Record *grown(std::vector<Record> &list, std::int32_t number, std::string_view what);
    template <class Record, class Same, class Name>
    static Record &keyed(Rows &rows, std::vector<Record> &list, std::uint64_t key, Same same,
                         Name name);

    Model model_;
    Rows load_rows_;
    Rows time_function_rows_;
    Rows segment_parameter_rows_;
    Rows constant_rows_;
    std::size_t gaps_ = 0;
    std::string problem_;
};

} // namespace kova_host

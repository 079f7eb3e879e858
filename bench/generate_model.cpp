// Writes a model file of about BYTES bytes to standard output, with all eleven sections:
//
//   generate_model legacy|current BYTES [SEED]
//   generate_model --sections legacy|current BYTES [SEED]
//
// The second way writes, instead of the file, how many bytes each of its sections has.
//
// The same arguments give the same bytes on every machine. As in real files nearly all of it is
// time series, one breakpoint a line in two fields of twelve columns; the network, the parameters
// and the initial conditions grow in proportion.

#include "model_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>

namespace kova_import::bench {

namespace {

enum class Format : std::uint8_t { legacy, current };

struct System {
    std::string_view short_name;
    std::string_view long_name;
    bool is_simulated = true; ///< others stand in legacy files only
};

constexpr std::array<System, 28> systems = {{
    {"NH-34", "Ammonia"},
    {"NO3O2", "Nitrate/Nitrite"},
    {"ORG-N", "Diss Org N"},
    {"D-DIP", "Inorganic P"},
    {"ORG-P", "Diss Org P"},
    {"IN-SI", "Inorganic Si"},
    {"ORGSI", "Organic Si"},
    {"CBODU", "CBOD-1"},
    {"CBODU", "CBOD-2"},
    {"CBODU", "CBOD-3", false},
    {"DISOX", "Dissolved Oxygen"},
    {"DET-C", "Detrital Carbon"},
    {"DET-N", "Detrital N"},
    {"DET-P", "Detrital P"},
    {"DETSI", "Detrital Si"},
    {"TOTDE", "Total Detritus"},
    {"SALIN", "Salinity"},
    {"MALGA", "Benthic Algae", false},
    {"MALGN", "Benthic Algae-N", false},
    {"MALGP", "Benthic Algae-P", false},
    {"SOLID", "Solid 1"},
    {"SOLID", "Solid 2"},
    {"SOLID", "Solid 3", false},
    {"PHYTO", "Phytoplankton 1"},
    {"PHYTO", "Phytoplankton 2"},
    {"PHYTO", "Phytoplankton 3", false},
    {"PH-SU", "pH"},
    {"ALKAL", "Alkalinity"},
}};

/// A time function: its number in either format.
struct TimeFunction {
    std::int32_t legacy_number = 0;
    std::int32_t current_number = 0; ///< 0: it stands in legacy files only
    std::string_view name;
};

/// Legacy 23 is the second series of the function before it.
constexpr std::array<TimeFunction, 9> time_functions = {{
    {1, 1, "Water temperature"},
    {2, 0, "Water temperature 2"},
    {5, 4, "Solar radiation"},
    {6, 3, "Daylight"},
    {7, 21, "Wind speed"},
    {10, 17, "Air temperature"},
    {14, 9, "Light extinction"},
    {23, 9, "Light extinction 2"},
    {17, 0, "Ice cover 2"},
}};

/// A parameter or constant: its number in the legacy format, and number and column (or class) in
/// the current one.
struct Numbers {
    std::int32_t legacy = 0;
    std::int32_t current = 0;
    std::int32_t column = 1;
};

constexpr std::array<Numbers, 12> parameters = {{
    {2, 1},
    {4, 17},
    {6, 30},
    {7, 31},
    {8, 32},
    {9, 4},
    {19, 21},
    {22, 6},
    {24, 19},
    {25, 19, 2},
    {27, 20},
    {28, 20, 2},
}};

/// Legacy 2 and 3 become time functions; a current number of 0 says so.
constexpr std::array<Numbers, 36> constants = {{
    {2, 0},       {3, 0},       {69, 92},     {70, 93},     {71, 94},     {72, 95},
    {73, 96},     {74, 97},     {75, 98},     {76, 99},     {60, 54},     {61, 55},
    {62, 56},     {63, 57},     {64, 58},     {65, 59},     {66, 60},     {67, 61},
    {110, 64},    {111, 65},    {112, 66},    {113, 67},    {114, 68},    {115, 69},
    {116, 70},    {117, 71},    {118, 72},    {140, 64, 2}, {141, 65, 2}, {142, 66, 2},
    {143, 67, 2}, {144, 68, 2}, {145, 69, 2}, {146, 70, 2}, {147, 71, 2}, {148, 72, 2},
}};

constexpr std::int64_t breakpoint_bytes = 25;
/// A whole series goes to the host at once, and this is the largest.
constexpr std::int64_t most_breakpoints = 170000;
constexpr std::int64_t simulation_days = 3650;

std::int64_t square_root(std::int64_t number) {
    std::int64_t root = 0;
    while ((root + 1) * (root + 1) <= number)
        ++root;
    return root;
}

/// How a file of a size is made up.
struct Plan {
    explicit Plan(std::int64_t bytes)
        : segment_count(std::clamp(bytes / 25000, std::int64_t{8}, std::int64_t{9998})),
          series_length(std::clamp(square_root(bytes), std::int64_t{10}, most_breakpoints / 2)),
          breakpoints(bytes / breakpoint_bytes) {}

    /// The number of series that `per_cent` of the file holds.
    [[nodiscard]] std::int64_t series_count(std::int64_t per_cent) const {
        return std::max(std::int64_t{2}, breakpoints * per_cent / 100 / series_length);
    }

    std::int64_t segment_count;
    std::int64_t series_length; ///< on average
    std::int64_t breakpoints;   ///< if there were nothing else
};

constexpr std::size_t section_count = 11;

constexpr std::int64_t flow_per_cent = 12;
constexpr std::int64_t exchange_per_cent = 5;
constexpr std::int64_t boundary_per_cent = 32;
constexpr std::int64_t load_per_cent = 38;
constexpr std::int64_t time_function_per_cent = 8;

class ModelFile {
  public:
    ModelFile(Format format, std::int64_t bytes, std::uint64_t seed, std::FILE *file)
        : is_legacy_(format == Format::legacy), plan_(bytes), random_(seed), out_(file) {}

    [[nodiscard]] bool write() {
        using WriteSection = void (ModelFile::*)();
        constexpr std::array<WriteSection, section_count> sections = {
            &ModelFile::write_model_parameters,
            &ModelFile::write_segments,
            &ModelFile::write_flow_paths,
            &ModelFile::write_flow_series,
            &ModelFile::write_exchanges,
            &ModelFile::write_boundaries,
            &ModelFile::write_loads,
            &ModelFile::write_time_functions,
            &ModelFile::write_segment_parameters,
            &ModelFile::write_constants,
            &ModelFile::write_initial_conditions,
        };
        for (std::size_t i = 0; i < sections.size(); ++i) {
            const std::int64_t before = out_.size();
            (this->*sections[i])();
            section_bytes_[i] = out_.size() - before;
        }
        return out_.finish();
    }

    /// Of the sections that have been written.
    [[nodiscard]] const std::array<std::int64_t, section_count> &section_bytes() const {
        return section_bytes_;
    }

  private:
    /// The current format has a title before each section but the first.
    void title(std::string_view title) {
        if (!is_legacy_)
            out_.line(title);
    }

    /// Up to `largest`, with so many decimals.
    Decimal real_below(std::int64_t largest, int decimals) {
        std::int64_t limit = largest;
        for (int i = 0; i < decimals; ++i)
            limit *= 10;
        return {random_.below(limit), decimals};
    }

    [[nodiscard]] bool is_in_file(const System &system) const {
        return is_legacy_ || system.is_simulated;
    }

    [[nodiscard]] std::int64_t system_count() const {
        return std::count_if(systems.begin(), systems.end(),
                             [this](const System &system) { return is_in_file(system); });
    }

    /// Around the average length.
    std::int64_t series_length() {
        const std::int64_t half = plan_.series_length / 2;
        return half + random_.below(plan_.series_length) + 1;
    }

    /// `count` breakpoints from the start of the simulation to its end.
    void write_breakpoints(std::int64_t count, bool time_first = false) {
        constexpr std::int64_t ten_thousandths = simulation_days * 10000;
        constexpr std::array<std::int64_t, 4> ranges = {10, 100, 1000, 5000};
        const std::int64_t range =
            ranges[static_cast<std::size_t>(random_.below(ranges.size()))] * 10000;
        for (std::int64_t i = 0; i < count; ++i) {
            const Decimal time{i * ten_thousandths / std::max(count - 1, std::int64_t{1}), 4};
            const Decimal value{random_.below(range), 4};
            out_.number(time_first ? time : value, 12).number(time_first ? value : time, 12);
            out_.end_line();
        }
    }

    void write_series(std::string_view count_remark) {
        const std::int64_t count = series_length();
        out_.count(count, count_remark);
        write_breakpoints(count);
    }

    void write_options() {
        out_.line("1  1  2010  0  0  0   start: month, day, year, hour, minute, second");
        out_.line("1  1  2010  0  0  0   hydrodynamics skipped up to");
        out_.number(Decimal{simulation_days * 10, 1}, 10).line("   days to simulate");
        out_.count(system_count(), "systems");
        out_.count(0, "restart option");
        out_.count(1, "solution technique");
        out_.count(0, "negative solutions");
        out_.count(0, "initial condition option");
        out_.count(1, "interpolation");
        out_.count(0, "not used");
        out_.line("       0.9   fraction of the greatest time step");
        out_.line("0.0001  0.015   smallest and greatest time step, days");
    }

    void write_model_parameters() {
        out_.number(11, 5).text("     ").number(is_legacy_ ? 2 : 3, 2).end_line();
        title("'A generated model'");
        write_options();
        if (!is_legacy_) {
            out_.line("      0.25   output interval, days");
            for (const System &system : systems)
                if (is_in_file(system))
                    out_.text(system.short_name, 5)
                        .text("     ")
                        .text(system.long_name, 30)
                        .end_line();
            return;
        }
        out_.count(2, "output intervals: from day, interval in days");
        out_.line("  0.0  0.5");
        out_.line(" 30.0  0.25");
        for (const System &system : systems)
            out_.number(system.is_simulated ? 0 : 1, 2);
        out_.line("   bypassed systems");
        out_.count(0, "extra output series");
        out_.count(0, "extra output segments");
    }

    void write_segment_name(std::int64_t segment) {
        out_.number(segment, 5);
        if (is_legacy_)
            out_.text("  'Main channel, reach ").number(segment).line("'");
        else
            out_.text("     Main channel, reach ").number(segment, 5).text("", 15).end_line();
    }

    /// Behind the numbers and options of the segment.
    void write_geometry() {
        constexpr std::array<Decimal, 10> sizes = {{
            // volume, velocity, depth, length, slope, width, roughness, minimum depth
            {90000, 1},
            {9, 3},
            {1, 4},
            {2, 4},
            {1, 3},
            {4000, 1},
            {1, 6},
            {300, 2},
            {1, 4},
            {1, 3},
        }};
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            const Decimal value = real_below(sizes[i].scaled, sizes[i].decimals);
            if (is_legacy_) {
                if (i == 5)
                    out_.end_line();
                out_.number(value, 13);
            } else {
                out_.number(value, 15);
            }
        }
        if (!is_legacy_)
            for (int i = 0; i < 6; ++i)
                out_.number(real_below(100, 5), 15);
        out_.end_line();
    }

    void write_segments() {
        title("SEGMENTS");
        out_.count(plan_.segment_count, "segments");
        out_.count(0, "bed volumes: 0 fixed, 1 moving");
        out_.line("       1.0   bed time step, days");
        out_.line("  1.0  1.0   volume scale, conversion");
        out_.line("Segment names");
        for (std::int64_t segment = 1; segment <= plan_.segment_count; ++segment)
            write_segment_name(segment);
        out_.line("Segment geometry and hydraulics");
        for (std::int64_t segment = 1; segment <= plan_.segment_count; ++segment) {
            out_.number(segment, 5).number(0, 5).number(1, 5);
            if (!is_legacy_)
                out_.number(1, 5);
            write_geometry();
        }
    }

    /// Calls `write(function, first segment, last segment)` for the functions of both fields, which
    /// share out the segments. `start(field, function count)` is called before those of each field.
    template <class Start, class Write>
    void for_each_function(std::int64_t per_cent, Start start, Write write) {
        const std::int64_t total = plan_.series_count(per_cent);
        const std::int64_t in_second = std::max(total / 4, std::int64_t{1});
        for (const std::int64_t field : {1, 2}) {
            const std::int64_t count = field == 1 ? total - in_second : in_second;
            start(field, count);
            for (std::int64_t i = 0; i < count; ++i)
                write(i + 1, plan_.segment_count * i / count + 1,
                      plan_.segment_count * (i + 1) / count);
        }
    }

    void write_field_head(std::int64_t field, std::int64_t function_count, bool has_factors) {
        out_.line(field == 1 ? "'Surface water'" : "'Pore water'");
        out_.count(function_count, "functions");
        if (has_factors)
            out_.line("  1.0  1.0   scale, conversion");
    }

    void write_flow_paths() {
        title("FLOW_PATHS");
        title("'Surface water and pore water'");
        if (is_legacy_)
            out_.count(1, "flow option");
        out_.count(2, "flow fields");
        for_each_function(
            flow_per_cent,
            [this](std::int64_t field, std::int64_t count) {
                write_field_head(field, count, false);
            },
            [this](std::int64_t function, std::int64_t first, std::int64_t last) {
                out_.text("Inflow ").number(function).end_line();
                out_.count(std::max(last - first + 2, std::int64_t{1}), "pairs");
                for (std::int64_t segment = first; segment <= last + 1; ++segment) {
                    const std::int64_t from = segment == first ? 0 : segment - 1;
                    const std::int64_t to = segment == last + 1 ? 0 : segment;
                    out_.number(from, 5).number(to, 6).number(real_below(1, 4), 9).end_line();
                }
            });
    }

    void write_flow_series() {
        title("FLOW_SERIES");
        out_.count(2, "flow fields");
        for_each_function(
            flow_per_cent,
            [this](std::int64_t field, std::int64_t count) {
                write_field_head(field, count, true);
            },
            [this](std::int64_t function, std::int64_t, std::int64_t) {
                out_.text("Inflow ").number(function).end_line();
                write_series("breakpoints: flow, day");
            });
    }

    void write_exchanges() {
        title("EXCHANGES");
        out_.count(2, "exchange fields");
        for_each_function(
            exchange_per_cent,
            [this](std::int64_t field, std::int64_t count) {
                write_field_head(field, count, true);
            },
            [this](std::int64_t function, std::int64_t first, std::int64_t last) {
                out_.text("Mixing ").number(function).end_line();
                out_.count(std::max(last - first, std::int64_t{0}), "pairs");
                for (std::int64_t segment = first; segment < last; ++segment) {
                    out_.number(segment, 5).number(segment + 1, 6);
                    out_.number(real_below(500, 2), 10).number(real_below(3000, 1), 9).end_line();
                }
                write_series("breakpoints: exchange, day");
            });
    }

    /// Calls `write(system, series count)` for the systems of the file. Those that are not
    /// simulated have series as well, few.
    template <class Write>
    void for_each_system(std::int64_t per_cent, std::int64_t most, Write write) {
        const std::int64_t total = plan_.series_count(per_cent);
        const auto simulated = static_cast<std::int64_t>(
            std::count_if(systems.begin(), systems.end(),
                          [](const System &system) { return system.is_simulated; }));
        std::int64_t place = 0;
        bool has_dropped = false;
        for (const System &system : systems) {
            if (!is_in_file(system))
                continue;
            std::int64_t count = 0;
            if (system.is_simulated) {
                count = total * (place + 1) / simulated - total * place / simulated;
                ++place;
            } else if (!has_dropped) {
                count = 1;
                has_dropped = true;
            }
            write(system, std::min(count, most));
        }
    }

    void write_boundaries() {
        title("BOUNDARIES");
        out_.count(system_count(), "systems");
        for_each_system(boundary_per_cent, plan_.segment_count,
                        [this](const System &system, std::int64_t count) {
                            out_.text(system.long_name).line(": boundaries");
                            out_.count(count, "boundaries");
                            if (count > 0)
                                out_.line("       1.0       1.0");
                            for (std::int64_t i = 0; i < count; ++i) {
                                out_.count(plan_.segment_count * i / count + 1, "segment");
                                write_series("breakpoints: concentration, day");
                            }
                        });
    }

    void write_loads() {
        title("LOADS");
        out_.count(0, "no diffuse loads");
        out_.count(system_count(), "systems");
        for_each_system(load_per_cent, plan_.segment_count,
                        [this](const System &system, std::int64_t count) {
                            out_.text("'").text(system.long_name).line("'");
                            out_.count(count, "loads");
                            if (count > 0)
                                out_.line("  1.0  1.0   scale, conversion");
                            for (std::int64_t i = 0; i < count; ++i) {
                                out_.count(plan_.segment_count * i / count + 1, "segment");
                                write_series("breakpoints: load, day");
                            }
                        });
    }

    void write_time_functions() {
        title("TIME_FUNCTIONS");
        const auto is_here = [this](const TimeFunction &function) {
            return is_legacy_ || function.current_number != 0;
        };
        const auto count = std::count_if(time_functions.begin(), time_functions.end(), is_here);
        const std::int64_t length =
            std::max(plan_.breakpoints * time_function_per_cent / 100 / count, std::int64_t{2});
        out_.count(count, "time functions");
        for (const TimeFunction &function : time_functions) {
            if (!is_here(function))
                continue;
            out_.count(is_legacy_ ? function.legacy_number : function.current_number,
                       "number of the time function");
            if (is_legacy_)
                out_.text("'").text(function.name).line("'");
            out_.count(length, "breakpoints: day, value");
            write_breakpoints(length, true);
        }
    }

    void write_segment_parameters() {
        title("SEGMENT_PARAMETERS");
        out_.count(plan_.segment_count, "segments");
        out_.count(static_cast<std::int64_t>(parameters.size()), "segment parameters");
        title("'Parameters'");
        for (const Numbers &parameter : parameters) {
            if (is_legacy_)
                out_.number(parameter.legacy, 5).line("     1.0");
            else
                out_.text("Param: ")
                    .number(parameter.current, 5)
                    .text("   Column: ")
                    .number(parameter.column, 3)
                    .line(" Scale:     1.0000");
        }
        title("'Values'");
        for (std::int64_t segment = 1; segment <= plan_.segment_count; ++segment) {
            out_.count(segment, "segment");
            for (const Numbers &parameter : parameters) {
                const Decimal value = real_below(10, 4);
                if (is_legacy_)
                    out_.number(parameter.legacy, 5).number(value, 10).end_line();
                else
                    out_.text("Parameter: ")
                        .number(parameter.current, 5)
                        .text("        Column: ")
                        .number(parameter.column, 3)
                        .text("            Value: ")
                        .number(value, 10)
                        .end_line();
            }
        }
    }

    void write_constants() {
        title("CONSTANTS");
        const auto is_here = [this](const Numbers &constant) {
            return is_legacy_ || constant.current != 0;
        };
        out_.count(std::count_if(constants.begin(), constants.end(), is_here), "constants");
        for (const Numbers &constant : constants) {
            if (!is_here(constant))
                continue;
            const Decimal value = real_below(10, 4);
            if (is_legacy_)
                out_.number(constant.legacy, 5).number(value, 10).end_line();
            else
                out_.text("Const: ")
                    .number(constant.current, 5)
                    .text("   Column: ")
                    .number(constant.column, 5)
                    .text("           Value: ")
                    .number(value, 10)
                    .end_line();
        }
    }

    void write_initial_conditions() {
        title("INITIAL_CONDITIONS");
        out_.count(system_count(), "systems");
        out_.count(plan_.segment_count, "segments");
        for (const System &system : systems) {
            if (!is_in_file(system))
                continue;
            out_.text(system.long_name).line(": initial conditions");
            out_.count(1, "flow field");
            out_.line("      1.00   density");
            out_.line("    1000.0   greatest concentration");
            out_.line("Segment  Concentration  Dissolved");
            for (std::int64_t segment = 1; segment <= plan_.segment_count; ++segment)
                out_.number(segment, 5).number(real_below(100, 4), 15).line("      1.0000");
        }
    }

    bool is_legacy_;
    Plan plan_;
    Random random_;
    ModelText out_;
    std::array<std::int64_t, section_count> section_bytes_{};
};

template <class Number>
std::optional<Number> number_in(std::string_view text) {
    Number number{};
    const char *const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && rest == end ? std::optional(number) : std::nullopt;
}

std::optional<Format> format_in(std::string_view name) {
    if (name == "legacy")
        return Format::legacy;
    if (name == "current")
        return Format::current;
    return std::nullopt;
}

int run(int argc, char **argv) {
    constexpr std::int64_t largest = 10'000'000'000;
    const bool sections_only = argc > 1 && std::string_view(argv[1]) == "--sections";
    const int count = argc - (sections_only ? 2 : 1);
    char **const arguments = argv + argc - count;
    const auto format = count > 0 ? format_in(arguments[0]) : std::nullopt;
    const auto bytes = count > 1 ? number_in<std::int64_t>(arguments[1]) : std::nullopt;
    const auto seed = count > 2 ? number_in<std::uint64_t>(arguments[2]) : std::uint64_t{1};
    if (count > 3 || !format || !bytes || *bytes < 1 || *bytes > largest || !seed) {
        std::fputs("usage: generate_model [--sections] legacy|current BYTES [SEED]\n", stderr);
        return 2;
    }
    std::FILE *const out = sections_only ? std::fopen("/dev/null", "we") : stdout;
    const auto file = std::make_unique<ModelFile>(*format, *bytes, *seed, out);
    if (out == nullptr || !file->write()) {
        std::fputs("generate_model: the file cannot be written\n", stderr);
        return 1;
    }
    if (sections_only)
        for (const std::int64_t section : file->section_bytes())
            std::printf("%lld\n", static_cast<long long>(section));
    return 0;
}

} // namespace

} // namespace kova_import::bench

int main(int argc, char **argv) { return kova_import::bench::run(argc, argv); }

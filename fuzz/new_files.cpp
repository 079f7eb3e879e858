#include "fuzz/new_files.h"

#include "fuzz/random.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace kova_fuzz {

namespace {

constexpr std::array<std::string_view, 5> texts = {
    "Surface water", "", "/", "A description that is longer than thirty columns", "'Main' stem"};

// Of free-form texts, which end at a blank.
constexpr std::array<std::string_view, 5> names = {"Air", "/", "'Water temperature'",
                                                   "'A name that is longer than thirty columns'",
                                                   "\"It\"\"s\""};

/// Writes the lines of a file whose counts are small.
class FileWriter {
  public:
    explicit FileWriter(std::uint32_t seed) : random_(seed) {}

    Random &random() { return random_; }
    void start_section() { file_.starts[section_count_++] = file_.text.size(); }
    [[nodiscard]] NewFile finished() {
        start_section();
        return std::move(file_);
    }

    void line(std::string_view content) {
        file_.text += content;
        file_.text += '\n';
    }
    std::size_t count(std::size_t most) {
        const std::size_t value = random_.below(most + 1);
        line(std::to_string(value));
        return value;
    }
    /// A record of small numbers behind a whole number of its own.
    void numbers_behind(std::size_t number, std::size_t size) {
        file_.text += std::to_string(number);
        file_.text += ' ';
        numbers(size);
    }
    /// A free-form text of one value.
    void any_name() { line(random_.any_of(names)); }
    /// A value at the right of its columns, behind skipped ones.
    void columns(std::size_t skipped, std::size_t width, std::string_view value) {
        constexpr std::size_t seldom = 16;
        // What stands in skipped columns does not matter.
        file_.text.append(skipped, random_.once_in(seldom) ? '7' : ' ');
        file_.text.append(width - value.size(), ' ');
        file_.text += value;
    }
    void columns(std::size_t skipped, std::size_t width, std::size_t value) {
        columns(skipped, width, std::to_string(value));
    }
    /// A real of ten columns.
    void real_columns(std::size_t skipped) {
        constexpr std::array<std::string_view, 8> values = {"",     "1",     "0.5",  "-2.5",
                                                            "1d-2", "12345", "1 2.", "+.75"};
        constexpr std::size_t width = 10;
        columns(skipped, width, random_.any_of(values));
    }
    void end_line() { file_.text += '\n'; }
    void any_text() { line(random_.any_of(texts)); }
    /// A record of small numbers, seldom with a gap.
    void numbers(std::size_t size) {
        constexpr std::array<std::string_view, 8> values = {"0",      "1", "2",    "3",
                                                            "-1.5e0", "7", "1d-2", ".25"};
        std::string content;
        for (std::size_t i = 0; i < size; ++i) {
            // The first two may be whole numbers, which a real accepts too.
            const std::size_t choices = i < 2 ? 4 : values.size();
            content += values[random_.below(choices)];
            content += ' ';
        }
        constexpr std::size_t seldom = 16;
        line(random_.once_in(seldom) ? std::string_view("/") : std::string_view(content));
    }
    void pairs() {
        for (std::size_t i = count(3); i > 0; --i)
            numbers(2);
    }
    void series_of_segments() {
        for (std::size_t i = count_; i > 0; --i) {
            numbers(1);
            pairs();
        }
    }
    /// Writes and keeps the number of series of a system.
    std::size_t series_count() { return count_ = count(3); }

  private:
    Random random_;
    NewFile file_;
    std::size_t section_count_ = 0;
    std::size_t count_ = 0;
};

void write_opening(FileWriter &file) {
    constexpr std::size_t many_systems = 30;
    file.line("1 2 2003 4 5 6");
    file.line("7 8 2009 10 11 12");
    file.line("30");
    const std::size_t systems = file.count(file.random().once_in(4) ? many_systems : 3);
    for (int option = 0; option < 6; ++option)
        file.line("1");
    file.line(".75");
    file.line(".01 .5");
    file.line("0");
    std::string flags;
    for (std::size_t i = 0; i < systems; ++i)
        flags += file.random().once_in(4) ? "1 " : "0 ";
    file.line(flags);
    file.line("0");
    file.line("0");
}

void write_segments(FileWriter &file) {
    const std::size_t segments = file.count(3);
    file.line("1");
    file.line(".5");
    file.line("2 3");
    file.line("Names");
    for (std::size_t i = 1; i <= segments; ++i)
        file.line(std::to_string(i) + " Pool");
    file.line("Geometry");
    for (std::size_t i = 1; i <= segments; ++i)
        file.line(std::to_string(i) + " 0 1 10 20 30 40 50 60 70 80 90 100");
}

void write_flow_fields(FileWriter &file, bool has_hydrodynamic_file) {
    const std::size_t fields = file.count(3);
    for (std::size_t field = 1; field <= fields; ++field) {
        file.any_text();
        if (field == 1 && has_hydrodynamic_file)
            file.line("river.hyd");
        for (std::size_t function = file.count(3); function > 0; --function) {
            file.any_text();
            for (std::size_t pair = file.count(3); pair > 0; --pair)
                file.numbers(3);
        }
    }
}

void write_flow_paths(FileWriter &file) {
    const bool has_hydrodynamic_file = file.random().once_in(3);
    file.line(has_hydrodynamic_file ? "3" : "1");
    write_flow_fields(file, has_hydrodynamic_file);
}

void write_flow_series(FileWriter &file) {
    for (std::size_t field = file.count(3); field > 0; --field) {
        file.any_text();
        const std::size_t functions = file.count(3);
        if (functions > 0)
            file.numbers(2);
        for (std::size_t function = functions; function > 0; --function) {
            file.any_text();
            file.pairs();
        }
    }
}

void write_exchanges(FileWriter &file) {
    for (std::size_t field = file.count(3); field > 0; --field) {
        file.line("Exchange");
        const std::size_t functions = file.count(3);
        if (functions > 0)
            file.numbers(2);
        for (std::size_t function = functions; function > 0; --function) {
            file.any_text();
            for (std::size_t pair = file.count(3); pair > 0; --pair)
                file.numbers(4);
            file.pairs();
        }
    }
}

void write_boundaries(FileWriter &file) {
    constexpr std::array<std::string_view, 4> factors = {"       1.5       2.5", "   1", "",
                                                         "1 5e-1    -3"};
    for (std::size_t system = file.count(4); system > 0; --system) {
        file.any_text();
        if (file.series_count() > 0)
            file.line(file.random().any_of(factors));
        file.series_of_segments();
    }
}

void write_loads(FileWriter &file) {
    if (file.count(1) > 0)
        file.line("runoff.nps");
    for (std::size_t system = file.count(4); system > 0; --system) {
        file.line("Ammonia");
        if (file.series_count() > 0)
            file.numbers(2);
        file.series_of_segments();
    }
}

void write_time_functions(FileWriter &file) {
    constexpr std::size_t ends = 27; // one number behind those that there are
    for (std::size_t function = file.count(5); function > 0; --function) {
        file.line(std::to_string(file.random().below(ends)));
        file.line(file.random().any_of(names));
        file.pairs();
    }
}

void write_segment_parameters(FileWriter &file) {
    constexpr std::size_t ends = 31;
    constexpr std::size_t first_of_sediment = 99;
    constexpr std::size_t sediment_ends = 9;
    const std::size_t segments = file.count(3);
    std::vector<std::size_t> list(file.count(4));
    for (std::size_t &number : list) {
        number = file.random().once_in(4) ? first_of_sediment + file.random().below(sediment_ends)
                                          : file.random().below(ends);
        file.numbers_behind(number, 1);
    }
    for (std::size_t segment = 1; segment <= segments && !list.empty(); ++segment) {
        constexpr std::size_t seldom = 16;
        file.line(std::to_string(segment));
        for (const std::size_t number : list)
            file.numbers_behind(file.random().once_in(seldom) ? number + 1 : number, 1);
    }
}

void write_constants(FileWriter &file) {
    constexpr std::size_t ends = 251;
    constexpr std::size_t first_of_sediment = 1139;
    constexpr std::size_t sediment_ends = 80;
    for (std::size_t constant = file.count(8); constant > 0; --constant)
        file.numbers_behind(file.random().once_in(4)
                                ? first_of_sediment + file.random().below(sediment_ends)
                                : file.random().below(ends),
                            1);
}

void write_initial_conditions(FileWriter &file) {
    const std::size_t systems = file.count(4);
    const std::size_t segments = file.count(3);
    for (std::size_t system = systems; system > 0; --system) {
        file.any_text();
        for (int value = 0; value < 3; ++value)
            file.numbers(1);
        file.any_text();
        for (std::size_t place = 1; place <= segments; ++place)
            file.numbers_behind(
                file.random().once_in(4) ? 1 + file.random().below(segments) : place, 2);
    }
}

// Sections of the current format that are not legacy ones behind a heading

void write_current_opening(FileWriter &file) {
    file.any_name();
    file.line("1 2 2003 4 5 6");
    file.line("7 8 2009 10 11 12");
    file.line("30");
    const std::size_t systems = file.count(3);
    for (int option = 0; option < 6; ++option)
        file.line("1");
    file.line(".75");
    file.line(".01 .5");
    file.line(".25");
    for (std::size_t i = 0; i < systems; ++i)
        file.line("NH-34     Ammonia");
}

/// Returns whether the first segment has a hydrodynamic file.
bool write_current_segments(FileWriter &file) {
    const bool has_hydrodynamic_file = file.random().once_in(3);
    file.any_name();
    const std::size_t segments = file.count(3);
    file.line("1");
    file.line(".5");
    file.line("2 3");
    file.line("Names");
    for (std::size_t i = 1; i <= segments; ++i)
        file.line("    1     Pool");
    file.line("Geometry");
    for (std::size_t i = 1; i <= segments; ++i) {
        constexpr std::size_t width = 5;
        file.columns(0, width, i);
        file.columns(0, width, std::size_t{0});
        file.columns(0, width, std::size_t{1});
        file.columns(0, width, std::size_t{has_hydrodynamic_file == (i == 1) ? 3U : 1U});
        file.real_columns(width);
        file.end_line();
    }
    return has_hydrodynamic_file && segments > 0;
}

void write_current_time_functions(FileWriter &file) {
    constexpr std::size_t ends = 34;
    file.any_name();
    for (std::size_t function = file.count(4); function > 0; --function) {
        file.line(std::to_string(file.random().below(ends)));
        file.pairs();
    }
}

void write_current_segment_parameters(FileWriter &file) {
    constexpr std::size_t ends = 43;
    constexpr std::size_t seldom = 8;
    constexpr std::size_t number_width = 5;
    constexpr std::size_t class_width = 3;
    file.any_name();
    const std::size_t segments = file.count(3);
    std::vector<std::size_t> list(file.count(3));
    file.any_name();
    for (std::size_t &number : list) {
        number = file.random().below(ends);
        file.columns(7, number_width, number);
        file.columns(11, class_width, 1 + number % 3);
        file.real_columns(8);
        file.end_line();
    }
    if (list.empty())
        return;
    file.any_name();
    for (std::size_t segment = 1; segment <= segments; ++segment) {
        file.line(std::to_string(segment));
        for (const std::size_t number : list) {
            file.columns(11, number_width, file.random().once_in(seldom) ? number + 1 : number);
            file.columns(16, class_width, 1 + number % 3);
            file.real_columns(19);
            file.end_line();
        }
    }
}

void write_current_constants(FileWriter &file) {
    constexpr std::size_t ends = 256;
    constexpr std::size_t width = 5;
    file.any_name();
    for (std::size_t constant = file.count(6); constant > 0; --constant) {
        file.columns(7, width, file.random().below(ends));
        file.columns(11, width, file.random().below(4));
        file.real_columns(18);
        file.end_line();
    }
}

} // namespace

NewFile new_legacy_file(std::uint32_t seed) {
    constexpr std::array sections = {
        write_opening,     write_segments,          write_flow_paths,
        write_flow_series, write_exchanges,         write_boundaries,
        write_loads,       write_time_functions,    write_segment_parameters,
        write_constants,   write_initial_conditions};
    FileWriter file(seed);
    for (const auto write : sections) {
        file.start_section();
        write(file);
    }
    return file.finished();
}

NewFile new_current_file(std::uint32_t seed) {
    FileWriter file(seed);
    const auto write_behind_heading = [&](void (*write)(FileWriter &)) {
        file.start_section();
        file.any_name();
        write(file);
    };
    file.start_section();
    write_current_opening(file);
    file.start_section();
    const bool has_hydrodynamic_file = write_current_segments(file);
    file.start_section();
    file.any_name();
    file.any_name();
    write_flow_fields(file, has_hydrodynamic_file);
    write_behind_heading(write_flow_series);
    write_behind_heading(write_exchanges);
    write_behind_heading(write_boundaries);
    write_behind_heading(write_loads);
    file.start_section();
    write_current_time_functions(file);
    file.start_section();
    write_current_segment_parameters(file);
    file.start_section();
    write_current_constants(file);
    write_behind_heading(write_initial_conditions);
    return file.finished();
}

} // namespace kova_fuzz

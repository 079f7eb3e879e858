#include "fuzz/file_mutator.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <random>
#include <vector>

namespace kova_fuzz {

namespace {

using Lines = std::vector<std::string>;

class Random {
  public:
    explicit Random(std::uint32_t seed) : engine_(seed) { engine_.discard(3); }

    /// From 0 to `end` - 1; 0 when there is none.
    std::size_t below(std::size_t end) { return end == 0 ? 0 : engine_() % end; }
    /// True once in `times`.
    bool once_in(std::size_t times) { return below(times) == 0; }

    template <std::size_t size>
    std::string_view any_of(const std::array<std::string_view, size> &choices) {
        return choices[below(size)];
    }

  private:
    std::minstd_rand engine_;
};

// Counts that want to do harm, and values that are none. The 100000 segments that a file may
// announce without a record for each are left out: they make millions of commands, which take long
// here.
constexpr std::array<std::string_view, 29> hostile_values = {
    "-1",   "-2147483648", "2147483647", "2147483648", "170000", "170001",  "100001",   "50",
    "3000", "400",         "51",         "29",         "28",     "/",       ",",        ",,",
    "2*",   "3*1",         "0*1",        "''",         "'a",     "\"a b\"", "1.4e-45d", "3.5e38",
    "-0.0", ".",           "NaN",        "1E",         "\t"};

constexpr std::array<std::string_view, 8> hostile_lines = {
    "", "/", "0", "1", "1 1", "   1.5     2.5 ", "Surface water", "\x1A"};

constexpr std::array<std::string_view, 5> texts = {
    "Surface water", "", "/", "A description that is longer than thirty columns", "'Main' stem"};

// Of free-form texts, which end at a blank.
constexpr std::array<std::string_view, 5> names = {"Air", "/", "'Water temperature'",
                                                   "'A name that is longer than thirty columns'",
                                                   "\"It\"\"s\""};

Lines lines_of(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.emplace_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return lines;
}

std::string joined(const Lines &lines) {
    std::string text;
    for (const std::string &line : lines)
        text += line;
    return text;
}

bool is_blank(char character) { return character == ' ' || character == '\n' || character == '\r'; }

struct Token {
    std::size_t start = 0;
    std::size_t size = 0;
};

std::vector<Token> tokens_of(std::string_view line) {
    std::vector<Token> tokens;
    std::size_t i = 0;
    while (i < line.size()) {
        const std::size_t start = i;
        while (i < line.size() && !is_blank(line[i]))
            ++i;
        if (i > start)
            tokens.push_back({start, i - start});
        else
            ++i;
    }
    return tokens;
}

/// A count if the line is one: a single whole number of at most three digits.
bool take_count(std::string_view line, int &count) {
    constexpr std::size_t digits = 3;
    const std::vector<Token> tokens = tokens_of(line);
    if (tokens.size() != 1 || tokens[0].size > digits)
        return false;
    const char *first = line.data() + tokens[0].start;
    const char *last = first + tokens[0].size;
    return std::from_chars(first, last, count).ptr == last && count >= 0;
}

// Changes of a file that has at least one line

void change_value(Lines &lines, Random &random) {
    std::string &line = lines[random.below(lines.size())];
    const std::vector<Token> tokens = tokens_of(line);
    if (tokens.empty()) {
        line.insert(0, random.any_of(hostile_values));
        return;
    }
    const Token token = tokens[random.below(tokens.size())];
    const std::string value = random.once_in(2) ? std::string(random.any_of(hostile_values))
                                                : std::to_string(random.below(5));
    line.replace(token.start, token.size, value);
}

void drop_value(Lines &lines, Random &random) {
    std::string &line = lines[random.below(lines.size())];
    const std::vector<Token> tokens = tokens_of(line);
    if (tokens.empty())
        return;
    const Token token = tokens[random.below(tokens.size())];
    line.replace(token.start, token.size, random.once_in(2) ? "" : ",");
}

void drop_line(Lines &lines, Random &random) {
    lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(random.below(lines.size())));
}

void double_line(Lines &lines, Random &random) {
    const std::size_t row = random.below(lines.size());
    const std::string line = lines[row];
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(row), line);
}

void swap_lines(Lines &lines, Random &random) {
    std::swap(lines[random.below(lines.size())], lines[random.below(lines.size())]);
}

void copy_line(Lines &lines, Random &random) {
    const std::string line = lines[random.below(lines.size())];
    lines[random.below(lines.size())] = line;
}

void replace_line(Lines &lines, Random &random) {
    lines[random.below(lines.size())] = std::string(random.any_of(hostile_lines)) + "\n";
}

void cut_file(Lines &lines, Random &random) {
    lines.resize(random.below(lines.size()) + 1);
    std::string &last = lines.back();
    if (random.once_in(2))
        last.resize(random.below(last.size() + 1));
}

/// The record of a count that is one larger, and one more of what follows it.
void grow(Lines &lines, Random &random) {
    constexpr std::size_t most_tries = 8;
    constexpr std::size_t longest_block = 6;
    for (std::size_t i = 0; i < most_tries; ++i) {
        const std::size_t row = random.below(lines.size());
        int count = 0;
        if (!take_count(lines[row], count))
            continue;
        lines[row] = std::to_string(count + 1) + "\n";
        const std::size_t most = std::min(longest_block, lines.size() - row - 1);
        const std::size_t size = random.below(most + 1);
        const auto first = lines.begin() + static_cast<std::ptrdiff_t>(row) + 1;
        const Lines block(first, first + static_cast<std::ptrdiff_t>(size));
        lines.insert(first, block.begin(), block.end());
        return;
    }
}

void change_line_end(Lines &lines, Random &random) {
    std::string &line = lines[random.below(lines.size())];
    if (line.ends_with('\n'))
        line.insert(line.size() - 1, 1, '\r');
}

// New files

/// Writes the lines of a file whose counts are small.
class FileWriter {
  public:
    explicit FileWriter(std::uint32_t seed) : random_(seed) {}

    Random &random() { return random_; }
    [[nodiscard]] const std::string &text() const { return text_; }

    void line(std::string_view content) {
        text_ += content;
        text_ += '\n';
    }
    std::size_t count(std::size_t most) {
        const std::size_t value = random_.below(most + 1);
        line(std::to_string(value));
        return value;
    }
    /// A record of small numbers behind a whole number of its own.
    void numbers_behind(std::size_t number, std::size_t size) {
        text_ += std::to_string(number);
        text_ += ' ';
        numbers(size);
    }
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
    std::string text_;
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

void write_flow_paths(FileWriter &file) {
    const bool has_hydrodynamic_file = file.random().once_in(3);
    file.line(has_hydrodynamic_file ? "3" : "1");
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

} // namespace

std::string mutated_file(std::string_view text, std::uint32_t seed) {
    // What keeps counts and records together comes more than once.
    constexpr std::array changes = {change_value, change_value,   change_value, drop_value,
                                    grow,         grow,           grow,         drop_line,
                                    double_line,  swap_lines,     copy_line,    replace_line,
                                    cut_file,     change_line_end};
    constexpr std::size_t most_changes = 3;
    Random random(seed);
    Lines lines = lines_of(text);
    for (std::size_t i = random.below(most_changes) + 1; i > 0 && !lines.empty(); --i)
        changes[random.below(changes.size())](lines, random);
    return joined(lines);
}

std::string joined_files(std::string_view start, std::string_view end, std::uint32_t seed) {
    Random random(seed);
    Lines lines = lines_of(start);
    const Lines others = lines_of(end);
    lines.resize(random.below(lines.size() + 1));
    const std::size_t first = random.below(others.size() + 1);
    lines.insert(lines.end(), others.begin() + static_cast<std::ptrdiff_t>(first), others.end());
    return joined(lines);
}

std::string new_legacy_file(std::uint32_t seed) {
    FileWriter file(seed);
    write_opening(file);
    write_segments(file);
    write_flow_paths(file);
    write_flow_series(file);
    write_exchanges(file);
    write_boundaries(file);
    write_loads(file);
    write_time_functions(file);
    write_segment_parameters(file);
    write_constants(file);
    write_initial_conditions(file);
    return file.text();
}

} // namespace kova_fuzz

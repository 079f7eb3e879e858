#include "fuzz/file_mutator.h"

#include "fuzz/random.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace kova_fuzz {

namespace {

using Lines = std::vector<std::string>;

// Counts that want to do harm, and values that are none. The 100000 segments that a file may
// announce without a record for each are left out: they make millions of commands, which take long
// here.
constexpr std::array<std::string_view, 29> hostile_values = {
    "-1",   "-2147483648", "2147483647", "2147483648", "170000", "170001",  "100001",   "50",
    "3000", "400",         "51",         "29",         "28",     "/",       ",",        ",,",
    "2*",   "3*1",         "0*1",        "''",         "'a",     "\"a b\"", "1.4e-45d", "3.5e38",
    "-0.0", ".",           "NaN",        "1E",         "\t"};

// What may stand in a column of a fixed layout. Blanks are no value there and end none.
constexpr std::array<std::string_view, 20> column_values = {
    "     ", "          ", "1",  "    1", "   12", "99999",      "-9999",
    "1 2",   "+3",         "-",  "1.5",   ".",     "1.5D+03",    "-.5",
    "12-3",  "1E",         "\t", ",",     "NaN",   "0.000000001"};

constexpr std::array<std::string_view, 8> hostile_lines = {
    "", "/", "0", "1", "1 1", "   1.5     2.5 ", "Surface water", "\x1A"};

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

/// Writes over the columns where a value stands, and leaves all others where they are.
void overwrite_value(Lines &lines, Random &random) {
    std::string &line = lines[random.below(lines.size())];
    const std::vector<Token> tokens = tokens_of(line);
    if (tokens.empty())
        return;
    const Token token = tokens[random.below(tokens.size())];
    const std::string_view value =
        random.once_in(2) ? random.any_of(hostile_values) : random.any_of(column_values);
    const std::size_t end = token.start + token.size;
    const std::size_t width = std::min(std::max(token.size, value.size()), end);
    std::string columns(width - std::min(width, value.size()), ' ');
    columns += value.substr(0, width);
    line.replace(end - width, width, columns);
}

/// A number wherever it falls, in columns that are read, skipped or both.
void overwrite_columns(Lines &lines, Random &random) {
    std::string &line = lines[random.below(lines.size())];
    const std::string_view value = random.any_of(column_values);
    const std::size_t room = line.size() - (line.ends_with('\n') ? 1 : 0);
    if (room < value.size())
        return;
    line.replace(random.below(room - value.size() + 1), value.size(), value);
}

void cut_line(Lines &lines, Random &random) {
    std::string &line = lines[random.below(lines.size())];
    const bool has_end = line.ends_with('\n');
    line.resize(random.below(line.size() + 1));
    if (has_end)
        line += '\n';
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

} // namespace

std::string_view file_behind(std::size_t options, const std::uint8_t *data, std::size_t size) {
    return {reinterpret_cast<const char *>(data) + options, size - options};
}

std::size_t put_file_behind(std::size_t options, std::string_view file, std::uint8_t *data,
                            std::size_t most) {
    const std::size_t size = std::min(file.size(), most - options);
    std::copy_n(file.data(), size, data + options);
    return options + size;
}

std::string mutated_file(std::string_view text, std::uint32_t seed) {
    // What keeps counts and records together comes more than once.
    constexpr std::array changes = {change_value,
                                    change_value,
                                    change_value,
                                    overwrite_value,
                                    overwrite_value,
                                    overwrite_columns,
                                    cut_line,
                                    drop_value,
                                    grow,
                                    grow,
                                    grow,
                                    drop_line,
                                    double_line,
                                    swap_lines,
                                    copy_line,
                                    replace_line,
                                    cut_file,
                                    change_line_end};
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

std::string stretched_file(std::string_view text, std::uint32_t seed) {
    constexpr std::size_t most_tries = 32;
    constexpr std::size_t longest_block = 3;
    constexpr std::size_t blocks = 60000;
    Random random(seed);
    Lines lines = lines_of(text);
    for (std::size_t i = 0; i < most_tries && lines.size() > longest_block; ++i) {
        const std::size_t row = random.below(lines.size() - longest_block);
        int count = 0;
        if (!take_count(lines[row], count))
            continue;
        lines[row] = std::to_string(blocks + static_cast<std::size_t>(count)) + "\n";
        const auto first = lines.begin() + static_cast<std::ptrdiff_t>(row) + 1;
        const Lines block(first,
                          first + 1 + static_cast<std::ptrdiff_t>(random.below(longest_block)));
        std::string start = joined({lines.begin(), first});
        const std::string repeated = joined(block);
        for (std::size_t number = 0; number < blocks; ++number)
            start += repeated;
        return start + joined({first, lines.end()});
    }
    return std::string(text);
}

} // namespace kova_fuzz

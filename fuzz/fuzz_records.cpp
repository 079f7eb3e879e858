// Fuzzes the record reader, with the programs of record_program.h.

#include "fuzz/fuzz_support.h"
#include "fuzz/record_program.h"

#include "control/number_text.h"
#include "control/plain_number.h"
#include "control/record_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace kova_fuzz {
namespace {

using kova_import::NumberText;
using kova_import::ReadFailure;
using kova_import::ReadFailureKind;
using kova_import::RecordReader;

// Numbers

/// A real number as the C library understands it, or nothing when `token` is none.
std::optional<std::string> spelled_for_c(std::string_view token) {
    std::string text;
    std::size_t i = 0;
    bool any_digit = false;
    const auto take_digits = [&] {
        const std::size_t start = i;
        while (i < token.size() && is_digit(token[i]))
            text += token[i++];
        return i != start;
    };
    const auto take_sign = [&] {
        const bool has = i < token.size() && (token[i] == '+' || token[i] == '-');
        if (has)
            text += token[i++];
        return has;
    };
    take_sign();
    any_digit = take_digits();
    if (i < token.size() && token[i] == '.') {
        text += token[i++];
        any_digit = take_digits() || any_digit;
    }
    if (!any_digit)
        return std::nullopt;
    if (i == token.size())
        return text;
    text += 'e';
    const bool has_letter =
        std::string_view("eEdDqQ").find(token[i]) != std::string_view::npos && ++i != 0;
    const bool has_sign = take_sign();
    if ((!has_letter && !has_sign) || !take_digits() || i != token.size())
        return std::nullopt;
    return text;
}

std::optional<float> real_by_c(std::string_view token) {
    const std::optional<std::string> text = spelled_for_c(token);
    if (!text)
        return std::nullopt;
    const float value = std::strtof(text->c_str(), nullptr);
    return std::isinf(value) ? std::nullopt : std::optional(value);
}

std::optional<std::int32_t> integer_by_hand(std::string_view token) {
    const bool negative = token.starts_with('-');
    if (negative || token.starts_with('+'))
        token.remove_prefix(1);
    if (token.empty() || !std::all_of(token.begin(), token.end(), is_digit))
        return std::nullopt;
    constexpr std::int64_t too_much = std::int64_t{1} << 40;
    std::int64_t value = 0;
    for (const char digit : token)
        value = std::min(value * 10 + (digit - '0'), too_much);
    value = negative ? -value : value;
    if (value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return static_cast<std::int32_t>(value);
}

NumberText number_of(std::string_view token) {
    NumberText number;
    for (const char character : token)
        number.push(character);
    return number;
}

template <class T>
bool same_bits(T left, T right) {
    return std::bit_cast<std::uint32_t>(left) == std::bit_cast<std::uint32_t>(right);
}

template <class T>
bool same_bits(const std::optional<T> &left, const std::optional<T> &right) {
    return left.has_value() == right.has_value() && (!left || same_bits(*left, *right));
}

constexpr std::int8_t untouched = -77;

/// What the fast way takes from the start of `token` is what the long way makes of the same
/// characters.
template <class T, class LongWay>
void check_plain(std::string_view token, LongWay long_way) {
    const char *first = token.data();
    T value = untouched;
    const bool taken = kova_import::take_plain_number(first, token.data() + token.size(), value);
    const std::ptrdiff_t length = first - token.data();
    require(length >= 0 && length <= std::ssize(token), "a plain number ends in the text");
    require(taken == (length != 0), "only a success moves on");
    if (!taken) {
        require(value == T{untouched}, "only a success changes the value");
        return;
    }
    const std::optional<T> expected =
        long_way(number_of(token.substr(0, static_cast<std::size_t>(length))));
    require(expected && same_bits(value, *expected), "plain numbers are what the long way reads");
}

void check_token(std::string_view token) {
    const NumberText number = number_of(token);
    require(same_bits(number.real(), real_by_c(token)), "reals are what the C library reads");
    require(number.integer() == integer_by_hand(token), "integers are what digits say");

    check_plain<float>(token, [&](const NumberText &taken) { return taken.real(); });
    check_plain<std::int32_t>(token, [&](const NumberText &taken) { return taken.integer(); });
}

void check_field(std::string_view text, std::size_t decimals) {
    std::string dense(text);
    std::erase(dense, ' ');
    const NumberText number = number_of(dense);
    const std::optional<std::int32_t> expected_integer = dense.empty() ? 0 : number.integer();
    std::int32_t integer = untouched;
    require(kova_import::convert_field(text, integer) == expected_integer.has_value() &&
                integer == expected_integer.value_or(untouched),
            "an integer field is its characters without blanks");
    const std::optional<float> expected_real = dense.empty() ? 0.0F : number.real(decimals);
    float real = untouched;
    require(kova_import::convert_field(text, decimals, real) == expected_real.has_value() &&
                same_bits(real, expected_real.value_or(untouched)),
            "a real field is its characters without blanks");
}

void check_numbers(const TextLines &lines) {
    constexpr std::int64_t most_lines = 40;
    constexpr int most_tokens = 200;
    constexpr std::array<std::tuple<std::size_t, std::size_t, std::size_t>, 5> columns = {
        {{0, 5, 0}, {5, 5, 2}, {20, 15, 5}, {0, 40, 9}, {10, 1, 3}}};
    int tokens = 0;
    for (std::int64_t i = 1; i <= std::min(lines.count(), most_lines); ++i) {
        std::string_view line = lines.line(i);
        for (const auto &[offset, width, decimals] : columns)
            check_field(line.substr(std::min(offset, line.size()), width), decimals);
        while (!line.empty() && ++tokens < most_tokens) {
            const std::size_t end = std::min(line.find_first_of(" \t\r,/*'\""), line.size());
            check_token(line.substr(0, end));
            line.remove_prefix(std::min(end + 1, line.size()));
        }
    }
}

// Read statements

/// A reader on a file, and what its statements have done.
class Session {
  public:
    explicit Session(const MemoryFile &file) : reader_(exported_counter_) {
        require(reader_.stream().open(file.path()) == nullptr, "the file can be opened");
        reader_.start_counting();
    }

    void skip_first_line() { statements_.skip_first_line(); }

    /// Runs the program until a statement fails or the file has ended; after that nothing must
    /// change any more.
    void run(std::string_view program, const TextLines &lines) {
        constexpr int most_rounds = 50;
        for (int round = 0; round < most_rounds && reader_.ok(); ++round) {
            for (std::size_t i = 0; i < program.size() && reader_.ok(); ++i) {
                const std::int64_t line = place().line;
                statements_.perform(program[i]);
                check_counter();
                if (!reader_.ok())
                    continue;
                check_place(lines);
                const bool may_be_none = program[i] == 'r' || program[i] == '%';
                require(place().line > line || may_be_none || reader_.stream().at_end_of_file(),
                        "a statement goes on in the file");
            }
            if (reader_.stream().at_end_of_file())
                break;
        }
        if (!reader_.ok())
            check_that_nothing_changes();
    }

    [[nodiscard]] const Targets &targets() const { return statements_.targets(); }
    [[nodiscard]] const ReadFailure &failure() const { return reader_.failure(); }
    [[nodiscard]] std::int64_t begun() const { return statements_.begun(); }
    [[nodiscard]] kova_import::FilePlace place() { return reader_.stream().place(); }

  private:
    void check_counter() {
        require(reader_.line_counter() == begun() + 1,
                "the counter is the statements begun plus 1");
        require(exported_counter_ == begun() + 1, "the host's counter is the reader's");
    }

    void check_place(const TextLines &lines) {
        kova_import::RecordStream &stream = reader_.stream();
        const kova_import::FilePlace place = stream.place();
        require(lines.has(place), "the stream is in the file");
        require(stream.mark().line_start == lines.offset(place.line),
                "a line starts where its number says");
        require(place.column == 1 || stream.at_end_of_file(),
                "a statement ends at the start of a line or at the end of the file");
    }

    void check_that_nothing_changes() {
        const kova_import::FilePlace failed_at = reader_.failure().place;
        const kova_import::FilePlace stream_at = place();
        Statements<RecordReader> later = statements_;
        for (const char letter : letters)
            later.perform(letter);
        check_counter();
        require(std::memcmp(&targets(), &later.targets(), sizeof(Targets)) == 0,
                "a statement behind a failure changes no target");
        require(reader_.failure().place.line == failed_at.line &&
                    reader_.failure().place.column == failed_at.column,
                "the first failure stays");
        require(place().line == stream_at.line && place().column == stream_at.column,
                "a statement behind a failure reads nothing");
    }

    std::int32_t exported_counter_ = 0;
    RecordReader reader_;
    Statements<RecordReader> statements_{reader_};
};

// Failures

/// What is quoted goes from its quote to the one that closes it.
void check_quoted(std::string_view behind, std::int64_t width) {
    require(width >= 2, "two quotes are two bytes");
    const std::string_view quoted = behind.substr(0, static_cast<std::size_t>(width));
    const char quote = quoted.front();
    require(quote == '\'' || quote == '"', "it starts with a quote");
    require(quoted.back() == quote && !behind.substr(quoted.size()).starts_with(quote),
            "it ends with the quote that closes it");
    require(std::count(quoted.begin(), quoted.end(), quote) % 2 == 0, "quotes come in pairs");
}

void check_failure(const ReadFailure &failure, std::int64_t begun, const TextLines &lines) {
    require(failure.statement_number == begun + 1, "a failure has its statement's number");
    require(failure.statement[0] != '\0', "a failure has its statement");
    const ShownFailure shown{failure.place, failure.width, failure.found.view(),
                             failure.line_text.view(), failure.line_text_column};
    check_shown_failure(shown, lines);
    if (must_show_line(shown, lines)) {
        constexpr std::int64_t shown_before = 160;
        require(shown.line_text_column ==
                    std::max(shown.place.column - shown_before, std::int64_t{1}),
                "the shown text starts where it should");
        require(!shown.line_text.empty() || lines.line(shown.place.line) == "\r",
                "the line is shown");
    }
    const kova_import::FilePlace end = lines.end_place();
    switch (failure.kind) {
    case ReadFailureKind::end_of_file:
        require(shown.place.line == end.line && shown.place.column == end.column,
                "the end of the file is where it is");
        require(shown.width == 0 && shown.found.empty(), "nothing stands at the end");
        break;
    case ReadFailureKind::bad_value:
    case ReadFailureKind::out_of_range:
        require(failure.field[0] != '\0' && failure.expected[0] != '\0',
                "a bad value has its field and what was expected");
        if (std::string_view(failure.advice).starts_with("Take the quotes"))
            check_quoted(lines.behind(shown.place), shown.width);
        break;
    case ReadFailureKind::open_delimiter:
        require(lines.behind(shown.place).size() == static_cast<std::size_t>(shown.width),
                "an open text goes to the end of the file");
        break;
    case ReadFailureKind::wide_text:
        break;
    case ReadFailureKind::none:
    case ReadFailureKind::system_error:
    case ReadFailureKind::not_open:
        require(false, "the failure is of a kind that can be");
    }
}

bool same_text(const char *left, const char *right) { return std::strcmp(left, right) == 0; }

/// A read behind another first line finds the same.
void check_same(Session &plain, Session &moved) {
    require(std::memcmp(&plain.targets(), &moved.targets(), sizeof(Targets)) == 0,
            "the values do not depend on where the file's parts get into memory");
    require(plain.begun() + 1 == moved.begun(), "neither do the statements");
    const ReadFailure &left = plain.failure();
    const ReadFailure &right = moved.failure();
    require(left.kind == right.kind, "neither does the failure");
    if (left.kind == ReadFailureKind::none) {
        require(plain.place().line + 1 == moved.place().line &&
                    plain.place().column == moved.place().column,
                "neither does the place");
        return;
    }
    require(left.place.line + 1 == right.place.line && left.place.column == right.place.column &&
                left.width == right.width,
            "neither does its place");
    require(same_text(left.statement, right.statement) && same_text(left.field, right.field) &&
                same_text(left.expected, right.expected) && same_text(left.advice, right.advice) &&
                left.found.view() == right.found.view(),
            "neither does its description");
}

void run(const Input &input) {
    static MemoryFile file;
    file.write(input.text);
    const TextLines lines(input.text);
    check_numbers(lines);
    Session plain(file);
    plain.run(input.program, lines);
    if (plain.failure().kind != ReadFailureKind::none)
        check_failure(plain.failure(), plain.begun(), lines);
    // Behind another line, a first byte is none, and an end is not the end of nothing.
    if (!input.slide || input.text.empty() || input.text.starts_with("\xEF\xBB\xBF") ||
        is_wide_text(input.text))
        return;

    constexpr std::size_t buffer_size = std::size_t{64} * 1024;
    std::string moved_text(buffer_size - 1 - *input.slide, '.');
    moved_text += '\n';
    moved_text += input.text;
    file.write(moved_text);
    const TextLines moved_lines(moved_text);
    Session moved(file);
    moved.skip_first_line();
    moved.run(input.program, moved_lines);
    if (moved.failure().kind != ReadFailureKind::none)
        check_failure(moved.failure(), moved.begun(), moved_lines);
    check_same(plain, moved);
}

} // namespace
} // namespace kova_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    kova_fuzz::run(kova_fuzz::input_of({reinterpret_cast<const char *>(data), size}));
    return 0;
}

// Performs read statements with the import's record reader, for comparison with a Fortran runtime.
// Arguments, cases and results are those of read_records.f90.

#include "control/record_reader.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

namespace {

using kova_import::field;
using kova_import::FixedText;
using kova_import::Literal;
using kova_import::ReadFailureKind;
using kova_import::RecordReader;

/// The items of one statement as they are shown: the integers, then the reals, then the texts,
/// since the Fortran program keeps them in three places.
struct Shown {
    std::string integers;
    std::string reals;
    std::string texts;
};

void set_untouched(std::int32_t &item) { item = -777777; }
void set_untouched(float &item) { item = std::bit_cast<float>(0x4D123456); }
template <std::size_t n>
void set_untouched(FixedText<n> &item) {
    item.fill('~');
}

void append_hex(std::string &line, std::uint32_t value, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        line += "0123456789ABCDEF"[(value >> shift) & 15U];
}

std::string shown_text(std::string_view text) {
    std::string shown = " \"";
    for (const char character : kova_import::without_trailing_blanks(text))
        append_hex(shown, static_cast<unsigned char>(character), 2);
    return shown;
}

void show(std::int32_t item, Shown &shown) {
    shown.integers += ' ';
    shown.integers += std::to_string(item);
}
void show(float item, Shown &shown) {
    shown.reals += ' ';
    append_hex(shown.reals, std::bit_cast<std::uint32_t>(item), 8);
}
template <std::size_t n>
void show(const FixedText<n> &item, Shown &shown) {
    shown.texts += shown_text(item.view());
}

template <class... T, class Statement>
void perform(Shown &shown, Statement statement) {
    std::tuple<T...> items;
    std::apply(
        [&](T &...each) {
            (set_untouched(each), ...);
            statement(field("item", each)...);
            (show(each, shown), ...);
        },
        items);
}

template <class... T>
void list_of(RecordReader &reader, Shown &shown) {
    perform<T...>(shown, [&](auto... fields) { reader.list("list", fields...); });
}

template <Literal layout, class... T>
void fixed_by(RecordReader &reader, Shown &shown) {
    perform<T...>(shown, [&](auto... fields) { reader.fixed<layout>("record", fields...); });
}

// Twelve integers, of which the first five are kept.
void kept_integers(RecordReader &reader, Shown &shown) {
    std::array<std::int32_t, 5> kept{};
    for (std::int32_t &item : kept)
        set_untouched(item);
    reader.integers("integers", "integer", 12, kept);
    for (const std::int32_t item : kept)
        show(item, shown);
}

using I = std::int32_t;
using R = float;
template <std::size_t n>
using T = FixedText<n>;

struct Statement {
    std::int32_t number;
    void (*perform)(RecordReader &reader, Shown &shown);
};

constexpr auto statements = std::to_array<Statement>({
    {1, list_of<I>},
    {2, list_of<R>},
    {3, list_of<I, I>},
    {4, list_of<R, R>},
    {5, list_of<I, I, R, R>},
    {6, list_of<I, T<40>>},
    {7, list_of<T<80>>},
    {8, list_of<I, I, R, R, R, R, R, R, R, R, R, R>},
    {9, list_of<T<12>, T<6>, I>},
    {10, kept_integers},
    {11, list_of<>},
    {12, list_of<I, R, T<8>>},
    {13, list_of<T<40>, I>},
    {14, list_of<T<512>, I>},
    {21, fixed_by<"(I5,5X,I2)", I, I>},
    {22, fixed_by<"(4(I5),16(F15.5))", I, I, I, I, R, R, R, R, R, R, R, R, R, R, R, R, R, R, R, R>},
    {23, fixed_by<"(2(F10.0))", R, R>},
    {24, fixed_by<"(7X,I5,11x,I3,8X,F10.0)", I, I, R>},
    {25, fixed_by<"(A40)", T<40>>},
    {26, fixed_by<"(I5,5X,A40)", I, T<40>>},
    {27, fixed_by<"(A512)", T<512>>},
    {28, fixed_by<"(F10.4)", R>},
    {29, fixed_by<"(F20.9)", R>},
    {30, fixed_by<"(2(F15.5))", R, R>},
    {31, fixed_by<"(I12)", I>},
    {32, fixed_by<"(A5,5X,A30)", T<5>, T<30>>},
    {33, fixed_by<"(7X,I5,11X,I5,18X,F10.0)", I, I, R>},
    {34, fixed_by<"(F40.3)", R>},
    {35, fixed_by<"(I1,F3.2,I2)", I, R, I>},
    {36, fixed_by<"(F200.0)", R>},
});

const char *outcome_of(const RecordReader &reader) {
    switch (reader.failure().kind) {
    case ReadFailureKind::none:
        return "ok";
    case ReadFailureKind::end_of_file:
    case ReadFailureKind::open_delimiter:
        return "end";
    default:
        return "bad";
    }
}

[[noreturn]] void stop(const std::string &reason) {
    std::fputs((reason + "\n").c_str(), stderr);
    std::exit(1);
}

std::string result_of(std::int32_t number, const std::string &scratch_path) {
    std::int32_t exported_counter = 0;
    RecordReader reader(exported_counter);
    if (const char *reason = reader.stream().open(scratch_path))
        stop(scratch_path + ": " + reason);
    reader.start_counting();
    for (const Statement &statement : statements) {
        if (statement.number != number)
            continue;
        Shown shown;
        statement.perform(reader, shown);
        std::string line = outcome_of(reader) + shown.integers + shown.reals + shown.texts;
        if (!reader.ok())
            return line + " -";
        FixedText<40> next_line;
        reader.fixed<"(A40)">("next line", field("text", next_line));
        return line + (reader.ok() ? shown_text(next_line.view()) : std::string(" end"));
    }
    stop("no such statement: " + std::to_string(number));
}

std::int32_t number_from(std::istream &cases) {
    std::array<char, sizeof(std::int32_t)> bytes{};
    cases.read(bytes.data(), bytes.size());
    if (!cases)
        stop("the cases end too early");
    return std::bit_cast<std::int32_t>(bytes);
}

} // namespace

int main(int argument_count, char **arguments) {
    if (argument_count != 4)
        stop("usage: read_records CASES RESULTS SCRATCH");
    std::ifstream cases(arguments[1], std::ios::binary);
    std::ofstream results(arguments[2], std::ios::binary);
    const std::string scratch_path = arguments[3];
    while (const std::int32_t number = number_from(cases)) {
        std::string text(static_cast<std::size_t>(number_from(cases)), '\0');
        cases.read(text.data(), static_cast<std::streamsize>(text.size()));
        std::ofstream(scratch_path, std::ios::binary | std::ios::trunc) << text;
        results << result_of(number, scratch_path) << '\n';
    }
    return results.flush() ? 0 : 1;
}

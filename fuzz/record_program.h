#pragma once

// What the inputs of the record targets stand for: the first line is a program, one letter a read
// statement; the rest is the file. The program is run over and over, as long as the reads succeed.
//
// In the program, '<' makes fuzz_records read everything a second time behind a first line that is
// so long that the stream's buffer slides somewhere in the file. In the file, the byte 0x01 stands
// for a long run: of the byte behind it, as long as the next byte says.

#include "control/record_reader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace kova_fuzz {

using kova_import::bounded_field;
using kova_import::field;
using kova_import::FixedText;
using kova_import::unused_text;

inline constexpr bool is_digit(char character) { return character >= '0' && character <= '9'; }

// Inputs

inline constexpr std::string_view letters = "abcdefghijklnrABCDEFGHTUV0123456789#%mo";

struct Input {
    std::string program;
    std::optional<std::size_t> slide; ///< bytes of the file before the buffer slides
    std::string text;
};

inline std::string expanded(std::string_view text) {
    constexpr std::size_t longest = 160000;
    constexpr std::size_t run = 97;
    std::string result;
    for (std::size_t i = 0; i < text.size() && result.size() < longest; ++i) {
        if (text[i] == '\x01' && i + 2 < text.size()) {
            const auto times = static_cast<std::size_t>(static_cast<unsigned char>(text[i + 2]));
            result.append((times + 1) * run, text[i + 1]);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

inline Input input_of(std::string_view data) {
    constexpr std::size_t longest_program = 32;
    Input input;
    const std::size_t end = std::min(data.find('\n'), data.size());
    for (std::size_t i = 0; i < std::min(end, longest_program); ++i) {
        const auto value = static_cast<unsigned char>(data[i]);
        if (data[i] == '<' && i + 1 < end) // the byte behind it says where
            input.slide = static_cast<std::size_t>(static_cast<unsigned char>(data[++i])) * 5;
        else if (letters.find(data[i]) != std::string_view::npos)
            input.program += data[i];
        else
            input.program += letters[value % letters.size()];
    }
    input.text = expanded(data.substr(std::min(end + 1, data.size())));
    return input;
}

/// Whether the first bytes may say that the file is in UTF-16 or UTF-32.
inline bool is_wide_text(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") ||
           text.substr(0, 4).find('\0') != std::string_view::npos;
}

// Read statements

/// Where the values go.
struct Targets {
    std::array<std::int32_t, 6> integers{-1, -2, -3, -4, -5, -6};
    std::array<float, 16> reals{};
    std::array<std::int32_t, 28> many{};
    std::int32_t bounded = 0;
    FixedText<1> letter;
    FixedText<5> short_name;
    FixedText<30> long_name;
    FixedText<40> name;
    FixedText<80> title;
    FixedText<512> text;
};
// Targets are compared by their bytes, so there must be none between the members.
static_assert(std::is_trivially_copyable_v<Targets>);
static_assert(sizeof(Targets) == (6 + 16 + 28 + 1) * 4 + 1 + 5 + 30 + 40 + 80 + 512);

/// Performs the statements of a program with a reader, which may be of any type that has those of
/// `RecordReader`.
template <class Reader>
class Statements {
  public:
    explicit Statements(Reader &reader) : reader_(reader) {}

    void perform(char letter);

    /// Goes over the first line.
    void skip_first_line() {
        ++begun_;
        reader_.list("first line");
    }

    [[nodiscard]] std::int64_t begun() const { return begun_; }
    [[nodiscard]] const Targets &targets() const { return targets_; }

  private:
    void perform_list(char letter);
    void perform_fixed(char letter);

    Reader &reader_;
    std::int64_t begun_ = 0;
    Targets targets_;
};

template <class Reader>
void Statements<Reader>::perform_list(char letter) {
    auto &[integers, reals, many, bounded, character, short_name, long_name, name, title, text] =
        targets_;
    constexpr kova_import::Bounds bounds{.smallest = -100, .largest = 100, .expected = "few"};
    switch (letter) {
    case 'a':
        return reader_.list("a", field("1", integers[0]));
    case 'b':
        return reader_.list("b", field("1", integers[1]), field("2", integers[2]));
    case 'c':
        return reader_.list("c", field("1", integers[0]), field("2", integers[1]),
                            field("3", integers[2]), field("4", integers[3]),
                            field("5", integers[4]), field("6", integers[5]));
    case 'd':
        return reader_.list("d", field("1", reals[0]));
    case 'e':
        return reader_.list("e", field("1", reals[1]), field("2", reals[2]));
    case 'f':
        return reader_.list("f", field("1", integers[1]), field("2", name));
    case 'g':
        return reader_.list("g", field("1", integers[1]), field("2", integers[2]),
                            field("3", integers[3]), field("4", reals[0]), field("5", reals[1]),
                            field("6", reals[2]), field("7", reals[3]), field("8", reals[4]),
                            field("9", reals[5]), field("10", reals[6]));
    case 'h':
        return reader_.list("h", field("1", title));
    case 'i':
        return reader_.list("i", field("1", character), field("2", integers[4]),
                            field("3", short_name), field("4", reals[8]), field("5", text));
    case 'j':
        return reader_.list("j", field("1", text), field("2", text));
    case 'k':
        return reader_.list("k", field("1", long_name), field("2", reals[9]), field("3", reals[10]),
                            field("4", reals[11]));
    case 'm':
        return reader_.list("m", bounded_field("1", bounded, bounds), unused_text,
                            field("3", integers[5]));
    case 'o':
        return reader_.list("o", unused_text);
    default:
        return reader_.list("nothing");
    }
}

template <class Reader>
void Statements<Reader>::perform_fixed(char letter) {
    auto &[integers, reals, many, bounded, character, short_name, long_name, name, title, text] =
        targets_;
    switch (letter) {
    case 'A':
        return reader_.template fixed<"(I5,5x,I2)">("A", field("1", integers[0]),
                                                    field("2", integers[1]));
    case 'B':
        return reader_.template fixed<"(A5,5X,A30)">("B", field("1", short_name),
                                                     field("2", long_name));
    case 'C':
        return reader_.template fixed<"(A40)">("C", field("1", name));
    case 'D':
        return reader_.template fixed<"(I5,5X,A40)">("D", field("1", integers[2]),
                                                     field("2", name));
    case 'E':
        return reader_.template fixed<"(4(I5),16(F15.5))">(
            "E", field("1", integers[0]), field("2", integers[1]), field("3", integers[2]),
            field("4", integers[3]), field("5", reals[0]), field("6", reals[1]),
            field("7", reals[2]), field("8", reals[3]), field("9", reals[4]), field("10", reals[5]),
            field("11", reals[6]), field("12", reals[7]), field("13", reals[8]),
            field("14", reals[9]), field("15", reals[10]), field("16", reals[11]),
            field("17", reals[12]), field("18", reals[13]), field("19", reals[14]),
            field("20", reals[15]));
    case 'F':
        return reader_.template fixed<"(F10.0,F8.3,2(I3,X,F1.0),A1)">(
            "F", field("1", reals[3]), field("2", reals[4]), field("3", integers[4]),
            field("4", reals[5]), field("5", integers[5]), field("6", reals[6]),
            field("7", character));
    case 'G':
        return reader_.template fixed<"(2(F4.2,I1),A5)">(
            "G", field("1", reals[7]), field("2", integers[0]), field("3", reals[8]),
            field("4", integers[1]), field("5", short_name));
    default:
        return reader_.template fixed<"(980X,F15.5,I5,3X,A1)">(
            "H", field("1", reals[9]), field("2", integers[3]), field("3", character));
    }
}

template <class Reader>
void Statements<Reader>::perform(char letter) {
    constexpr std::array<std::int32_t, 10> counts = {
        -1, 0, 1, 2, 5, 27, 28, 29, 1000, std::numeric_limits<std::int32_t>::max()};
    ++begun_;
    switch (letter) {
    case 'T':
        return static_cast<void>(reader_.unguarded_list("T", targets_.title));
    case 'U':
        return reader_.template unguarded_fixed<"(A40)">("U", targets_.name);
    case 'V':
        return static_cast<void>(reader_.unguarded_list("V", targets_.letter));
    case '#':
        return reader_.integers("#", "number", targets_.integers[0], targets_.many);
    case 'r':
    case '%':
        --begun_;
        return reader_.for_each_record(targets_.integers[0], [&](std::int32_t) {
            ++begun_;
            if (letter == 'r')
                perform_list('g');
            else
                perform_fixed('D');
        });
    default:
        if (is_digit(letter))
            return reader_.integers("digit", "number",
                                    counts[static_cast<std::size_t>(letter - '0')], targets_.many);
        return letter >= 'a' ? perform_list(letter) : perform_fixed(letter);
    }
}

} // namespace kova_fuzz

#pragma once

// Numbers as they stand in a file, converted once and exactly.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kova_import {

/// Takes the characters of one number, one by one, however many there are, and says at the end
/// which integer or real they spell. Memory does not grow with the text: of the digits it keeps as
/// many as can decide the rounding.
class NumberText {
  public:
    void clear() { *this = NumberText{}; }

    /// Takes the next character. What is no part of a number makes the whole text unconvertible.
    void push(char character);

    /// [sign] digits, within 32 bits.
    [[nodiscard]] std::optional<std::int32_t> integer() const;

    /// [sign] digits with at most one point [exponent], rounded to the nearest single-precision
    /// number. A text without point and exponent has `implied_decimals` decimals. Nothing when
    /// there are no digits, or when the nearest number would be infinite.
    [[nodiscard]] std::optional<float> real(std::size_t implied_decimals = 0) const;

  private:
    enum class State : std::uint8_t {
        start,
        sign,
        digits,
        point,
        exponent_letter,
        exponent_sign,
        exponent_digits,
        bad,
    };

    void push_digit(unsigned digit);
    void push_exponent_digit(unsigned digit);
    [[nodiscard]] std::optional<float> round(std::int64_t exponent) const;

    // The decimal expansion of a single-precision number, or of the middle between two, has at most
    // 113 significant digits; a 1 in place of what follows decides the rounding as the whole text
    // would.
    static constexpr std::size_t kept_digits = 120;

    State state_ = State::start;
    bool negative_ = false;
    bool exponent_negative_ = false;
    bool any_digit_ = false;
    bool more_digits_ = false; ///< a digit other than 0 follows the kept ones
    std::array<char, kept_digits + 1> digits_{};
    std::size_t digit_count_ = 0;
    std::int64_t scale_ = 0; ///< power of ten of the digit behind the last kept one, exponent aside
    std::int64_t exponent_ = 0;
};

/// A fixed-column field: blanks are ignored wherever they stand, and a blank field is 0. Says
/// whether it could be converted; if not, `value` is unchanged.
[[nodiscard]] bool convert_field(std::string_view field, std::int32_t &value);
[[nodiscard]] bool convert_field(std::string_view field, std::size_t implied_decimals,
                                 float &value);

} // namespace kova_import

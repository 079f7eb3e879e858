#pragma once

// Fixed-column record layouts, spelled as modellers know them, "(I5,5X,A40)", and taken apart by
// the compiler. No column number stands in a reader.

#include "control/literal.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kova_import {

enum class FieldKind : std::uint8_t { integer, real, text };

/// One field of a fixed-column record.
struct LayoutField {
    FieldKind kind = FieldKind::integer;
    std::size_t offset = 0;   ///< column of its first character, from 0
    std::size_t width = 0;    ///< columns
    std::size_t decimals = 0; ///< implied decimals of a real without a decimal point
};

template <std::size_t field_count>
struct RecordLayout {
    std::array<LayoutField, field_count> fields{};
    std::size_t width = 0; ///< columns up to the end of the last field
};

namespace record_layout_grammar {

/// Goes through a layout text once and hands every field to `take`. A text that is no layout does
/// not compile, since the throws cannot be evaluated then.
template <class Take>
class Parser {
  public:
    constexpr Parser(std::string_view text, Take take) : text_(text), take_(take) {}

    constexpr void parse() {
        group();
        if (position_ != text_.size())
            throw "text behind the layout";
    }

  private:
    constexpr char next() {
        if (position_ == text_.size())
            throw "the layout ends too early";
        return text_[position_++];
    }

    constexpr bool at_digit() const {
        return position_ < text_.size() && text_[position_] >= '0' && text_[position_] <= '9';
    }

    constexpr std::size_t number() {
        if (!at_digit())
            throw "a number is missing";
        std::size_t value = 0;
        while (at_digit())
            value = value * 10 + static_cast<std::size_t>(text_[position_++] - '0');
        if (value == 0 || value > 1000)
            throw "a width or count is out of range";
        return value;
    }

    constexpr void group() {
        if (next() != '(')
            throw "an opening parenthesis is missing";
        for (;;) {
            item();
            const char delimiter = next();
            if (delimiter == ')')
                return;
            if (delimiter != ',')
                throw "a comma is missing";
        }
    }

    constexpr void item() {
        const std::size_t count = at_digit() ? number() : 1;
        if (position_ < text_.size() && text_[position_] == '(') {
            const std::size_t start = position_;
            for (std::size_t i = 0; i < count; ++i) {
                position_ = start;
                group();
            }
            return;
        }
        const char letter = next();
        if (letter == 'X' || letter == 'x') {
            offset_ += count;
            return;
        }
        const std::size_t start = position_;
        for (std::size_t i = 0; i < count; ++i) {
            position_ = start;
            field(letter);
        }
    }

    constexpr void field(char letter) {
        LayoutField field;
        field.offset = offset_;
        field.width = number();
        if (letter == 'I') {
            field.kind = FieldKind::integer;
        } else if (letter == 'A') {
            field.kind = FieldKind::text;
        } else if (letter == 'F') {
            field.kind = FieldKind::real;
            if (next() != '.' || !at_digit())
                throw "the decimals of a real are missing";
            field.decimals = static_cast<std::size_t>(text_[position_++] - '0');
        } else {
            throw "no such edit descriptor";
        }
        offset_ += field.width;
        take_(field);
    }

    std::string_view text_;
    Take take_;
    std::size_t position_ = 0;
    std::size_t offset_ = 0;
};

consteval std::size_t count_fields(std::string_view text) {
    std::size_t count = 0;
    Parser(text, [&count](const LayoutField &) { ++count; }).parse();
    return count;
}

template <std::size_t count>
consteval RecordLayout<count> parse(std::string_view text) {
    RecordLayout<count> layout;
    std::size_t i = 0;
    Parser(text, [&](const LayoutField &field) {
        layout.fields[i++] = field;
        layout.width = field.offset + field.width;
    }).parse();
    return layout;
}

} // namespace record_layout_grammar

/// The layout that a text spells: I, F and A fields, nX, groups and repeat counts.
template <Literal text>
inline constexpr auto record_layout =
    record_layout_grammar::parse<record_layout_grammar::count_fields(text.view())>(text.view());

} // namespace kova_import

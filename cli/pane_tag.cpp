#include "cli/pane_tag.h"

#include <algorithm>
#include <array>
#include <bitset>

namespace kova_command {

namespace {

template <class Value>
struct Word {
    std::string_view text;
    Value value;
};

constexpr std::array<Word<PaneElement>, 12> elements = {{{"body", PaneElement::body},
                                                         {"center", PaneElement::center},
                                                         {"table", PaneElement::table},
                                                         {"tbody", PaneElement::tbody},
                                                         {"tr", PaneElement::tr},
                                                         {"td", PaneElement::td},
                                                         {"th", PaneElement::th},
                                                         {"li", PaneElement::li},
                                                         {"span", PaneElement::span},
                                                         {"big", PaneElement::big},
                                                         {"b", PaneElement::b},
                                                         {"br", PaneElement::br}}};

constexpr std::array<Word<PaneInk>, 5> inks = {{{"black", PaneInk::black},
                                                {"white", PaneInk::white},
                                                {"blue", PaneInk::blue},
                                                {"red", PaneInk::red},
                                                {"green", PaneInk::green}}};

constexpr std::array<Word<PaneGround>, 1> grounds = {{{"blue", PaneGround::blue}}};

enum class Attribute : std::uint8_t {
    align,
    border,
    cellpadding,
    cellspacing,
    colspan,
    rowspan,
    style
};

constexpr std::array<Word<Attribute>, 7> attributes = {{{"align", Attribute::align},
                                                        {"border", Attribute::border},
                                                        {"cellpadding", Attribute::cellpadding},
                                                        {"cellspacing", Attribute::cellspacing},
                                                        {"colspan", Attribute::colspan},
                                                        {"rowspan", Attribute::rowspan},
                                                        {"style", Attribute::style}}};

constexpr char lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

constexpr bool is_letter(char character) {
    return lower(character) >= 'a' && lower(character) <= 'z';
}

bool is_digit(char character) { return character >= '0' && character <= '9'; }

std::string lower(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char character) { return lower(character); });
    return result;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

template <class Value, std::size_t n>
std::optional<Value> value_of(const std::array<Word<Value>, n> &words, std::string_view text) {
    const std::string wanted = lower(text);
    for (const Word<Value> &word : words)
        if (word.text == wanted)
            return word.value;
    return std::nullopt;
}

bool is_alignment(const std::string &word) {
    return word == "left" || word == "right" || word == "center";
}

/// A number of one to `most_digits` digits.
std::optional<int> number_of(std::string_view digits, std::size_t most_digits) {
    if (digits.empty() || digits.size() > most_digits ||
        !std::all_of(digits.begin(), digits.end(), is_digit))
        return std::nullopt;
    int number = 0;
    for (const char digit : digits)
        number = 10 * number + (digit - '0');
    return number;
}

bool is_length(std::string_view value) {
    constexpr std::size_t most_digits = 4;
    constexpr std::string_view unit = "px";
    return value.ends_with(unit) &&
           number_of(value.substr(0, value.size() - unit.size()), most_digits).has_value();
}

/// Takes one declaration of a style into account.
bool take_declaration(PaneTag &tag, std::string_view declaration) {
    const std::size_t colon = declaration.find(':');
    if (colon == std::string_view::npos)
        return false;
    const std::string property = lower(trimmed(declaration.substr(0, colon)));
    const std::string value = lower(trimmed(declaration.substr(colon + 1)));
    if (property == "color") {
        tag.ink = value_of(inks, value);
        return tag.ink.has_value();
    }
    if (property == "background-color") {
        tag.ground = value_of(grounds, value);
        return tag.ground.has_value();
    }
    const bool known = (property == "font-weight" && (value == "bold" || value == "normal")) ||
                       (property == "text-align" && is_alignment(value)) ||
                       ((property == "width" || property == "height") && is_length(value));
    // A height was meant for other fonts; rows take what they need.
    if (known && property != "height")
        tag.style += property + ':' + value + ';';
    return known;
}

bool take_style(PaneTag &tag, std::string_view style) {
    while (!trimmed(style).empty()) {
        const std::size_t end = std::min(style.find(';'), style.size());
        if (!take_declaration(tag, style.substr(0, end)))
            return false;
        style.remove_prefix(std::min(end + 1, style.size()));
    }
    return true;
}

bool take_span(int &span, std::string_view value) {
    constexpr std::size_t most_digits = 2;
    const std::optional<int> number = number_of(value, most_digits);
    span = number.value_or(0);
    return span > 0;
}

bool take_attribute(PaneTag &tag, Attribute attribute, std::string_view value) {
    constexpr std::size_t most_digits = 2;
    switch (attribute) {
    case Attribute::align: {
        const std::string alignment = lower(value);
        const bool is_known = is_alignment(alignment);
        if (is_known && tag.element != PaneElement::table)
            tag.style += "text-align:" + alignment + ';';
        return is_known;
    }
    case Attribute::border:
    case Attribute::cellpadding:
    case Attribute::cellspacing: // the page draws all its tables alike
        return tag.element == PaneElement::table && number_of(value, most_digits).has_value();
    case Attribute::colspan:
        return take_span(tag.column_span, value);
    case Attribute::rowspan:
        return take_span(tag.row_span, value);
    case Attribute::style:
        break;
    }
    return take_style(tag, value);
}

/// Reads a tag from left to right.
class TagReader {
  public:
    explicit TagReader(std::string_view html) : html_(html) {}

    std::optional<PaneTag> read() {
        PaneTag tag;
        if (!skip('<'))
            return std::nullopt;
        tag.closes = skip('/');
        const std::optional<PaneElement> element = value_of(elements, word());
        if (!element)
            return std::nullopt;
        tag.element = *element;
        for (skip_blanks(); !skip('>'); skip_blanks())
            if (tag.closes || !read_attribute(tag))
                return std::nullopt;
        tag.size = position_;
        return tag;
    }

  private:
    bool skip(char character) {
        if (position_ >= html_.size() || html_[position_] != character)
            return false;
        ++position_;
        return true;
    }
    void skip_blanks() {
        while (skip(' ') || skip(fragment_boundary)) {
        }
    }
    std::string_view word() {
        const std::size_t start = position_;
        while (position_ < html_.size() && is_letter(html_[position_]))
            ++position_;
        return html_.substr(start, position_ - start);
    }
    bool read_attribute(PaneTag &tag) {
        const std::optional<Attribute> attribute = value_of(attributes, word());
        if (!attribute || seen_[static_cast<std::size_t>(*attribute)] || !skip('=') || !skip('"'))
            return false;
        seen_.set(static_cast<std::size_t>(*attribute));
        const std::size_t end = html_.find('"', position_);
        if (end == std::string_view::npos)
            return false;
        std::string value(html_.substr(position_, end - position_));
        value.erase(std::remove(value.begin(), value.end(), fragment_boundary), value.end());
        position_ = end + 1;
        return take_attribute(tag, *attribute, value);
    }

    std::string_view html_;
    std::size_t position_ = 0;
    std::bitset<attributes.size()> seen_;
};

} // namespace

std::optional<PaneTag> parse_pane_tag(std::string_view html) { return TagReader(html).read(); }

} // namespace kova_command

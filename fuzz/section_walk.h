#pragma once

// Goes through the commands of a section.

#include "fuzz/fuzz_support.h"
#include "fuzz/import_trace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <initializer_list>
#include <string_view>

namespace kova_fuzz {

inline bool is_current_format() {
    constexpr std::int32_t first_version = 3;
    return IMPORT_EXPORT.file_version >= first_version;
}

inline std::int64_t at_least_none(std::int32_t count) { return std::max(count, 0); }

/// Goes through the commands of a section, each of which must be the expected one.
class Walk {
  public:
    explicit Walk(const Stage &stage) : commands_(stage.commands) {}

    [[nodiscard]] bool is_at(std::string_view keyword) const {
        return place_ < commands_.size() && commands_[place_].keyword == keyword;
    }
    [[nodiscard]] bool is_at(std::string_view keyword, std::int32_t number) const {
        return is_at(keyword) && commands_[place_].integer(0) == number;
    }

    /// A command whose first arguments are `numbers`.
    const Sent &take(std::string_view keyword, std::initializer_list<std::int32_t> numbers = {}) {
        require(is_at(keyword), "the commands of a section come in their order");
        const Sent &sent = commands_[place_++];
        require(std::equal(numbers.begin(), numbers.end(), sent.bits.begin()),
                "records are numbered without gaps, within what holds them");
        return sent;
    }
    /// The command that comes next; null at the end.
    [[nodiscard]] const Sent *next() const {
        return place_ < commands_.size() ? &commands_[place_] : nullptr;
    }
    void take_report_line() {
        take("PINFOHTML");
        take("PINFOHTML");
    }
    void end() const { require(place_ == commands_.size(), "nothing follows what was announced"); }

  private:
    const std::deque<Sent> &commands_;
    std::size_t place_ = 0;
};

/// Calls `take(number)` for 1 .. `count`.
template <class Take>
void for_each(std::int32_t count, Take take) {
    for (std::int32_t number = 1; number <= count; ++number)
        take(number);
}

// Reports

constexpr std::int32_t length_of(std::string_view literal) {
    return static_cast<std::int32_t>(literal.size()) + 1; // with its NUL
}
inline constexpr std::int32_t blue_start_length =
    length_of("<li><span style=\"font-weight: bold; color: blue;\">");

inline bool is_transport_only() { return IMPORT_EXPORT.transport_only != 0; }

inline void require_number(float value) {
    require(std::isfinite(value), "what a file leaves out never shows as no number");
}

inline const Sent &take_fragment(Walk &walk, std::int32_t length) {
    return walk.take("PINFOHTML", {length});
}

inline void take_blue_line(Walk &walk, std::string_view text) {
    take_fragment(walk, blue_start_length);
    walk.take("PINFOHTML", {length_of(text), first_bytes(text)});
}

} // namespace kova_fuzz

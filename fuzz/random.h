#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string_view>

namespace kova_fuzz {

/// Gives the same numbers for the same seed.
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

} // namespace kova_fuzz

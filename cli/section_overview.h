#pragma once

// The eleven sections of an import file, and what each brings into a model.

#include "host/model.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kova_command {

/// So many of something.
struct Fact {
    std::int64_t count = 0;
    std::string_view singular;
    std::string_view plural;
};

struct SectionDescription {
    std::string_view name;
    bool transport = false; ///< belongs to the network and its transport
    std::vector<Fact> (*facts)(const kova_host::Model &model) = nullptr;
};

inline constexpr std::size_t section_count = 11;

/// The sections in the order of the file.
[[nodiscard]] const std::array<SectionDescription, section_count> &section_descriptions();

} // namespace kova_command

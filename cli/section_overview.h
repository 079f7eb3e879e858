#pragma once

// The eleven sections of an import file, and what each brings into a model.

#include "cli/notice.h"
#include "host/model.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kova_command {

/// What a fact says of the data of a section.
enum class FactKind : std::uint8_t {
    brought, ///< they came across
    changed, ///< they came across, but not as the file has them, or stand for "none"
    lost,    ///< they did not come across
};

/// So many of something.
struct Fact {
    std::int64_t count = 0;
    std::string_view singular;
    std::string_view plural;
    FactKind kind = FactKind::brought;
    std::string_view id = plural; ///< for programs

    /// Whether it is about more than what came across; people are told only when there is any.
    [[nodiscard]] bool is_remark() const { return kind != FactKind::brought; }
};

struct SectionDescription {
    std::string_view name;
    bool transport = false; ///< belongs to the network and its transport
    /// From what the host holds and what the library told of this section.
    std::vector<Fact> (*facts)(const kova_host::Model &model,
                               const NoticeCounts &notices) = nullptr;
};

inline constexpr std::size_t section_count = 11;

/// The sections in the order of the file.
[[nodiscard]] const std::array<SectionDescription, section_count> &section_descriptions();

} // namespace kova_command

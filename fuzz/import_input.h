#pragma once

// What an input of the import targets stands for: a file, what the host answers and how it is
// imported.

#include "fuzz/fuzz_support.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kova_fuzz {

inline constexpr bool is_current_target = KOVA_FUZZ_FIRST_VERSION == 3;

enum class Path : std::uint8_t { missing, full_stop, plain, long_one };

struct Input {
    std::string file;
    bool transport_only = false;
    bool index_segment_names = true;
    bool answers = true;
    Path path = Path::plain;
    bool has_tables = false; ///< the host writes the flag for them
    bool repeat = false;
    bool is_stretched = false; ///< once more, as a large file
    std::uint32_t hash = 0;
    std::int32_t last_section = 11; ///< behind which the host ends the import
};

/// The first byte of `data` gives the header and the answers.
[[nodiscard]] Input input_of(std::string_view data);

/// The path under which the host names the file.
[[nodiscard]] std::string path_of(const MemoryFile &file, Path kind);

} // namespace kova_fuzz

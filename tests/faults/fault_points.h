#pragma once

// Doubles of what the library asks of the system: memory, and the calls for its one file. They
// count what they are asked, and fail where a test has planned it.

#include <array>
#include <cstddef>
#include <functional>
#include <limits>
#include <optional>

namespace kova_test {

/// Which of the like requests of an import fails, counted from 1: one, or all from that one on.
struct FaultPoint {
    long first = 0; ///< 0: none
    bool from_there_on = false;
    long met = 0;

    /// Counts a request and says whether it fails.
    bool fails() {
        ++met;
        return first != 0 && (from_there_on ? met >= first : met == first);
    }
    [[nodiscard]] bool was_met() const { return first != 0 && met >= first; }
};

/// Requests for memory while the library itself runs.
[[nodiscard]] FaultPoint &memory_faults();

/// Blocks of memory that the process has got and not yet given back. In sanitized builds only those
/// of operator new, elsewhere all.
[[nodiscard]] long blocks_in_use();

/// Says whether the library itself runs; its requests for memory count only then. Returns what was
/// said before.
bool set_library_runs(bool runs);

enum class FileCall { open, stat, fstat, read, seek, close };
inline constexpr std::size_t file_call_count = 6;

/// What happens where reads have given so many bytes, counted over the whole import.
struct ReadStop {
    std::size_t place = 0;
    bool from_there_on = false;
    /// What the read there ends with: an error of the system, 0 for the end of the file, nothing
    /// when the one before it only comes short.
    std::optional<int> error;
    bool was_met = false;
};

struct FileFaults {
    std::array<FaultPoint, file_call_count> points{};
    int error = 0; ///< of the calls that fail
    std::optional<ReadStop> stop;
    std::size_t longest_read = std::numeric_limits<std::size_t>::max();
    std::size_t bytes_read = 0;
    /// Called before a call takes effect, with how many there have been of it, this one included.
    std::function<void(FileCall call, long number)> before;

    FaultPoint &operator[](FileCall call) { return points[static_cast<std::size_t>(call)]; }
};

/// Calls for files by the library.
[[nodiscard]] FileFaults &file_faults();

} // namespace kova_test

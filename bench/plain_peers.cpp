#include "peers.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace kova_import::bench {

namespace {

/// A file that is read in pieces of the size in which the library reads.
class Pieces {
  public:
    explicit Pieces(const char *path) : handle_(::open(path, O_RDONLY | O_CLOEXEC)) {}
    ~Pieces() {
        if (handle_ >= 0)
            ::close(handle_);
    }
    Pieces(const Pieces &) = delete;
    Pieces &operator=(const Pieces &) = delete;
    Pieces(Pieces &&) = delete;
    Pieces &operator=(Pieces &&) = delete;

    static constexpr std::size_t size = std::size_t{64} * 1024;

    /// Bytes read, 0 at the end of the file, negative when it cannot be read.
    ssize_t read(char *where) const { return ::read(handle_, where, size); }

  private:
    int handle_;
};

bool may_start_number(char character) {
    return (character >= '0' && character <= '9') || character == '-' || character == '.';
}

bool is_blank(char character) { return character == ' ' || character == '\n'; }

/// The sum of the numbers in the text, which ends between two of them.
double sum_of_numbers(const char *position, const char *const end) {
    double total = 0;
    for (;;) {
        while (position != end && is_blank(*position))
            ++position;
        if (position == end)
            return total;
        float value = 0;
        if (may_start_number(*position)) {
            const std::from_chars_result result = std::from_chars(position, end, value);
            if (result.ec == std::errc{}) {
                total += static_cast<double>(value);
                position = result.ptr;
                continue;
            }
        }
        while (position != end && !is_blank(*position))
            ++position;
    }
}

volatile double keep_sum;

} // namespace

bool add_up_numbers(const char *path) {
    const Pieces file(path);
    // A piece is read behind what the last one has left of an unfinished line.
    static std::array<char, 2 * Pieces::size> memory;
    std::size_t kept = 0;
    double total = 0;
    for (;;) {
        const ssize_t read = file.read(memory.data() + kept);
        if (read < 0)
            return false;
        const std::size_t filled = kept + static_cast<std::size_t>(read);
        std::size_t end = filled;
        while (read > 0 && end > 0 && memory[end - 1] != '\n')
            --end;
        total += sum_of_numbers(memory.data(), memory.data() + end);
        kept = filled - end;
        if (read == 0)
            break;
        if (kept > Pieces::size)
            return false;
        std::memmove(memory.data(), memory.data() + end, kept);
    }
    keep_sum = total;
    return true;
}

bool read_bytes(const char *path) {
    const Pieces file(path);
    static std::array<char, Pieces::size> memory;
    ssize_t read = 0;
    do
        read = file.read(memory.data());
    while (read > 0);
    return read == 0;
}

} // namespace kova_import::bench

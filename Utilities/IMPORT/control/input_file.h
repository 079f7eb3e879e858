#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kova_import {

/// One regular file of the system, open for reading front to back. Unbuffered: the record stream
/// has the buffer.
class InputFile {
  public:
    InputFile() = default;
    InputFile(const InputFile &) = delete;
    InputFile &operator=(const InputFile &) = delete;
    ~InputFile() { close(); }

    /// Opens the file at `path` (bytes without a NUL; on Windows UTF-8 where they are that, else
    /// text in the active code page). Folders, pipes and devices are refused, without waiting for
    /// their other end. Returns null, or why it cannot be opened.
    [[nodiscard]] const char *open(std::string_view path);
    void close();
    [[nodiscard]] bool is_open() const { return handle_ != closed; }

    /// Reads up to `size` bytes into `target`. Returns how many, 0 at the end of the file, nothing
    /// on an error of the system.
    [[nodiscard]] std::optional<std::size_t> read(char *target, std::size_t size);

    /// Goes to `offset` bytes from the start. Says whether that worked.
    [[nodiscard]] bool seek(std::int64_t offset);

  private:
    static constexpr std::intptr_t closed = -1;
    std::intptr_t handle_ = closed; ///< as the system numbers its files
};

} // namespace kova_import

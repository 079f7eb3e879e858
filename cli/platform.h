#pragma once

// What the command needs of the system and what is not the same everywhere. Paths and arguments are
// UTF-8 on Windows and bytes elsewhere.

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kova_command::platform {

/// The arguments behind the program's name.
[[nodiscard]] std::vector<std::string> arguments_of(int argument_count, char **arguments);

/// Opens the standard streams that the process was started without, so that no other file takes
/// their place: what is written to one of these fails. Bytes go out as they are, and a console
/// takes them for UTF-8. Returns what the console took them for before.
unsigned prepare_standard_streams();
void give_console_back(unsigned before);

/// The standard streams are fit for use while it lives.
class StandardStreams {
  public:
    StandardStreams() : console_before_(prepare_standard_streams()) {}
    ~StandardStreams() { give_console_back(console_before_); }
    StandardStreams(const StandardStreams &) = delete;
    StandardStreams &operator=(const StandardStreams &) = delete;
    StandardStreams(StandardStreams &&) = delete;
    StandardStreams &operator=(StandardStreams &&) = delete;

  private:
    unsigned console_before_;
};

[[nodiscard]] bool is_terminal(std::FILE *stream);
/// Columns of the terminal that the stream is connected to, where it tells.
[[nodiscard]] std::optional<std::size_t> terminal_columns(std::FILE *stream);
/// Whether that terminal obeys escape sequences.
[[nodiscard]] bool obeys_escapes(std::FILE *stream);

/// Starts the file anew; null, and `errno`, when that fails.
[[nodiscard]] std::FILE *open_for_writing(const std::string &path);
/// A file that is gone when it is closed; null, and `errno`, when there is none.
[[nodiscard]] std::FILE *open_temporary_file();

/// Takes standard output off its target and returns a number for `give_standard_output_back`;
/// negative, and `errno`, when that fails. No target: what is printed is dropped.
[[nodiscard]] int take_standard_output(std::FILE *target);
void give_standard_output_back(int saved);

/// The path as the standard library wants it.
[[nodiscard]] inline std::filesystem::path path_of(std::string_view path) {
    return {std::u8string(path.begin(), path.end())};
}

/// A dynamic library that stays loaded.
class LoadedLibrary {
  public:
    /// Loads a library of this program's own installation. Throws `std::runtime_error` with what
    /// the loader says.
    explicit LoadedLibrary(const char *name);
    /// The address of a name that the library exports; throws as above.
    [[nodiscard]] void *find(const char *name) const;

  private:
    void *handle_;
};

} // namespace kova_command::platform

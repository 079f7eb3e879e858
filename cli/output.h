#pragma once

// The program's own output: nothing is lost without a word.

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kova_command {

/// Results that cannot be written.
class OutputFailed : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Writes `text` to standard output. Throws `OutputFailed`.
void write_result(std::string_view text);

/// Writes `text` to standard error, whatever comes of it: there is nobody else to tell.
void write_message(std::string_view text);

/// The file of the command log. A failure is kept until `finish`, since it shows while the import
/// is at work.
class LogFile {
  public:
    /// Starts the file anew. Throws `OutputFailed`.
    explicit LogFile(std::string path);

    void write(std::string_view piece) noexcept;
    /// Throws `OutputFailed` when anything could not be written.
    void finish();

  private:
    struct Close {
        void operator()(std::FILE *file) const { static_cast<void>(std::fclose(file)); }
    };

    [[noreturn]] void fail() const;

    std::string path_;
    std::unique_ptr<std::FILE, Close> file_;
    int error_ = 0;
};

/// Whether two paths lead to one file.
[[nodiscard]] bool is_same_file(const std::string &one, const std::string &other);

} // namespace kova_command

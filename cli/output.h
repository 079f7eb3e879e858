#pragma once

// The program's own output: nothing is lost without a word.

#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kova_command {

/// Gets a text piece by piece.
using TextSink = std::function<void(std::string_view)>;

/// Results that cannot be written.
class OutputFailed : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Writes `text` to standard output. Throws `OutputFailed`.
void write_result(std::string_view text);

/// Writes `text` to standard error, whatever comes of it: there is nobody else to tell.
void write_message(std::string_view text);

/// A file of results. A failure is kept until `finish`, since it may show while the import is at
/// work.
class OutputFile {
  public:
    /// Starts the file anew. `content` names it to people: "command log". Throws `OutputFailed`.
    OutputFile(std::string_view content, std::string path);

    void write(std::string_view piece) noexcept;
    /// Throws `OutputFailed` when anything could not be written.
    void finish();

  private:
    struct Close {
        void operator()(std::FILE *file) const { static_cast<void>(std::fclose(file)); }
    };

    [[noreturn]] void fail() const;

    std::string content_;
    std::string path_;
    std::unique_ptr<std::FILE, Close> file_;
    int error_ = 0;
};

/// Whether two paths lead to one file, or would when it is made.
[[nodiscard]] bool is_same_file(const std::string &one, const std::string &other);

} // namespace kova_command

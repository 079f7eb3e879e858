#include "cli/output.h"

#include "cli/platform.h"
#include "cli/text.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

namespace kova_command {

void write_result(std::string_view text) {
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!written || std::fflush(stdout) != 0)
        throw OutputFailed(std::string("standard output cannot be written: ") +
                           std::strerror(errno));
}

void write_message(std::string_view text) {
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
    static_cast<void>(std::fflush(stderr));
}

OutputFile::OutputFile(std::string_view content, std::string path)
    : content_(content), path_(std::move(path)), file_(platform::open_for_writing(path_)) {
    if (file_ == nullptr) {
        error_ = errno;
        fail();
    }
}

void OutputFile::write(std::string_view piece) noexcept {
    if (error_ == 0 && std::fwrite(piece.data(), 1, piece.size(), file_.get()) != piece.size())
        error_ = errno;
}

void OutputFile::finish() {
    if (std::fclose(file_.release()) != 0 && error_ == 0)
        error_ = errno;
    if (error_ != 0)
        fail();
}

void OutputFile::fail() const {
    throw OutputFailed("the " + content_ + ' ' + printable(path_) +
                       " cannot be written: " + std::strerror(error_));
}

bool is_same_file(const std::string &one, const std::string &other) {
    namespace files = std::filesystem;
    const files::path first = platform::path_of(one);
    const files::path second = platform::path_of(other);
    std::error_code error;
    const bool one_exists = files::exists(first, error);
    const bool other_exists = files::exists(second, error);
    if (one_exists && other_exists)
        return files::is_regular_file(first, error) && files::equivalent(first, second, error);
    if (one_exists || other_exists)
        return false;
    const files::path place = files::weakly_canonical(first, error);
    return !error && place == files::weakly_canonical(second, error) && !error;
}

} // namespace kova_command

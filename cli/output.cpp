#include "cli/output.h"

#include "cli/text.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
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
    : content_(content), path_(std::move(path)), file_(std::fopen(path_.c_str(), "wbe")) {
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
    struct stat first {};
    struct stat second {};
    const bool one_exists = ::stat(one.c_str(), &first) == 0;
    const bool other_exists = ::stat(other.c_str(), &second) == 0;
    if (one_exists && other_exists)
        return S_ISREG(first.st_mode) && first.st_dev == second.st_dev &&
               first.st_ino == second.st_ino;
    if (one_exists || other_exists)
        return false;
    std::error_code error;
    const std::filesystem::path place = std::filesystem::weakly_canonical(one, error);
    return !error && place == std::filesystem::weakly_canonical(other, error) && !error;
}

} // namespace kova_command

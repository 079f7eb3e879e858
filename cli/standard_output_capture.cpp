#include "cli/standard_output_capture.h"

#include "cli/platform.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <system_error>

namespace kova_command {

StandardOutputCapture::StandardOutputCapture(What what) {
    // What is already printed must not follow the library's lines.
    static_cast<void>(std::fflush(stdout));
    if (what == What::keep)
        kept_.reset(platform::open_temporary_file());
    if (what == What::drop || kept_ != nullptr)
        saved_ = platform::take_standard_output(kept_.get());
    if (saved_ < 0)
        throw std::system_error(errno, std::generic_category(),
                                "the library's console lines cannot be taken off standard output");
}

StandardOutputCapture::~StandardOutputCapture() { restore(); }

void StandardOutputCapture::restore() {
    if (saved_ < 0)
        return;
    static_cast<void>(std::fflush(stdout));
    // A sink that is full is not the program's own output failing.
    std::clearerr(stdout);
    platform::give_standard_output_back(saved_);
    saved_ = -1;
}

std::string StandardOutputCapture::finish() {
    restore();
    std::string text;
    if (kept_ == nullptr)
        return text;
    if (const long size = std::ftell(kept_.get()); size > 0)
        text.reserve(static_cast<std::size_t>(size));
    std::rewind(kept_.get());
    std::array<char, 4096> piece{};
    while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), kept_.get()))
        text.append(piece.data(), size);
    return text;
}

} // namespace kova_command

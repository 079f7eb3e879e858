#include "cli/standard_output_capture.h"

#include "cli/platform.h"

#include <cerrno>
#include <system_error>
#include <utility>

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

std::vector<std::string> StandardOutputCapture::finish() {
    restore();
    std::vector<std::string> lines;
    if (kept_ == nullptr)
        return lines;
    std::rewind(kept_.get());
    std::string line;
    for (int character = 0; (character = std::fgetc(kept_.get())) != EOF;) {
        if (character == '\n')
            lines.push_back(std::exchange(line, {}));
        else
            line += static_cast<char>(character);
    }
    if (!line.empty())
        lines.push_back(std::move(line));
    return lines;
}

} // namespace kova_command

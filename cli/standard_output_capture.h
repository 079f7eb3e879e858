#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace kova_command {

/// While it lives, what is printed on standard output, by whomever in this process, goes elsewhere.
class StandardOutputCapture {
  public:
    enum class What : std::uint8_t { drop, keep };

    /// Throws `std::system_error` when standard output cannot be taken away.
    explicit StandardOutputCapture(What what);
    ~StandardOutputCapture();
    StandardOutputCapture(const StandardOutputCapture &) = delete;
    StandardOutputCapture &operator=(const StandardOutputCapture &) = delete;
    StandardOutputCapture(StandardOutputCapture &&) = delete;
    StandardOutputCapture &operator=(StandardOutputCapture &&) = delete;

    /// Gives standard output back, and the lines that were kept, as they were printed.
    std::string finish();

  private:
    struct Close {
        void operator()(std::FILE *file) const { static_cast<void>(std::fclose(file)); }
    };

    void restore();

    std::unique_ptr<std::FILE, Close> kept_;
    int saved_ = -1;
};

} // namespace kova_command

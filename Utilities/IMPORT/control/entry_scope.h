#pragma once

#include <cfenv>

namespace kova_import {

/// Rounding to nearest and gradual underflow while it lives, whatever the host has set; the host's
/// settings afterwards.
class FloatingPointScope {
  public:
    FloatingPointScope() {
        std::fegetenv(&host_settings_);
        std::fesetenv(FE_DFL_ENV);
    }
    FloatingPointScope(const FloatingPointScope &) = delete;
    FloatingPointScope &operator=(const FloatingPointScope &) = delete;
    ~FloatingPointScope() { std::fesetenv(&host_settings_); }

  private:
    std::fenv_t host_settings_{};
};

/// Marks the utility as running. A host that calls it again from inside a host command is refused.
class RunningScope {
  public:
    explicit RunningScope(bool &running) : running_(running), entered_(!running) {
        running_ = true;
    }
    RunningScope(const RunningScope &) = delete;
    RunningScope &operator=(const RunningScope &) = delete;
    ~RunningScope() {
        if (entered_)
            running_ = false;
    }

    [[nodiscard]] bool entered() const { return entered_; }

  private:
    bool &running_;
    bool entered_;
};

} // namespace kova_import

#pragma once

#include <cfenv>

#if defined(_WIN32)
#include <xmmintrin.h>
#endif

namespace kova_import {

#if defined(_WIN32)
/// The settings of SSE registers, which the C library there does not put back to their defaults.
class SseSettings {
  public:
    void set_defaults() {
        constexpr unsigned defaults = 0x1F80; // nearest, gradual underflow, nothing interrupts
        _mm_setcsr(defaults);
    }
    void restore() const { _mm_setcsr(host_settings_); }

  private:
    unsigned host_settings_ = _mm_getcsr();
};
#else
/// Part of what the C library saves and sets.
class SseSettings {
  public:
    void set_defaults() {}
    void restore() const {}
};
#endif

/// Rounding to nearest and gradual underflow while it lives, whatever the host has set; the host's
/// settings afterwards.
class FloatingPointScope {
  public:
    FloatingPointScope() {
        std::fegetenv(&host_settings_);
        std::fesetenv(FE_DFL_ENV);
        sse_settings_.set_defaults();
    }
    FloatingPointScope(const FloatingPointScope &) = delete;
    FloatingPointScope &operator=(const FloatingPointScope &) = delete;
    ~FloatingPointScope() {
        std::fesetenv(&host_settings_);
        sse_settings_.restore();
    }

  private:
    SseSettings sse_settings_;
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

#pragma once

// Imports with faults, and what must hold behind each of them.

#include "import_export.h"
#include "tests/faults/fault_points.h"
#include "tests/support/noting_host.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace kova_test {

struct FaultNotice {
    std::int32_t kind = 0;
    std::int32_t section = 0;
    std::int64_t line = 0;
};

/// What one import did.
struct Import {
    std::vector<std::string> log;
    std::vector<FaultNotice> notices;
    import_export_data block{}; ///< as the import left it, but for the function for notices

    /// Notices and data block as text.
    [[nodiscard]] std::string state() const;
};

/// What a host does beside noting. Commands are numbered from 0.
struct Hooks {
    std::function<void(std::size_t number)> before;
    std::function<void(std::size_t number, const HostCall &call)> after;
    std::function<void()> on_notice;
};

/// A file, and what a process that has imported nothing yet makes of it.
struct Model {
    std::string name;
    std::string text;
    bool is_current = false;
    bool transport_only = false;
    std::filesystem::path path; ///< as long as those of the others
    std::vector<std::string> fresh_log;
    std::string fresh_state;
};

/// The models of `model_names`. Program start makes them, with a process of its own for each.
[[nodiscard]] const Model &model(std::size_t number);
inline constexpr std::array model_names = {"Legacy",           "Current",    "CurrentTransport",
                                           "CurrentOpenTitle", "LegacyLong", "LegacyWide",
                                           "CurrentWide"};
inline constexpr std::size_t small_model_count = 3;
inline constexpr std::size_t current_transport = 2;
inline constexpr std::size_t current_open_title = 3;
inline constexpr std::size_t legacy_long = 4;
inline constexpr std::size_t first_wide_model = 5;

/// Sanitized imports take many times as long: of bytes and numbers, tests then try every n-th.
#if defined(KOVA_SANITIZED)
inline constexpr std::size_t stride = 13;
#else
inline constexpr std::size_t stride = 1;
#endif

/// Tests of one model each, which is their parameter.
class FaultTest : public testing::TestWithParam<std::size_t> {
  protected:
    static const Model &model() { return kova_test::model(GetParam()); }
};

/// Name of a test's parameter.
std::string model_name(const testing::TestParamInfo<std::size_t> &information);

[[nodiscard]] Import import(const Model &model, const Hooks &hooks = {});

enum class Ending { complete, stopped, not_opened };

/// Expects one of the three ways in which an import may end, each with its commands, its notice and
/// its `import_error`, and nothing sent that an import without fault would not have sent up to
/// there. Returns which.
Ending expect_ending(const Model &model, const Import &import);

/// Expects that an import is what it would be in a process of its own.
void expect_fresh(const Model &model, const Import &import);

[[nodiscard]] std::size_t open_file_count();

/// Does something with a fault in it. Afterwards no file must be open and no memory be in use that
/// was not before, and the next import must be what it would be in a process of its own.
template <class Action>
void expect_recovery(const Model &model, const Action &action) {
    const long blocks = blocks_in_use();
    const std::size_t files = open_file_count();
    action();
    memory_faults() = {};
    file_faults() = {};
    EXPECT_EQ(open_file_count(), files);
    expect_fresh(model, import(model));
    if (!testing::Test::HasFailure()) { // whose text is kept
        EXPECT_EQ(blocks_in_use(), blocks);
    }
}

/// Tells how many points were tried, on standard error.
void tell(const Model &model, const std::string &what, long points);

} // namespace kova_test

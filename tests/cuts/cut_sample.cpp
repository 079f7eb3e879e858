// Imports a whole model file cut behind every line, or behind every n-th: each import must stop in
// the section that the cut is in, with nothing of it sent, or be complete.
//
//     cut_sample FILE [n]
//
// Thousands of imports of a large file: the host here only notes what it gets.

#include "control/host_commands.h"
#include "host_calls.h"
#include "import_export.h"
#include "tests/support/stopped_import.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kova_import::ArgumentKind;
using kova_import::HostCommand;

std::vector<std::string> *log = nullptr;
std::string import_path;
bool transport_only = false;
std::int32_t announced_breakpoints = 0;

std::int32_t integer_at(const void *address) {
    std::int32_t value = 0;
    std::memcpy(&value, address, sizeof value);
    return value;
}

/// FNV-1a: different arguments have different sums as far as a test can tell.
std::uint64_t sum(std::uint64_t start, const void *address, std::size_t size) {
    constexpr std::uint64_t prime = 0x100000001b3;
    const auto *bytes = static_cast<const unsigned char *>(address);
    for (std::size_t i = 0; i < size; ++i)
        start = (start ^ bytes[i]) * prime;
    return start;
}

/// Writes what a person would answer, and notes the command. A series counts as far as it has been
/// announced: what stands behind it in the buffers is older than the import.
void take(const char *keyword, const std::vector<void *> &arguments,
          const std::vector<std::size_t> &lengths) {
    const std::string_view name(keyword, lengths[0] - 1);
    const HostCommand *command = kova_import::find_host_command(name);
    ASSERT_NE(command, nullptr) << name;
    std::uint64_t total = 0xcbf29ce484222325;
    std::size_t text = 1;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        switch (command->arguments[i].kind) {
        case ArgumentKind::integer:
        case ArgumentKind::real:
            total = sum(total, arguments[i], sizeof(std::int32_t));
            break;
        case ArgumentKind::answer: {
            const std::int32_t answer =
                std::string_view(static_cast<const char *>(arguments[0])) == "Import Options" &&
                        transport_only
                    ? 0
                    : 1;
            std::memcpy(arguments[i], &answer, sizeof answer);
            break;
        }
        case ArgumentKind::result:
            std::memset(arguments[i], ' ', lengths[text]);
            if (name == "GFILENAME")
                std::memcpy(arguments[i], import_path.data(), import_path.size());
            ++text;
            break;
        case ArgumentKind::send_buffer:
            total = sum(total, arguments[i],
                        sizeof(float) * static_cast<std::size_t>(
                                            announced_breakpoints > 0 ? announced_breakpoints : 0));
            break;
        default:
            total = sum(total, arguments[i], lengths[text++]);
        }
    }
    if (name == "PNBFP" || name == "PNBWK")
        announced_breakpoints = integer_at(arguments[2]);
    std::string line = std::to_string(arguments.size()) + " " + std::string(name) + "[" +
                       std::to_string(lengths[0]) + "]";
    if (name == "PPROGRESS") {
        line += " int " + std::to_string(integer_at(arguments[0]));
    } else if (!arguments.empty()) {
        std::array<char, 16> digits{};
        constexpr int base = 16;
        line += ' ';
        line.append(digits.data(),
                    std::to_chars(digits.data(), digits.data() + digits.size(), total, base).ptr);
    }
    log->push_back(std::move(line));
}

struct Stop {
    std::int32_t section = 0;
    std::int64_t line = 0;
};

struct CutRun {
    std::vector<std::string> log;
    std::vector<Stop> stops;
};

CutRun import(const std::filesystem::path &path) {
    CutRun run;
    log = &run.log;
    import_path = path.string();
    const auto listen = [](void *context, const import_export_notice *notice) {
        if (notice->kind == IMPORT_EXPORT_READ_FAILED)
            static_cast<CutRun *>(context)->stops.push_back({notice->section, notice->line});
    };
    IMPORT_EXPORT.notice = listen;
    IMPORT_EXPORT.notice_context = &run;
    importexport();
    IMPORT_EXPORT.notice = nullptr;
    return run;
}

std::vector<std::uintmax_t> ends_of_lines(const std::string &text) {
    std::vector<std::uintmax_t> ends;
    for (std::size_t i = text.find('\n'); i != std::string::npos; i = text.find('\n', i + 1))
        ends.push_back(i + 1);
    return ends;
}

std::filesystem::path sample;
std::size_t stride = 1;

class CutSample : public testing::TestWithParam<bool> {};

TEST_P(CutSample, StopsInTheSectionThatTheCutIsIn) {
    transport_only = GetParam();
    const kova_test::TemporaryFolder folder;
    const std::string text = kova_test::read_file(sample);
    const std::filesystem::path file = folder.write("model.inp", text);
    const CutRun complete = import(file);
    ASSERT_TRUE(complete.stops.empty());
    std::vector<std::uintmax_t> ends = ends_of_lines(text);
    ends.pop_back();
    std::size_t stopped = 0;
    // from the back, so that the file only gets shorter
    for (std::size_t i = ends.size(); i-- > 0;) {
        if (i % stride != 0)
            continue;
        std::filesystem::resize_file(file, ends[i]);
        const CutRun run = import(file);
        const std::string context = "cut behind line " + std::to_string(i + 1);
        if (run.stops.empty()) {
            EXPECT_TRUE(run.log == complete.log) << context;
            EXPECT_EQ(IMPORT_EXPORT.import_error, 0) << context;
            continue;
        }
        ++stopped;
        ASSERT_EQ(run.stops.size(), 1U) << context;
        EXPECT_EQ(IMPORT_EXPORT.import_error, 1) << context;
        EXPECT_EQ(run.stops[0].line, static_cast<std::int64_t>(i + 1)) << context;
        kova_test::expect_stopped(complete.log, run.log, run.stops[0].section,
                                  IMPORT_EXPORT.file_version >= 3, context);
        if (HasFailure())
            return; // one place is enough to look at
    }
    EXPECT_GT(stopped, 0U);
    std::fprintf(stderr, "%zu lines, %zu imports stopped\n", ends.size() + 1, stopped);
}

INSTANTIATE_TEST_SUITE_P(Scope, CutSample, testing::Bool(), [](const auto &information) {
    return information.param ? "TransportOnly" : "All";
});

} // namespace

void host_call_0(char *keyword, size_t keyword_length) { take(keyword, {}, {keyword_length}); }

void host_call_1(char *keyword, void *a, size_t keyword_length, size_t length_1) {
    take(keyword, {a}, {keyword_length, length_1});
}

void host_call_2(char *keyword, void *a, void *b, size_t keyword_length, size_t length_1,
                 size_t length_2) {
    take(keyword, {a, b}, {keyword_length, length_1, length_2});
}

void host_call_3(char *keyword, void *a, void *b, void *c, size_t keyword_length, size_t length_1,
                 size_t length_2, size_t length_3) {
    take(keyword, {a, b, c}, {keyword_length, length_1, length_2, length_3});
}

void host_call_4(char *keyword, void *a, void *b, void *c, void *d, size_t keyword_length,
                 size_t length_1, size_t length_2, size_t length_3, size_t length_4) {
    take(keyword, {a, b, c, d}, {keyword_length, length_1, length_2, length_3, length_4});
}

void host_call_5(char *keyword, void *a, void *b, void *c, void *d, void *e, size_t keyword_length,
                 size_t length_1, size_t length_2, size_t length_3, size_t length_4,
                 size_t length_5) {
    take(keyword, {a, b, c, d, e},
         {keyword_length, length_1, length_2, length_3, length_4, length_5});
}

int main(int count, char **arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (count < 2) {
        std::fprintf(stderr, "usage: cut_sample FILE [every n-th line]\n");
        return 2;
    }
    sample = arguments[1];
    if (count > 2)
        stride = std::stoul(arguments[2]);
    // the library's console lines are not what this is about
    if (std::freopen("/dev/null", "w", stdout) == nullptr)
        return 2;
    return RUN_ALL_TESTS();
}

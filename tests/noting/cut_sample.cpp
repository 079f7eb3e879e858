// Imports a whole model file cut behind every line, or behind every n-th: each import must stop in
// the section that the cut is in, with nothing of it sent, or be complete.
//
//     cut_sample FILE [n]

#include "import_export.h"
#include "tests/support/noting_host.h"
#include "tests/support/stopped_import.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

using kova_test::noting_host;
using kova_test::NotingHost;

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
    NotingHost &host = noting_host();
    host.import_path = path.string();
    host.log.clear();
    const auto listen = [](void *context, const import_export_notice *notice) {
        if (notice->kind == IMPORT_EXPORT_READ_FAILED)
            static_cast<CutRun *>(context)->stops.push_back({notice->section, notice->line});
    };
    IMPORT_EXPORT.notice = listen;
    IMPORT_EXPORT.notice_context = &run;
    importexport();
    IMPORT_EXPORT.notice = nullptr;
    run.log = std::move(host.log);
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
    noting_host().transport_only = GetParam();
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

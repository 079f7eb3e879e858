// A host that ends a command with an exception, whichever it is: the section ends like one that
// cannot be read, the import goes to its end, and the next import is like any other.

#include "import_export.h"
#include "tests/support/model_text.h"
#include "tests/support/noting_host.h"
#include "tests/support/stopped_import.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using kova_test::noting_host;

struct Outcome {
    std::vector<std::string> log;
    std::vector<std::int32_t> failed_sections; ///< of notices of a failed host
};

Outcome import() {
    Outcome outcome;
    noting_host().log.clear();
    IMPORT_EXPORT.notice = [](void *context, const import_export_notice *notice) {
        if (notice->kind == IMPORT_EXPORT_HOST_FAILED)
            static_cast<Outcome *>(context)->failed_sections.push_back(notice->section);
    };
    IMPORT_EXPORT.notice_context = &outcome;
    importexport();
    IMPORT_EXPORT.notice = nullptr;
    outcome.log = std::move(noting_host().log);
    return outcome;
}

struct Model {
    const char *name;
    kova_test::Records records;
    bool is_current;
    bool transport_only;
};

TEST(HostFailuresInPages, GoNoFurther) {
    for (void (*const page)() : {&intro, &version}) {
        noting_host().log.clear();
        noting_host().before = [](std::string_view keyword) {
            if (keyword == "PINFOHTML")
                throw std::runtime_error("the host cannot go on");
        };
        page();
        noting_host().before = nullptr;
        EXPECT_LE(noting_host().log.size(), 2U) << "the pane is cleared, and the first line fails";
    }
}

TEST(HostFailuresInReports, EndTheImportWithoutTheReport) {
    const kova_test::TemporaryFolder folder;
    noting_host().transport_only = false;
    noting_host().import_path =
        folder.write("model.inp", kova_test::text_of(kova_test::current_records())).string();
    const Outcome undisturbed = import();
    bool section_failed = false;
    bool report_failed = false;
    noting_host().before = [&](std::string_view keyword) {
        bool &failed = section_failed ? report_failed : section_failed;
        if (failed || keyword != (section_failed ? "GSPRINTFI" : "PNUMSEG"))
            return;
        failed = true;
        throw std::runtime_error("the host cannot go on");
    };
    const Outcome failed = import();
    noting_host().before = nullptr;
    EXPECT_TRUE(report_failed);
    EXPECT_EQ(IMPORT_EXPORT.import_error, 1);
    constexpr std::int32_t segments = 2;
    EXPECT_EQ(failed.failed_sections, std::vector<std::int32_t>{segments});
    const auto sent =
        std::find_if(undisturbed.log.begin(), undisturbed.log.end(), [](const std::string &line) {
            return line.find(" PNUMSEG[") != std::string::npos;
        });
    constexpr bool has_report = false;
    kova_test::expect_end(undisturbed.log, failed.log,
                          static_cast<std::size_t>(sent - undisturbed.log.begin()), segments,
                          has_report);
}

class HostFailures : public testing::TestWithParam<Model> {};

TEST_P(HostFailures, EndTheSectionAndLeaveTheNextImportAlone) {
    const bool is_current = GetParam().is_current;
    const kova_test::TemporaryFolder folder;
    noting_host().transport_only = GetParam().transport_only;
    noting_host().import_path =
        folder.write("model.inp", kova_test::text_of(GetParam().records)).string();
    const Outcome undisturbed = import();
    ASSERT_TRUE(undisturbed.failed_sections.empty());
    std::set<std::int32_t> failed_sections;
    std::size_t in_sections = 0;
    for (std::size_t failing = 0; failing < undisturbed.log.size(); ++failing) {
        std::size_t count = 0;
        noting_host().before = [&](std::string_view) {
            if (count++ == failing)
                throw std::runtime_error("the host cannot go on");
        };
        const Outcome failed = import();
        noting_host().before = nullptr;
        ASSERT_EQ(failed.failed_sections.size(), 1U) << failing;
        EXPECT_EQ(IMPORT_EXPORT.import_error, 1) << failing;
        // what came before is as ever
        for (std::size_t i = 0; i < failing; ++i)
            ASSERT_EQ(failed.log[i], undisturbed.log[i]) << failing;
        const std::int32_t section = failed.failed_sections[0];
        failed_sections.insert(section);
        if (section != 0) {
            ++in_sections;
            kova_test::expect_end(undisturbed.log, failed.log, failing, section, is_current);
        } else {
            EXPECT_EQ(failed.log.size(), failing) << "the driver stops there";
        }
        ASSERT_EQ(import().log, undisturbed.log) << failing;
        ASSERT_FALSE(HasFailure()) << failing;
    }
    EXPECT_GT(in_sections, undisturbed.log.size() / 2);
    // the driver and every section that sends anything
    const std::size_t silent = GetParam().transport_only ? 3 : 0; // loads, parameters, constants
    EXPECT_EQ(failed_sections.size(), 12 - silent);
}

INSTANTIATE_TEST_SUITE_P(
    Models, HostFailures,
    testing::Values(Model{"Legacy", kova_test::legacy_records(), false, false},
                    Model{"Current", kova_test::current_records(), true, false},
                    Model{"CurrentTransport", kova_test::current_records(), true, true}),
    [](const auto &information) { return information.param.name; });

} // namespace

int main(int count, char **arguments) {
    testing::InitGoogleTest(&count, arguments);
    // the library's console lines are not what this is about
    if (std::freopen("/dev/null", "w", stdout) == nullptr)
        return 2;
    return RUN_ALL_TESTS();
}

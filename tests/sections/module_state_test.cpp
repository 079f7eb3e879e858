// What sections leave for later ones, seen in a module of the test's own.

#include "control/driver.h"
#include "control/information_pages.h"
#include "current/sections.h"
#include "legacy/sections.h"
#include "tests/support/import_run.h"
#include "tests/support/model_text.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <string>

namespace kova_test {
namespace {

using kova_import::ImportModule;

/// A module with an open file, and a host.
class OpenModule {
  public:
    explicit OpenModule(const Records &records)
        : data_(kova_import::initial_data()), module_(data_, buffers_),
          connection_(host_.connect()) {
        const char *reason =
            module_.reader.stream().open(folder_.write("model.inp", text_of(records)).string());
        EXPECT_EQ(reason, nullptr);
        module_.reader.start_counting();
    }

    ImportModule &operator*() { return module_; }
    ImportModule *operator->() { return &module_; }

  private:
    TemporaryFolder folder_;
    import_export_data data_;
    kova_import::SendBuffers buffers_;
    ImportModule module_;
    kova_host::ReferenceHost host_;
    kova_host::Connection connection_;
};

TEST(ModuleState, LegacyModelParametersLeaveTheSystemsAndTheLength) {
    OpenModule module(with(legacy_records(), "bypass flags", "1 0 0"));
    kova_import::legacy::modelparam(*module);
    ASSERT_TRUE(module->reader.ok());
    EXPECT_EQ(module->shared.system_count, 3);
    EXPECT_EQ(module->shared.state_variable_count, 2);
    EXPECT_EQ(module->system_of_state_variable[0], 2);
    EXPECT_EQ(module->system_of_state_variable[1], 3);
    EXPECT_EQ(module->simulation_length, 365.5F);
}

TEST(ModuleState, TheHeaderLeavesTheTypeAndTheVersionInItsColumns) {
    OpenModule module(with(legacy_records(), "header", "   119     29"));
    kova_import::legacy::modelparam(*module);
    EXPECT_EQ(module->shared.model_type, 11);
    EXPECT_EQ(module->shared.file_version, 2);
}

TEST(ModuleState, CurrentSegmentsLeaveTheOptionOfTheFirst) {
    OpenModule module(current_records());
    kova_import::current::modelparam_v2(*module);
    EXPECT_EQ(module->simulation_length, 365.5F);
    kova_import::current::segments_v2(*module);
    ASSERT_TRUE(module->reader.ok());
    EXPECT_EQ(module->shared.segment_count, 2);
    EXPECT_EQ(module->flow_option, 3);
}

TEST(ModuleState, WithoutSegmentsThereIsNoFlowOption) {
    Records records = with(current_records(), "segment count", "0");
    std::erase_if(records, [](const Record &record) {
        return record.name == "segment name" || record.name == "segment geometry";
    });
    OpenModule module(records);
    kova_import::current::modelparam_v2(*module);
    kova_import::current::segments_v2(*module);
    EXPECT_TRUE(module->reader.ok());
    EXPECT_EQ(module->flow_option, 0);
}

TEST(ModuleState, ASectionThatFailsLeavesTheSharedCountsAlone) {
    OpenModule module(Records{{"segment count", "x"}});
    module->shared.segment_count = 12;
    module->shared.system_count = 34;
    kova_import::legacy::segments(*module);
    EXPECT_EQ(module->shared.segment_count, 12);
    module->reader.stream().close();
    module->reader.start_section();
    kova_import::legacy::modelparam(*module);
    EXPECT_EQ(module->shared.system_count, 34);
}

TEST(ModuleState, ASectionThatFailsBehindItsCountsLeavesThem) {
    OpenModule module(Records{{"flow option", "1"},
                              {"flow-field count", "2"},
                              {"caption of the flow field", "Surface water"},
                              {"function count of the flow field", "x"}});
    module->flow_option = 3;
    module->shared.flow_field_count = 12;
    kova_import::legacy::flowpath(*module);
    EXPECT_FALSE(module->reader.ok());
    EXPECT_EQ(module->flow_option, 1);
    EXPECT_EQ(module->shared.flow_field_count, 2);
}

TEST(ModuleState, FlowSeriesThatFailBehindTheirCountLeaveIt) {
    for (auto *const section : {kova_import::legacy::flows, kova_import::current::flows_v2}) {
        Records records = {{"flow-field count", "2"},
                           {"caption of the flow field", "Surface water"},
                           {"function count of the flow field", "x"}};
        if (section == kova_import::current::flows_v2)
            records.insert(records.begin(), {"heading of the section", "Series"});
        OpenModule module(records);
        module->shared.flow_field_count = 12;
        section(*module);
        EXPECT_FALSE(module->reader.ok());
        EXPECT_EQ(module->shared.flow_field_count, 2);
    }
}

TEST(ModuleState, TheDriverClearsWhatAnEarlierImportLeft) {
    import_export_data data = kova_import::initial_data();
    kova_import::SendBuffers buffers;
    ImportModule module(data, buffers);
    module.simulation_length = 1;
    module.flow_option = 3;
    module.host_segment_count = 9;
    module.system_of_state_variable[0] = 7;
    module.inflow_count.push_back(5);
    data.report_tables = 1;
    data.layout = 77;
    kova_host::ReferenceHost host;
    const kova_host::Connection connection = host.connect();
    const kova_import::Family family;
    kova_import::run_import(module, {&family, 1});
    EXPECT_EQ(module.simulation_length, 0);
    EXPECT_EQ(module.flow_option, 0);
    EXPECT_EQ(module.host_segment_count, 0);
    EXPECT_EQ(module.system_of_state_variable[0], 0);
    EXPECT_EQ(module.inflow_count.size(), 0U);
    EXPECT_EQ(data.report_tables, 0);
    EXPECT_EQ(data.layout, 77);
}

TEST(InformationPages, CutALineAtItsField) {
    const auto short_line =
        kova_import::page_line<30>("Model branch: ", "a-branch-with-a-long-name");
    EXPECT_EQ(short_line.text.view(), "Model branch: a-branch-with-a-");
    const auto long_line = kova_import::page_line<50>("Built on: ", std::string(60, 'x'));
    EXPECT_EQ(long_line.text.view(), "Built on: " + std::string(40, 'x'));
}

} // namespace
} // namespace kova_test

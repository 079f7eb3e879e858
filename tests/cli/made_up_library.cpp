// Stands in for the import library: sends a small made-up model to the host and gives the notices
// that belong to it, whatever file is asked for. So the tests know every number that the command is
// to show.

#include "import_export.h"

#include "../host/host_test.h"

#include <cstdint>
#include <string>

namespace {

using host_test::field;
using host_test::send;
using host_test::SendBuffer;
using host_test::terminated_field;

import_export_data new_data() {
    import_export_data data{};
    data.layout = IMPORT_EXPORT_LAYOUT;
    return data;
}

void tell(std::int32_t kind, std::int32_t section, const char *section_name, const char *reason,
          std::int64_t number, const std::string &name = "") {
    import_export_notice notice{};
    notice.size = sizeof notice;
    notice.kind = kind;
    notice.section = section;
    notice.section_name = section_name;
    notice.reason = reason;
    notice.number = number;
    notice.name = name.c_str();
    notice.name_length = name.size();
    IMPORT_EXPORT.notice(IMPORT_EXPORT.notice_context, &notice);
}

void send_systems_and_segments() {
    send("PNUMSYS", 2);
    send("PSYSNAME", 1, terminated_field("Salinity", 31), terminated_field("SALIN", 6));
    send("PSYSNAME", 2, terminated_field("Ammonia", 31), terminated_field("NH-34", 6));
    IMPORT_EXPORT.system_count = 4;
    send("PPROGRESS", 5);
    send("PNUMSEG", 2);
    for (std::int32_t segment = 1; segment <= 2; ++segment)
        send("PVOLUME", segment, 100.0F);
}

void send_flow_paths() {
    for (std::int32_t segment = 1; segment <= 2; ++segment)
        send("PFLOWTYPE", segment, 3);
    send("PNFIELD", 1);
    send("PHYDROFILE", field("river.hyd", 512));
    send("PNINQ", 1, 1);
    send("PNOQS", 1, 1, 1);
    send("PFLOWFUNCDESC", 1, 1, field("A creek with a name that is far", 30));
    send("PJQ", 1, 1, 1, 0);
    send("PIQ", 1, 1, 1, 1);
    send("PBQ", 1, 1, 1, 1.0F);
    tell(IMPORT_EXPORT_CUT, 3, "flow paths",
         "The description of the function is cut at 30 characters.", 1);
}

void send_flow_time_series() {
    send("PNFIELD", 1);
    send("PNINQ", 1, 1);
    send("PSCALEQ", 1, 1.5F);
    send("PCONVQ", 1, 2.5F);
    send("PNBRKQ", 1, 1, 2);
    send("PNOQFUNC", 1, 1, 1, 10.0F, 0.0F);
    send("PNOQFUNC", 1, 1, 2, 20.0F, 365.0F);
    send("PFLOWSREFRESH");
}

void send_exchanges() {
    send("PNRFLD", 1);
    send("PNTEX", 1, 1);
    send("PSCALER", 1, 1.0F);
    send("PCONVR", 1, 1.0F);
    send("PEXCHANGEFUNCDESC", 1, 1, field("Tide", 30));
    send("PNORS", 1, 1, 1);
    send("PJRSEG", 1, 1, 1, 1);
    send("PIRSEG", 1, 1, 1, 2);
    send("PXAREA", 1, 1, 1, 50.0F);
    send("PLENGTH", 1, 1, 1, 60.0F);
    send("PNOBRKS", 1, 1, 1);
    send("PNORFUNC", 1, 1, 1, 0.5F, 0.0F);
    send("PEXCHANGESREFRESH");
    tell(IMPORT_EXPORT_REPLACED, 5, "exchanges",
         "The host gets the factors of the last field that has functions.", 1);
}

void send_boundaries(SendBuffer &values, SendBuffer &times) {
    send("PNOBC", 1, 1);
    send("PSCALB", 1, 1.0F);
    send("PIBC", 1, 1, 2);
    send("PNBFP", 1, 1, 3);
    values[2] = 32;
    times[2] = 365;
    send("PALLBOUNDFUNC", 1, 1, &values, &times);
    send("PNOBC", 2, 0);
    for (const std::int64_t system : {3, 4})
        tell(IMPORT_EXPORT_CONDITION_UNMET, 6, "boundary conditions",
             "The host does not simulate the system; its boundaries do not come across.", system);
}

void send_loads(SendBuffer &values, SendBuffer &times) {
    send("PLOPT", 1);
    send("PNPSFILE", field("runoff.nps", 512));
    send("PCONVB", 1, 1.0F);
    for (const std::int32_t count : {3, 1}) { // the second replaces the first
        send("PNBWK", 1, 2, count);
        send("PALLLOADFUNC", 1, 2, &values, &times);
    }
    values.assign(values.size(), 0);
    times.assign(times.size(), 0);
    send("PSCALW", 2, 0.0F);
    send("PCONVW", 2, 0.0F);
    send("PNBWK", 2, 1, 2);
    send("PALLLOADFUNC", 2, 1, &values, &times);
    tell(IMPORT_EXPORT_REPLACED, 7, "loads",
         "The system has several loads on the segment; the host keeps the last one.", 2);
    tell(IMPORT_EXPORT_NOT_IMPORTED, 7, "loads",
         "The second factor of the loads does not come across.", 1);
    tell(IMPORT_EXPORT_PLACEHOLDER, 7, "loads",
         "The host gets a load of 0 on segment 1 for a state variable without loads.", 2);
}

void send_time_functions() {
    send("PNBRKTF", 4, 1, 2);
    send("PBRKTF", 4, 1, 1, 0.0F, 48.5F);
    send("PBRKTF", 4, 1, 2, 365.0F, 96.5F);
    send("PNBRKTF", 4, 2, 1);
    send("PBRKTF", 4, 2, 1, 0.0F, 12.5F);
    send("PTFSREFRESH");
    const char *const name = "environmental time functions";
    tell(IMPORT_EXPORT_CONVERTED, 8, name, "The unit changes.", 5, "Sun <b>\x1B[31m");
    tell(IMPORT_EXPORT_NOT_IMPORTED, 8, name, "The model has no such function.", 17, "Ice cover");
    tell(IMPORT_EXPORT_NOT_IMPORTED, 8, name, "The model has no such function.", 18, "Ice, later");
}

void send_segment_parameters() {
    send("PADDPARAM", 19, 2);
    send("PSCALEPARAMBYISC", 19, 2, 1.5F);
    send("PPARAMSREFRESH");
    send("PCONSTPARAM", 1, 19, 2, 0.25F);
    send("PCONSTPARAM", 2, 19, 2, 0.75F);
    send("PPARAMSREFRESH");
    tell(IMPORT_EXPORT_CONDITION_UNMET, 9, "segment parameters", "It is not simulated.", 26,
         "Settling Rate -- Solids");
}

void send_constants() {
    send("PADDCONST", 64, 1);
    send("PCONSTANTSREFRESH");
    send("PCONSTVALUEBYISC", 64, 1, 0.5F);
    send("PCONSTISUSED", 64, 1, 1);
    send("PCONSTANTSREFRESH");
    send("PNBRKTF", 37, 1, 2);
    send("PBRKTF", 37, 1, 1, 0.0F, 15.0F);
    send("PBRKTF", 37, 1, 2, 365.0F, 15.0F);
    send("PTFSREFRESH");
    tell(IMPORT_EXPORT_NOT_IMPORTED, 10, "kinetic constants", "It is not on the list.", 10,
         "Rate @20 \xF8"
         "C (1/day)");
}

void send_initial_conditions() {
    for (std::int32_t system = 1; system <= 2; ++system) {
        send("PCMAX", system, 1000.0F);
        send("PDENSITY", system, 1.0F);
        send("PIFIELD", system, 3);
        for (std::int32_t segment = 1; segment <= 2; ++segment) {
            send("PINITC", system, segment, static_cast<float>(10 * system + segment));
            send("PFDISS", system, segment, 0.5F);
        }
    }
    for (const std::int64_t system : {3, 4})
        tell(IMPORT_EXPORT_CONDITION_UNMET, 11, "initial conditions", "It is not simulated.",
             system);
}

} // namespace

extern "C" {

import_export_data IMPORT_EXPORT = new_data();

void KOVA_IMPORT_CALL importexport(void) {
    SendBuffer values(kova_import::send_buffer_size, 7);
    SendBuffer times(kova_import::send_buffer_size, 1);
    send("PPROGRESS", 0);
    send_systems_and_segments();
    send("PPROGRESS", 10);
    send_flow_paths();
    send("PPROGRESS", 20);
    send_flow_time_series();
    send("PPROGRESS", 30);
    send_exchanges();
    send("PPROGRESS", 40);
    send_boundaries(values, times);
    send("PPROGRESS", 50);
    send_loads(values, times);
    send("PPROGRESS", 60);
    send_time_functions();
    send("PPROGRESS", 70);
    send_segment_parameters();
    send("PPROGRESS", 80);
    send_constants();
    send("PPROGRESS", 85);
    send_initial_conditions();
    send("PPROGRESS", 100);
}

} // extern "C"

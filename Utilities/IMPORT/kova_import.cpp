#include "kova_import.h"

#include "control/driver.h"
#include "control/entry_scope.h"
#include "control/host_link.h"
#include "control/import_module.h"
#include "control/section.h"
#include "current/sections.h"
#include "import_export.h"
#include "legacy/sections.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

namespace kova_import {

namespace {

void send_legacy_completion_note() {
    send<"PINFOHTML">("<body><big style=\"font-weight: bold; color: Black;\">Import Utility ");
    send<"PINFOHTML">(
        "has completed. User should do a visible inspection between data in the KOVA7 ");
    send<"PINFOHTML">("interface &amp; KOVA8 Interface.  Because of drastic changes in the data ");
    send<"PINFOHTML">("structures, data may not be imported. If you did multiple BOD and ");
    send<"PINFOHTML">("Phytoplankton groups in KOVA7, you will need to check the \"Use\" Box for ");
    send<"PINFOHTML">("all constants, whether they were used in KOVA7.  ");
    send<"PINFOHTML">("If you simulated Benthic Algae in KOVA you will need to parameterize in ");
    send<"PINFOHTML">("KOVA8 without the aid of the import ");
    send<"PINFOHTML">("utility. So much has changed that it is virtually impossible ");
    send<"PINFOHTML">("to import correctly.  ");
    send<"PINFOHTML">("See " KOVA_WEB_SITE " under FAQ for more information about importing ");
    send<"PINFOHTML">("KOVA7 Files</big></body>");
}

void send_current_completion_note() {
    send<"PINFOHTML">("<body><big style=\"font-weight: bold; color: Black;\">Import Utility ");
    send<"PINFOHTML">(
        "has completed. Your import file was from a KOVA8 input file.  You will need to");
    send<"PINFOHTML">(
        " re-select your output variables and review segment parameter screen due to ");
    send<"PINFOHTML">("changes and bug fixes in the interface.");
    send<"PINFOHTML">("  See " KOVA_WEB_SITE " under FAQ for more information about importing ");
    send<"PINFOHTML">("Files</big></body>");
}

constexpr Family legacy_family = {
    .first_version = std::numeric_limits<std::int32_t>::min(),
    .sections = {{
        {"model parameters", 0, legacy::modelparam},
        {"segments", 5, legacy::segments},
        {"flow paths", 10, legacy::flowpath},
        {"flow time series", 20, legacy::flows},
        {"exchanges", 30, legacy::exchanges},
        {"boundary conditions", 40, legacy::boundary},
        {"loads", 50, legacy::loads},
        {"environmental time functions", 60, legacy::timefunctions},
        {"segment parameters", 70, legacy::seg_parameters},
        {"kinetic constants", 80, legacy::constants},
        {"initial conditions", 85, legacy::initial_conditions},
    }},
    .send_completion_note = send_legacy_completion_note,
};

constexpr Family current_family = {
    .first_version = 3,
    .sections = {{
        {"model parameters", 0, current::modelparam_v2, ErrorReport::information_pane},
        {"segments", 5, current::segments_v2, ErrorReport::information_pane},
        {"flow paths", 10, current::flowpath_v2, ErrorReport::console_only},
        {"flow time series", 20, current::flows_v2, ErrorReport::information_pane},
        {"exchanges", 30, current::exchanges_v2, ErrorReport::information_pane},
        {"boundary conditions", 40, current::boundary_v2, ErrorReport::information_pane},
        {"loads", 50, current::loads_v2, ErrorReport::information_pane},
        {"environmental time functions", 60, current::timefunctions_v2,
         ErrorReport::information_pane},
        {"segment parameters", 70, current::seg_parameters_v2, ErrorReport::information_pane},
        {"kinetic constants", 80, current::constants_v2, ErrorReport::information_pane},
        {"initial conditions", 85, current::initial_conditions_v2, ErrorReport::information_pane},
    }},
    .send_completion_note = send_current_completion_note,
};

constexpr std::array families = {legacy_family, current_family};

/// All zero at first, so that they take no room in the file of the library.
constinit SendBuffers send_buffers;

alignas(ImportModule) constinit std::array<std::byte, sizeof(ImportModule)> module_memory{};
constinit ImportModule *made_module = nullptr;

/// The one instance of the module's state. It is made by the first call and not while the library
/// is loaded, where hardly anything is allowed, and between imports it holds neither memory nor a
/// file, so that unloading the library has nothing to do either.
ImportModule &import_module() {
    if (made_module == nullptr)
        made_module = ::new (module_memory.data()) ImportModule(IMPORT_EXPORT, send_buffers);
    return *made_module;
}

} // namespace

void run_import_of_file() noexcept { run_import(import_module(), families); }

void run_legacy_section(SectionNumber which) noexcept {
    run_exported_section(import_module(), legacy_family, which);
}

void run_current_section(SectionNumber which) noexcept {
    run_exported_section(import_module(), current_family, which);
}

void show(void (*send_page)()) noexcept {
    const FloatingPointScope floating_point;
    try {
        send_page();
    } catch (...) {
        // A host that throws has seen what it has seen.
        return;
    }
}

} // namespace kova_import

#include "control/section.h"

#include "control/console.h"
#include "control/entry_scope.h"
#include "control/notices.h"

#include <new>

namespace kova_import {

namespace {

// Reads and sends the section. A host that ends a command with an exception ends the section like a
// failed read.
void import_section(ImportModule &module, const Section &section) {
    try {
        section.import(module);
        if (module.reader.ok())
            return;
        give_read_failure(module);
    } catch (const std::bad_alloc &) {
        give_reason(module, IMPORT_EXPORT_OUT_OF_MEMORY,
                    "There is not enough memory for the section.");
    } catch (...) {
        give_reason(module, IMPORT_EXPORT_HOST_FAILED,
                    "The host ended a command with an exception.");
    }
    report_read_error(module, section.error_report);
}

} // namespace

void run_section(ImportModule &module, const Section &section, std::int32_t number) noexcept {
    const FloatingPointScope floating_point;
    module.section_name = section.name;
    module.section_number = number;
    module.drops_system = false;
    module.reader.start_section();
    try {
        import_section(module, section);
    } catch (...) {
        // not even the report gets through
        module.shared.import_error = 1;
    }
    module.section_name = "";
    module.section_number = 0;
}

void run_exported_section(ImportModule &module, const Family &family,
                          SectionNumber which) noexcept {
    const RunningScope running(module.running);
    if (!running.entered()) {
        give_reason(module, IMPORT_EXPORT_CALL_REFUSED,
                    "A section was called from inside a host command.");
        return;
    }
    const auto number = static_cast<std::int32_t>(which);
    run_section(module, family.sections[static_cast<std::size_t>(number - 1)], number);
    console::flush();
}

} // namespace kova_import

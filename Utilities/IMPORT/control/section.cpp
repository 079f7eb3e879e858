#include "control/section.h"

#include "control/console.h"
#include "control/entry_scope.h"
#include "control/notices.h"

#include <new>

namespace kova_import {

namespace {

// What is left to do when even the report of a failure fails: the host threw out of a host command.
void fail_silently(ImportModule &module) noexcept { module.shared.import_error = 1; }

void import_section(ImportModule &module, const Section &section) {
    try {
        section.import(module);
        if (module.reader.ok())
            return;
        give_read_failure(module);
    } catch (const std::bad_alloc &) {
        give_reason(module, IMPORT_EXPORT_OUT_OF_MEMORY,
                    "There is not enough memory for the section.");
    }
    report_read_error(module, section.error_report);
}

} // namespace

void run_section(ImportModule &module, const Section &section, std::int32_t number) noexcept {
    const FloatingPointScope floating_point;
    module.section_name = section.name;
    module.section_number = number;
    module.reader.start_section();
    try {
        import_section(module, section);
    } catch (...) {
        fail_silently(module);
    }
    module.section_name = "";
    module.section_number = 0;
}

void run_exported_section(ImportModule &module, const Family &family,
                          std::int32_t number) noexcept {
    const RunningScope running(module.running);
    if (!running.entered()) {
        try {
            give_reason(module, IMPORT_EXPORT_CALL_REFUSED,
                        "A section was called from inside a host command.");
        } catch (...) {
            fail_silently(module);
        }
        return;
    }
    run_section(module, family.sections[static_cast<std::size_t>(number - 1)], number);
    console::flush();
}

} // namespace kova_import

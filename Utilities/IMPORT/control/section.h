#pragma once

#include "control/import_module.h"
#include "control/report.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace kova_import {

/// One section of a file format, as a row of its family.
struct Section {
    const char *name = "";                    ///< as a modeller calls it
    std::int32_t progress = 0;                ///< per cent shown before it
    void (*import)(ImportModule &) = nullptr; ///< reads it and, if all was read, sends it
    ErrorReport error_report = ErrorReport::console_only;
};

inline constexpr std::size_t section_count = 11;

/// Where a section stands in its family, from 1.
enum class SectionNumber : std::int32_t {
    model_parameters = 1,
    segments,
    flow_paths,
    flow_series,
    exchanges,
    boundary_conditions,
    loads,
    time_functions,
    segment_parameters,
    constants,
    initial_conditions,
};

/// All sections of a file format, in the order in which they stand in the file.
struct Family {
    std::int32_t first_version = 0; ///< of the header's file version
    std::array<Section, section_count> sections{};
    void (*send_completion_note)() = nullptr;
};

/// The border of a section: nothing gets past it, neither an exception nor the host's
/// floating-point settings. A section that fails ends with its error report and `import_error` set.
/// `number` is 1 .. 11.
void run_section(ImportModule &module, const Section &section, std::int32_t number) noexcept;

/// The same for a section that the host calls by itself.
void run_exported_section(ImportModule &module, const Family &family, SectionNumber which) noexcept;

} // namespace kova_import

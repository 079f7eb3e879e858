#pragma once

#include "control/chunked_list.h"
#include "control/fixed_text.h"
#include "control/record_reader.h"
#include "control/send_buffers.h"
#include "control/short_text.h"
#include "import_export.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace kova_import {

/// Legacy systems that can become state variables; a file may have more.
inline constexpr std::size_t legacy_system_count = 28;

/// The data block as it is when the library is loaded.
[[nodiscard]] constexpr import_export_data initial_data() {
    import_export_data data{};
    data.layout = IMPORT_EXPORT_LAYOUT;
    data.line_counter = 1;
    data.index_segment_names = 1;
    return data;
}

/// Tells the host of an item that a record leaves out. `module` is the `ImportModule`.
void give_left_out(void *module, const char *field, FilePlace place);

/// What the sections of one import share, beside the exported data block.
struct ImportModule {
    explicit constexpr ImportModule(import_export_data &data, SendBuffers &buffers)
        : shared(data), send_buffers(buffers), reader(data.line_counter) {
        model_file_name.fill('\0');
        reader.on_left_out(give_left_out, this);
    }

    import_export_data &shared; ///< live: the host may read and write it at any time
    SendBuffers &send_buffers;
    RecordReader reader;

    FixedText<512> host_file_name;
    ShortText<512> path;            ///< of the import file, as it is opened
    FixedText<512> model_file_name; ///< keeps what stands behind its ".KIF" from import to import

    std::int32_t host_system_count = 0;  ///< as sent by "PNUMSYS"
    std::int32_t host_segment_count = 0; ///< as sent by "PNUMSEG"
    float simulation_length = 0;         ///< days
    std::int32_t flow_option = 0; ///< legacy: the file's; current: of segment 1, 0 without one
    std::array<std::int32_t, legacy_system_count> system_of_state_variable{};
    ChunkedList<std::int32_t> inflow_count; ///< functions of each flow field

    const char *section_name = ""; ///< of the section that runs
    std::int32_t section_number = 0;
    bool drops_system = false; ///< what is being read belongs to a system that the host lacks
    bool running = false;      ///< the utility is at work and waits for a host command to return
};

} // namespace kova_import

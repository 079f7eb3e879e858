#pragma once

#include "control/import_module.h"
#include "import_export.h"

#include <cstdint>
#include <string_view>

namespace kova_import {

/// A notice with the file, the section and the statement at which the module stands, and nothing
/// else.
[[nodiscard]] import_export_notice start_notice(const ImportModule &module,
                                                import_export_notice_kind kind);

/// Hands a notice to the host, if it wants notices.
void give(const ImportModule &module, const import_export_notice &notice);

/// The failed read of the module's reader.
void give_read_failure(const ImportModule &module);

/// Whether a person should be told what becomes of data that the host was to get unless only the
/// network was asked for: it was read, and it was asked for.
[[nodiscard]] bool is_awaited(const ImportModule &module);

/// Tells that the file name in the last record did not fit its field, if it did not.
void give_cut_file_name(const ImportModule &module);

/// Something about what the host is sent, for which no record stands: `number` is the host's.
void give_reason_of_send(const ImportModule &module, import_export_notice_kind kind,
                         const char *reason, std::int64_t number);

/// Something about a record that has been read before, as below.
void give_reason_at(const ImportModule &module, RecordPlace place, import_export_notice_kind kind,
                    const char *reason, std::int64_t number = 0);

/// The same of something that has a name beside its number.
void give_named(const ImportModule &module, RecordPlace place, import_export_notice_kind kind,
                const char *reason, std::int64_t number, std::string_view name);

/// Something about the last record that needs only a sentence, and perhaps the number of the
/// segment, system, field, function, parameter or constant.
void give_reason(const ImportModule &module, import_export_notice_kind kind, const char *reason,
                 std::int64_t number = 0);

} // namespace kova_import

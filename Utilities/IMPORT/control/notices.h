#pragma once

#include "control/import_module.h"
#include "import_export.h"

#include <string_view>

namespace kova_import {

/// A notice with the section, the statement and the place at which the module stands, and nothing
/// else.
[[nodiscard]] import_export_notice start_notice(const ImportModule &module,
                                                import_export_notice_kind kind);

/// Hands a notice to the host, if it wants notices.
void give(const ImportModule &module, const import_export_notice &notice);

/// The failed read of the module's reader.
void give_read_failure(const ImportModule &module);

/// `path` cannot be opened, for `reason`.
void give_open_failure(const ImportModule &module, const char *path, const char *reason);

/// Something that needs only a sentence.
void give_reason(const ImportModule &module, import_export_notice_kind kind, const char *reason);

} // namespace kova_import

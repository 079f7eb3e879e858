#include "import_export.h"

#include "control/import_module.h"
#include "control/information_pages.h"
#include "kova_import.h"

// The exported names, without logic of their own.

constinit import_export_data IMPORT_EXPORT = kova_import::initial_data();

namespace {

using kova_import::run_current_section;
using kova_import::run_legacy_section;

} // namespace

void importexport() { kova_import::run_import_of_file(); }

void intro() { kova_import::show(kova_import::send_intro); }
void version() { kova_import::show(kova_import::send_version_page); }

void modelparam() { run_legacy_section(1); }
void segments() { run_legacy_section(2); }

void modelparam_v2() { run_current_section(1); }
void segments_v2() { run_current_section(2); }

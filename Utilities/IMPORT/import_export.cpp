#include "import_export.h"

#include "control/import_module.h"
#include "control/information_pages.h"
#include "kova_import.h"

// The exported names, without logic of their own.

constinit import_export_data IMPORT_EXPORT = kova_import::initial_data();

using kova_import::SectionNumber;

void importexport() { kova_import::run_import_of_file(); }

void intro() { kova_import::show(kova_import::send_intro); }
void version() { kova_import::show(kova_import::send_version_page); }

void modelparam() { kova_import::run_legacy_section(SectionNumber::model_parameters); }
void segments() { kova_import::run_legacy_section(SectionNumber::segments); }
void flowpath() { kova_import::run_legacy_section(SectionNumber::flow_paths); }
void flows() { kova_import::run_legacy_section(SectionNumber::flow_series); }
void exchanges() { kova_import::run_legacy_section(SectionNumber::exchanges); }
void boundary() { kova_import::run_legacy_section(SectionNumber::boundary_conditions); }
void loads() { kova_import::run_legacy_section(SectionNumber::loads); }
void timefunctions() { kova_import::run_legacy_section(SectionNumber::time_functions); }
void seg_parameters() { kova_import::run_legacy_section(SectionNumber::segment_parameters); }
void constants() { kova_import::run_legacy_section(SectionNumber::constants); }
void initial_conditions() { kova_import::run_legacy_section(SectionNumber::initial_conditions); }

void modelparam_v2() { kova_import::run_current_section(SectionNumber::model_parameters); }
void segments_v2() { kova_import::run_current_section(SectionNumber::segments); }
void flowpath_v2() { kova_import::run_current_section(SectionNumber::flow_paths); }
void flows_v2() { kova_import::run_current_section(SectionNumber::flow_series); }
void exchanges_v2() { kova_import::run_current_section(SectionNumber::exchanges); }
void boundary_v2() { kova_import::run_current_section(SectionNumber::boundary_conditions); }
void loads_v2() { kova_import::run_current_section(SectionNumber::loads); }
void timefunctions_v2() { kova_import::run_current_section(SectionNumber::time_functions); }
void seg_parameters_v2() { kova_import::run_current_section(SectionNumber::segment_parameters); }
void constants_v2() { kova_import::run_current_section(SectionNumber::constants); }
void initial_conditions_v2() {
    kova_import::run_current_section(SectionNumber::initial_conditions);
}

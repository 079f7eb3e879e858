#include "import_export.h"

#include "control/import_module.h"
#include "control/information_pages.h"
#include "kova_import.h"

// The exported names, without logic of their own.

constinit import_export_data IMPORT_EXPORT = kova_import::initial_data();

using kova_import::SectionNumber;

void KOVA_IMPORT_CALL importexport() { kova_import::run_import_of_file(); }

void KOVA_IMPORT_CALL intro() { kova_import::show(kova_import::send_intro); }
void KOVA_IMPORT_CALL version() { kova_import::show(kova_import::send_version_page); }

void KOVA_IMPORT_CALL modelparam() {
    kova_import::run_legacy_section(SectionNumber::model_parameters);
}
void KOVA_IMPORT_CALL segments() { kova_import::run_legacy_section(SectionNumber::segments); }
void KOVA_IMPORT_CALL flowpath() { kova_import::run_legacy_section(SectionNumber::flow_paths); }
void KOVA_IMPORT_CALL flows() { kova_import::run_legacy_section(SectionNumber::flow_series); }
void KOVA_IMPORT_CALL exchanges() { kova_import::run_legacy_section(SectionNumber::exchanges); }
void KOVA_IMPORT_CALL boundary() {
    kova_import::run_legacy_section(SectionNumber::boundary_conditions);
}
void KOVA_IMPORT_CALL loads() { kova_import::run_legacy_section(SectionNumber::loads); }
void KOVA_IMPORT_CALL timefunctions() {
    kova_import::run_legacy_section(SectionNumber::time_functions);
}
void KOVA_IMPORT_CALL seg_parameters() {
    kova_import::run_legacy_section(SectionNumber::segment_parameters);
}
void KOVA_IMPORT_CALL constants() { kova_import::run_legacy_section(SectionNumber::constants); }
void KOVA_IMPORT_CALL initial_conditions() {
    kova_import::run_legacy_section(SectionNumber::initial_conditions);
}

void KOVA_IMPORT_CALL modelparam_v2() {
    kova_import::run_current_section(SectionNumber::model_parameters);
}
void KOVA_IMPORT_CALL segments_v2() { kova_import::run_current_section(SectionNumber::segments); }
void KOVA_IMPORT_CALL flowpath_v2() { kova_import::run_current_section(SectionNumber::flow_paths); }
void KOVA_IMPORT_CALL flows_v2() { kova_import::run_current_section(SectionNumber::flow_series); }
void KOVA_IMPORT_CALL exchanges_v2() { kova_import::run_current_section(SectionNumber::exchanges); }
void KOVA_IMPORT_CALL boundary_v2() {
    kova_import::run_current_section(SectionNumber::boundary_conditions);
}
void KOVA_IMPORT_CALL loads_v2() { kova_import::run_current_section(SectionNumber::loads); }
void KOVA_IMPORT_CALL timefunctions_v2() {
    kova_import::run_current_section(SectionNumber::time_functions);
}
void KOVA_IMPORT_CALL seg_parameters_v2() {
    kova_import::run_current_section(SectionNumber::segment_parameters);
}
void KOVA_IMPORT_CALL constants_v2() { kova_import::run_current_section(SectionNumber::constants); }
void KOVA_IMPORT_CALL initial_conditions_v2() {
    kova_import::run_current_section(SectionNumber::initial_conditions);
}

/* Loads the utility as a host does, by name at run time, and imports: plain_loader LIBRARY [TIMES].
 *
 * It exports functions under the utility's own names. If the utility's inner calls were bound to
 * these, an import would end here. It changes the state of the process that programs like to
 * change, and sees whether the import does. */
#define _POSIX_C_SOURCE 200809L
#include "import_export.h"
#include "loading.h"

#include <fenv.h>
#include <locale.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* Windows binds a library's inner calls when it is linked. */
#if !defined(_WIN32)
#define TRAP(name)                                                                                 \
    __attribute__((visibility("default"))) void name(void) {                                       \
        fputs("captured: " #name "\n", stderr);                                                    \
        abort();                                                                                   \
    }

TRAP(intro)
TRAP(version)
TRAP(modelparam)
TRAP(segments)
TRAP(flowpath)
TRAP(flows)
TRAP(exchanges)
TRAP(boundary)
TRAP(loads)
TRAP(timefunctions)
TRAP(seg_parameters)
TRAP(constants)
TRAP(initial_conditions)
TRAP(modelparam_v2)
TRAP(segments_v2)
TRAP(flowpath_v2)
TRAP(flows_v2)
TRAP(exchanges_v2)
TRAP(boundary_v2)
TRAP(loads_v2)
TRAP(timefunctions_v2)
TRAP(seg_parameters_v2)
TRAP(constants_v2)
TRAP(initial_conditions_v2)
#endif

static void KOVA_IMPORT_CALL count_notice(void *context, const import_export_notice *notice) {
    if (notice->size >= sizeof *notice)
        ++*(int *)context;
}

int main(int argument_count, char **arguments) {
    if (argument_count < 2)
        return 2;
    const int times = argument_count > 2 ? atoi(arguments[2]) : 1;
    for (int i = 0; i < times; ++i) {
        library_handle library = load(arguments[1]);
        if (library == NULL) {
            print_load_error();
            return 3;
        }
        void(KOVA_IMPORT_CALL * import)(void) = find_function(library, "importexport");
        import_export_data *data = find_data(library, "IMPORT_EXPORT");
        if (import == NULL || data == NULL || data->layout != IMPORT_EXPORT_LAYOUT)
            return 4;
        if (data->report_tables != 0 || data->notice != NULL || data->index_segment_names != 1)
            return 5;

        int notices = 0;
        data->notice = count_notice;
        data->notice_context = &notices;
        char before[4096];
        char after[4096];
        if (current_folder(before, sizeof before) == NULL)
            return 6;
        const char *locale_wanted = getenv("PLAIN_HOST_LOCALE");
        const char *locale_found = setlocale(LC_ALL, "");
        if (locale_wanted != NULL &&
            (locale_found == NULL || strcmp(locale_found, locale_wanted) != 0))
            return 12;
        char locale[4096];
        snprintf(locale, sizeof locale, "%s", setlocale(LC_ALL, NULL));
        fesetround(FE_DOWNWARD);
        import();
        import();
        if (fegetround() != FE_DOWNWARD)
            return 7;
        fesetround(FE_TONEAREST);
        if (strcmp(setlocale(LC_ALL, NULL), locale) != 0)
            return 8;
        if (current_folder(after, sizeof after) == NULL || strcmp(before, after) != 0)
            return 9;
        if (notices == 0 || data->notice != count_notice)
            return 10;
        if (!unload(library))
            return 11;
    }
    return 0;
}

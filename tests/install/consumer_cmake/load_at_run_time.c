/* Imports the file that it is given, with the utility loaded at run time. The program is linked
 * with the host library, so the loader has it already when the utility asks for it. */
#include "host.h"

#include <dlfcn.h>
#include <kova_import/import_export.h>
#include <stdio.h>
#include <string.h>

int main(int argument_count, char **arguments) {
    if (argument_count != 2)
        return 2;
    void *const utility = dlopen(UTILITY, RTLD_NOW | RTLD_LOCAL);
    if (utility == NULL) {
        fprintf(stderr, "%s\n", dlerror());
        return 3;
    }
    const import_export_data *const data = dlsym(utility, "IMPORT_EXPORT");
    void *const entry = dlsym(utility, "importexport");
    if (data == NULL || entry == NULL || data->layout != IMPORT_EXPORT_LAYOUT)
        return 4;
    void (*import)(void) = NULL;
    memcpy(&import, &entry, sizeof import);

    set_import_file(arguments[1]);
    import();
    printf("%d commands\n", command_count());
    return data->import_error;
}

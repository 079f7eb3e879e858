/* Imports the file that it is given, with the utility linked like any library. */
#include "host.h"

#include <kova_import/import_export.h>
#include <stdio.h>

int main(int argument_count, char **arguments) {
    if (argument_count != 2)
        return 2;
    set_import_file(arguments[1]);
    importexport();
    printf("%d commands\n", command_count());
    return IMPORT_EXPORT.import_error;
}

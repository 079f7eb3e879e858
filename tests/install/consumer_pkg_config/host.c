/* A program that is its own host: the entry points are its own, and it loads the utility at run
 * time. It imports the file that it is given and counts the commands. */
#include <dlfcn.h>
#include <kova_import/host_calls.h>
#include <kova_import/import_export.h>
#include <stdio.h>
#include <string.h>

static const char *import_file;
static int count;

void KOVA_HOST_CALL host_call_0(char *k, size_t l0) {
    (void)k, (void)l0;
    ++count;
}

void KOVA_HOST_CALL host_call_1(char *k, void *a, size_t l0, size_t l1) {
    (void)l0;
    ++count;
    if (strcmp(k, "GFILENAME") == 0)
        strncpy(a, import_file, l1);
}

void KOVA_HOST_CALL host_call_2(char *k, void *a, void *b, size_t l0, size_t l1, size_t l2) {
    (void)k, (void)a, (void)b, (void)l0, (void)l1, (void)l2;
    ++count;
}

void KOVA_HOST_CALL host_call_3(char *k, void *a, void *b, void *c, size_t l0, size_t l1, size_t l2,
                                size_t l3) {
    (void)k, (void)a, (void)b, (void)c, (void)l0, (void)l1, (void)l2, (void)l3;
    ++count;
}

void KOVA_HOST_CALL host_call_4(char *k, void *a, void *b, void *c, void *d, size_t l0, size_t l1,
                                size_t l2, size_t l3, size_t l4) {
    (void)k, (void)a, (void)b, (void)c, (void)d, (void)l0, (void)l1, (void)l2, (void)l3, (void)l4;
    ++count;
}

void KOVA_HOST_CALL host_call_5(char *k, void *a, void *b, void *c, void *d, void *e, size_t l0,
                                size_t l1, size_t l2, size_t l3, size_t l4, size_t l5) {
    (void)k, (void)a, (void)b, (void)c, (void)d, (void)e;
    (void)l0, (void)l1, (void)l2, (void)l3, (void)l4, (void)l5;
    ++count;
}

int main(int argument_count, char **arguments) {
    if (argument_count != 2)
        return 2;
    import_file = arguments[1];
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

    import();
    printf("%d commands\n", count);
    return data->import_error;
}

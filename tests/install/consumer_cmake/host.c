/* A small host: it counts the commands and answers one question, that for the import file. What it
 * leaves unanswered is imported as if nothing had been chosen. */
#include "host.h"

#include <kova_import/host_calls.h>
#include <string.h>

static const char *import_file = "";
static int count;

void set_import_file(const char *path) { import_file = path; }
int command_count(void) { return count; }

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

/* A host whose entry points return at once. It answers the question for the file and nothing else,
 * so that the processor time of an import is that of the utility alone. */
#include "bench_host.h"

#include <string.h>

static const char *file = "";

void bench_host_set_file(const char *path) { file = path; }
uint64_t bench_host_commands(void) { return 0; }
uint64_t bench_host_checksum(void) { return 0; }

void KOVA_HOST_CALL host_call_0(char *keyword, size_t keyword_length) {
    (void)keyword;
    (void)keyword_length;
}

void KOVA_HOST_CALL host_call_1(char *keyword, void *a, size_t keyword_length, size_t length_1) {
    static const char file_name[] = "GFILENAME";
    if (keyword_length != sizeof file_name || memcmp(keyword, file_name, sizeof file_name) != 0)
        return;
    const size_t size = strlen(file);
    memset(a, ' ', length_1);
    memcpy(a, file, size < length_1 ? size : length_1);
}

void KOVA_HOST_CALL host_call_2(char *keyword, void *a, void *b, size_t keyword_length,
                                size_t length_1, size_t length_2) {
    (void)keyword, (void)a, (void)b;
    (void)keyword_length, (void)length_1, (void)length_2;
}

void KOVA_HOST_CALL host_call_3(char *keyword, void *a, void *b, void *c, size_t keyword_length,
                                size_t length_1, size_t length_2, size_t length_3) {
    (void)keyword, (void)a, (void)b, (void)c;
    (void)keyword_length, (void)length_1, (void)length_2, (void)length_3;
}

void KOVA_HOST_CALL host_call_4(char *keyword, void *a, void *b, void *c, void *d,
                                size_t keyword_length, size_t length_1, size_t length_2,
                                size_t length_3, size_t length_4) {
    (void)keyword, (void)a, (void)b, (void)c, (void)d;
    (void)keyword_length, (void)length_1, (void)length_2, (void)length_3, (void)length_4;
}

void KOVA_HOST_CALL host_call_5(char *keyword, void *a, void *b, void *c, void *d, void *e,
                                size_t keyword_length, size_t length_1, size_t length_2,
                                size_t length_3, size_t length_4, size_t length_5) {
    (void)keyword, (void)a, (void)b, (void)c, (void)d, (void)e;
    (void)keyword_length, (void)length_1, (void)length_2, (void)length_3, (void)length_4;
    (void)length_5;
}

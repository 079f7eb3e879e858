/* A second host, independent of the reference host: plain C, no table of commands. It prints every
 * call, with the characters of every text that it has a length for, and then overwrites what it was
 * handed: a utility that keeps using its arguments after a call shows it. Which arguments are texts
 * it knows by keyword, as any host does. */
#include "host_calls.h"

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static FILE *output(void) {
    static FILE *file;
    if (file == NULL) {
        const char *path = getenv("PLAIN_HOST_LOG");
        file = path != NULL ? fopen(path, "ab") : stderr;
        if (file == NULL)
            abort();
    }
    return file;
}

static int starts(const char *keyword, const char *name) { return strcmp(keyword, name) == 0; }

/* One letter per argument: t text, i integer, r real, T text to fill in, A answer. */
static const char *kinds_of(const char *keyword) {
    if (starts(keyword, "PDIALOG"))
        return "ttttA";
    if (starts(keyword, "GFILENAME"))
        return "T";
    if (starts(keyword, "PINFOHTML") || starts(keyword, "PFILENAME"))
        return "t";
    if (starts(keyword, "GSPRINTFI"))
        return "Tti";
    if (starts(keyword, "GSPRINTFR"))
        return "Ttr";
    if (starts(keyword, "PSYSNAME"))
        return "itt";
    if (starts(keyword, "PSEGNAME"))
        return "it";
    if (starts(keyword, "PSEEDTIME") || starts(keyword, "PSEEDDATE") ||
        starts(keyword, "PHYDSKIPDATE") || starts(keyword, "PHYDSKIPTIME"))
        return "iii";
    if (starts(keyword, "PBOTSEG") || starts(keyword, "PSEGTYPE") || starts(keyword, "PIQOPT"))
        return "ii";
    if (starts(keyword, "PENDJULIAN") || starts(keyword, "PFRACMAXTS") ||
        starts(keyword, "PMAXDT") || starts(keyword, "PMINDT") ||
        starts(keyword, "PMODELOUTPUTINTERVAL") || starts(keyword, "PBEDDT") ||
        starts(keyword, "PSCALV") || starts(keyword, "PCONVV"))
        return "r";
    if (starts(keyword, "PCLEARINFO") || strstr(keyword, "REFRESH") != NULL)
        return "";
    if (starts(keyword, "PPROGRESS") || starts(keyword, "PMODELTYPE") ||
        starts(keyword, "PNUMSYS") || starts(keyword, "PSOLUTIONTYPE") ||
        starts(keyword, "PNEGSLN") || starts(keyword, "PICRD") || starts(keyword, "PINTYP") ||
        starts(keyword, "PNUMSEG") || starts(keyword, "PBEDOPT"))
        return "i";
    return "ir"; /* a value of a segment */
}

static void print_text(const char *text, size_t length) {
    fprintf(output(), " %zu:", length);
    for (size_t i = 0; i < length; ++i) {
        const unsigned char character = (unsigned char)text[i];
        if (character > ' ' && character < 0x7F)
            fputc(character, output());
        else
            fprintf(output(), "%%%02X", character);
    }
}

static void fill(char *text, size_t length, const char *content) {
    const size_t size = strlen(content);
    memset(text, ' ', length);
    memcpy(text, content, size < length ? size : length);
}

static void call(size_t count, char *keyword, void **arguments, const size_t *lengths) {
    if (keyword[lengths[0] - 1] != '\0')
        abort();
    const char *kinds = kinds_of(keyword);
    if (strlen(kinds) != count)
        abort();
    fprintf(output(), "%s %zu", keyword, lengths[0]);
    size_t texts = 0;
    for (size_t i = 0; i < count; ++i) {
        int32_t integer = 0;
        switch (kinds[i]) {
        case 't':
            print_text(arguments[i], lengths[++texts]);
            memset(arguments[i], '#', lengths[texts]);
            break;
        case 'T':
            fill(arguments[i], lengths[++texts],
                 starts(keyword, "GFILENAME") ? getenv("PLAIN_HOST_FILE") : "12");
            fprintf(output(), " %zu", lengths[texts]);
            break;
        case 'A':
            memcpy(&integer, arguments[i], sizeof integer);
            fprintf(output(), " %d", (int)integer);
            integer = 1;
            memcpy(arguments[i], &integer, sizeof integer);
            break;
        case 'i':
            memcpy(&integer, arguments[i], sizeof integer);
            fprintf(output(), " %d", (int)integer);
            memset(arguments[i], 0x55, sizeof integer);
            break;
        default:
            /* by its bits, which no locale changes */
            memcpy(&integer, arguments[i], sizeof integer);
            fprintf(output(), " %08x", (unsigned)integer);
            memset(arguments[i], 0x55, sizeof integer);
            break;
        }
    }
    for (++texts; texts <= count; ++texts)
        if (lengths[texts] != 0)
            abort();
    fputc('\n', output());
    fflush(output());
    memset(keyword, '#', lengths[0]);
}

void KOVA_HOST_CALL host_call_0(char *k, size_t l0) {
    const size_t lengths[] = {l0};
    call(0, k, NULL, lengths);
}

void KOVA_HOST_CALL host_call_1(char *k, void *a, size_t l0, size_t l1) {
    void *arguments[] = {a};
    const size_t lengths[] = {l0, l1};
    call(1, k, arguments, lengths);
}

void KOVA_HOST_CALL host_call_2(char *k, void *a, void *b, size_t l0, size_t l1, size_t l2) {
    void *arguments[] = {a, b};
    const size_t lengths[] = {l0, l1, l2};
    call(2, k, arguments, lengths);
}

void KOVA_HOST_CALL host_call_3(char *k, void *a, void *b, void *c, size_t l0, size_t l1, size_t l2,
                                size_t l3) {
    void *arguments[] = {a, b, c};
    const size_t lengths[] = {l0, l1, l2, l3};
    call(3, k, arguments, lengths);
}

void KOVA_HOST_CALL host_call_4(char *k, void *a, void *b, void *c, void *d, size_t l0, size_t l1,
                                size_t l2, size_t l3, size_t l4) {
    void *arguments[] = {a, b, c, d};
    const size_t lengths[] = {l0, l1, l2, l3, l4};
    call(4, k, arguments, lengths);
}

void KOVA_HOST_CALL host_call_5(char *k, void *a, void *b, void *c, void *d, void *e, size_t l0,
                                size_t l1, size_t l2, size_t l3, size_t l4, size_t l5) {
    void *arguments[] = {a, b, c, d, e};
    const size_t lengths[] = {l0, l1, l2, l3, l4, l5};
    call(5, k, arguments, lengths);
}

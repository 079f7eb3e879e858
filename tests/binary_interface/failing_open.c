/* Preloaded: the second open of the file named in FAILING_OPEN fails. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>

static int opens;

__attribute__((visibility("default"))) int open(const char *path, int flags, ...) {
    int (*next)(const char *, int, ...) = NULL;
    *(void **)&next = dlsym(RTLD_NEXT, "open");
    const char *failing = getenv("FAILING_OPEN");
    if (failing != NULL && strcmp(path, failing) == 0 && ++opens == 2) {
        errno = EACCES;
        return -1;
    }
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list rest;
        va_start(rest, flags);
        mode = va_arg(rest, mode_t);
        va_end(rest);
    }
    return next(path, flags, mode);
}

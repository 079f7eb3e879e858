/* Preloaded: makes the file named in FAILING_FILE fail. With FAILING_OPEN=n its n-th open fails;
 * with FAILING_READ=n its reads fail once n bytes have been read. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#define EXPORTED __attribute__((visibility("default")))

static int opens;
static int handle = -1;
static long left;

static long setting(const char *name) {
    const char *text = getenv(name);
    return text != NULL ? atol(text) : -1;
}

EXPORTED int open(const char *path, int flags, ...) {
    int (*next)(const char *, int, ...) = NULL;
    *(void **)&next = dlsym(RTLD_NEXT, "open");
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list rest;
        va_start(rest, flags);
        mode = va_arg(rest, mode_t);
        va_end(rest);
    }
    const char *failing = getenv("FAILING_FILE");
    if (failing == NULL || strcmp(path, failing) != 0)
        return next(path, flags, mode);
    if (++opens == setting("FAILING_OPEN")) {
        errno = EACCES;
        return -1;
    }
    handle = next(path, flags, mode);
    left = setting("FAILING_READ");
    return handle;
}

EXPORTED ssize_t read(int file, void *target, size_t size) {
    ssize_t (*next)(int, void *, size_t) = NULL;
    *(void **)&next = dlsym(RTLD_NEXT, "read");
    if (file != handle || left < 0)
        return next(file, target, size);
    if (left == 0) {
        errno = EIO;
        return -1;
    }
    const ssize_t count = next(file, target, size < (size_t)left ? size : (size_t)left);
    left -= count > 0 ? count : 0;
    return count;
}

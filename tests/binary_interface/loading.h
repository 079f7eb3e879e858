/* Loading a library at run time, and what else the loader's test needs of either system. */
#ifndef KOVA_TEST_LOADING_H
#define KOVA_TEST_LOADING_H

#include <stdio.h>

#if defined(_WIN32)
#include <direct.h>
#include <windows.h>
#define current_folder(buffer, size) _getcwd((buffer), (int)(size))
typedef HMODULE library_handle;
static library_handle load(const char *path) { return LoadLibraryA(path); }
static void (*find_function(library_handle library, const char *name))(void) {
    return (void (*)(void))GetProcAddress(library, name);
}
static void *find_data(library_handle library, const char *name) {
    void *address = NULL;
    *(FARPROC *)&address = GetProcAddress(library, name);
    return address;
}
static int unload(library_handle library) { return FreeLibrary(library) != 0; }
static void print_load_error(void) { fprintf(stderr, "error %lu\n", GetLastError()); }
#else
#include <dlfcn.h>
#include <unistd.h>
#define current_folder(buffer, size) getcwd((buffer), (size))
typedef void *library_handle;
/* Globally, so that names that the library looks up outside itself would be found in it. */
static library_handle load(const char *path) { return dlopen(path, RTLD_NOW | RTLD_GLOBAL); }
static void (*find_function(library_handle library, const char *name))(void) {
    void (*function)(void) = NULL;
    *(void **)&function = dlsym(library, name);
    return function;
}
static void *find_data(library_handle library, const char *name) { return dlsym(library, name); }
static int unload(library_handle library) { return dlclose(library) == 0; }
static void print_load_error(void) { fprintf(stderr, "%s\n", dlerror()); }
#endif

#endif

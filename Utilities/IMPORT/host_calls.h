/* The six entry points of the host library, which a host supplies and the import utility calls.
 * Plain C.
 *
 * On Linux the library is libprekovawdll.so, found by the dynamic loader through its soname, and
 * exports these names. On Windows it is prekovawdll.dll, and the utility imports the entry points
 * by their ordinals only: host_call_<n> is ordinal n + 2.
 *
 * The import utility tells the host everything through host commands: a keyword and up to five
 * arguments. There is one entry point for each number of arguments behind the keyword. Calling
 * sequence of all of them:
 *
 *   1. the keyword: its characters and one NUL, by reference;
 *   2. the arguments in order, each by reference: `int32_t`, `float`, text, or a send buffer
 * `float[170000]`. The host may write through what it is given: numbers and texts are copies, but
 * what it writes into a send buffer stays;
 *   3. by value, the lengths of the texts in bytes, the keyword's first, then those of the text
 * arguments in the order in which they stand. Numbers and send buffers have no length. A length
 * that a command does not use stands last and is 0.
 *
 * A literal text travels with one NUL at its end, which counts in its length ("PDIALOG" has length
 * 8); a data field travels at its declared width, padded with blanks. No entry point returns a
 * value: what the host has to say it writes into an argument. A command is complete when its call
 * returns, and all calls come from one thread. On Windows with 32 bits the entry points are cdecl,
 * whatever the compiler's options: a host writes KOVA_HOST_CALL at its definitions too. */
#ifndef KOVA_HOST_CALLS_H
#define KOVA_HOST_CALLS_H

#include <stddef.h> /* NOLINT(modernize-deprecated-headers): a C header */

#if defined(_WIN32)
#if defined(KOVA_HOST_BUILD)
#define KOVA_HOST_API __declspec(dllexport)
#else
#define KOVA_HOST_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KOVA_HOST_API __attribute__((visibility("default")))
#else
#define KOVA_HOST_API
#endif

#if defined(_WIN32)
#define KOVA_HOST_CALL __cdecl
#else
#define KOVA_HOST_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

KOVA_HOST_API void KOVA_HOST_CALL host_call_0(char *keyword, size_t keyword_length);

KOVA_HOST_API void KOVA_HOST_CALL host_call_1(char *keyword, void *argument_1,
                                              size_t keyword_length, size_t length_1);

KOVA_HOST_API void KOVA_HOST_CALL host_call_2(char *keyword, void *argument_1, void *argument_2,
                                              size_t keyword_length, size_t length_1,
                                              size_t length_2);

KOVA_HOST_API void KOVA_HOST_CALL host_call_3(char *keyword, void *argument_1, void *argument_2,
                                              void *argument_3, size_t keyword_length,
                                              size_t length_1, size_t length_2, size_t length_3);

KOVA_HOST_API void KOVA_HOST_CALL host_call_4(char *keyword, void *argument_1, void *argument_2,
                                              void *argument_3, void *argument_4,
                                              size_t keyword_length, size_t length_1,
                                              size_t length_2, size_t length_3, size_t length_4);

KOVA_HOST_API void KOVA_HOST_CALL host_call_5(char *keyword, void *argument_1, void *argument_2,
                                              void *argument_3, void *argument_4, void *argument_5,
                                              size_t keyword_length, size_t length_1,
                                              size_t length_2, size_t length_3, size_t length_4,
                                              size_t length_5);

#ifdef __cplusplus
}
#endif

#endif

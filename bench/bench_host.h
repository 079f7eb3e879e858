/* What the hosts of the benchmark have beside the six entry points. Plain C. */
#ifndef KOVA_BENCH_HOST_H
#define KOVA_BENCH_HOST_H

#include "host_calls.h"

#include <stdint.h> /* NOLINT(modernize-deprecated-headers): a C header */

#ifdef __cplusplus
extern "C" {
#endif

/* Sets the path that the host answers with; the text stays with the caller. */
KOVA_HOST_API void bench_host_set_file(const char *path);

/* The commands so far, and a sum of all that came with them. A host that does not look at them says
 * 0. */
KOVA_HOST_API uint64_t bench_host_commands(void);
KOVA_HOST_API uint64_t bench_host_checksum(void);

#ifdef __cplusplus
}
#endif

#endif

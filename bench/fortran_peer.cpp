#include "peers.h"

#include "bench_host.h"

#include <cstdint>

extern "C" std::int32_t import_legacy_model();

namespace kova_import::bench {

bool import_with_fortran(const char *path) {
    bench_host_set_file(path);
    return import_legacy_model() == 0;
}

} // namespace kova_import::bench

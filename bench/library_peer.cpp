#include "peers.h"

#include "bench_host.h"
#include "import_export.h"

namespace kova_import::bench {

bool import_with_library(const char *path) {
    bench_host_set_file(path);
    importexport();
    // The counter stays at 1 when the file cannot be opened.
    return IMPORT_EXPORT.import_error == 0 && IMPORT_EXPORT.line_counter > 1;
}

} // namespace kova_import::bench

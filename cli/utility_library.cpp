#include "cli/utility_library.h"

#include <dlfcn.h>
#include <string>

namespace kova_command {

namespace {

constexpr const char *library_name = KOVA_UTILITY_LIBRARY;

std::string loader_error() {
    const char *const message = dlerror();
    return message == nullptr ? "unknown error of the loader" : message;
}

void *find(void *library, const char *name) {
    void *const address = dlsym(library, name);
    if (address == nullptr)
        throw BrokenInstallation(std::string(library_name) + " has no " + name + ": " +
                                 loader_error());
    return address;
}

} // namespace

UtilityLibrary::UtilityLibrary() {
    void *const library = dlopen(library_name, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        throw BrokenInstallation("the import library cannot be loaded: " + loader_error());
    import_ = reinterpret_cast<void (*)()>(find(library, "importexport"));
    data_ = static_cast<import_export_data *>(find(library, "IMPORT_EXPORT"));
    if (data_->layout != IMPORT_EXPORT_LAYOUT)
        throw BrokenInstallation(
            std::string(library_name) + " has data layout " + std::to_string(data_->layout) +
            ", but this command knows layout " + std::to_string(IMPORT_EXPORT_LAYOUT));
}

} // namespace kova_command

#include "cli/utility_library.h"

#include "cli/platform.h"

#include <exception>
#include <string>

namespace kova_command {

namespace {

constexpr const char *library_name = KOVA_UTILITY_LIBRARY;

platform::LoadedLibrary load() {
    try {
        return platform::LoadedLibrary(library_name);
    } catch (const std::exception &error) {
        throw BrokenInstallation(std::string("the import library cannot be loaded: ") +
                                 error.what());
    }
}

void *find(const platform::LoadedLibrary &library, const char *name) {
    try {
        return library.find(name);
    } catch (const std::exception &error) {
        throw BrokenInstallation(std::string(library_name) + " has no " + name + ": " +
                                 error.what());
    }
}

} // namespace

UtilityLibrary::UtilityLibrary() {
    const platform::LoadedLibrary library = load();
    import_ = reinterpret_cast<void(KOVA_IMPORT_CALL *)()>(find(library, "importexport"));
    data_ = static_cast<import_export_data *>(find(library, "IMPORT_EXPORT"));
    if (data_->layout != IMPORT_EXPORT_LAYOUT)
        throw BrokenInstallation(
            std::string(library_name) + " has data layout " + std::to_string(data_->layout) +
            ", but this command knows layout " + std::to_string(IMPORT_EXPORT_LAYOUT));
}

} // namespace kova_command

#pragma once

// The import utility as a host finds it: a dynamic library, its entry point and its data block.

#include "import_export.h"

#include <stdexcept>

namespace kova_command {

/// The library is missing or is not one that this command can talk to.
class BrokenInstallation : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Stays loaded until the process ends: unloading code that a host may still call gains nothing.
class UtilityLibrary {
  public:
    /// Loads the library through the loader's search path. Throws `BrokenInstallation`.
    UtilityLibrary();

    /// Runs one import from the first question to the completion note.
    void run_import() const { import_(); }
    /// The live state of the utility.
    [[nodiscard]] import_export_data &data() const { return *data_; }

  private:
    void(KOVA_IMPORT_CALL *import_)() = nullptr;
    import_export_data *data_ = nullptr;
};

} // namespace kova_command

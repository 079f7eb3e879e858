// kova-import: imports model input files at the command line.

#include "cli/check_command.h"
#include "cli/import_command.h"
#include "cli/import_outcome.h"
#include "cli/options.h"
#include "cli/output.h"
#include "cli/platform.h"
#include "cli/text.h"
#include "cli/utility_library.h"

#include <exception>
#include <string>
#include <vector>

namespace {

using namespace kova_command;

int run(const ImportOptions &options) { return run_import_command(options, UtilityLibrary()); }

int run(const CheckOptions &options) { return run_check_command(options, UtilityLibrary()); }

int run(const Reply &reply) {
    write_message(reply.error);
    write_result(reply.output);
    return reply.exit_status;
}

int fail(int status, const std::string &prefix, const std::exception &error) {
    write_message("kova-import: " + prefix + printable(error.what()) + '\n');
    return status;
}

} // namespace

int main(int argc, char **argv) {
    const platform::StandardStreams streams;
    try {
        const std::vector<std::string> arguments = platform::arguments_of(argc, argv);
        return std::visit([](const auto &command) { return run(command); },
                          parse_command_line(arguments));
    } catch (const BrokenInstallation &error) {
        return fail(exit_status::internal_error, "error: the installation is broken: ", error);
    } catch (const OutputFailed &error) {
        return fail(exit_status::output_failed, "error: ", error);
    } catch (const std::exception &error) {
        return fail(exit_status::internal_error, "internal error: ", error);
    }
}

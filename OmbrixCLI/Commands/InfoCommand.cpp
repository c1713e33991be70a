#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCore/DictationStore.h"
#include "OmbrixCore/OmbrixPaths.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {
namespace {

constexpr std::int64_t schemaVersion = 1;

struct InfoOptions {
    GlobalOptions global;
};

std::string workingDirectoryOrRoot() {
    try {
        return Files::workingDirectory();
    } catch (const Files::Error&) {
        return "/";
    }
}

void printInfo(const CLIContext& context, const std::string& argument0) {
    const DictationStore store(context.databaseURL);
    // The name this process was started by is relative when it was found by PATH; then the working
    // directory has no part in it, and may be gone.
    const std::string workingDirectory = workingDirectoryOrRoot();
    emitSuccess(
        context,
        Json::object({{"supportDirectory", context.supportDirectory},
                      {"databasePath", context.databaseURL},
                      {"databaseExists", store.databaseExists()},
                      {"appBundlePath", OmbrixPaths::appBundlePath(argument0, workingDirectory)},
                      {"executablePath", Paths::standardised(argument0, workingDirectory)},
                      {"schemaVersion", schemaVersion}}));
}
}  // namespace

void declareInfo(Command root, const std::string& argument0) {
    Command command = root.subcommand("info", "Show resolved support and database paths.");
    command.run(command.options<InfoOptions>(),
                [argument0](const CLIContext& context, const InfoOptions&) {
                    printInfo(context, argument0);
                });
}
}  // namespace ombrix

#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCore/DictationStore.h"
#include "OmbrixCore/OmbrixPaths.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {
namespace {

constexpr std::int64_t schemaVersion = 1;

void printInfo(const GlobalOptions& options, const std::string& argument0) {
    const CLIContext context(options);
    const DictationStore store(context.databaseURL);
    const std::string workingDirectory = Files::workingDirectory();
    emitSuccess(
        "ombrix-cli info",
        Json::object({{"supportDirectory", context.supportDirectory},
                      {"databasePath", context.databaseURL},
                      {"databaseExists", store.databaseExists()},
                      {"appBundlePath", OmbrixPaths::appBundlePath(argument0, workingDirectory)},
                      {"executablePath", Paths::standardised(argument0, workingDirectory)},
                      {"schemaVersion", schemaVersion}}),
        context.databaseURL);
}
}  // namespace

void declareInfo(Command root, const std::string& argument0) {
    Command command = root.subcommand("info", "Show resolved support and database paths.");
    const auto options = command.options<GlobalOptions>();
    command.globalOptions(*options);
    command.run([options, argument0] { printInfo(*options, argument0); });
}
}  // namespace ombrix

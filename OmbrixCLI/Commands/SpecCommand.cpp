#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/SpecTable.h"

namespace ombrix {
namespace {

constexpr std::int64_t schemaVersion = 1;

Json::Value commandSpecPayload() {
    Json::Array commands;
    for (const auto& row : CommandSpecPayload::commands()) {
        commands.push_back(
            Json::object({{"name", row.name},
                          {"usage", row.usage},
                          {"summary", row.summary},
                          {"examples", Json::Array(row.examples.begin(), row.examples.end())}}));
    }
    return Json::object({{"schemaVersion", schemaVersion}, {"commands", std::move(commands)}});
}

void printSpec(std::string_view command, const GlobalOptions& options) {
    emitSuccess(command, commandSpecPayload(), CLIContext(options).databaseURL);
}
}  // namespace

void declareSpec(Command root) {
    // The bare tool introduces itself.
    root.run([] { printSpec("ombrix-cli", {}); });

    Command command = root.subcommand("spec", "Dump CLI command metadata as JSON.");
    const auto options = command.options<GlobalOptions>();
    command.globalOptions(*options);
    command.run([options] { printSpec("ombrix-cli spec", *options); });
}
}  // namespace ombrix

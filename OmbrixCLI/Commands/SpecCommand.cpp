#include "OmbrixCLI/CommandSpecPayload.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"

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

struct SpecOptions {
    GlobalOptions global;
};

void printSpec(const CLIContext& context, const SpecOptions&) {
    emitSuccess(context, commandSpecPayload());
}
}  // namespace

void declareSpec(Command root) {
    // The bare tool introduces itself.
    root.run([name = root.path()] { printSpec(CLIContext(name, {}), {}); });

    Command command = root.subcommand("spec", "Dump CLI command metadata as JSON.");
    command.run(command.options<SpecOptions>(), printSpec);
}
}  // namespace ombrix

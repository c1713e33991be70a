#include "OmbrixCLI/CommandSpec.h"

#include "OmbrixCLI/Envelope.h"

namespace ombrix {
namespace {

constexpr std::int64_t schemaVersion = 1;

struct SpecOptions {
    GlobalOptions global;
};

Json::Value payload(const std::vector<SpecCommand>& rows) {
    Json::Array commands;
    for (const auto& row : rows) {
        commands.push_back(
            Json::object({{"name", row.name},
                          {"usage", row.usage},
                          {"summary", row.summary},
                          {"examples", Json::Array(row.examples.begin(), row.examples.end())}}));
    }
    return Json::object({{"schemaVersion", schemaVersion}, {"commands", std::move(commands)}});
}
}  // namespace

void declareSpec(const Command& root, const std::vector<SpecCommand>& (*rows)()) {
    const auto print = [rows](const CLIContext& context, const SpecOptions&) {
        emitSuccess(context, payload(rows()));
    };
    root.examples([rows](std::string_view path) {
        std::vector<std::string> lines;
        for (const SpecCommand& row : rows())
            if (row.name == path) lines.assign(row.examples.begin(), row.examples.end());
        return lines;
    });
    // The bare tool introduces itself.
    root.run([print, name = root.path()] { print(CLIContext(name, {}), {}); });

    const Command command = root.subcommand("spec", "Dump CLI command metadata as JSON.");
    command.run(command.options<SpecOptions>(), print);
}
}  // namespace ombrix

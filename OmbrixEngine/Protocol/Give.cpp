#include "OmbrixEngine/Protocol/Give.h"

#include <utility>

#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/NotesSource.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

std::string bytesOf(const GiveOptions& options) {
    if (options.fromStandardInput) return NotesSource::bytesOfStandardInput(largestAnswer + 1);
    try {
        return Files::bytes(*options.file, largestAnswer);
    } catch (const Files::Error& error) {
        if (error.code().value() == EFBIG) return std::string(largestAnswer + 1, ' ');
        throw CLIError::notFound(printable(error.what()) + ".",
                                 "Pass the file that holds the answer.");
    }
}

}  // namespace

void declareGiveOptions(const Command& command, GiveOptions& options) {
    command.option("--input-hash HASH", options.inputHash,
                   "The inputHash that `ask` printed: which input this answers.",
                   Presence::required);
    command.option("--model NAME", options.model, "The name of the model that answered.",
                   Presence::required);
    command.option("--route ROUTE", options.route,
                   "How it was reached: ombrix, ownKey or claudeCode.", Presence::required);
    command.flag("--stdin", options.fromStandardInput, "Read the answer from standard input.");
    command.option("--file PATH", options.file, "Read the answer from this file.");
    command.flag("--dry-run", options.dryRun,
                 "Show what would change as unified diffs, and write nothing.");
    command.exactlyOne({"--stdin", "--file"});
}

GivenAnswer readAnswer(const GiveOptions& options) {
    const auto route = fromRawValue<EngineProvenance::Route>(options.route);
    if (!route) {
        throw CLIError::invalidInput("No route '" + printable(options.route) + "'.",
                                     "--route is ombrix, ownKey or claudeCode.");
    }
    if (Text::trimmed(options.model).empty() || options.model != printable(options.model) ||
        options.model.find('"') != std::string::npos ||
        options.model.find("--") != std::string::npos) {
        throw CLIError::invalidInput("'" + printable(options.model) + "' is no name of a model.",
                                     "--model is one line without double quotes and \"--\".");
    }
    std::string text = bytesOf(options);
    if (text.size() > largestAnswer) {
        throw CLIError::invalidInput("The answer is refused: it has more than " +
                                     std::to_string(largestAnswer) + " bytes.");
    }
    return {std::move(text), options.inputHash, options.model, *route};
}

CLIError refusedAnswer(const std::exception& error, const std::string& askCommand) {
    return CLIError::invalidInput(
        std::string("The answer is refused: ") + error.what(),
        "Nothing was written. Mend the answer, or ask again: " + askCommand);
}

CLIError staleAnswer(std::string_view present, const std::string& askCommand) {
    return CLIError::invalidInput(
        "The answer is stale: the input has changed since, and its hash "
        "is now " +
            std::string(present) + ".",
        "Nothing was written. Ask anew: " + askCommand);
}

void requireCurrent(const GivenAnswer& answer, std::string_view present,
                    const std::string& askCommand) {
    if (answer.inputHash != present) throw staleAnswer(present, askCommand);
}

void emitChanges(const CLIContext& context, EngineWorkspace& workspace, const ChangeSet& changes,
                 bool dryRun, Json::Members data) {
    if (dryRun) {
        Json::Array diffs;
        for (auto& [path, diff] : changes.differences())
            diffs.push_back(Json::object({{"path", std::move(path)}, {"diff", std::move(diff)}}));
        data.emplace("dryRun", true);
        data.emplace("diffs", std::move(diffs));
    } else {
        data.emplace("changed", Json::toValue(changes.apply()));
    }
    emitSuccess(context, std::move(data), workspace.warnings());
}
}  // namespace ombrix

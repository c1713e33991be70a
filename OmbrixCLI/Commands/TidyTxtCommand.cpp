// Finds the ".txt" twins beside transcripts. Their paths go ahead of the envelope.
#include <string>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixCLI/ProgressLine.h"
#include "OmbrixCLI/StandardStreams.h"
#include "OmbrixMarkdownKit/Import/TxtTwinTidy.h"
#include "OmbrixPlatform/Files.h"

namespace ombrix {
namespace {

struct TidyOptions {
    std::string folder;
    bool trash = false;
    GlobalOptions global;
};

std::vector<std::string> plannedTwins(const std::string& folder) {
    ProgressLine line("reading");
    return TxtTwinTidy::plan(folder,
                             [&](std::size_t done, std::size_t all) { line.show(done, all); });
}

std::int64_t trashed(const std::vector<std::string>& twins) {
    ProgressLine line("moving to the Trash");
    return TxtTwinTidy::trash(twins,
                              [&](std::size_t done, std::size_t all) { line.show(done, all); });
}

void tidy(const CLIContext& context, const TidyOptions& options) {
    if (!options.folder.starts_with('/') || !Files::isDirectory(options.folder))
        throw folderNotFound(options.folder);
    const auto twins = plannedTwins(options.folder);
    std::string lines;
    for (const auto& path : twins) lines += printable(path) + "\n";
    StandardOutput::write(lines);
    const std::int64_t moved = options.trash ? trashed(twins) : 0;
    emitSuccess(context, Json::object({{"folder", options.folder},
                                       {"planned", std::to_string(twins.size())},
                                       {"trashed", std::to_string(moved)}}));
}
}  // namespace

void declareTidyTxt(Command root) {
    Command command = root.subcommand(
        "tidy-txt",
        "List (or, with --trash, move to the Trash) the .txt twins beside Ombrix transcripts in a "
        "folder.");
    const auto options = command.options<TidyOptions>();
    command.option("--folder DIR", options->folder,
                   "The transcripts folder to tidy (absolute path). Subfolders are included; "
                   "hidden folders are skipped.",
                   Presence::required);
    command.flag("--trash", options->trash,
                 "Move the planned files to the Trash. Without it, only the plan is printed.");
    command.run(options, tidy);
}
}  // namespace ombrix

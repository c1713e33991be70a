#include <utility>

#include "OmbrixCLI/AnswerFolderResolver.h"
#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/MovesReader.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixCLI/StandardStreams.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Moves/MoveEvidence.h"
#include "OmbrixMemoryKit/Moves/MoveMarkdown.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

struct MovesFolderOptions {
    std::optional<std::string> folder;
    std::string memoryFolder{EnginePaths::defaultMemoryFolderName};
};

struct MovesOptions {
    MovesFolderOptions place;
    bool json = false;
    GlobalOptions global;
};

struct RenderOptions {
    std::string id;
    std::optional<std::string> user;
    MovesFolderOptions place;
    GlobalOptions global;
};

/// The transcripts folder, without slashes at its end.
std::string folderURL(const MovesFolderOptions& options) {
    if (!options.folder) return AnswerFolderResolver::defaultFolder(Files::homeDirectory());
    const std::string& folder = *options.folder;
    if (!folder.starts_with('/') || !Files::exists(folder)) {
        throw CLIError::invalidInput(
            "Folder not found: '" + folder + "'.",
            "Pass --folder with the absolute path of your transcripts folder.");
    }
    return Paths::absolute(folder, "/");
}

// ---- rows --------------------------------------------------------------------------------------

struct MoveRow {
    std::string id;
    MoveKind kind = MoveKind::prompt;
    Stance stance = Stance::stated;
    std::string title;
    std::string state;
    Obligation obligation = Obligation::open;
    bool dismissed = false;
    std::string delivery;
    std::vector<std::string> commitmentIds;
    std::string meetingKey;
    std::optional<std::string> meeting, meetingDate;
    EvidenceStanding evidence = EvidenceStanding::verified;
    bool candidate = false;
};

Json::Value encode(MoveRow row) {
    return Json::object({{"id", std::move(row.id)},
                         {"kind", row.kind},
                         {"stance", row.stance},
                         {"title", std::move(row.title)},
                         {"state", std::move(row.state)},
                         {"obligation", row.obligation},
                         {"dismissed", row.dismissed},
                         {"delivery", std::move(row.delivery)},
                         {"commitmentIds", std::move(row.commitmentIds)},
                         {"meetingKey", std::move(row.meetingKey)},
                         {"meeting", std::move(row.meeting)},
                         {"meetingDate", std::move(row.meetingDate)},
                         {"evidence", row.evidence},
                         {"candidate", row.candidate}});
}

std::string deliveryText(const Delivery& delivery) {
    std::string text(rawValue(delivery.kind));
    if (delivery.kind == Delivery::Kind::handedOff) text += ":" + delivery.to;
    return text;
}

MoveRow rowOf(MoveLibrary::MoveInState each, const MoveSources& sources) {
    auto outline = MoveEvidence::outline(each.move, each.state, sources);
    MoveRow row{
        .id = std::move(each.move.id),
        .kind = each.move.kind,
        .stance = each.move.stance,
        .title = std::move(outline.title),
        .state = each.state.dismissed ? "discarded" : std::string(rawValue(each.state.obligation)),
        .obligation = each.state.obligation,
        .dismissed = each.state.dismissed,
        .delivery = deliveryText(each.state.delivery),
        .commitmentIds = std::move(each.move.commitmentIds),
        .meetingKey = std::move(each.move.sourceId),
        .evidence = outline.evidence,
        .candidate = outline.hasCandidate};
    if (outline.source != nullptr) {
        row.meeting = outline.source->title;
        row.meetingDate = outline.source->date;
    }
    return row;
}

// ---- table -------------------------------------------------------------------------------------

std::string tableLine(const MoveRow& row) {
    std::vector<std::string> meeting;
    if (row.meeting) meeting.push_back(*row.meeting);
    if (row.meetingDate) meeting.push_back(*row.meetingDate);
    std::string line = row.id + "  ";
    line.append(rawValue(row.kind)).append("/").append(rawValue(row.stance));
    line += "  " + row.state + "  " + row.title + "  [" + Text::joined(row.commitmentIds, ",") +
            "]  " + Text::joined(meeting, ", ");
    return printable(line) + "\n";
}

std::string table(const std::vector<MoveRow>& rows, const std::string& folder) {
    if (rows.empty()) return printable("no prepared moves in " + folder) + "\n";
    std::string text;
    for (const auto& row : rows) text += tableLine(row);
    return text;
}

// ---- work --------------------------------------------------------------------------------------

void listMoves(const CLIContext& context, const MovesOptions& options) {
    const std::string folder = folderURL(options.place);
    std::vector<MoveRow> rows;
    const auto addRow = [&rows](MoveLibrary::MoveInState each, const MoveSources& sources) {
        rows.push_back(rowOf(std::move(each), sources));
        return true;
    };
    MovesReader(folder, options.place.memoryFolder).eachMove(MoveLibrary::Detail::outline, addRow);
    if (!options.json) StandardOutput::write(table(rows, folder));
    const auto count = static_cast<std::int64_t>(rows.size());
    emitSuccess(context, Json::object({{"folder", folder},
                                       {"count", count},
                                       {"moves", Json::toValue(std::move(rows))}}));
}

void renderMove(const CLIContext&, const RenderOptions& options) {
    const std::string folder = folderURL(options.place);
    const MoveMarkdown::Context reader{.userName = options.user.value_or(""),
                                       .today = Calendar::current().dayString(presentTime())};
    std::optional<std::string> payload;
    const auto renderIt = [&](MoveLibrary::MoveInState each, const MoveSources& sources) {
        if (each.move.id != options.id) return true;
        payload = MoveMarkdown::work(
            MoveEvidence::resolve(std::move(each.move), std::move(each.state), sources), reader);
        return false;
    };
    MovesReader(folder, options.place.memoryFolder).eachMove(MoveLibrary::Detail::whole, renderIt);
    if (!payload) {
        throw CLIError::invalidInput("No move '" + options.id + "' in " + folder + ".",
                                     "Run `ombrix-cli moves` to list the ids.");
    }
    StandardOutput::write(*payload);
}

// ---- declarations ------------------------------------------------------------------------------

void declareFolder(const Command& command, MovesFolderOptions& options) {
    command.option("--folder DIR", options.folder,
                   "The transcripts folder (absolute path). Defaults to ~/Documents/Ombrix.");
    command.option("--memory-folder NAME", options.memoryFolder,
                   "The Memory folder's name inside it.");
}

void declareRender(const Command& parent) {
    const Command command = parent.subcommand(
        "render", "Print one move's copy payload, as Copy would put it on the pasteboard.");
    const auto options = command.options<RenderOptions>();
    command.positional("id", options->id, "The move id (mv-…).");
    command.option("--user NAME", options->user, "Your name, to sign an email draft.");
    declareFolder(command, options->place);
    command.run(options, renderMove);
}
}  // namespace

void declareMoves(Command root) {
    const Command command = root.subcommand(
        "moves",
        "List the prepared next moves in a transcripts folder (newest meeting first), or `render` "
        "one move's copy payload.");
    const auto options = command.options<MovesOptions>();
    declareFolder(command, options->place);
    command.flag("--json", options->json, "Print the JSON envelope only (no table).");
    command.run(options, listMoves);
    declareRender(command);
}
}  // namespace ombrix

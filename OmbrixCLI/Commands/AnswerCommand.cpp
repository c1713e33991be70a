#include <utility>

#include "OmbrixAnswerKit/Answer/MeetingAnswer.h"
#include "OmbrixCLI/AnswerFolderResolver.h"
#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/EvaluatedMoment.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

constexpr std::int64_t payloadSchemaVersion = 2;

struct AnswerOptions {
    std::string question;
    std::int64_t limit = 5;
    std::optional<std::string> now;
    bool json = false;  // no answer prints a table yet
    GlobalOptions global;
};

// ---- payload ------------------------------------------------------------------------------------

Json::Value encode(const ScopingPolicy::Window& window) {
    return Json::object({{"from", window.from}, {"to", window.to}, {"days", window.days}});
}

Json::Value encodeSource(const RankedTranscriptSearch::AnswerHit& hit) {
    return Json::object({{"path", hit.id},
                         {"title", hit.document.title},
                         {"date", hit.document.date},
                         {"participants", hit.document.participants},
                         {"matchedKeywords", hit.matchedKeywords},
                         {"snippets", hit.match.snippets}});
}

/// Moves the documents of `found` into the floor.
Json::Value payload(const std::string& question, const AskUnderstanding& understood,
                    LibrarySearchResult found, std::vector<std::string> userAliases) {
    Json::Array sources;
    for (const auto& hit : found.hits) sources.push_back(encodeSource(hit));
    const auto [floor, note] =
        MeetingAnswer::text(std::move(found.hits), understood.plan, std::move(userAliases));
    std::optional<Json::Value> window;
    if (understood.window) window = encode(*understood.window);
    return Json::object({{"question", question},
                         {"keywords", understood.keywords},
                         {"intent", rawValue(understood.plan.intent)},
                         {"tier", rawValue(understood.plan.tier)},
                         {"shape", rawValue(understood.plan.shape)},
                         {"horizonDays", understood.parse.horizonDays},
                         {"window", window},
                         {"scannedCount", found.scannedCount},
                         {"totalMatched", found.totalMatched},
                         {"sources", std::move(sources)},
                         {"floor", floor},
                         {"note", note},
                         {"schemaVersion", payloadSchemaVersion}});
}

// ---- work --------------------------------------------------------------------------------------

void answer(const CLIContext& context, const AnswerOptions& options) {
    const std::string question(Text::trimmed(options.question));
    if (question.empty()) {
        throw CLIError::invalidInput("The question is empty.",
                                     "ombrix-cli answer \"what did we decide about pricing\"");
    }
    const AnswerFolderResolver::Config config(context.supportDirectory);
    const std::string folder = AnswerFolderResolver::existing(config);
    const Calendar calendar = Calendar::current();
    const Instant now =
        evaluatedMoment(options.now, calendar, "ombrix-cli answer \"…\" --now 2026-08-21");
    const MeetingAnswer::Asker asker{
        .userAliases = MeetingAnswer::userAliases(AnswerFolderResolver::userName(config)),
        .now = now};
    const AskUnderstanding understood = understand(question, now, calendar);
    auto found = MeetingAnswer::sources(
        AnswerFolderResolver::library(folder, AnswerFolderResolver::memoryFolderName(config)),
        understood, asker, options.limit);
    emitSuccess(context, payload(question, understood, std::move(found), asker.userAliases));
}
}  // namespace

void declareAnswer(Command root) {
    Command command = root.subcommand(
        "answer",
        "Answer a question from your meetings — the plan (intent · window), ranked cited sources, "
        "and the extractive floor (cited list, no model). Model answers come from your Claude or "
        "Ombrix in the app. An ask that starts with a skill's command (\"/slack-recap my last 3 "
        "Lumen meetings\") prints the meetings that skill ask would read, and says back any word "
        "no meeting on file has.");
    const auto options = command.options<AnswerOptions>();
    command.positional("question", options->question, "The question to ask across your meetings.");
    command.option("--limit", options->limit, "Max meetings to cite (default 5).");
    command.option("--now", options->now,
                   "Evaluate as if today were this date (YYYY-MM-DD). Testing aid.");
    command.flag("--json", options->json, "Print the JSON envelope only (no table).");
    command.run(options, answer);
}
}  // namespace ombrix

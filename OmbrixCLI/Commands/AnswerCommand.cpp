#include <algorithm>
#include <utility>

#include "OmbrixAnswerKit/Answer/ExtractiveFloor.h"
#include "OmbrixAnswerKit/Ask/AskIntentRouter.h"
#include "OmbrixCLI/AnswerFolderResolver.h"
#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/LibrarySearch.h"
#include "OmbrixCLI/PretendedDay.h"
#include "OmbrixMarkdownKit/Search/ScopingPolicy.h"
#include "OmbrixMarkdownKit/Search/TimeScopeParser.h"
#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using RankedTranscriptSearch::AnswerHit;
using RankedTranscriptSearch::AnswerRankOptions;

constexpr std::int64_t payloadSchemaVersion = 2;
constexpr const char* noMeetingsNote =
    "No meetings in scope mention that — nothing to answer. Ombrix won't invent one.";
constexpr const char* citedSourcesNote =
    "Cited sources only — the floor renders lists for commitment/decision asks; model answers come "
    "from your Claude or Ombrix in the app.";

struct AnswerOptions {
    std::string question;
    std::int64_t limit = 5;
    std::optional<std::string> now;
    bool json = false;  // there is no table yet that it could drop
    GlobalOptions global;
};

/// What the question means: its words, its plan and the transcripts that count.
struct Understanding {
    TimeScopeParser::Parse parse;
    AskPlan plan;
    AnswerScope scope;
    std::optional<ScopingPolicy::Window> window;
    std::vector<std::string> keywords;
};

Understanding understand(std::string_view question, Instant now, const Calendar& calendar) {
    Understanding result{.parse = TimeScopeParser::parse(question, now, calendar)};
    const auto& [scope, stripped, phrases, horizonDays] = result.parse;
    result.plan = AskIntentRouter::route(stripped, horizonDays, !scope.isAll());
    result.scope = scope;
    if (result.plan.windowDays >= 1) {
        result.window = ScopingPolicy::window(result.plan.windowDays, now, calendar, std::nullopt,
                                              std::nullopt);
        result.scope = scope.merging(result.window->scope());
    }
    result.keywords = QueryTokenizer::keywords(stripped);
    return result;
}

std::vector<std::string> userAliases(const std::optional<std::string>& userName) {
    std::vector<std::string> aliases;
    if (userName && !userName->empty()) aliases.push_back(*userName);
    aliases.emplace_back("Me");
    aliases.emplace_back("You");
    return aliases;
}

AnswerRankOptions rankOptions(const AskPlan& plan, const std::vector<std::string>& aliases,
                              Instant now) {
    AnswerRankOptions options{.useIDF = true,
                              .tfSaturationK = 1.5,
                              .recencyHalfLifeDays = static_cast<double>(plan.recencyHalfLifeDays),
                              .unmatchedMassLimit = 0.5,
                              .now = now};
    if (plan.participation)
        options.participation = {.userAliases = aliases, .boost = 0.6, .minTurns = 2};
    return options;
}

/// Questions about work and promises list the newest meetings when no word of theirs stands in one.
WithoutHits withoutHits(AskIntent intent) {
    switch (intent) {
        case AskIntent::plan:
        case AskIntent::myCommitments:
        case AskIntent::owedToMe:
            return WithoutHits::showNewest;
        default:
            return WithoutHits::showNothing;
    }
}

std::vector<RetrievedCitation> citations(const std::vector<AnswerHit>& hits) {
    std::vector<RetrievedCitation> result;
    for (const auto& hit : hits) {
        result.push_back({.id = hit.id,
                          .title = hit.document.title,
                          .date = hit.document.date,
                          .participants = hit.document.participants,
                          .snippets = hit.match.snippets});
    }
    return result;
}

/// The extractive answer in Markdown; takes the documents over.
std::string floorMarkdown(std::vector<AnswerHit> hits, const AskPlan& plan,
                          std::vector<std::string> aliases) {
    const auto cited = citations(hits);
    std::vector<std::pair<std::string, TranscriptDocument>> documents;
    for (auto& hit : hits) documents.emplace_back(hit.id, std::move(hit.document));
    const ExtractiveFloor floor(std::move(documents), std::move(aliases),
                                {.snippetCap = 8, .commitmentCap = 12});
    return floor.markdown(cited, plan.shape, plan.intent);
}

// ---- payload ------------------------------------------------------------------------------------

Json::Value encode(const ScopingPolicy::Window& window) {
    return Json::object({{"from", window.from}, {"to", window.to}, {"days", window.days}});
}

Json::Value encodeSource(const AnswerHit& hit) {
    return Json::object({{"path", hit.id},
                         {"title", hit.document.title},
                         {"date", hit.document.date},
                         {"participants", hit.document.participants},
                         {"matchedKeywords", hit.matchedKeywords},
                         {"snippets", hit.match.snippets}});
}

Json::Value payload(const std::string& question, const Understanding& understood,
                    LibrarySearchResult found, std::vector<std::string> aliases) {
    Json::Array sources;
    for (const auto& hit : found.hits) sources.push_back(encodeSource(hit));
    std::optional<std::string> floor;
    std::optional<std::string> note;
    if (found.hits.empty())
        note = noMeetingsNote;
    else if (understood.plan.shape == AnswerShape::prose)
        note = citedSourcesNote;
    else
        floor = floorMarkdown(std::move(found.hits), understood.plan, std::move(aliases));
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

std::string transcriptsFolder(const AnswerFolderResolver::Config& config) {
    const std::string folder = AnswerFolderResolver::resolve(config, Files::homeDirectory());
    if (!Files::isDirectory(folder)) {
        throw CLIError::notFound(
            "Transcript folder not found at " + folder + ".",
            "Record a meeting in Ombrix, or pass --support-dir to point at the right data "
            "directory.");
    }
    return folder;
}

void answer(const AnswerOptions& options) {
    const CLIContext context(options.global);
    const std::string question(Text::trimmed(options.question));
    if (question.empty()) {
        throw CLIError::invalidInput("The question is empty.",
                                     "ombrix-cli answer \"what did we decide about pricing\"");
    }
    const AnswerFolderResolver::Config config(context.supportDirectory);
    const std::string folder = transcriptsFolder(config);
    const Calendar calendar = Calendar::current();
    const Instant now =
        evaluatedMoment(options.now, calendar, "ombrix-cli answer \"…\" --now 2026-08-21");
    const auto aliases = userAliases(AnswerFolderResolver::userName(config));
    const Understanding understood = understand(question, now, calendar);
    auto found =
        searchLibrary(folder, AnswerFolderResolver::memoryFolderName(config), understood.keywords,
                      understood.scope, rankOptions(understood.plan, aliases, now),
                      static_cast<std::size_t>(std::max<std::int64_t>(options.limit, 1)),
                      withoutHits(understood.plan.intent));
    emitSuccess("ombrix-cli answer", payload(question, understood, std::move(found), aliases),
                context.databaseURL);
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
    command.globalOptions(options->global);
    command.run([options] { answer(*options); });
}
}  // namespace ombrix

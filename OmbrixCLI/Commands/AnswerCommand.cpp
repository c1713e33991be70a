#include <map>
#include <utility>

#include "OmbrixAnswerKit/Answer/MeetingAnswer.h"
#include "OmbrixAnswerKit/Ask/AskRead.h"
#include "OmbrixAnswerKit/Ask/SkillRequestReader.h"
#include "OmbrixCLI/AnswerFolderResolver.h"
#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/EvaluatedMoment.h"
#include "OmbrixCLI/StandardStreams.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

constexpr std::int64_t payloadSchemaVersion = 2;
constexpr std::int64_t skillReadSchemaVersion = 1;

struct AnswerOptions {
    std::string question;
    std::int64_t limit = 5;
    std::optional<std::string> now;
    bool json = false;  // drops the table that only the ask of a skill prints
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

// ---- the ask of a skill -------------------------------------------------------------------------

/// The meetings that are read, in the order they are read in.
std::vector<const AskMeeting*> meetingsOf(const AskRead& read,
                                          const std::vector<AskMeeting>& pool) {
    std::map<std::string_view, const AskMeeting*> byId;
    for (const AskMeeting& meeting : pool) byId.emplace(meeting.id, &meeting);
    std::vector<const AskMeeting*> meetings;
    for (const std::string& id : read.material)
        if (const auto found = byId.find(id); found != byId.end())
            meetings.push_back(found->second);
    return meetings;
}

std::string skillTable(const AskRead& read, const std::vector<const AskMeeting*>& meetings) {
    std::string table = "/" + read.command.value_or("") + "  " +
                        (read.named() ? "the ask names what to read" : "where you are decides") +
                        "\n";
    const auto saidBack = read.saidBack();
    if (saidBack) table += *saidBack + "\n";
    for (const AskMeeting* meeting : meetings)
        table += meeting->date + "  " + meeting->title + "  " + meeting->id + "\n";
    if (meetings.empty() && !saidBack) table += "no meetings on file to read\n";
    return table;
}

Json::Value payload(const std::string& question, const AskViewContext& view, const AskRead& read,
                    const std::vector<const AskMeeting*>& meetings) {
    Json::Array list;
    for (const AskMeeting* meeting : meetings) {
        list.push_back(Json::object(
            {{"path", meeting->id}, {"title", meeting->title}, {"date", meeting->date}}));
    }
    return Json::object({{"question", question},
                         {"skill", read.command},
                         {"request", read.request},
                         {"place", view.place},
                         {"named", read.named()},
                         {"phrases", read.phrases},
                         {"person", read.person},
                         {"unmatched", read.unmatched},
                         {"saidBack", read.saidBack()},
                         {"statement", read.statement},
                         {"count", static_cast<std::int64_t>(meetings.size())},
                         {"meetings", std::move(list)},
                         {"schemaVersion", skillReadSchemaVersion}});
}

// ---- work --------------------------------------------------------------------------------------

void answerQuestion(const CLIContext& context, const std::string& question,
                    const TranscriptLibrary& library, const MeetingAnswer::Asker& asker,
                    const Calendar& calendar, std::int64_t limit) {
    const AskUnderstanding understood = understand(question, asker.now, calendar);
    auto found = MeetingAnswer::sources(library, understood, asker, limit);
    emitSuccess(context, payload(question, understood, std::move(found), asker.userAliases));
}

/// The ask of a skill: prints the meetings it would read.
void answerSkill(const CLIContext& context, const std::string& question,
                 const TranscriptLibrary& library, const std::optional<std::string>& userName,
                 Instant now, const Calendar& calendar, bool printsTable) {
    const AskContext::Surroundings around{.pool = AskMeeting::all(library),
                                          .userName = userName.value_or("")};
    const AskViewContext view = AskContext::day(now, calendar);
    const AskRead read = AskContext::read(question, view, around, now, calendar);
    const auto meetings = meetingsOf(read, around.pool);
    if (printsTable) StandardOutput::write(skillTable(read, meetings));
    emitSuccess(context, payload(question, view, read, meetings));
}

void answer(const CLIContext& context, const AnswerOptions& options) {
    const std::string question(Text::trimmed(options.question));
    if (question.empty()) {
        throw CLIError::invalidInput("The question is empty.",
                                     "ombrix-cli answer \"what did we decide about pricing\"");
    }
    const AnswerFolderResolver::Config config(context.supportDirectory);
    const TranscriptLibrary library = AnswerFolderResolver::library(
        AnswerFolderResolver::existing(config), AnswerFolderResolver::memoryFolderName(config));
    const Calendar calendar = Calendar::current();
    const Instant now =
        evaluatedMoment(options.now, calendar, "ombrix-cli answer \"…\" --now 2026-08-21");
    const auto userName = AnswerFolderResolver::userName(config);
    if (SkillRequestReader::split(question)) {
        answerSkill(context, question, library, userName, now, calendar, !options.json);
    } else {
        const MeetingAnswer::Asker asker{.userAliases = MeetingAnswer::userAliases(userName),
                                         .now = now};
        answerQuestion(context, question, library, asker, calendar, options.limit);
    }
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
    command.option("--limit N", options->limit, "Max meetings to cite (default 5).");
    command.option("--now DATE", options->now,
                   "Evaluate as if today were this date (YYYY-MM-DD). Testing aid.");
    command.flag("--json", options->json, "Print the JSON envelope only (no table).");
    command.run(options, answer);
}
}  // namespace ombrix

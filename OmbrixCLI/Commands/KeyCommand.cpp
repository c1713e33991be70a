#include "OmbrixAnswerKit/Key/KeyExclusions.h"
#include "OmbrixAnswerKit/Key/KeyMatcher.h"
#include "OmbrixAnswerKit/Key/KeyPress.h"
#include "OmbrixCLI/AnswerFolderResolver.h"
#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/EvaluatedMoment.h"
#include "OmbrixCLI/SelectionOption.h"
#include "OmbrixCore/KeyPressLog.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

constexpr std::int64_t payloadSchemaVersion = 1;

struct SimulateOptions {
    std::string app = "com.apple.TextEdit";
    std::string title;
    std::string window;
    std::optional<std::string> near;
    std::string field;
    std::optional<std::string> selection;
    std::optional<std::string> draft;
    std::optional<std::string> now;
    GlobalOptions global;
};

struct StatsOptions {
    GlobalOptions global;
};

// ---- payload ------------------------------------------------------------------------------------

Json::Value encodeMeeting(const KeyPress::MeetingCandidate& meeting) {
    return Json::object({{"id", meeting.id}, {"title", meeting.title}, {"date", meeting.date}});
}

Json::Value refusal(KeyExclusions::Reason reason) {
    return Json::object({{"refused", rawValue(reason)},
                         {"choices", Json::Array()},
                         {"phases", Json::Array()},
                         {"schemaVersion", payloadSchemaVersion}});
}

/// With a draft, also what it would replace and leave in the field.
Json::Value payload(const KeyPress::Plan& plan, const KeyPress::FieldSnapshot& field,
                    const std::optional<std::string>& draft) {
    std::optional<Json::Value> matched, replaced, landing, source;
    if (plan.matched) matched = encodeMeeting(*plan.matched);
    Json::Array choices, phases;
    if (plan.choices)
        for (const auto& meeting : *plan.choices) choices.push_back(encodeMeeting(meeting));
    for (const auto phase : KeyPress::markPhases(plan))
        phases.push_back(KeyPress::markLabel(phase));
    if (draft) {
        if (const auto range = KeyPress::replacedRange(plan, field))
            replaced = Json::Array{range->start, range->end};
        if (auto landed = KeyPress::landing(plan, field, KeyPress::Drafts::single(*draft)))
            landing = std::move(landed->text);
    }
    if (auto line = KeyPress::source(plan, std::nullopt)) source = std::move(line->label);
    return Json::object({{"kind", rawValue(plan.kind)},
                         {"matched", matched},
                         {"choices", std::move(choices)},
                         {"lookedAt", plan.lookedAt},
                         {"phases", std::move(phases)},
                         {"replaced", replaced},
                         {"landing", landing},
                         {"source", source},
                         {"schemaVersion", payloadSchemaVersion}});
}

// ---- work --------------------------------------------------------------------------------------

KeyPress::FieldSnapshot fieldOf(const SimulateOptions& options) {
    const auto length = static_cast<std::int64_t>(Utf8::utf16Length(options.field));
    KeyPress::Range selection{length, length};
    if (options.selection) {
        const auto given = parseSelection(*options.selection, length);
        if (!given) {
            throw CLIError::invalidInput(
                "--selection must be start:end inside the field.",
                "ombrix-cli key simulate --field \"The brand audit\" --selection 4:15");
        }
        selection = *given;
    }
    return {.text = options.field, .selStart = selection.start, .selEnd = selection.end};
}

KeyPress::World worldOf(const CLIContext& context, const SimulateOptions& options) {
    const AnswerFolderResolver::Config config(context.supportDirectory);
    const TranscriptLibrary library = AnswerFolderResolver::library(
        AnswerFolderResolver::existing(config), AnswerFolderResolver::memoryFolderName(config));
    const Calendar calendar = Calendar::current();
    const Instant now =
        evaluatedMoment(options.now, calendar, "ombrix-cli key simulate --now 2026-08-21");
    const KeyMatcher::Surface surface{.windowTitle = options.title,
                                      .windowText = options.window,
                                      .fieldText = options.field,
                                      .nearText = options.near.value_or("")};
    return KeyMatcher::world(surface, AskMeeting::all(library), {},
                             AnswerFolderResolver::userName(config).value_or(""), {},
                             calendar.dayString(now));
}

void simulate(const CLIContext& context, const SimulateOptions& options) {
    const KeyPress::FieldSnapshot field = fieldOf(options);
    // Before anything of the library is read.
    if (const auto reason =
            KeyExclusions::reason({.bundleID = options.app}, {}, "com.ombrix.app")) {
        return emitSuccess(context, refusal(*reason));
    }
    const auto plan = KeyPress::plan(worldOf(context, options), field);
    emitSuccess(context, payload(plan, field, options.draft));
}

void stats(const CLIContext& context, const StatsOptions&) {
    KeyPressLog::Tally tally;
    KeyPressLog::forEach(KeyPressLog::url(context.supportDirectory),
                         [&](const KeyPressSummary& summary) { tally.add(summary); });
    emitSuccess(context, Json::object({{"presses", tally.count()},
                                       {"apps", tally.stats()},
                                       {"schemaVersion", payloadSchemaVersion}}));
}

void declareSimulate(Command parent) {
    Command command = parent.subcommand(
        "simulate",
        "Run a key press against your meetings: which meetings the surface touches, what kind of "
        "press it is, and what would land where. Nothing is sent or written.");
    const auto options = command.options<SimulateOptions>();
    command.option("--app BUNDLE", options->app, "The app's bundle id.");
    command.option("--title", options->title, "The window's title.");
    command.option("--window", options->window, "Visible text in the window.");
    command.option("--near", options->near,
                   "The conversation around the field (the only window text that can pick a "
                   "meeting).");
    command.option("--field", options->field, "What the field holds.");
    command.option("--selection A:B", options->selection,
                   "The selection, as start:end in UTF-16 units.");
    command.option("--draft", options->draft, "A draft to land, to see what the field would hold.");
    command.option("--now DATE", options->now, "Evaluate as if today were this date (YYYY-MM-DD).");
    command.run(options, simulate);
}

void declareStats(Command parent) {
    Command command = parent.subcommand(
        "stats",
        "Presses per app, with how they ended and the median time to the meeting named and to the "
        "first draft, from the app's content-free log.");
    const auto options = command.options<StatsOptions>();
    command.run(options, stats);
}
}  // namespace

void declareKey(Command root) {
    const Command group = root.subcommand(
        "key",
        "The key (double-tap Right Command): run a press headless, or read how presses went.");
    declareSimulate(group);
    declareStats(group);
}
}  // namespace ombrix

// The one-way commands to the running application: each checks its argument, posts it, and prints
// what it posted. The application does not answer, so success means only that it was posted.
#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixPlatform/NotificationCenter.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Names = std::span<const std::string_view>;

constexpr auto noticeKinds =
    std::to_array<std::string_view>({"upcoming", "arming", "grace", "clear",  // of the countdown
                                     "silent", "detected", "failed", "missed", "unsaved", "partial",
                                     "notes", "consent", "limited", "still", "ask"});
constexpr auto pillStates =
    std::to_array<std::string_view>({"recording", "writing", "ended", "idle"});
/// More than the help of `debug-route` lists: the names of older surfaces still work.
constexpr auto routeHeads = std::to_array<std::string_view>(
    {"recent", "meetings", "actions", "settings", "detail", "ask", "search", "pill", "notch",
     "stream", "home", "answers", "dark", "light", "system"});

// ---- checks; each throws `CLIError` ---------------------------------------------------

bool holds(Names names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

/// `subject` is what `word` was meant to be: "pill state". `aside` follows the list of names.
CLIError notOneOf(Names names, const std::string& subject, const std::string& word,
                  const std::string& aside = {}) {
    const std::vector<std::string_view> list(names.begin(), names.end());
    return CLIError::invalidInput("Unknown " + subject + " '" + word + "'.",
                                  "Pass one of: " + Text::joined(list, ", ") + aside + ".");
}

void checkKind(const std::string& kind) {
    if (!holds(noticeKinds, kind)) throw notOneOf(noticeKinds, "notification kind", kind);
}

void checkState(const std::string& state) {
    if (!holds(pillStates, state)) throw notOneOf(pillStates, "pill state", state);
}

void checkMode(const std::string& mode) {
    if (mode == "seed" || mode == "clear") return;
    throw CLIError::invalidInput("Unknown mode '" + mode + "'.",
                                 "Pass 'seed' (default) or 'clear'.");
}

void checkPath(const std::string& path) {
    if (path.starts_with('/') && path.ends_with(".png")) return;
    throw CLIError::invalidInput("Path must be absolute and end in .png: '" + path + "'.",
                                 "Pass something like /tmp/ombrix-home.png.");
}

void checkRoute(const std::string& route) {
    if (holds(routeHeads, std::string_view(route).substr(0, route.find('/')))) return;
    throw notOneOf(routeHeads, "route", route, " (settings may carry /<group>)");
}

// ---- the commands of one word -----------------------------------------------------------------

struct WordCommand {
    std::string name;
    std::string abstract;
    std::string key;  ///< names the positional and the one member of the payload
    std::string help;
    std::optional<std::string> defaultWord;  ///< without one the word is required
    void (*check)(const std::string& word);
};

/// In the order in which the help lists them.
const std::vector<WordCommand>& wordCommands() {
    static const std::vector<WordCommand> rows{
        {.name = "debug-force-notification",
         .abstract = "Put a fixture notice on the pill (DEBUG builds only).",
         .key = "kind",
         .help = "Which notice: upcoming | arming | grace | clear | silent | detected | failed "
                 "| missed | unsaved | partial | notes | consent | limited | still | ask",
         .defaultWord = "upcoming",
         .check = checkKind},
        {.name = "debug-force-recording-chip",
         .abstract = "Put the pill in a recording state with no real capture (DEBUG builds only).",
         .key = "state",
         .help = "Pill state: recording | writing | ended | idle",
         .defaultWord = "recording",
         .check = checkState},
        {.name = "debug-seed-upcoming",
         .abstract = "Seed (or clear) the Library 'Next up' agenda with fixture events (DEBUG "
                     "builds only).",
         .key = "mode",
         .help = "Pass 'clear' to drop the seed back to the real calendar feed; omit to seed.",
         .defaultWord = "seed",
         .check = checkMode},
        {.name = "debug-capture-window",
         .abstract = "Write a PNG of the app's main window to a path (DEBUG builds only).",
         .key = "path",
         .help = "Absolute path of the PNG to write.",
         .defaultWord = std::nullopt,
         .check = checkPath},
        {.name = "debug-route",
         .abstract = "Put the running app on a surface by name (DEBUG builds only).",
         .key = "route",
         .help = "recent | meetings[/<folder>] | actions | settings[/<group>] | "
                 "detail[/next|/<path>] | ask | search | pill/open | pill/close | "
                 "pill/dock/<dock> | dark | light | system",
         .defaultWord = std::nullopt,
         .check = checkRoute},
    };
    return rows;
}

struct WordOptions {
    std::string word;
    GlobalOptions global;
};

void postWord(const CLIContext& context, const WordCommand& command, const WordOptions& options) {
    command.check(options.word);
    NotificationCenter::post("com.ombrix.app." + command.name, options.word);
    emitSuccess(context, Json::object({{command.key, options.word}}));
}

void declareWord(Command root, const WordCommand& word) {
    Command command = root.subcommand(word.name, word.abstract);
    const auto options = command.options<WordOptions>();
    options->word = word.defaultWord.value_or("");
    command.positional(word.key, options->word, word.help,
                       word.defaultWord ? Presence::optional : Presence::required);
    command.run(options, [&word](const CLIContext& context, const WordOptions& given) {
        postWord(context, word, given);
    });
}

// ---- the one command that posts a number ------------------------------------------------------

struct ScheduledEndOptions {
    double seconds = 0;
    GlobalOptions global;
};

void forceScheduledEnd(const CLIContext& context, const ScheduledEndOptions& options) {
    if (!(options.seconds >= 0)) {  // true for NaN as well
        throw CLIError::invalidInput("--in must be zero or greater.",
                                     "Pass a non-negative number of seconds such as --in 120.");
    }
    NotificationCenter::post("com.ombrix.app.debug-force-scheduled-end",
                             Numbers::described(options.seconds));
    emitSuccess(context, Json::object({{"backdatedScheduledEndSeconds", options.seconds}}));
}

void declareScheduledEnd(Command root) {
    Command command = root.subcommand(
        "debug-force-scheduled-end",
        "Force the running app's active meeting to fire its end-of-meeting countdown now (DEBUG "
        "builds only).");
    const auto options = command.options<ScheduledEndOptions>();
    command.option("--in SECONDS", options->seconds,
                   "Seconds to backdate the scheduled end (affects toast wording only).");
    command.run(options, forceScheduledEnd);
}
}  // namespace

void declareOneWayDebugCommands(Command root) {
    declareScheduledEnd(root);
    for (const WordCommand& word : wordCommands()) declareWord(root, word);
}
}  // namespace ombrix

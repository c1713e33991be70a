#include "OmbrixCLI/CommandSpecPayload.h"

namespace ombrix::CommandSpecPayload {

const std::vector<SpecCommand>& commands() {
    static const std::vector<SpecCommand> rows{
        {.name = "spec",
         .usage = "ombrix-cli spec",
         .summary = "Dump the command tree and CLI schema metadata.",
         .examples = {"ombrix-cli spec"}},
        {.name = "info",
         .usage = "ombrix-cli info [--db-path <path>] [--support-dir <dir>]",
         .summary = "Show resolved support and database paths.",
         .examples = {"ombrix-cli info",
                      "ombrix-cli info --support-dir ~/Library/Application\\ Support/Ombrix"}},
        {.name = "meetings list",
         .usage = "ombrix-cli meetings list [--limit <n>] [--folder-id <id>]",
         .summary = "List recent meetings.",
         .examples = {"ombrix-cli meetings list --limit 5",
                      "ombrix-cli meetings list --folder-id 2"}},
        {.name = "meetings get",
         .usage = "ombrix-cli meetings get <id>",
         .summary = "Return a full meeting record.",
         .examples = {"ombrix-cli meetings get 42"}},
        {.name = "meetings update-notes",
         .usage = "ombrix-cli meetings update-notes <id> (--stdin | --file <path>)",
         .summary = "Replace stored meeting notes only.",
         .examples = {"ombrix-cli meetings update-notes 42 --file notes.md",
                      "cat notes.md | ombrix-cli meetings update-notes 42 --stdin"}},
        {.name = "dictations list",
         .usage = "ombrix-cli dictations list [--limit <n>]",
         .summary = "List recent dictations.",
         .examples = {"ombrix-cli dictations list --limit 10"}},
        {.name = "dictations get",
         .usage = "ombrix-cli dictations get <id>",
         .summary = "Return a full dictation record.",
         .examples = {"ombrix-cli dictations get 7"}},
        {.name = "answer",
         .usage = "ombrix-cli answer <question> [--limit <n>] [--no-synthesis]",
         .summary = "Answer a question from your meetings: ranked cited snippets, plus an "
                    "on-device synthesized answer when available (macOS 26 + Apple Intelligence).",
         .examples = {"ombrix-cli answer \"what did we decide about pricing\"",
                      "ombrix-cli answer \"what did I commit to with Tomas\" --limit 3",
                      "ombrix-cli answer \"launch readiness\" --no-synthesis"}},
        {.name = "app-state",
         .usage = "ombrix-cli app-state [--timeout <seconds>]",
         .summary = "Dump the running app's live UI state (requires a running Ombrix with the "
                    "state bus enabled).",
         .examples = {"ombrix-cli app-state", "ombrix-cli app-state --timeout 5"}},
        {.name = "debug-force-scheduled-end",
         .usage = "ombrix-cli debug-force-scheduled-end [--in <seconds>]",
         .summary = "Force the running app's active meeting scheduled-end to +<seconds> from now "
                    "(DEBUG builds only; no-op vs release).",
         .examples = {"ombrix-cli debug-force-scheduled-end --in 120"}},
        {.name = "debug-force-notification",
         .usage = "ombrix-cli debug-force-notification [<kind>]",
         .summary = "Put a fixture notice on the pill — kind ∈ upcoming|arming|grace|clear or a "
                    "pill notice "
                    "(silent|detected|failed|missed|unsaved|partial|notes|consent|limited|still; "
                    "ask = notes); every button is a no-op (DEBUG builds only; no-op vs release).",
         .examples = {"ombrix-cli debug-force-notification upcoming",
                      "ombrix-cli debug-force-notification failed"}},
        {.name = "debug-force-recording-chip",
         .usage = "ombrix-cli debug-force-recording-chip [<state>]",
         .summary = "Put the pill in a recording state with NO real capture (no mic/system/cloud) "
                    "— state ∈ recording|writing|ended|idle (DEBUG builds only; no-op vs release).",
         .examples = {"ombrix-cli debug-force-recording-chip recording",
                      "ombrix-cli debug-force-recording-chip ended"}},
        {.name = "debug-capture-window",
         .usage = "ombrix-cli debug-capture-window </abs/path.png>",
         .summary = "Write a PNG of the running app's main window to a path: the native half of a "
                    "web vs native side-by-side sheet (DEBUG builds only; no-op vs release; the "
                    "app must be active).",
         .examples = {"ombrix-cli debug-capture-window /tmp/ombrix-home.png"}},
        {.name = "debug-route",
         .usage = "ombrix-cli debug-route "
                  "<recent|meetings[/<folder>]|actions|settings[/<group>]|detail[/next|/move/<id>|/"
                  "<path>[#<turnId>]]|ask|search|pill/open|pill/close|pill/dock/<dock>>",
         .summary = "Put the running app on a surface by name, for the side-by-side sheets (DEBUG "
                    "builds only; no-op vs release; the app must be active).",
         .examples = {"ombrix-cli debug-route recent", "ombrix-cli debug-route meetings/Clients",
                      "ombrix-cli debug-route detail/next",
                      "ombrix-cli debug-route settings/after"}},
        {.name = "debug-web-eval",
         .usage = "ombrix-cli debug-web-eval '<expression>' [--timeout <seconds>]",
         .summary = "Evaluate JavaScript in the running app's React window and print its JSON "
                    "value, to read the page without screen access (DEBUG builds only; no-op vs "
                    "release).",
         .examples =
             {"ombrix-cli debug-web-eval 'document.title'",
              "ombrix-cli debug-web-eval 'document.querySelectorAll(\"[data-ax]\").length'"}},
        {.name = "tidy-txt",
         .usage = "ombrix-cli tidy-txt --folder </abs/transcripts> [--trash]",
         .summary = "List, or with --trash move to the Trash, the .txt twins beside Ombrix "
                    "transcripts (Ombrix-marked files with an .md twin only; Decision 2026-09-05: "
                    "markdown only).",
         .examples = {"ombrix-cli tidy-txt --folder ~/Documents/Ombrix",
                      "ombrix-cli tidy-txt --folder ~/Documents/Ombrix --trash"}},
        {.name = "import",
         .usage = "ombrix-cli import <path> [--folder </abs/transcripts>] [--dry-run]",
         .summary = "Convert another tool's export (Zoom or Teams .vtt, .srt, Otter .txt, a "
                    "Limitless lifelog .json, a Granola .csv, Fathom/Fireflies/Circleback/Granola "
                    "API .json, or a speaker-labelled .md) into a Ombrix transcript beside it. A "
                    "directory imports every candidate inside it. The original is never modified; "
                    "re-importing the same file is a no-op.",
         .examples = {"ombrix-cli import ~/Downloads/limitless-export",
                      "ombrix-cli import ~/Downloads/meeting.vtt --folder ~/Documents/Ombrix",
                      "ombrix-cli import ~/Downloads/exports --dry-run"}},
        {.name = "moves",
         .usage = "ombrix-cli moves [--folder </abs/transcripts>] [--memory-folder <name>] "
                  "[--json]",
         .summary = "List every prepared next move in a transcripts folder (id, kind, stance, "
                    "title, state, commitment ids, meeting), read through the kits the way the "
                    "window reads them. Read-only.",
         .examples = {"ombrix-cli moves", "ombrix-cli moves --folder ~/Documents/Ombrix --json"}},
        {.name = "moves render",
         .usage = "ombrix-cli moves render <id> [--folder </abs/transcripts>] [--user <name>]",
         .summary = "Print one prepared move's copy payload, as Copy would put it on the "
                    "pasteboard.",
         .examples = {"ombrix-cli moves render mv-1a2b3c4d",
                      "ombrix-cli moves render mv-1a2b3c4d --user Ilse"}},
        {.name = "key simulate",
         .usage = "ombrix-cli key simulate [--app <bundle>] [--title <window title>] [--window "
                  "<text>] [--field <text>] [--selection a:b] [--draft <text>] [--now YYYY-MM-DD]",
         .summary = "Run a key press headless against your meetings: which meetings the surface "
                    "touches, the press kind, what would land where. Nothing is sent or written.",
         .examples = {"ombrix-cli key simulate --app com.tinyspeck.slackmacgap --title \"Tomas "
                      "Reyes (DM)\"",
                      "ombrix-cli key simulate --field \"The brand audit starts Monday\" "
                      "--selection 4:15 --draft \"phase one\""}},
        {.name = "key stats",
         .usage = "ombrix-cli key stats",
         .summary = "Presses per app from the app's content-free log, with outcomes and median "
                    "timings.",
         .examples = {"ombrix-cli key stats"}},
        {.name = "debug-seed-upcoming",
         .usage = "ombrix-cli debug-seed-upcoming [clear]",
         .summary = "Seed the Library 'Next up' agenda with fixture calendar events, or clear it "
                    "back to the real feed (DEBUG builds only; no-op vs release).",
         .examples = {"ombrix-cli debug-seed-upcoming", "ombrix-cli debug-seed-upcoming clear"}},
    };
    return rows;
}
}  // namespace ombrix::CommandSpecPayload

// The engine over a whole transcripts folder in any state. Whatever the files hold, every command
// prints an envelope; those that only look change no file of the person; no model is asked with
// what a private meeting alone has; and what `refresh` wrote it has no reason to write again.
//
// libFuzzer: -dict=fuzz/json.dict -entropic=0
#include <algorithm>
#include <string>
#include <vector>

#include "EngineRuns.h"
#include "Law.h"
#include "LibraryInput.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixPlatform/JsonDocument.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;
using Fuzz::Words;

namespace {

/// What somebody said in a private meeting and no other file holds, in letters that JSON leaves as
/// they are.
std::vector<std::string> secrets(const Fuzz::Tree& tree) {
    std::vector<std::string> found;
    for (const auto& [path, text] : tree) {
        const auto document = MarkdownTranscriptParser::parse(text);
        if (!document || !document->isPrivate || document->source != "Ombrix") continue;
        for (const auto& turn : document->turns) {
            const bool isPlain = std::ranges::all_of(turn.text, [](char c) {
                return c == ' ' || c == '.' || Text::isAsciiAlphanumeric(c);
            });
            const bool isElsewhere = std::ranges::any_of(tree, [&](const auto& other) {
                return other.first != path && Text::contains(other.second, turn.text);
            });
            if (isPlain && !isElsewhere && turn.text.size() > 12) found.push_back(turn.text);
        }
    }
    return found;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Fuzz::LibraryInput library;
    library.write(Fuzz::text(data, size));
    const Fuzz::Tree given = library.tree();
    const Words looks[] = {
        {"status"}, {"follow-ups"}, {"memory", "ana"}, {"alias", "list"}, {"refresh", "--dry-run"}};
    for (const auto& words : looks) Fuzz::runEngine(library, words);
    const Words asks[] = {
        {"land", "Launch"},
        {"land", "Launch again"},
        {"prepare", "Launch"},
        {"consolidate", "name:ana ruiz"},
        {"before", "--people", "Ana Ruiz", "--title", "x", "--for", "2026-09-02T10:00"}};
    const auto isSecret = secrets(given);
    for (Words words : asks) {
        words.insert(words.begin(), "ask");
        const auto asked = Json::write(Fuzz::runEngine(library, words), Json::Style::canonical);
        law(std::ranges::none_of(isSecret,
                                 [&](const auto& text) { return Text::contains(asked, text); }),
            "what is private stays here");
    }
    law(library.tree() == given, "who looks changes nothing");

    const Json::Value changes = Fuzz::runEngine(library, {"refresh"});
    const Fuzz::Tree refreshed = library.tree();
    law(Fuzz::talks(refreshed) == Fuzz::talks(given), "nothing that was said changes");
    const Json::Value* changed = changes.member("changed");
    if (changed == nullptr) {
        law(refreshed == given, "what is refused is not begun");
        return 0;
    }
    law((refreshed == given) == changed->array()->empty(), "changes are told");
    Fuzz::runEngine(library, {"refresh"});
    law(library.tree() == refreshed, "a second refresh has nothing to do");
    return 0;
}

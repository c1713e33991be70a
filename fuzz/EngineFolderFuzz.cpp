// The engine over a whole transcripts folder in any state. Whatever the files hold, every command
// prints an envelope; those that only look change no file of the person, and what `refresh` wrote
// it has no reason to write again.
//
// libFuzzer: -dict=fuzz/json.dict -entropic=0
#include "LibraryInput.h"
#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixPlatform/JsonDocument.h"

using namespace ombrix;
using Fuzz::law;
using Words = std::vector<std::string>;

namespace {

/// What was said in each transcript; notes are not.
std::map<std::string, std::vector<TranscriptDocument::Turn>> talks(const Fuzz::Tree& tree) {
    std::map<std::string, std::vector<TranscriptDocument::Turn>> turns;
    for (const auto& [path, text] : tree) {
        if (path.starts_with("Memory/")) continue;
        if (const auto document = MarkdownTranscriptParser::parse(text))
            turns[path] = document->turns;
    }
    return turns;
}

/// The `data` of what a command prints; null when it refuses.
Json::Value run(const Fuzz::LibraryInput& library, Words words) {
    words.insert(words.end(), {"--now", "2026-09-01"});
    const auto [status, output] = library.run(engineTool(), std::move(words));
    const Json::Value envelope = Json::parse(output);
    law(envelope.member("ok")->boolean() == (status == 0 || status == 2), "the envelope agrees");
    const Json::Value* data = envelope.member("data");
    return data == nullptr ? Json::Value() : *data;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Fuzz::LibraryInput library;
    library.write(Fuzz::text(data, size));
    const Fuzz::Tree given = library.tree();
    const Words looks[] = {{"status"},
                           {"follow-ups"},
                           {"memory", "ana"},
                           {"alias", "list"},
                           {"ask", "land", "Launch"},
                           {"ask", "prepare", "Launch"},
                           {"ask", "consolidate", "name:ana ruiz"},
                           {"refresh", "--dry-run"}};
    for (const auto& words : looks) run(library, words);
    law(library.tree() == given, "who looks changes nothing");

    const Json::Value changes = run(library, {"refresh"});
    const Fuzz::Tree refreshed = library.tree();
    law(talks(refreshed) == talks(given), "nothing that was said changes");
    const Json::Value* changed = changes.member("changed");
    if (changed == nullptr) {
        law(refreshed == given, "what is refused is not begun");
        return 0;
    }
    law((refreshed == given) == changed->array()->empty(), "changes are told");
    run(library, {"refresh"});
    law(library.tree() == refreshed, "a second refresh has nothing to do");
    return 0;
}

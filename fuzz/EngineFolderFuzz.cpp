// The engine over a whole transcripts folder in any state. Whatever the files hold, every command
// prints an envelope; those that only look change no file of the person, and what `refresh` wrote
// it has no reason to write again.
//
// libFuzzer: -dict=fuzz/json.dict -entropic=0
#include "EngineRuns.h"

using namespace ombrix;
using Fuzz::law;
using Fuzz::Words;

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
    for (const auto& words : looks) Fuzz::runEngine(library, words);
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

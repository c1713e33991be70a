// A step's answer in any shape, given to the engine over a folder in any state: a refusal changes
// nothing, and one that is taken leaves `refresh` nothing to do but the files of next moves, which
// only `refresh` writes.
//
// libFuzzer: -dict=fuzz/json.dict -entropic=0
#include <string>

#include "EngineRuns.h"
#include "Law.h"
#include "LibraryInput.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/JsonDocument.h"

using namespace ombrix;
using Fuzz::law;
using Fuzz::Words;

namespace {

Fuzz::Tree withoutNextMoves(Fuzz::Tree tree) {
    std::erase_if(tree,
                  [](const auto& file) { return file.first.starts_with("Memory/Next Moves/"); });
    return tree;
}

void checkAnswer(const Fuzz::LibraryInput& library, const Words& step) {
    const std::string answer = library.folder() + "/.ombrix/engine/answer-" + step[0] + ".json";
    if (!Files::exists(answer)) return;
    const auto line = [&](const char* command, const Words& more) {
        Words words = {command};
        words.insert(words.end(), step.begin(), step.end());
        words.insert(words.end(), more.begin(), more.end());
        return words;
    };
    const Json::Value asked = Fuzz::runEngine(library, line("ask", {}));
    if (asked.isNull()) return;
    const Words given = line("give", {"--input-hash", *asked.member("inputHash")->string(),
                                      "--model", "m", "--route", "ownKey", "--file", answer});
    const Fuzz::Tree before = library.tree();
    const bool isTaken = !Fuzz::runEngine(library, given).isNull();
    const Fuzz::Tree after = library.tree();
    law(isTaken || after == before, "what is refused is not begun");
    law(Fuzz::talks(after) == Fuzz::talks(before), "nothing that was said changes");
    Fuzz::runEngine(library, {"refresh"});
    law(withoutNextMoves(library.tree()) == withoutNextMoves(after), "refresh has nothing to do");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Fuzz::LibraryInput library;
    library.write(Fuzz::text(data, size));
    if (Fuzz::runEngine(library, {"refresh"}).isNull()) return 0;
    checkAnswer(library, {"land", "Launch"});
    checkAnswer(library, {"consolidate", "name:ana ruiz"});
    checkAnswer(library, {"before", "--people", "Ana Ruiz", "--title", "Launch call", "--for",
                          "2026-09-02T10:00"});
    checkAnswer(library, {"prepare", "Launch"});
    return 0;
}

// The commands of ombrix-cli over a whole folder in any state: transcripts, exports, moves. Those
// that only look change nothing; an import leaves every file as it is, and a second one finds
// nothing more to do.
//
// libFuzzer: -dict=fuzz/json.dict -entropic=0
#include <algorithm>
#include <string>
#include <vector>

#include "Law.h"
#include "LibraryInput.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"

using namespace ombrix;
using Fuzz::law;
using Words = std::vector<std::string>;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Fuzz::LibraryInput library;
    library.write(Fuzz::text(data, size));
    const Fuzz::Tree given = library.tree();
    const std::string folder = library.folder();
    const Words looks[] = {
        {"answer", "what did Ana say about the price list", "--now", "2026-09-01"},
        {"answer", "/slack-recap my last 3 meetings", "--now", "2026-09-01"},
        {"moves", "--folder", folder},
        {"key", "simulate", "--title", "Ana Ruiz", "--near", "the launch", "--now", "2026-09-01"},
        {"tidy-txt", "--folder", folder},
        {"import", folder, "--dry-run"}};
    for (const auto& words : looks) library.run(commandTool(), words);
    law(library.tree() == given, "who looks changes nothing");

    library.run(commandTool(), {"import", folder});
    const Fuzz::Tree imported = library.tree();
    for (const auto& [path, text] : imported) {
        const auto old = given.find(path);
        if (old == given.end())
            law(MarkdownTranscriptParser::parse(text).has_value(), "a transcript is made");
        else
            law(old->second == text, "no file of the person changes");
    }
    law(imported.size() >= given.size() && std::ranges::includes(imported, given),
        "and none is lost");
    library.run(commandTool(), {"import", folder});
    law(library.tree() == imported, "a second import finds nothing to do");
    return 0;
}

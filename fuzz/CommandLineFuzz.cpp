// A command line of any words, one a line, read against the tool's own commands. Nothing runs.
//
// libFuzzer: -max_len=4096 -dict=fuzz/arguments.dict
#include <algorithm>
#include <string>
#include <vector>

#include "Law.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

using namespace ombrix;
using Fuzz::law;

namespace {

/// What comes of a line: help, work or a problem.
struct Outcome {
    std::string help = {}, problem = {}, usage = {};
    bool works = false;
    bool operator==(const Outcome&) const = default;
};

Outcome outcome(const std::vector<std::string>& words) {
    CommandLine line("ombrix-cli", "About.");
    declareCommands(line, "ombrix-cli");
    try {
        const auto choice = line.parse(words);
        law(choice.help.has_value() != static_cast<bool>(choice.work), "help or work");
        return {.help = choice.help.value_or(""), .works = static_cast<bool>(choice.work)};
    } catch (const UsageError& error) {
        law(*error.what() != '\0', "a problem is told");
        law(error.usage().empty() || error.usage().ends_with("\n"), "and the usage, in lines");
        return {.problem = error.what(), .usage = error.usage()};
    }
}

std::vector<std::string> joined(std::vector<std::string> first, std::vector<std::string> second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

void checkLine(const std::vector<std::string>& words) {
    const Outcome first = outcome(words);
    law(first == outcome(words), "read twice, the same");
    CommandLine named("ombrix-cli", "About.", words);
    declareCommands(named, "ombrix-cli");
    law(!named.workOf(words) || first.works, "the commands named are enough to find work");
    law(!outcome(joined({"--help"}, words)).help.empty(), "who asks for help gets it");
    if (std::ranges::find(words, "--") != words.end()) return;
    if (!first.works) return;
    law(outcome(joined(words, {"--"})).works, "the end of the options may be said");
    law(outcome(joined(words, {"--", "--help"})).help.empty(), "after it nobody asks for help");
    const bool takesPaths = outcome(joined(words, {"--db-path=--help"})).works;
    law(takesPaths == outcome(joined(words, {"--db-path", "/x"})).works,
        "what is joined to a name is its value, as is what follows it");
}

void checkPath(std::string_view word) {
    if (const auto path = expandedPath(word)) {
        law(path->starts_with("/") && (path->size() == 1 || !path->ends_with("/")), "a path");
        law(expandedPath(*path) == path, "expanded twice, the same");
    }
    const std::string shown = printable(word);
    law(Utf8::isValid(shown) && Text::withVisibleControls(shown) == shown,
        "a line without controls");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> words;
    for (const auto word : Text::split(Fuzz::text(data, size), "\n")) {
        words.emplace_back(word);
        checkPath(word);
    }
    checkLine(words);
    return 0;
}

#include "OmbrixEngine/Protocol/CommandText.h"

#include <algorithm>
#include <utility>

#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

bool isPlain(char c) {
    return Text::isAsciiWordByte(c) ||
           std::string_view("-./:=@%+,").find(c) != std::string_view::npos;
}

std::string quoted(const std::string& word) {
    if (!word.empty() && std::ranges::all_of(word, isPlain)) return word;
    return "'" + Text::replacingAll(word, "'", R"('\'')") + "'";
}
}  // namespace

std::string engineCommand(const CLIContext& context, std::vector<std::string> words) {
    const auto add = [&](const char* name, const std::optional<std::string>& value) {
        if (!value) return;
        words.emplace_back(name);
        words.push_back(*value);
    };
    add("--db-path", context.options.dbPath);
    add("--support-dir", context.options.supportDir);
    add("--now", context.options.now);
    std::string line = "ombrix-engine";
    for (const auto& word : words) line += " " + quoted(word);
    return line;
}

std::string askCommand(const CLIContext& context, std::vector<std::string> step) {
    step.insert(step.begin(), "ask");
    return engineCommand(context, std::move(step));
}

std::string giveCommand(const CLIContext& context, std::vector<std::string> step,
                        const std::string& inputHash) {
    step.insert(step.begin(), "give");
    step.insert(step.end(),
                {"--input-hash", inputHash, "--model", "NAME", "--route", "claudeCode", "--stdin"});
    return engineCommand(context, std::move(step));
}
}  // namespace ombrix

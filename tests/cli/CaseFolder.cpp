#include "CaseFolder.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ToolTests {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> textOf(const fs::path& path) {
    if (!fs::exists(path)) return std::nullopt;
    return Files::bytes(path);
}

CaseRun runIn(const fs::path& folder) {
    CaseRun run{.name = folder.filename().string(),
                .arguments = linesOf((folder / "arguments").string()),
                .stdinFile = fs::exists(folder / "stdin") ? (folder / "stdin").string() : "",
                .environment = linesOf((folder / "environment").string()),
                .output = textOf(folder / "stdout"),
                .errors = textOf(folder / "stderr"),
                .outputContains = linesOf((folder / "stdout-contains").string()),
                .errorsContain = linesOf((folder / "stderr-contains").string()),
                .anywhere = {},
                .status = 0,
                .changes = linesOf((folder / "changes").string())};
    if (const auto status = textOf(folder / "status")) run.status = std::stoi(*status);
    const bool saysSomething = run.output || run.errors || !run.outputContains.empty() ||
                               !run.errorsContain.empty() || fs::exists(folder / "status");
    if (!saysSomething) throw std::runtime_error(folder.string() + " expects nothing");
    return run;
}

/// Words are separated by blanks; single quotes keep blanks in a word.
std::vector<std::string> words(std::string_view text) {
    std::vector<std::string> result;
    bool inWord = false;
    bool quoted = false;
    for (const char c : text) {
        if (c == '\'') {
            quoted = !quoted;
            if (!inWord) result.emplace_back();
            inWord = true;
        } else if (c == ' ' && !quoted) {
            inWord = false;
        } else {
            if (!inWord) result.emplace_back();
            inWord = true;
            result.back() += c;
        }
    }
    if (quoted) throw std::runtime_error("an open quote: " + std::string(text));
    return result;
}

CaseRun runOfLine(const std::string& line) {
    const auto columns = Text::split(line, "|");
    if (columns.size() < 3) throw std::runtime_error("a line of three columns expected: " + line);
    CaseRun run;
    run.name = line;
    run.status = std::stoi(std::string(columns[0]));
    run.arguments = words(columns[1]);
    for (std::size_t i = 2; i < columns.size(); ++i)
        run.anywhere.emplace_back(Text::trimmedBlanks(columns[i]));
    return run;
}
}  // namespace

std::vector<std::string> linesOf(const std::string& path) {
    std::string text = textOf(path).value_or("");
    if (text.empty()) return {};
    if (text.ends_with('\n')) text.pop_back();
    const auto lines = Text::split(text, "\n");
    return {lines.begin(), lines.end()};
}

std::vector<CaseRun> runsOf(const std::string& caseFolder) {
    std::vector<CaseRun> runs;
    for (const auto& line : linesOf(caseFolder + "/lines"))
        if (!line.empty() && line.front() != '#') runs.push_back(runOfLine(line));
    if (fs::exists(fs::path(caseFolder) / "arguments")) runs.push_back(runIn(caseFolder));
    std::vector<fs::path> numbered;
    for (const auto& entry : fs::directory_iterator(caseFolder)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_directory() && name.front() >= '0' && name.front() <= '9')
            numbered.push_back(entry.path());
    }
    std::ranges::sort(numbered, {},
                      [](const fs::path& path) { return std::stoi(path.filename().string()); });
    for (const auto& folder : numbered) runs.push_back(runIn(folder));
    if (runs.empty()) throw std::runtime_error(caseFolder + " runs nothing");
    return runs;
}
}  // namespace ombrix::ToolTests

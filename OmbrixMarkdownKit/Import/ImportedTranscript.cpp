#include "OmbrixMarkdownKit/Import/ImportedTranscript.h"

#include <algorithm>
#include <unordered_set>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::string_view me = "Me";

bool endsInHeading(std::string_view text) {
    return std::ranges::any_of(TranscriptSections::sectionHeaders,
                               [&](std::string_view heading) { return text.ends_with(heading); });
}

void appendLine(std::string& file, std::string_view key, std::string_view value) {
    appendPlain(file += key, value);
    file += '\n';
}

void appendTurn(std::string& file, const Turn& turn) {
    appendPlain(file += "**", turn.speaker);
    appendPlain(file += ":** ", turn.text);
    file += endsInHeading(turn.text) ? " \n" : "\n";
}

std::size_t sizeOf(const std::vector<Turn>& turns) {
    constexpr std::size_t aroundATurn = 10;
    std::size_t size = 0;
    for (const Turn& turn : turns) size += turn.speaker.size() + turn.text.size() + aroundATurn;
    return size;
}
}  // namespace

std::vector<std::string> orderedParticipants(const std::vector<Turn>& turns) {
    std::vector<std::string> names;
    std::unordered_set<std::string_view> seen;
    for (const Turn& turn : turns)
        if (seen.insert(turn.speaker).second) names.push_back(turn.speaker);
    if (const auto found = std::ranges::find(names, me); found != names.end())
        std::rotate(names.begin(), found, found + 1);
    return names;
}

std::string render(std::string_view title, const std::optional<std::string>& date,
                   const std::vector<std::string>& participants, const std::vector<Turn>& turns,
                   Format format, std::string_view filename) {
    constexpr std::size_t headerSize = 1000;
    std::string file;
    file.reserve(sizeOf(turns) + headerSize);
    file += "---\n";
    appendLine(file, "title: ", title);
    if (date) appendLine(file, "date: ", *date);
    file += "participants:\n";
    for (const auto& name : participants) appendLine(file, "  - ", name);
    file += "duration_min: 0\nsource: Ombrix\n";
    file.append("asr: imported (").append(label(format)).append(")\n");
    file += importedFromLine(filename);
    file += "---\n\n## Notes\n\n";
    file.append(TranscriptDocument::notesPlaceholder).append("\n\n## Transcript\n");
    for (const Turn& turn : turns) appendTurn(file += '\n', turn);
    if (turns.empty()) file += "\n\n";
    return file;
}

std::string importedFromLine(std::string_view filename) {
    std::string line;
    appendLine(line, "imported_from: ", Utf8::repaired(filename));
    return line;
}
}  // namespace ombrix::TranscriptImport

#include "OmbrixMarkdownKit/Import/ImportDestinations.h"

#include <algorithm>
#include <tuple>

#include "OmbrixMarkdownKit/Import/ImportedTranscript.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::TranscriptImportRunner {
namespace {

constexpr std::size_t mostNames = 50;
constexpr std::string_view extension = ".md";
constexpr std::string_view importedFrom = "imported_from: ";

std::string stemOf(std::string_view source) {
    const std::string_view name = Paths::lastComponent(source);
    const std::string_view ending = Paths::extension(name);
    const bool isMarkdown =
        Text::equalsIgnoringCase(ending, "md") || Text::equalsIgnoringCase(ending, "markdown");
    if (ending.empty() || isMarkdown) return std::string(name);
    return std::string(name.substr(0, name.size() - ending.size() - 1));
}

/// The name in the attempt `copy`, from 1.
std::string nameOf(const std::string& stem, MeetingNumber number, std::size_t copy) {
    std::string name = stem;
    if (number.count > 0) {
        name += " (" + std::to_string(number.index) + " of " + std::to_string(number.count) + ")";
        if (copy > 1) name += " (" + std::to_string(copy) + ")";
    } else if (copy > 1) {
        name += " (imported " + std::to_string(copy) + ")";
    }
    return name.append(extension);
}

/// Takes "12" off the front of `text`; nothing, and `text` as it was, for anything that
/// `std::to_string` does not write.
std::optional<std::size_t> takeNumber(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
    if (end == 0 || text.front() == '0') return std::nullopt;
    const auto number = Numbers::parseInteger<std::int64_t>(text.substr(0, end));
    if (!number) return std::nullopt;
    text.remove_prefix(end);
    return static_cast<std::size_t>(*number);
}

bool take(std::string_view& text, std::string_view part) {
    if (!text.starts_with(part)) return false;
    text.remove_prefix(part.size());
    return true;
}

struct NumberedName {
    std::size_t count = 0, index = 0, copy = 1;
    auto operator<=>(const NumberedName&) const = default;
};

/// What " (2 of 3).md" and " (2 of 3) (2).md" say.
std::optional<NumberedName> numberedName(std::string_view afterStem) {
    NumberedName name;
    if (!take(afterStem, " (")) return std::nullopt;
    const auto index = takeNumber(afterStem);
    if (!index || !take(afterStem, " of ")) return std::nullopt;
    const auto count = takeNumber(afterStem);
    if (!count || !take(afterStem, ")") || *index > *count) return std::nullopt;
    if (take(afterStem, " (")) {
        const auto copy = takeNumber(afterStem);
        if (!copy || *copy < 2 || !take(afterStem, ")")) return std::nullopt;
        name.copy = *copy;
    }
    if (afterStem != extension) return std::nullopt;
    name.index = *index;
    name.count = *count;
    return name;
}
}  // namespace

ImportDestinations::Place ImportDestinations::place(const std::string& source,
                                                    const std::string& folder,
                                                    MeetingNumber number) {
    const std::string stem = stemOf(source);
    const std::string here = Files::workingDirectory();
    const std::string itself = Paths::standardised(source, here);
    const Names& taken = names(folder);
    Place place;
    for (std::size_t copy = 1; copy <= mostNames; ++copy) {
        const std::string name = nameOf(stem, number, copy);
        place.path = Paths::joined(folder, name);
        if (claimed_.contains(place.path) || Paths::standardised(place.path, here) == itself)
            continue;
        place.exists = taken.contains(name);
        if (!place.exists || belongsTo(place.path, source)) return place;
    }
    place.isTaken = true;
    return place;
}

std::vector<ImportDestinations::Numbered> ImportDestinations::earlierMeetings(
    const std::string& source, const std::string& folder) {
    const std::string stem = stemOf(source);
    const std::string beginning = stem + " (";
    const Names& all = names(folder);
    std::vector<std::pair<NumberedName, std::string>> found;
    for (auto at = all.lower_bound(beginning); at != all.end() && at->starts_with(beginning);
         ++at) {
        const auto name = numberedName(std::string_view(*at).substr(stem.size()));
        if (!name) continue;
        std::string path = Paths::joined(folder, *at);
        if (!claimed_.contains(path) && belongsTo(path, source))
            found.emplace_back(*name, std::move(path));
    }
    std::ranges::sort(found);
    std::vector<Numbered> result;
    for (auto& [name, path] : found) {
        if (!result.empty() &&
            (result.back().index == name.index || result.back().count != name.count))
            continue;
        result.push_back({name.index, name.count, std::move(path)});
    }
    return result;
}

void ImportDestinations::claim(const std::string& path) {
    claimed_.insert(path);
    names(std::string(Paths::parent(path))).emplace(Paths::lastComponent(path));
}

void ImportDestinations::release(const std::string& path) {
    claimed_.erase(path);
    names(std::string(Paths::parent(path))).erase(std::string(Paths::lastComponent(path)));
}

ImportDestinations::Names& ImportDestinations::names(const std::string& folder) {
    const auto known = folders_.find(folder);
    if (known != folders_.end()) return known->second;
    auto found = Files::names(folder);
    return folders_.emplace(folder, Names(found.begin(), found.end())).first->second;
}

bool ImportDestinations::belongsTo(const std::string& path, const std::string& source) {
    auto known = sources_.find(path);
    if (known == sources_.end()) known = sources_.emplace(path, sourcesIn(path)).first;
    std::string line = TranscriptImport::importedFromLine(Paths::lastComponent(source));
    line.pop_back();
    return std::ranges::find(known->second, line) != known->second.end();
}

std::vector<std::string> ImportDestinations::sourcesIn(const std::string& path) {
    std::vector<std::string> lines;
    const auto content = reader_.read(path);
    if (!content || !Utf8::isValid(*content)) return lines;
    std::size_t at = content->starts_with(importedFrom) ? 0 : content->find("\nimported_from: ");
    // The text's last line names nothing without its line end.
    for (; at != std::string_view::npos; at = content->find("\nimported_from: ", at)) {
        if ((*content)[at] == '\n') ++at;
        const std::size_t end = content->find('\n', at);
        if (end == std::string_view::npos) break;
        auto line = content->substr(at, end - at);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.emplace_back(line);
        at = end;
    }
    return lines;
}
}  // namespace ombrix::TranscriptImportRunner

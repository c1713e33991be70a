#include "OmbrixMemoryKit/Region/Frontmatter.h"

#include <algorithm>

#include "OmbrixPlatform/Text.h"

namespace ombrix::Frontmatter {
namespace {

std::string unquoted(std::string_view value) {
    value = Text::trimmed(value);
    if (value.size() < 2 || !value.starts_with('"') || !value.ends_with('"'))
        return std::string(value);
    return Text::replacingAll(value.substr(1, value.size() - 2), "\\\"", "\"");
}

std::string oneLine(std::string_view value) {
    if (value.find_first_of("\n\r") == value.npos) return std::string(value);
    return Text::flattened(value);
}
}  // namespace

std::string quotedScalar(std::string_view value) {
    const std::string line = oneLine(value);
    if (line.find_first_of(":#'\"") == line.npos && !line.starts_with('[')) return line;
    return "\"" + Text::replacingAll(line, "\"", "\\\"") + "\"";
}

Writer& Writer::bare(std::string_view key, std::string_view value) {
    text_.append(key).append(": ").append(oneLine(value)) += '\n';
    return *this;
}

Writer& Writer::quoted(std::string_view key, std::string_view value) {
    return bare(key, quotedScalar(value));
}

Writer& Writer::list(std::string_view key, const std::vector<std::string>& items) {
    std::vector<std::string> quoted;
    for (const auto& item : items) quoted.push_back(quotedScalar(item));
    return bareList(key, quoted);
}

Writer& Writer::bareList(std::string_view key, const std::vector<std::string>& items) {
    if (items.empty()) return bare(key, "[]");
    text_.append(key) += ":\n";
    for (const auto& item : items) text_.append("  - ").append(oneLine(item)) += '\n';
    return *this;
}

std::optional<Reader> Reader::of(std::string_view text) {
    constexpr std::string_view fence = "---";
    const auto lines = Text::split(text, "\n");
    if (lines.front() != fence) return std::nullopt;
    const auto end = std::find(lines.begin() + 1, lines.end(), fence);
    if (end == lines.end()) return std::nullopt;
    return Reader({lines.begin() + 1, end});
}

bool Reader::hasLine(std::string_view line) const {
    return std::ranges::find(lines_, line) != lines_.end();
}

std::optional<std::pair<std::size_t, std::string_view>> Reader::field(std::string_view key) const {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const auto line = lines_[i];
        if (line.starts_with(key) && line.substr(key.size()).starts_with(':'))
            return std::pair(i, Text::trimmed(line.substr(key.size() + 1)));
    }
    return std::nullopt;
}

std::optional<std::string> Reader::scalar(std::string_view key) const {
    const auto found = field(key);
    if (!found) return std::nullopt;
    return unquoted(found->second);
}

std::optional<std::vector<std::string>> Reader::list(std::string_view key) const {
    const auto found = field(key);
    if (!found) return std::nullopt;
    std::vector<std::string> items;
    if (found->second == "[]") return items;
    for (std::size_t i = found->first + 1; i < lines_.size(); ++i) {
        if (!lines_[i].starts_with(' ') && !lines_[i].starts_with('\t')) break;
        auto item = Text::trimmed(lines_[i]);
        if (!item.starts_with("- ") && item != "-") continue;
        item.remove_prefix(1);
        items.push_back(unquoted(item));
    }
    return items;
}
}  // namespace ombrix::Frontmatter

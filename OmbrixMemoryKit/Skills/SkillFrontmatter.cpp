#include "OmbrixMemoryKit/Skills/SkillFrontmatter.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "OmbrixMemoryKit/Skills/YamlFlowMap.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::SkillFrontmatter {
namespace {

using namespace YamlScalars;

/// "key" of "key: value" and of "'key' : value", and the place after the colon.
struct Key {
    std::string text;
    std::size_t end = 0;
};

bool isSeparator(std::string_view line, std::size_t at) {
    return at < line.size() && line[at] == ':' && (at + 1 == line.size() || isBlank(line[at + 1]));
}

std::optional<Key> keyOf(std::string_view line) {
    std::size_t at = indentation(line);
    if (at == line.size() || isItem(line.substr(at))) return std::nullopt;
    std::string text;
    if (line[at] == '"' || line[at] == '\'') {
        auto quoted = quotedScalar(line, at);
        if (!quoted) return std::nullopt;
        text = std::move(quoted->value);
        at = quoted->range.end;
        while (at < line.size() && isBlank(line[at])) ++at;
        if (!isSeparator(line, at)) return std::nullopt;
    } else {
        constexpr std::string_view noKey = "{}[],&*!|>%@`";
        if (noKey.find(line[at]) != std::string_view::npos) return std::nullopt;
        const std::size_t start = at;
        while (at < line.size() && !isSeparator(line, at)) ++at;
        if (at == line.size() || at == start) return std::nullopt;
        text = trimmedBlanksOf(line.substr(start, at - start));
    }
    return Key{std::move(text), at + 1};
}

std::string joined(const FrontmatterEntry& entry) { return Text::joined(entry.lines, "\n"); }

FrontmatterEntry entryOf(std::optional<std::string> key, std::string_view text) {
    FrontmatterEntry entry{.key = std::move(key)};
    for (const auto line : Text::split(text, "\n")) entry.lines.emplace_back(line);
    return entry;
}

/// The map of an entry in block form: its entries, without the comments, and where each starts.
struct Block {
    std::vector<std::pair<FrontmatterEntry, std::size_t>> entries;
    std::string indentation;  ///< of its keys; empty without entries
};

/// Nothing when the entry holds something else. An entry without a value is an empty map.
std::optional<Block> blockOf(const FrontmatterEntry& entry, std::size_t keyEnd) {
    const std::string& first = entry.lines.front();
    if (firstContent(std::string_view(first), keyEnd) < first.size()) return std::nullopt;
    const std::span<const std::string> below = std::span(entry.lines).subspan(1);
    auto groups = groupEntries(below);
    if (!groups) return std::nullopt;
    Block block;
    std::size_t place = first.size() + 1;
    for (FrontmatterEntry& group : *groups) {
        std::size_t size = 0;
        for (const std::string& line : group.lines) size += line.size() + 1;
        if (group.key) {
            if (block.entries.empty())
                block.indentation = group.lines.front().substr(0, indentation(group.lines.front()));
            block.entries.emplace_back(std::move(group), place);
        }
        place += size;
    }
    return block;
}

ByteRange shifted(ByteRange range, std::size_t by) { return {range.begin + by, range.end + by}; }
}  // namespace

std::optional<std::vector<FrontmatterEntry>> groupEntries(std::span<const std::string> lines) {
    std::vector<FrontmatterEntry> entries;
    std::vector<std::string> between;  // blank and comment lines
    std::optional<std::size_t> depth;
    const auto flush = [&](std::vector<std::string>& into) {
        std::ranges::move(between, std::back_inserter(into));
        between.clear();
    };
    for (const std::string& line : lines) {
        const std::size_t column = indentation(line);
        const std::string_view content = std::string_view(line).substr(column);
        const bool isComment = content.starts_with('#') && (!depth || column <= *depth);
        if (content.empty() || isComment) {
            between.push_back(line);
            continue;
        }
        if (!depth) depth = column;
        if (column > *depth || (column == *depth && isItem(content))) {
            if (entries.empty() || !entries.back().key) return std::nullopt;
            flush(entries.back().lines);
            entries.back().lines.push_back(line);
            continue;
        }
        auto key = keyOf(line);
        if (column < *depth || !key) return std::nullopt;
        if (!between.empty()) flush(entries.emplace_back().lines);
        entries.push_back({.key = std::move(key->text), .lines = {line}});
    }
    if (!between.empty()) flush(entries.emplace_back().lines);
    return entries;
}

std::optional<Scalar> scalar(const FrontmatterEntry& entry) {
    const auto key = keyOf(entry.lines.front());
    if (!key) return std::nullopt;
    const std::string text = joined(entry);
    const std::size_t start = firstContent(text, key->end);
    if (start == text.size()) return Scalar{{}, {key->end, key->end}};
    const bool isBelow = start > entry.lines.front().size();
    if (isBelow && keyOf(std::string_view(text).substr(start, text.find('\n', start) - start)))
        return std::nullopt;
    return anyScalar(text, start, indentation(entry.lines.front()));
}

std::optional<Scalar> nestedScalar(const FrontmatterEntry& entry, std::string_view key) {
    const auto own = keyOf(entry.lines.front());
    if (!own) return std::nullopt;
    if (const auto block = blockOf(entry, own->end)) {
        for (const auto& [nested, place] : block->entries) {
            if (nested.key != key) continue;
            auto found = scalar(nested);
            if (found) found->range = shifted(found->range, place);
            return found;
        }
        return std::nullopt;
    }
    const std::string text = joined(entry);
    const auto flow = YamlFlowMap::member(text, firstContent(text, own->end), key);
    return flow ? flow->value : std::nullopt;
}

FrontmatterEntry replacing(const FrontmatterEntry& entry, ByteRange range, std::string_view text) {
    std::string all = joined(entry);
    std::string put(text);
    // "key:" and a value need a blank between them.
    if (range.begin > 0 && all[range.begin - 1] == ':') put.insert(0, " ");
    all.replace(range.begin, range.end - range.begin, put);
    return entryOf(entry.key, all);
}

FrontmatterEntry settingNested(const FrontmatterEntry& entry, std::string_view key,
                               std::string_view value) {
    if (const auto found = nestedScalar(entry, key)) return replacing(entry, found->range, value);
    const std::string& first = entry.lines.front();
    const auto own = keyOf(first);
    const std::size_t keyEnd = own ? own->end : first.size();
    const std::string member = std::string(key) + ": " + std::string(value);
    if (const auto block = blockOf(entry, keyEnd)) {
        FrontmatterEntry changed = entry;
        const auto unreadable = std::ranges::find_if(
            block->entries, [&](const auto& nested) { return nested.first.key == key; });
        if (unreadable != block->entries.end()) {
            // A list or the like stands there: the new value takes the place of its lines.
            const auto& [nested, place] = *unreadable;
            const std::string line = block->indentation + member;
            return replacing(entry, {place, place + joined(nested).size()}, line);
        }
        const std::string indented = block->entries.empty()
                                         ? first.substr(0, indentation(first)) + "  "
                                         : block->indentation;
        changed.lines.push_back(indented + member);
        return changed;
    }
    const std::string text = joined(entry);
    const std::size_t start = firstContent(text, keyEnd);
    if (const auto flow = YamlFlowMap::member(text, start, key)) {
        if (flow->isThere) return replacing(entry, flow->range, member);
        // A blank ahead of "#" would make a comment of the next key.
        const std::string comma = flow->isEmpty ? "" : text[start + 1] == '#' ? "," : ", ";
        return replacing(entry, {start + 1, start + 1}, member + comma);
    }
    return {
        .key = entry.key,
        .lines = {first.substr(0, keyEnd), first.substr(0, indentation(first)) + "  " + member}};
}
}  // namespace ombrix::SkillFrontmatter

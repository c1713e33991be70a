#include "OmbrixMemoryKit/Skills/YamlFlowMap.h"

#include <algorithm>

namespace ombrix::YamlFlowMap {
namespace {

using namespace YamlScalars;

/// A value within braces: up to the next comma or closing brace that is not inside of it. Nothing
/// when there is none.
std::optional<std::size_t> flowEnd(std::string_view text, std::size_t at) {
    std::size_t depth = 0;
    char before = ',';  // the last character that is no blank: after these a value begins
    for (; at < text.size(); ++at) {
        at = afterComment(text, at);
        if (at == text.size()) break;
        const char c = text[at];
        if (depth == 0 && (c == ',' || c == '}')) return at;
        const bool begins = std::string_view(",:{[").find(before) != std::string_view::npos;
        if (!isBlank(c) && c != '\n') before = c;
        if (begins && (c == '"' || c == '\'')) {
            const auto quoted = quotedScalar(text, at);
            if (!quoted) return std::nullopt;
            at = quoted->range.end - 1;
        } else if (c == '[' || c == '{') {
            ++depth;
        } else if (c == ']' || c == '}') {
            if (depth == 0) return std::nullopt;
            --depth;
        }
    }
    return std::nullopt;
}

/// The place of the colon of a member from `at` to `end`; `end` without one.
std::size_t flowColon(std::string_view text, std::size_t at, std::size_t end) {
    if (at < end && (text[at] == '"' || text[at] == '\'')) {
        if (const auto quoted = quotedScalar(text, at)) at = quoted->range.end;
    }
    while (at < end &&
           !(text[at] == ':' && (at + 1 == end || isBlank(text[at + 1]) || text[at + 1] == '\n'))) {
        ++at;
    }
    return at;
}

std::optional<Found> flowScalar(std::string_view text, std::size_t begin, std::size_t end) {
    const std::size_t start = std::min(firstContent(text, begin), end);
    if (start == end) return Found{{}, {begin, begin}};
    return anyScalar(text.substr(0, end), start, 0);
}
}  // namespace

std::optional<Member> member(std::string_view text, std::size_t start, std::string_view key) {
    if (start >= text.size() || text[start] != '{') return std::nullopt;
    Member found;
    for (std::size_t at = start + 1;;) {
        at = firstContent(text, at);
        const auto end = flowEnd(text, at);
        if (!end) return std::nullopt;
        const std::size_t colon = flowColon(text, at, *end);
        const auto name = flowScalar(text, at, colon);
        found.isEmpty = found.isEmpty && at == *end;
        if (name && name->value == key && at < colon && !found.isThere) {
            found.isThere = true;
            found.range = {at, *end};
            if (colon < *end) found.value = flowScalar(text, colon + 1, *end);
        }
        if (text[*end] == '}') {
            if (firstContent(text, *end + 1) < text.size()) return std::nullopt;
            return found;
        }
        at = *end + 1;
    }
}
}  // namespace ombrix::YamlFlowMap

#include "OmbrixMemoryKit/Skills/YamlScalars.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <system_error>
#include <utility>
#include <vector>

#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::YamlScalars {
namespace {

// ---- lines -------------------------------------------------------------------------------------

std::size_t lineEnd(std::string_view text, std::size_t at) {
    return std::min(text.find('\n', at), text.size());
}

bool startsComment(std::string_view text, std::size_t at) {
    return text[at] == '#' && (at == 0 || text[at - 1] == '\n' || isBlank(text[at - 1]));
}

/// The end of the plain text on a line: before a comment and blanks.
std::size_t plainEnd(std::string_view text, std::size_t start) {
    std::size_t end = start;
    const std::size_t stop = lineEnd(text, start);
    for (std::size_t at = start; at < stop && !startsComment(text, at); ++at)
        if (!isBlank(text[at])) end = at + 1;
    return end;
}

/// What `lineEnds` line ends between two pieces of a folded text become.
void appendFold(std::string& value, std::size_t lineEnds) {
    if (lineEnds == 1)
        value += ' ';
    else
        value.append(lineEnds - 1, '\n');
}

// ---- quotes ------------------------------------------------------------------------------------

struct Escape {
    char letter;
    char32_t scalar;
};
constexpr auto escapes = std::to_array<Escape>({
    {'0', 0},
    {'a', 7},
    {'b', 8},
    {'t', '\t'},
    {'\t', '\t'},
    {'n', '\n'},
    {'v', 11},
    {'f', 12},
    {'r', '\r'},
    {'e', 27},
    {' ', ' '},
    {'"', '"'},
    {'/', '/'},
    {'\\', '\\'},
    {'N', 0x85},
    {'_', 0xA0},
    {'L', 0x2028},
    {'P', 0x2029},
});

std::optional<char32_t> hexadecimal(std::string_view text, std::size_t at, std::size_t digits) {
    if (at + digits > text.size()) return std::nullopt;
    const char* const end = text.data() + at + digits;
    std::uint32_t value = 0;
    const auto [stop, error] = std::from_chars(text.data() + at, end, value, 16);
    if (error != std::errc() || stop != end) return std::nullopt;
    return value;
}

/// The scalar of the escape whose letter is at `at`, which moves past it.
std::optional<char32_t> escaped(std::string_view text, std::size_t& at) {
    if (at >= text.size()) return std::nullopt;
    const char letter = text[at++];
    const std::size_t digits = letter == 'x' ? 2 : letter == 'u' ? 4 : letter == 'U' ? 8 : 0;
    if (digits == 0) {
        const auto found = std::ranges::find(escapes, letter, &Escape::letter);
        if (found == escapes.end()) return std::nullopt;
        return found->scalar;
    }
    auto scalar = hexadecimal(text, at, digits);
    if (!scalar) return std::nullopt;
    at += digits;
    const bool isHigh = *scalar >= 0xD800 && *scalar < 0xDC00;
    if (digits == 4 && isHigh && text.substr(at).starts_with("\\u")) {
        const auto low = hexadecimal(text, at + 2, 4);
        if (low && *low >= 0xDC00 && *low < 0xE000) {
            at += 6;
            return 0x10000 + ((*scalar - 0xD800) << 10U) + (*low - 0xDC00);
        }
    }
    return scalar;
}

/// Moves `at` past line ends and the blanks around them, and returns how many line ends there were.
std::size_t skipLineEnds(std::string_view text, std::size_t& at) {
    std::size_t lineEnds = 0;
    for (; at < text.size() && (text[at] == '\n' || isBlank(text[at])); ++at)
        if (text[at] == '\n') ++lineEnds;
    return lineEnds;
}

/// Folds the line ends from `at` on, with the blanks around them; `keep` is how much of `value` is
/// not to be trimmed.
std::size_t foldLines(std::string_view text, std::size_t at, std::string& value, std::size_t keep) {
    while (value.size() > keep && isBlank(value.back())) value.pop_back();
    appendFold(value, skipLineEnds(text, at));
    return at;
}

/// After a backslash at a line's end: the next line follows without a blank.
std::size_t joinLines(std::string_view text, std::size_t at, std::string& value) {
    value.append(skipLineEnds(text, at) - 1, '\n');
    return at;
}

bool isAtLineEnd(std::string_view text, std::size_t at) {
    if (at < text.size() && text[at] == '\r') ++at;
    return at < text.size() && text[at] == '\n';
}

// ---- blocks ------------------------------------------------------------------------------------

struct BlockHeader {
    bool isFolded = false;
    std::size_t indentation = 0;  ///< 0: that of the first line with text
};

std::optional<BlockHeader> blockHeader(std::string_view line) {
    BlockHeader header{.isFolded = line.front() == '>'};
    std::size_t at = 1;
    bool hasChomping = false;
    for (; at < line.size() && !isBlank(line[at]); ++at) {
        const char c = line[at];
        if (c >= '1' && c <= '9' && header.indentation == 0)
            header.indentation = static_cast<std::size_t>(c - '0');
        else if ((c == '+' || c == '-') && !std::exchange(hasChomping, true))
            continue;  // a scalar here never ends in a line end
        else
            return std::nullopt;
    }
    if (firstContent(line, at) < line.size()) return std::nullopt;
    return header;
}

std::string literal(const std::vector<std::string_view>& lines) {
    return Text::joined(lines, "\n");
}

/// One line end between two lines of text is a blank; those around blank and deeper lines stay.
std::string foldedBlock(const std::vector<std::string_view>& lines) {
    std::string value;
    const auto isDeeper = [](std::string_view line) { return !line.empty() && isBlank(line[0]); };
    std::size_t lineEnds = 0;
    std::optional<std::string_view> last;
    for (const std::string_view line : lines) {
        if (!line.empty()) {
            if (!last || isDeeper(*last) || isDeeper(line))
                value.append(lineEnds, '\n');
            else
                appendFold(value, lineEnds);
            value += line;
            last = line;
            lineEnds = 0;
        }
        ++lineEnds;
    }
    return value;
}

std::optional<Found> blockScalar(std::string_view text, std::size_t start, std::size_t parent) {
    std::size_t at = lineEnd(text, start);
    auto header = blockHeader(text.substr(start, at - start));
    if (!header) return std::nullopt;
    std::optional<std::size_t> depth;  // of the text, always deeper than the key
    if (header->indentation > 0) depth = parent + header->indentation;
    std::vector<std::string_view> lines;
    std::size_t end = at;
    while (at < text.size()) {
        const std::size_t begin = at + 1;
        at = lineEnd(text, begin);
        std::string_view line = text.substr(begin, at - begin);
        if (line.ends_with('\r')) line.remove_suffix(1);
        const std::size_t column = indentation(line);
        if (column == line.size() && (!depth || column <= *depth)) {
            lines.emplace_back();
            continue;
        }
        if (!depth) depth = std::max(column, parent + 1);
        if (column < *depth) {
            if (firstContent(text, begin) < text.size()) return std::nullopt;
            break;  // only comments
        }
        lines.push_back(line.substr(*depth));
        end = at;
    }
    while (!lines.empty() && lines.back().empty()) lines.pop_back();
    return Found{header->isFolded ? foldedBlock(lines) : literal(lines), {start, end}};
}

/// Lines without quotes, up to the end of the text.
Found plainScalar(std::string_view text, std::size_t start) {
    std::size_t end = plainEnd(text, start);
    Found found{std::string(text.substr(start, end - start)), {start, end}};
    while (true) {
        const std::size_t next = firstContent(text, end);
        if (next == text.size()) return found;
        const auto lineEnds = std::ranges::count(text.substr(end, next - end), '\n');
        appendFold(found.value, static_cast<std::size_t>(lineEnds));
        end = plainEnd(text, next);
        found.value += text.substr(next, end - next);
        found.range.end = end;
    }
}

// ---- writing -----------------------------------------------------------------------------------

/// What another reader of YAML takes for a number, a date, a truth value or nothing.
bool isOfOtherType(std::string_view value) {
    static const Regex otherType(
        R"(^(?:[-+]?(?:0b[01_]+|0x[0-9a-f_]+|0o[0-7_]+|[0-9][0-9_]*(?:\.[0-9_]*)?(?:e[-+]?[0-9]+)?)"
        R"(|\.[0-9][0-9_]*(?:e[-+]?[0-9]+)?|[0-9]+(?::[0-5]?[0-9])+(?:\.[0-9_]*)?|\.inf)|\.nan)"
        R"(|[0-9]{4}-[0-9]{1,2}-[0-9]{1,2}(?:(?:t|[ \t]+)[0-9:.]+[ \t]*(?:z|[-+][0-9:]+)?)?)"
        R"(|~|null|true|false|yes|no|on|off|y|n|=|<<)$)",
        Regex::Case::ignored);
    return otherType.found(value);
}

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

/// True for a text that reads back as itself when it stands on a line without quotes.
bool isPlain(std::string_view value) {
    constexpr std::string_view indicators = "-?:,[]{}#&*!|>'\"%@`";
    constexpr auto hidden = std::to_array<std::string_view>(
        {"\u0085", "\u2028", "\u2029", "\uFEFF"});  // line ends to other readers, and the mark
    return !value.empty() && trimmedBlanksOf(value) == value && !value.ends_with(':') &&
           indicators.find(value.front()) == std::string_view::npos &&
           !Text::contains(value, ": ") && !Text::contains(value, " #") &&
           std::ranges::none_of(value, isControl) &&
           std::ranges::none_of(hidden, [&](auto part) { return Text::contains(value, part); }) &&
           !isOfOtherType(value);
}

std::string inDoubleQuotes(std::string_view value) {
    std::string text = "\"";
    for (std::size_t at = 0; at < value.size();) {
        const auto [scalar, length] = Utf8::decode(value, at);
        const auto escape = std::ranges::find_if(escapes, [&](const Escape& each) {
            return each.scalar == scalar && Text::isAsciiLetter(each.letter);
        });
        if (scalar == '"' || scalar == '\\')
            (text += '\\') += static_cast<char>(scalar);
        else if (escape != escapes.end())
            (text += '\\') += escape->letter;
        else if (length == 1 && isControl(value[at]))
            Numbers::appendHex(text += "\\x", static_cast<std::uint8_t>(scalar));
        else if (scalar == 0xFEFF)
            text += "\\uFEFF";
        else
            text += value.substr(at, length);
        at += length;
    }
    return text + "\"";
}
}  // namespace

std::string_view trimmedBlanksOf(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::size_t indentation(std::string_view line) {
    return static_cast<std::size_t>(std::ranges::find_if_not(line, isBlank) - line.begin());
}

bool isItem(std::string_view content) {
    return (content.starts_with('-') || content.starts_with('?')) &&
           (content.size() == 1 || isBlank(content[1]) || content[1] == '\n');
}

std::size_t afterComment(std::string_view text, std::size_t at) {
    return startsComment(text, at) ? lineEnd(text, at) : at;
}

std::size_t firstContent(std::string_view text, std::size_t from) {
    for (std::size_t at = from; at < text.size(); ++at) {
        at = afterComment(text, at);
        if (at < text.size() && text[at] != '\n' && !isBlank(text[at])) return at;
    }
    return text.size();
}

std::optional<Found> quotedScalar(std::string_view text, std::size_t start) {
    const char quote = text[start];
    std::string value;
    std::size_t keep = 0;  // how much of `value` was escaped, so that no blank of it is trimmed
    for (std::size_t at = start + 1; at < text.size();) {
        const char c = text[at];
        if (isAtLineEnd(text, at)) {
            at = foldLines(text, at, value, keep);
            keep = value.size();
        } else if (c == quote && quote == '\'' && text.substr(at + 1).starts_with('\'')) {
            value += quote;
            at += 2;
        } else if (c == quote) {
            return Found{std::move(value), {start, at + 1}};
        } else if (c == '\\' && quote == '"') {
            ++at;
            if (isAtLineEnd(text, at)) {
                at = joinLines(text, at, value);
            } else {
                const auto scalar = escaped(text, at);
                if (!scalar) return std::nullopt;
                Utf8::append(value, *scalar);
            }
            keep = value.size();
        } else {
            value += c;
            ++at;
        }
    }
    return std::nullopt;
}

std::optional<Found> anyScalar(std::string_view text, std::size_t start, std::size_t parent) {
    switch (text[start]) {
        case '"':
        case '\'': {
            auto found = quotedScalar(text, start);
            if (!found || firstContent(text, found->range.end) < text.size()) return std::nullopt;
            return found;
        }
        case '|':
        case '>':
            return blockScalar(text, start, parent);
        case '[':
        case '{':
        case '&':
        case '*':
        case '!':
            return std::nullopt;
        default:
            if (isItem(text.substr(start))) return std::nullopt;
            return plainScalar(text, start);
    }
}

std::string written(std::string_view value) {
    return isPlain(value) ? std::string(value) : inDoubleQuotes(value);
}
}  // namespace ombrix::YamlScalars

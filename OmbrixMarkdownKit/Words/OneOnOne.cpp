#include "OmbrixMarkdownKit/Words/OneOnOne.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "OmbrixMarkdownKit/Words/ByteScan.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::OneOnOne {
namespace {

/// The length of the form that `rest` starts with, without a plural "s"; 0 for none.
std::size_t formLength(std::string_view rest) {
    for (const std::string_view form : {"1:1", "1-1", "1 on 1"})
        if (Text::startsWithIgnoringAsciiCase(rest, form)) return form.size();
    for (const std::string_view form : {"one on one", "one-on-one", "one-on one", "one on-one",
                                        "one to one", "one-to-one", "one-to one", "one to-one"}) {
        if (Text::startsWithIgnoringAsciiCase(rest, form)) return form.size();
    }
    return 0;
}

bool isAsciiOrEnd(std::string_view text, std::size_t at) {
    return at >= text.size() || Text::isAscii(text[at]);
}

/// The matches, as the expression below finds them; nothing when a form has a neighbour that is not
/// ASCII: whether a word ends there, or continues with an "ſ", only the expression can tell.
std::optional<std::vector<Match>> plainMatches(std::string_view text) {
    std::vector<Match> found;
    ByteScan::OneForms forms(text);
    for (std::size_t at = forms.next(0); at < text.size(); at = forms.next(at + 1)) {
        const std::size_t length = formLength(text.substr(at));
        if (length == 0) continue;
        std::size_t end = at + length;
        const bool isPlural = end < text.size() && (text[end] | 0x20) == 's';
        if (isPlural) ++end;
        if (!isAsciiOrEnd(text, end) || (at > 0 && !isAsciiOrEnd(text, at - 1)))
            return std::nullopt;
        if (at > 0 && Text::isAsciiWordByte(text[at - 1])) continue;
        if (end < text.size() && Text::isAsciiWordByte(text[end])) continue;
        found.push_back({{at, end}, isPlural});
        at = end - 1;
    }
    return found;
}

std::vector<Match> regexMatches(std::string_view text) {
    static const Regex expression(R"(\b(?:1:1|1-1|1 on 1|one[ -]on[ -]one|one[ -]to[ -]one)(s?)\b)",
                                  Regex::Case::ignored);
    std::vector<Match> found;
    for (const auto& match : expression.matches(text))
        found.push_back({match.range(), !match.group(1, text).empty()});
    return found;
}
}  // namespace

std::vector<Match> matches(std::string_view text) {
    if (auto found = plainMatches(text)) return std::move(*found);
    return regexMatches(text);
}

std::string rewritten(std::string_view text, const std::vector<Match>& matches) {
    std::string shadow(text);
    for (const auto& [range, isPlural] : matches) {
        const auto begin = shadow.begin() + static_cast<std::ptrdiff_t>(range.begin);
        const auto end = shadow.begin() + static_cast<std::ptrdiff_t>(range.end);
        auto after = std::ranges::copy(word, begin).out;
        if (isPlural) *after++ = 's';
        std::fill(after, end, ' ');
    }
    return shadow;
}
}  // namespace ombrix::OneOnOne

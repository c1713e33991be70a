#include "OmbrixEngine/Workspace/NamePattern.h"

#include <algorithm>
#include <functional>

#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::NamePattern {
namespace {

using Patterns = std::vector<std::string>;
using Words = std::vector<std::string_view>;

// Chinese and Japanese put no blanks between words.
constexpr std::string_view noWordBefore = R"((?<![[\p{L}\p{N}]--[\p{Han}\p{Hiragana}]]))";
constexpr std::string_view noWordAfter = R"((?![[\p{L}\p{N}]--[\p{Han}\p{Hiragana}]]))";
/// Between two words of a name: white space, emphasis, a comma; or what links have there.
constexpr std::string_view joint = R"((?:[*_~`,\s]+|[.\-・]))";
constexpr std::string_view gap = R"([*_~`\s])";
/// Before a surname, in any case and with or without a point; "M" alone is short for many things.
constexpr std::string_view titles =
    "(?:(?i:Mr|Mrs|Ms|Miss|Mx|Dr|Prof|Doctor|Professor|Herr|Herrn|Frau|Mme|Mlle|Monsieur|Madame|"
    "Sr|Sra|Srta|Señor|Señora|Señorita|Signor|Signora|Pan|Pani|Pana|Panu|Panem|Panią)|M(?=\\.))";
/// A name of more words is found from its first one on alone.
constexpr std::size_t mostTurned = 6;

/// Each letter as it begins a word in capitals.
std::string uppercased(std::string_view word) {
    std::string result;
    Characters::Cursor cursor(word);
    for (std::size_t at = 0; at < word.size();) {
        const std::size_t end = cursor.after(at);
        result += Text::withUpperCaseFirst(word.substr(at, end - at));
        at = end;
    }
    return result;
}

std::string anyOf(const Patterns& patterns) { return "(?:" + Text::joined(patterns, "|") + ")"; }

bool isWrittenWithoutBlanks(std::string_view word) {
    static const Regex expression(R"(^[\p{Han}\p{Hiragana}\p{Katakana}ー]+$)");
    return expression.found(word);
}

/// The words as they follow each other, in any case; of a key, too.
std::string whole(const Words& words) {
    Patterns escaped;
    for (const auto word : words) escaped.push_back(Regex::escaped(word));
    const bool mayTouch = std::ranges::all_of(words, isWrittenWithoutBlanks);
    const std::string between = std::string(joint) + (mayTouch ? "?" : "");
    const std::string key = Regex::escaped(EntityKeys::namePrefix);
    const std::string name = Text::joined(escaped, between);
    return Text::joined(Words{"(?:", key, ")?(?i:", name, ")"}, "");
}

/// A word of one or two characters may be a part of others: then none of its script is beside it.
std::string guarded(std::string_view word) {
    const std::string pattern = Regex::escaped(word);
    if (!isWrittenWithoutBlanks(word) || Characters::hasAtLeast(word, 3)) return pattern;
    static const Regex hasHan(R"(\p{Han})");
    if (!hasHan.found(word)) return R"((?<!\p{Hiragana}))" + pattern + R"((?!\p{Hiragana}))";
    if (Characters::hasAtLeast(word, 2)) return pattern;
    return R"((?<!\p{Han}))" + pattern + R"((?!\p{Han}))";
}

void addWhole(Patterns& patterns, Words words) {
    const std::size_t turns = words.size() > mostTurned ? 1 : words.size();
    for (std::size_t turn = 0; turn < turns; ++turn) {
        patterns.push_back(whole(words));
        std::ranges::rotate(words, words.begin() + 1);
    }
}

/// The word with its capital, and in capitals when it has two letters.
Patterns withCapital(std::string_view word) {
    const std::string lower = Text::lowercased(word);
    const std::string capital = Text::withUpperCaseFirst(lower);
    if (lower == uppercased(lower)) return {guarded(word)};  // a script without case
    Patterns patterns = {Regex::escaped(word == lower ? std::string_view(capital) : word),
                         Regex::escaped(capital)};
    if (Characters::hasAtLeast(lower, 2)) patterns.push_back(Regex::escaped(uppercased(lower)));
    return patterns;
}

void addSurname(Patterns& patterns, const Words& words) {
    const std::string initial =
        Regex::escaped(Text::withUpperCaseFirst(Characters::prefix(words.front(), 1))) + R"(\.)";
    const std::string last = anyOf(withCapital(words.back()));
    const std::string gaps = std::string(gap) + "+";
    patterns.push_back(initial + std::string(gap) + "*" + last);
    patterns.push_back(last + std::string(joint) + initial);
    // Any of the words after the first, since some people have two surnames.
    Patterns others, capitals;
    for (auto word = words.begin() + 1; word != words.end(); ++word) {
        others.push_back("(?i:" + Regex::escaped(*word) + ")");
        std::ranges::move(withCapital(*word), std::back_inserter(capitals));
    }
    const std::string other = anyOf(others), capital = anyOf(capitals);
    patterns.push_back(Text::joined(
        Words{titles, R"((?:\.|)", gaps, ")", gap, "*(?:", other, gaps, "){0,3}", capital}, ""));
}
}  // namespace

std::string inOrder(std::string_view name) {
    const std::size_t comma = name.find(',');
    if (comma == name.npos) return std::string(name);
    return Text::flattened(std::string(name.substr(comma + 1)) + " " +
                           std::string(name.substr(0, comma)));
}

std::string of(const std::vector<std::string>& names) {
    Patterns patterns;
    for (const auto& name : names) {
        const std::string asCalled = inOrder(name);
        const auto words = Characters::splitAtWhiteSpace(asCalled);
        if (words.empty()) continue;
        if (words.size() > 1) {
            addWhole(patterns, words);
            addSurname(patterns, words);
        }
        if (words.size() > 2) addWhole(patterns, {words.front(), words.back()});
        patterns.push_back(Regex::escaped(EntityKeys::namePrefix) +
                           Regex::escaped(Text::lowercased(words.front())));
        std::ranges::move(withCapital(words.front()), std::back_inserter(patterns));
    }
    // The longest name that fits is the one that is meant.
    std::ranges::stable_sort(patterns, std::greater<>(), &std::string::size);
    return std::string(noWordBefore) + anyOf(patterns) + std::string(noWordAfter);
}
}  // namespace ombrix::NamePattern

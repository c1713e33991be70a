#include "OmbrixEngine/Workspace/Privacy.h"

#include <algorithm>
#include <utility>

#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

constexpr std::string_view addressLabel = "(address)";
/// Labels from here on are no transcript's own. Recipes take "Speaker N" for somebody unnamed.
constexpr std::size_t firstLabel = 901;

constexpr std::string_view noWordBefore = R"((?<![\p{L}\p{N}]))";
constexpr std::string_view noWordAfter = R"((?![\p{L}\p{N}]))";

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

/// The words of a name with any white space between them.
std::string wordsPattern(const std::vector<std::string_view>& words) {
    std::string pattern;
    for (const auto word : words) {
        if (!pattern.empty()) pattern += R"(\s+)";
        pattern += Regex::escaped(word);
    }
    return pattern;
}

/// The whole names in any case. A single word, alone or as the first of a name, only with its
/// capital and in capitals: many first names are words, too.
std::string pattern(const std::vector<std::string>& names) {
    std::vector<std::string> alternatives;
    for (const auto& name : names) {
        const auto words = Characters::splitAtWhiteSpace(name);
        if (words.empty()) continue;
        if (words.size() > 1) alternatives.push_back("(?i:" + wordsPattern(words) + ")");
        const std::string first = Text::lowercased(words.front());
        const std::string capital = Text::withUpperCaseFirst(first);
        alternatives.push_back(Regex::escaped(EntityKeys::namePrefix) + Regex::escaped(first));
        alternatives.push_back(Regex::escaped(words.front() == first ? capital : words.front()));
        alternatives.push_back(Regex::escaped(capital));
        if (Characters::hasAtLeast(first, 2))
            alternatives.push_back(Regex::escaped(uppercased(first)));
    }
    std::ranges::stable_sort(alternatives, std::greater<>(), &std::string::size);
    std::string whole(noWordBefore);
    whole.append("(?:").append(Text::joined(alternatives, "|")).append(")").append(noWordAfter);
    return whole;
}

/// Two pieces around one "@", without white space and without what stands around an address.
const Regex& address() {
    static const Regex expression(R"re([^\s@<>()\[\]{}"',;:|]+(?:@[^\s@<>()\[\]{}"',;:|]+)+)re");
    return expression;
}

void addName(std::vector<std::string>& names, std::string_view name) {
    const std::string flat = Text::flattened(name);
    const bool isKnown = std::ranges::any_of(
        names, [&](const auto& other) { return Text::equalsIgnoringCase(other, flat); });
    if (!flat.empty() && !isKnown && !EntityKeys::isGenericLabel(flat)) names.push_back(flat);
}
}  // namespace

Privacy::Privacy(const std::vector<Hidden>& hidden, const PersonAliases& aliases) {
    for (const auto& [givenKeys, givenNames] : hidden) {
        std::vector<std::string> names;
        for (const auto& name : givenNames) addName(names, name);
        for (const auto& given : givenKeys) {
            for (const auto& key : aliases.aliases(given)) {
                keys_.insert(Text::lowercased(key));
                if (key.starts_with(EntityKeys::namePrefix))
                    addName(names, std::string_view(key).substr(EntityKeys::namePrefix.size()));
            }
            if (const auto display = aliases.display(given)) addName(names, *display);
        }
        // A key that another name of the person gives.
        for (const auto& name : names)
            if (const auto key = EntityKeys::normalizeKey(name)) keys_.insert(*key);
        if (!names.empty()) {
            const std::string number = std::to_string(firstLabel + names_.size());
            names_.push_back({Regex(pattern(names)), "Speaker " + number});
        }
        for (const auto& name : names)
            if (const auto key = EntityKeys::normalizeKey(name))
                labels_.emplace(*key, names_.back().label);
    }
}

bool Privacy::hides(std::string_view entityKey) const {
    return keys_.contains(Text::lowercased(entityKey));
}

bool Privacy::hidesName(std::string_view name) const {
    const auto key = EntityKeys::normalizeKey(name);
    return key && keys_.contains(*key);
}

std::string Privacy::cleanedText(std::string_view text) const {
    if (!labels_.empty())
        if (const auto key = EntityKeys::normalizeKey(text))
            if (const auto label = labels_.find(*key); label != labels_.end()) return label->second;
    std::string result(text);
    if (text.find('@') != text.npos) {
        result = address().replacingAll(
            result, [](const Regex::Match&) { return std::string(addressLabel); });
    }
    for (const auto& [expression, label] : names_)
        result = expression.replacingAll(result, [&](const Regex::Match&) { return label; });
    return result;
}

TranscriptDocument Privacy::cleaned(TranscriptDocument document) const {
    document.title = cleanedText(document.title);
    std::erase_if(document.participants, [this](const auto& name) {
        return hidesName(name) || cleanedText(name) != name;
    });
    for (auto& turn : document.turns) {
        turn.speaker = cleanedText(turn.speaker);
        turn.text = cleanedText(turn.text);
    }
    return document;
}

Json::Value Privacy::cleaned(Json::Value input) const {
    if (const auto* text = input.string()) return cleanedText(*text);
    if (const auto* list = input.array()) {
        Json::Array items;
        items.reserve(list->size());
        for (const auto& item : *list) items.push_back(cleaned(item));
        return items;
    }
    if (const auto* members = input.members()) {
        Json::Members result;
        for (const auto& [key, value] : *members) result.emplace(key, cleaned(value));
        return result;
    }
    return input;
}
}  // namespace ombrix

#include "OmbrixEngine/Workspace/Privacy.h"

#include <algorithm>
#include <utility>

#include "OmbrixEngine/Workspace/Addresses.h"
#include "OmbrixEngine/Workspace/NamePattern.h"
#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

/// Labels from here on are no transcript's own. Recipes take "Speaker N" for somebody unnamed.
constexpr std::size_t firstLabel = 901;
/// In bytes. What is longer is nobody's name: it is hidden where it is the whole text, and not
/// looked for inside others, which would take long.
constexpr std::size_t longestName = 256;

/// "Ana Ruiz", "Ruiz Ana" and "Ruiz, Ana".
std::vector<std::string> turns(const std::string& given) {
    const std::string name = NamePattern::inOrder(given);
    std::vector<std::string> all = {name};
    const std::size_t blank = name.rfind(' ');
    if (blank == name.npos) return all;
    const std::string last = name.substr(blank + 1), others = name.substr(0, blank);
    all.push_back(last + " " + others);
    all.push_back(last + ", " + others);
    return all;
}

void addName(std::vector<std::string>& names, std::string_view name) {
    const std::string flat = Text::flattened(name);
    const bool isKnown = std::ranges::any_of(
        names, [&](const auto& other) { return Text::equalsIgnoringCase(other, flat); });
    if (!flat.empty() && !isKnown && !EntityKeys::isGenericLabel(flat)) names.push_back(flat);
}
}  // namespace

Privacy::Privacy(const std::vector<Hidden>& hidden, const PersonAliases& aliases) {
    std::size_t nextLabel = firstLabel;
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
        // A key that another name of the person gives, or the same one turned round.
        for (const auto& name : names)
            for (const auto& turned : turns(name))
                if (const auto key = EntityKeys::normalizeKey(turned)) keys_.insert(*key);
        if (names.empty()) continue;
        const std::string label = "Speaker " + std::to_string(nextLabel++);
        for (const auto& name : names)
            if (const auto key = EntityKeys::normalizeKey(name)) labels_.emplace(*key, label);
        std::erase_if(names, [](const auto& name) { return name.size() > longestName; });
        if (!names.empty()) names_.push_back({Regex(NamePattern::of(names)), label});
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
    std::string result = Addresses::hidden(text);
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

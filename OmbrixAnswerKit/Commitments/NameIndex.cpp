#include "OmbrixAnswerKit/Commitments/NameIndex.h"

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

// Two letters are too few to know a written owner by; in speech a name of two letters is enough.
constexpr std::size_t fewestWrittenCharacters = 3;
constexpr std::size_t fewestSpokenCharacters = 2;
}  // namespace

std::string NameIndex::key(std::string_view name) {
    return std::string(Text::trimmed(Text::folded(name)));
}

void NameIndex::add(std::string_view name) {
    const Entry entry{.order = added_++, .name = name};
    byKey_.try_emplace(key(name), entry);
    const SpokenWords words(name);
    byFirstWord_.try_emplace(std::string(words.first()), entry);
}

std::optional<std::string_view> NameIndex::withKeyOf(std::string_view written) const {
    const auto found = byKey_.find(key(written));
    if (found == byKey_.end()) return std::nullopt;
    return found->second.name;
}

std::optional<std::string_view> NameIndex::withFirstWordOf(std::string_view written) const {
    const SpokenWords words(written);
    if (!Characters::hasAtLeast(words.first(), fewestWrittenCharacters)) return std::nullopt;
    const auto found = byFirstWord_.find(std::string(words.first()));
    if (found == byFirstWord_.end()) return std::nullopt;
    return found->second.name;
}

std::optional<std::string_view> NameIndex::addressedIn(const SpokenWords& words) const {
    if (byFirstWord_.empty()) return std::nullopt;
    const Entry* first = nullptr;
    SpokenWords::Walk walk(words);
    for (std::string_view word; walk.next(word);) {
        if (!Characters::hasAtLeast(word, fewestSpokenCharacters)) continue;
        const auto found = byFirstWord_.find(std::string(word));
        if (found == byFirstWord_.end()) continue;
        if (!first || found->second.order < first->order) first = &found->second;
    }
    if (!first) return std::nullopt;
    return first->name;
}
}  // namespace ombrix

#include "OmbrixMemoryKit/Ledger/MergeInputs.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::MergeInputs {

Wishes::Wishes(std::span<const Correction> corrections) {
    using Kind = Correction::Kind;
    for (const auto& [kind, id, text, on] : corrections) {
        switch (kind) {
            case Kind::notACommitment:
                byID_[id].isNoCommitment = true;
                break;
            case Kind::done:
                byID_[id].doneOn = on;
                break;
            case Kind::reword:
                byID_[id].what = text;
                break;
            case Kind::important:
                byID_[id].isPinned = true;
                break;
            case Kind::alias:
            case Kind::notSame:
            case Kind::isPrivate:
                break;  // about people, not commitments
        }
    }
}

void Wishes::add(std::string_view id, Wish& wish) const {
    const auto found = byID_.find(id);
    if (found == byID_.end()) return;
    const Wish& other = found->second;
    wish.isNoCommitment |= other.isNoCommitment;
    wish.isPinned |= other.isPinned;
    if (!wish.doneOn) wish.doneOn = other.doneOn;
    if (!wish.what) wish.what = other.what;
}

std::set<std::string> Wishes::pinnedIDs() const {
    std::set<std::string> ids;
    for (const auto& [id, wish] : byID_)
        if (wish.isPinned) ids.emplace(id);
    return ids;
}

Resolutions::Resolutions(std::span<const LandSidecar> sidecars) {
    std::size_t count = 0;
    for (const auto& sidecar : sidecars) count += sidecar.output.resolutions.size();
    byID_.max_load_factor(0.25F);  // most commitments are in none, which an empty bucket tells
    byID_.reserve(count);
    for (const auto& sidecar : sidecars)
        for (const auto& said : sidecar.output.resolutions)
            byID_[said.id].push_back({&said, &sidecar});
    const auto day = [](const Resolution& each) { return std::string_view(each.meeting->date); };
    for (auto& [id, all] : byID_) std::ranges::stable_sort(all, {}, day);
}

std::optional<Resolution> Resolutions::of(std::string_view id, const LandSidecar& meeting) const {
    const auto found = byID_.find(id);
    if (found == byID_.end()) return std::nullopt;
    std::optional<Resolution> last;
    for (const auto& each : found->second) {
        const auto& [said, other] = each;
        if (other->meetingKey == meeting.meetingKey || other->date < meeting.date) continue;
        if (!last || each.isDone() || !last->isDone()) last = each;
    }
    return last;
}

const Person& People::of(std::string_view key) {
    const auto [place, isNew] = byKey_.try_emplace(key);
    Person& person = place->second;
    if (!isNew) return person;
    person.key = aliases_.canonical(key);
    person.lowercasedKey = Text::lowercased(person.key);
    person.keys = {Text::lowercased(key)};
    for (const auto& other : aliases_.aliases(person.key)) {
        auto lowercased = Text::lowercased(other);
        if (std::ranges::find(person.keys, lowercased) == person.keys.end())
            person.keys.push_back(std::move(lowercased));
    }
    person.display = aliases_.display(person.key).value_or("");
    person.isNobody = EntityKeys::isGenericKey(person.key);
    person.isShownAsNobody = EntityKeys::isGenericLabel(person.display);
    return person;
}
}  // namespace ombrix::MergeInputs

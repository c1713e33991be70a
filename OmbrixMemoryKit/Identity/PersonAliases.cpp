#include "OmbrixMemoryKit/Identity/PersonAliases.h"

#include <algorithm>
#include <ranges>
#include <set>
#include <utility>

#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Keys = std::set<std::string, std::less<>>;

bool isEmailKey(std::string_view key) { return key.starts_with(EntityKeys::emailPrefix); }

/// An address is worth more than a name, which two people may share.
std::string canonicalKey(const PersonIdentity& existing, const PersonIdentity& incoming,
                         const Keys& keys) {
    for (const auto* identity : {&incoming, &existing})
        if (isEmailKey(identity->canonical)) return identity->canonical;
    const auto address = std::ranges::find_if(keys, isEmailKey);
    return address == keys.end() ? incoming.canonical : *address;
}

PersonIdentity merged(const PersonIdentity& existing, const PersonIdentity& incoming) {
    Keys keys;
    for (const auto* identity : {&existing, &incoming})
        for (const auto& key : identity->allKeys()) keys.insert(Text::lowercased(key));
    PersonIdentity result{
        .canonical = canonicalKey(existing, incoming, keys),
        .display = incoming.display.empty() ? existing.display : incoming.display};
    keys.erase(result.canonical);
    result.aliases.assign(keys.begin(), keys.end());
    return result;
}
}  // namespace

std::vector<std::string> PersonIdentity::allKeys() const {
    std::vector<std::string> keys = {canonical};
    keys.insert(keys.end(), aliases.begin(), aliases.end());
    return keys;
}

PersonAliases::PersonAliases(std::vector<PersonIdentity> identities) {
    for (auto& identity : identities) append(std::move(identity));
}

std::vector<PersonIdentity> PersonAliases::identities() const {
    const auto inOrder = std::views::values(identities_);
    return {inOrder.begin(), inOrder.end()};
}

const PersonIdentity* PersonAliases::find(std::string_view key) const {
    const auto found = byKey_.find(Text::lowercased(key));
    return found == byKey_.end() ? nullptr : &identities_.at(found->second);
}

std::string PersonAliases::canonical(std::string_view key) const {
    const auto* identity = find(key);
    return identity == nullptr ? std::string(key) : identity->canonical;
}

std::vector<std::string> PersonAliases::aliases(std::string_view of) const {
    const auto* identity = find(of);
    return identity == nullptr ? std::vector{std::string(of)} : identity->allKeys();
}

std::optional<std::string> PersonAliases::display(std::string_view forKey) const {
    const auto* identity = find(forKey);
    if (identity == nullptr) return std::nullopt;
    return identity->display;
}

void PersonAliases::add(PersonIdentity identity) {
    std::set<std::size_t> sharing;
    for (const auto& key : identity.allKeys()) {
        const auto found = byKey_.find(Text::lowercased(key));
        if (found != byKey_.end()) sharing.insert(found->second);
    }
    for (const std::size_t number : std::views::reverse(sharing)) {
        const auto existing = identities_.extract(number);
        identity = merged(existing.mapped(), identity);
    }
    append(std::move(identity));
}

void PersonAliases::add(std::optional<std::string_view> name, std::optional<std::string_view> email,
                        std::optional<std::string_view> display) {
    auto key = EntityKeys::normalizeKey(name, email);
    if (!key) return;
    PersonIdentity identity{.canonical = std::move(*key),
                            .display = std::string(display ? *display : name.value_or(""))};
    auto nameKey = EntityKeys::normalizeKey(name);
    if (nameKey && *nameKey != identity.canonical) identity.aliases = {std::move(*nameKey)};
    add(std::move(identity));
}

void PersonAliases::append(PersonIdentity identity) {
    const std::size_t number = identities_.empty() ? 0 : identities_.rbegin()->first + 1;
    for (const auto& key : identity.allKeys())
        byKey_.insert_or_assign(Text::lowercased(key), number);
    identities_.emplace(number, std::move(identity));
}

Json::Value encode(PersonIdentity identity) {
    return Json::object({{"canonical", std::move(identity.canonical)},
                         {"aliases", std::move(identity.aliases)},
                         {"display", std::move(identity.display)}});
}

PersonIdentity decode(Json::As<PersonIdentity>, const Json::Object& in) {
    return {.canonical = in.required<std::string>("canonical"),
            .aliases = in.required<std::vector<std::string>>("aliases"),
            .display = in.required<std::string>("display")};
}

Json::Value encode(const PersonAliases& aliases) {
    return Json::object({{"identities", aliases.identities()}});
}

PersonAliases decode(Json::As<PersonAliases>, const Json::Object& in) {
    return PersonAliases(in.required<std::vector<PersonIdentity>>("identities"));
}
}  // namespace ombrix

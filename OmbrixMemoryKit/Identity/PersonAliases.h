// Several keys of one person as one identity. The file is EnginePaths::aliasesFile:
//
//   {"identities": [{"canonical": "email:ana@example.com",
//                    "aliases": ["name:ana", "name:ana ruiz"], "display": "Ana Ruiz"}]}
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

struct PersonIdentity {
    std::string canonical{};             ///< the key that stands for the person
    std::vector<std::string> aliases{};  ///< the other keys, ascending
    std::string display{};               ///< the name to show; may be empty

    /// `canonical`, then the aliases.
    std::vector<std::string> allKeys() const;
    bool operator==(const PersonIdentity&) const = default;
};

/// Lookups ignore the case of the key; one costs a hash and a binary search. To add an identity
/// costs as much for each key it then has, however many identities there are. A key in two
/// identities of a file belongs to the later one.
class PersonAliases {
  public:
    PersonAliases() = default;
    explicit PersonAliases(std::vector<PersonIdentity> identities);

    /// In the order of the file, those added since then after them. A copy.
    std::vector<PersonIdentity> identities() const;
    /// The identity that has this key; null for an unknown key. Valid until the next `add`.
    const PersonIdentity* find(std::string_view key) const;

    /// The identity's canonical key; an unknown key as it is given.
    std::string canonical(std::string_view key) const;
    /// All keys of the identity, the canonical one first; of an unknown key only itself.
    std::vector<std::string> aliases(std::string_view of) const;
    /// The identity's display, which may be empty; nothing for an unknown key.
    std::optional<std::string> display(std::string_view forKey) const;

    /// Adds the identity. Every identity that shares a key with it, case aside, becomes one with
    /// it: an address becomes canonical before a name, the new one before older ones; the new
    /// display counts unless it is empty. The result is the last of the list.
    void add(PersonIdentity identity);
    /// Adds the person of that name and address, see `EntityKeys::normalizeKey`; does nothing when
    /// both are absent or blank. The display is the given one, else the name.
    void add(std::optional<std::string_view> name, std::optional<std::string_view> email,
             std::optional<std::string_view> display = std::nullopt);

    bool operator==(const PersonAliases& other) const { return identities() == other.identities(); }

  private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };
    void append(PersonIdentity identity);

    std::map<std::size_t, PersonIdentity> identities_;  // by number, in the order of adding
    std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> byKey_;  // lower-case keys
};

Json::Value encode(PersonIdentity identity);
PersonIdentity decode(Json::As<PersonIdentity>, const Json::Object& in);
Json::Value encode(const PersonAliases& aliases);
PersonAliases decode(Json::As<PersonAliases>, const Json::Object& in);
}  // namespace ombrix

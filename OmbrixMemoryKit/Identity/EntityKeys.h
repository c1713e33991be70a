// Keys of people and threads:
//
//   name:ana ruiz            a person, by name
//   email:ana@example.com    a person, by address, which no other person has
//   thread:autumn launch     a recurring topic; the model makes these
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ombrix::EntityKeys {

constexpr std::string_view namePrefix = "name:";
constexpr std::string_view emailPrefix = "email:";
constexpr std::string_view threadPrefix = "thread:";

/// The person's key: the address when it is not blank, else the name when it is not, its words
/// joined by single blanks; both in lower case. Nothing when both are absent or blank.
std::optional<std::string> normalizeKey(std::optional<std::string_view> name,
                                        std::optional<std::string_view> email = std::nullopt);

struct Shown {
    std::string key, display;
    bool operator==(const Shown&) const = default;
};
/// A person as a model may see them, without an address: a `display` that is one becomes empty, and
/// a key that holds one becomes the key of that display, "name:unnamed" when it is empty. Every
/// other key is returned as it is.
Shown forModel(std::string_view key, std::string_view display);

/// True for a label that names nobody: "them", "speaker", "unknown", "someone", "Speaker 12",
/// "someone in this call". Case and white space around it do not count.
bool isGenericLabel(std::string_view label);
/// True for the empty key and for "name:" with a generic label. An address or a thread never is.
bool isGenericKey(std::string_view key);
/// True for two pieces, neither of them empty, around one "@", without white space between.
bool isAddress(std::string_view text);
}  // namespace ombrix::EntityKeys

// Names of people, looked up by the way another text writes them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "OmbrixAnswerKit/Commitments/SpokenWords.h"

namespace ombrix {

/// A lookup costs the same however many names there are. If several names fit, it gives the one
/// that was added first. Keeps views of the names.
class NameIndex {
  public:
    /// What two spellings of one name have in common: its fold, trimmed of white space and
    /// newlines.
    static std::string key(std::string_view name);

    void add(std::string_view name);

    /// The name with the same key as `written`.
    std::optional<std::string_view> withKeyOf(std::string_view written) const;
    /// The name with the same first word as `written`, a word of at least 3 characters.
    std::optional<std::string_view> withFirstWordOf(std::string_view written) const;
    /// The name whose first word, of at least 2 characters, is one of `words`.
    std::optional<std::string_view> addressedIn(const SpokenWords& words) const;

  private:
    struct Entry {
        std::size_t order;
        std::string_view name;
    };
    std::unordered_map<std::string, Entry> byKey_;
    std::unordered_map<std::string, Entry> byFirstWord_;
    std::size_t added_ = 0;
};
}  // namespace ombrix

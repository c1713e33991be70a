// What the merge of the ledger looks up: the corrections and the resolutions by commitment, the
// people by key. All hold views of what they were made from, which must outlive them; a lookup
// costs one hash.
#pragma once

#include <memory_resource>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "OmbrixMemoryKit/Identity/PersonAliases.h"
#include "OmbrixMemoryKit/Land/LandSidecar.h"
#include "OmbrixMemoryKit/Region/Corrections.h"

namespace ombrix::MergeInputs {

/// What the corrections say about one commitment.
struct Wish {
    bool isNoCommitment = false;
    bool isPinned = false;
    std::optional<std::string_view> doneOn{}, what{};  ///< of several lines the last
};

class Wishes {
  public:
    explicit Wishes(std::span<const Correction> corrections);

    bool empty() const { return byID_.empty(); }
    /// Adds what is said about `id` to what is said about the same commitment under other ids. What
    /// is there already counts before it.
    void add(std::string_view id, Wish& wish) const;
    std::set<std::string> pinnedIDs() const;

  private:
    std::unordered_map<std::string_view, Wish> byID_;
};

/// What one meeting said about a commitment of another.
struct Resolution {
    const LandResolution* said = nullptr;
    const LandSidecar* meeting = nullptr;

    bool isDone() const { return said->status == LandResolution::Status::done; }
};

class Resolutions {
  public:
    explicit Resolutions(std::span<const LandSidecar> sidecars);

    /// The one that counts for a commitment of `meeting`: of those by other meetings on its day or
    /// later the last that says "done", else the last. Of one day the later sidecar's is the last.
    std::optional<Resolution> of(std::string_view id, const LandSidecar& meeting) const;

  private:
    std::pmr::monotonic_buffer_resource memory_;
    std::pmr::unordered_map<std::string_view, std::pmr::vector<Resolution>> byID_{
        &memory_};  // in order of their days
};

/// Whom a key stands for that a model wrote.
struct Person {
    std::string key{};            ///< the canonical one; an unknown key as it is written
    std::string lowercasedKey{};  ///< the same in lower case
    /// The written key, then all of the person; in lower case, none twice.
    std::vector<std::string> keys{};
    std::string display{};         ///< may be empty
    bool isNobody = false;         ///< the key names nobody
    bool isShownAsNobody = false;  ///< the display does
};

class People {
  public:
    explicit People(const PersonAliases& aliases) : aliases_(aliases) {}

    /// Stays where it is.
    const Person& of(std::string_view key);

  private:
    const PersonAliases& aliases_;
    std::unordered_map<std::string_view, Person> byKey_;
};
}  // namespace ombrix::MergeInputs

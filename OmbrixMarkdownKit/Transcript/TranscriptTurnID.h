// Turns have no stored identifier, yet other files cite them and people edit transcripts. An id is
// made of a turn's position and its text, so a cited turn is found again after edits, and a reader
// learns whether it is where it was, has moved, has changed or is gone.
//
// An id reads "t007-3fa9c1": the one-based position, padded to three digits, and six digits of the
// text's hash. The speaker is no part of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

namespace ombrix::TranscriptTurnID {

/// An id taken apart.
struct Parsed {
    std::int64_t position = 1;  ///< one-based, at least 1
    std::string hash;           ///< six hexadecimal digits, in the case they were written in
    bool operator==(const Parsed&) const = default;
};

/// Where an id leads in a list of turns.
struct Match {
    enum class Kind {
        exact,   ///< the position and the hash are the id's
        moved,   ///< the hash is found at another index
        stale,   ///< the position exists, with another text, and the hash is nowhere
        missing  ///< no id, or neither position nor hash leads anywhere
    };
    Kind kind = Kind::missing;
    std::size_t index = 0;  ///< zero-based; 0 for `missing`

    static Match exact(std::size_t index) { return {Kind::exact, index}; }
    static Match moved(std::size_t index) { return {Kind::moved, index}; }
    static Match stale(std::size_t index) { return {Kind::stale, index}; }
    static Match missing() { return {}; }
    bool operator==(const Match&) const = default;
};

/// Six lower-case hexadecimal digits: the first three bytes of the SHA-256 of
/// `TextNormalize::words(text)`. Texts that differ in case, punctuation or spacing alone share it.
std::string hash(std::string_view text);

/// The id of a turn at the one-based position `index`.
std::string make(std::size_t index, std::string_view text);

/// The ids of a document's turns, in order.
std::vector<std::string> ids(std::span<const TranscriptDocument::Turn> turns);

/// Nothing unless `id` is "t", an integer of at least 1 written in at least three characters, "-"
/// and exactly six ASCII hexadecimal digits of either case.
std::optional<Parsed> parse(std::string_view id);

/// The turn that `id` cites. Of several turns with its hash the nearest to its position counts, of
/// two at the same distance the lower index. Hashes are compared as strings, so an id in capitals
/// is found by its position at most, as `stale`. Hashes one turn when the id is exact, else all of
/// them.
Match locate(std::string_view id, std::span<const TranscriptDocument::Turn> turns);

/// The hashes of a document's turns, in order.
std::vector<std::string> hashes(std::span<const TranscriptDocument::Turn> turns);
/// `locate` for many ids in one document; each costs a lookup and a binary search.
class Index {
  public:
    explicit Index(std::span<const std::string> hashes);
    Match locate(std::string_view id) const;

  private:
    std::unordered_map<std::string, std::vector<std::size_t>> places_;  // ascending, by hash
    std::size_t turnCount_;
};
}  // namespace ombrix::TranscriptTurnID

// Counts a question's keywords in texts, all of them in one pass over the words: a keyword is one
// stem or, for a quoted phrase, several that must follow each other.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "OmbrixMarkdownKit/Words/ByteScan.h"

namespace ombrix {

class KeywordMatcher {
  public:
    /// `keywords` as `QueryTokenizer::keywords` gives them: stems joined by single blanks.
    explicit KeywordMatcher(const std::vector<std::string>& keywords);

    const std::vector<std::vector<std::string>>& keywords() const { return keywords_; }

    /// Walks the places of a text where a keyword is possible; the matcher and the text must
    /// outlive it. With very many keywords every place is possible.
    class Places {
      public:
        Places(const KeywordMatcher& matcher, std::string_view text)
            : size_(text.size()),
              isEverywhere_(matcher.isEverywhere_),
              walk_(matcher.starts_, text) {}
        /// The first place from `from` on; the size when the rest has none. Much faster than
        /// counting. Quick when `from` never goes back.
        std::size_t next(std::size_t from) {
            return isEverywhere_ ? std::min(from, size_) : walk_.next(from);
        }

      private:
        std::size_t size_;
        bool isEverywhere_;
        ByteScan::WordStarts::Walk walk_;
    };

    /// Counts over one field of a document. The field can come in pieces, whose words follow each
    /// other.
    class Counter {
      public:
        explicit Counter(const KeywordMatcher& matcher);
        /// Counts in all words of a piece.
        void add(std::string_view piece);
        /// Counts in the word at one of the piece's `Places`, and in the words around it that can
        /// only be cut with it, except for those before `from`. Returns where to look for the next
        /// place; pass that as the next `from`. Nothing when that word alone does not tell: then
        /// forget the field and add all of its pieces.
        std::optional<std::size_t> addAt(std::string_view piece, std::size_t place,
                                         std::size_t from);
        /// Forgets what was added since the last `finish`.
        void forget() { finish(); }
        /// Counts in a field of one piece. Quick: it looks at the places alone if it can.
        void addWhole(std::string_view field);
        struct Found {
            std::size_t keyword = 0;
            std::size_t times = 0;
        };
        /// The keywords found since the last call and how often each, overlapping occurrences
        /// included. In no particular order; valid until the next call.
        const std::vector<Found>& finish();

      private:
        void step(std::string_view stem);
        bool addAlone(std::string_view stem);
        void found(std::size_t keyword);

        const KeywordMatcher& matcher_;
        std::uint32_t node_ = 0;
        std::vector<std::size_t> times_;  // by keyword; zero between fields
        std::vector<std::size_t> touched_;
        std::vector<Found> found_;
        std::string lower_, stem_;
    };

  private:
    static constexpr std::uint32_t root = 0;
    static constexpr std::uint32_t nowhere = ~std::uint32_t{0};

    // An Aho-Corasick automaton over stems: its time depends on the words and on what is found, not
    // on the number of keywords or on how much they share.
    struct Node {
        std::uint32_t fallback = root;  // the longest shorter path that is a suffix of this one
        std::uint32_t shorter = root;   // the nearest keyword on the fallbacks; root for none
        std::optional<std::size_t> keyword;
    };
    /// What a stem is by itself.
    struct Stem {
        std::string text;
        std::optional<std::size_t> keyword;
        bool isInPhrase = false;
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };

    std::uint32_t stemNumber(std::string_view stem) const;
    std::uint32_t child(std::uint32_t node, std::uint32_t stem) const;
    void insert(std::size_t keyword);
    void link();

    std::vector<std::vector<std::string>> keywords_;
    std::vector<Stem> stems_;  // by number
    std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>> numbers_;
    std::array<std::vector<std::uint32_t>, 256> byFirstByte_;    // the stems: rules out most words
    std::unordered_map<std::uint64_t, std::uint32_t> children_;  // node and stem to node
    std::vector<Node> nodes_;
    bool isEverywhere_ = false;
    ByteScan::WordStarts starts_;
};
}  // namespace ombrix

// Counts a question's keywords in texts, all of them in one pass over the words: a keyword is one
// stem or, for a quoted phrase, several that must follow each other.
#pragma once

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

    /// The first place from `from` on where a keyword is possible; the size when the rest has none.
    /// Much faster than counting. With very many keywords every place is possible.
    std::size_t nextPlace(std::string_view text, std::size_t from) const;

    /// Counts over one field of a document. The field can come in pieces, whose words follow each
    /// other.
    class Counter {
      public:
        explicit Counter(const KeywordMatcher& matcher);
        void add(std::string_view piece);
        struct Found {
            std::size_t keyword = 0;
            std::size_t times = 0;
        };
        /// The keywords found since the last call and how often each, overlapping occurrences
        /// included. In no particular order; valid until the next call.
        const std::vector<Found>& finish();

      private:
        void step(std::string_view stem);

        const KeywordMatcher& matcher_;
        std::uint32_t node_ = 0;
        std::vector<std::size_t> times_;  // by keyword; zero between fields
        std::vector<std::size_t> touched_;
        std::vector<Found> found_;
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
    std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>> stems_;
    std::array<bool, 256> firstBytes_{};  // of the stems: most words are ruled out by this
    std::unordered_map<std::uint64_t, std::uint32_t> children_;  // node and stem to node
    std::vector<Node> nodes_;
    std::optional<ByteScan::WordStarts> starts_;
};
}  // namespace ombrix

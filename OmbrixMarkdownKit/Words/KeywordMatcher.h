// Counts a question's keywords in texts, all of them in one pass over the words: a keyword is one
// stem or, for a quoted phrase, several that must stand one behind the other.
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

    /// The first place at or behind `from` at which a keyword may stand; the size when the rest
    /// holds none. Much faster than counting. With very many keywords every place is one.
    std::size_t nextPlace(std::string_view text, std::size_t from) const;

    /// Counts over one field of a document, which may come in pieces: the words of the pieces stand
    /// one behind the other.
    class Counter {
      public:
        explicit Counter(const KeywordMatcher& matcher);
        void add(std::string_view piece);
        /// The keywords found since the last call, each with how often it stands there; overlapping
        /// places count each. The order is not told.
        struct Found {
            std::size_t keyword = 0;
            std::size_t times = 0;
        };
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
    // on how many keywords there are or how alike they begin.
    struct Node {
        std::uint32_t fallback = root;  // the longest other beginning that the words end in
        std::uint32_t shorter = root;   // the next keyword along the fallbacks; root for none
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
    std::array<bool, 256> firstBytes_{};  // of the stems: most words go no farther than this
    std::unordered_map<std::uint64_t, std::uint32_t> children_;  // node and stem to node
    std::vector<Node> nodes_;
    std::optional<ByteScan::WordStarts> starts_;
};
}  // namespace ombrix

#include "OmbrixMarkdownKit/Words/KeywordMatcher.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "OmbrixMarkdownKit/Words/OneOnOne.h"
#include "OmbrixMarkdownKit/Words/Stemmer.h"
#include "OmbrixMarkdownKit/Words/WordAt.h"
#include "OmbrixMarkdownKit/Words/WordScanner.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Words.h"

namespace ombrix {
namespace {

/// With more prefixes than this, so many words may begin with one that cutting every word costs as
/// much.
constexpr std::size_t mostPrefixes = 32;

/// Longer words are cut with their neighbours.
constexpr std::size_t longestAlone = 64;

/// Prefixes; every occurrence of the keyword contains a word that starts with one. A phrase needs
/// all its words, so its longest prefix is enough. "1o1" is written in forms that start otherwise.
std::vector<std::string> prefixesOf(const std::vector<std::string>& stems) {
    if (std::ranges::find(stems, OneOnOne::word) != stems.end()) return {"1", "one"};
    std::string longest;
    for (const auto& stem : stems) {
        if (auto prefix = Stemmer::commonPrefix(stem); prefix.size() > longest.size())
            longest = std::move(prefix);
    }
    return {longest};
}

std::vector<std::vector<std::string>> stemsOf(const std::vector<std::string>& keywords) {
    std::vector<std::vector<std::string>> result;
    result.reserve(keywords.size());
    for (const auto& keyword : keywords) {
        const auto stems = Text::splitDroppingEmpty(keyword, " ");
        result.emplace_back(stems.begin(), stems.end());
    }
    return result;
}

/// The prefixes of all keywords; none when there are too many.
std::vector<std::string> prefixesOf(const std::vector<std::vector<std::string>>& keywords) {
    std::vector<std::string> prefixes;
    for (const auto& stems : keywords) {
        std::ranges::move(prefixesOf(stems), std::back_inserter(prefixes));
        if (prefixes.size() > mostPrefixes) return {};
    }
    return prefixes;
}
}  // namespace

KeywordMatcher::KeywordMatcher(const std::vector<std::string>& keywords)
    : keywords_(stemsOf(keywords)), nodes_(1), starts_(prefixesOf(keywords_)) {
    for (std::size_t i = 0; i < keywords_.size(); ++i) insert(i);
    link();
    isEverywhere_ = !keywords_.empty() && prefixesOf(keywords_).empty();
}

void KeywordMatcher::insert(std::size_t keyword) {
    std::uint32_t node = root;
    for (const auto& stem : keywords_[keyword]) {
        const auto [entry, isNewStem] =
            numbers_.try_emplace(stem, static_cast<std::uint32_t>(stems_.size()));
        const std::uint32_t number = entry->second;
        if (isNewStem) {
            stems_.push_back({.text = stem});
            byFirstByte_[static_cast<unsigned char>(stem[0])].push_back(number);
        }
        if (keywords_[keyword].size() == 1)
            stems_[number].keyword = keyword;
        else
            stems_[number].isInPhrase = true;
        const auto next = static_cast<std::uint32_t>(nodes_.size());
        const auto [place, isNew] =
            children_.try_emplace(std::uint64_t{node} << 32U | number, next);
        if (isNew) nodes_.emplace_back();
        node = place->second;
    }
    if (node != root) nodes_[node].keyword = keyword;
}

void KeywordMatcher::link() {
    // Nodes are numbered keyword by keyword; a fallback needs those of all shorter paths first.
    struct Edge {
        std::uint32_t from, stem, to;
    };
    std::vector<std::vector<Edge>> edges(nodes_.size());
    for (const auto& [key, to] : children_) {
        const auto from = static_cast<std::uint32_t>(key >> 32U);
        edges[from].push_back({from, static_cast<std::uint32_t>(key), to});
    }
    std::vector<Edge> queue = edges[root];
    for (std::size_t i = 0; i < queue.size(); ++i) {
        const auto [from, stem, to] = queue[i];
        std::uint32_t fallback = nowhere;
        for (std::uint32_t node = from; node != root && fallback == nowhere;) {
            node = nodes_[node].fallback;
            fallback = child(node, stem);
        }
        if (fallback == nowhere) fallback = root;
        nodes_[to].fallback = fallback;
        nodes_[to].shorter = nodes_[fallback].keyword ? fallback : nodes_[fallback].shorter;
        std::ranges::copy(edges[to], std::back_inserter(queue));
    }
}

std::uint32_t KeywordMatcher::stemNumber(std::string_view stem) const {
    constexpr std::size_t fewerThanAHash = 8;
    const auto& numbers = byFirstByte_[static_cast<unsigned char>(stem[0])];
    if (numbers.size() > fewerThanAHash) {
        const auto found = numbers_.find(stem);
        return found == numbers_.end() ? nowhere : found->second;
    }
    for (const std::uint32_t number : numbers)
        if (stems_[number].text == stem) return number;
    return nowhere;
}

std::uint32_t KeywordMatcher::child(std::uint32_t node, std::uint32_t stem) const {
    const auto found = children_.find(std::uint64_t{node} << 32U | stem);
    return found == children_.end() ? nowhere : found->second;
}

KeywordMatcher::Counter::Counter(const KeywordMatcher& matcher)
    : matcher_(matcher), times_(matcher.keywords_.size(), 0) {}

void KeywordMatcher::Counter::add(std::string_view piece) {
    WordScanner scanner(piece);
    for (WordScanner::Token token; scanner.next(token);) step(token.stem);
}

void KeywordMatcher::Counter::addWhole(std::string_view field) {
    Places places(matcher_, field);
    std::size_t from = 0;
    for (std::size_t place = places.next(0); place < field.size(); place = places.next(from)) {
        const auto end = addAt(field, place, from);
        if (!end) {
            forget();
            return add(field);
        }
        from = *end;
    }
}

std::optional<std::size_t> KeywordMatcher::Counter::addAt(std::string_view piece, std::size_t place,
                                                          std::size_t from) {
    if (matcher_.isEverywhere_) return std::nullopt;
    if (Text::isAsciiAlphanumeric(piece[place])) {
        const auto word = WordAt::plain(piece, place);
        if (word && word->letters.size() <= longestAlone) {
            if (WordAt::isPartOfOneForm(word->letters)) return std::nullopt;
            if (word->letters.size() >= WordScanner::minCharacters) {
                lower_.assign(word->letters);
                for (char& c : lower_) c |= 0x20;  // a digit stays as it is
                if (!addAlone(Stemmer::stem(lower_, lower_.size(), stem_))) return std::nullopt;
            }
            return word->end;
        }
    }
    const ByteRange stretch = Words::stretchAround(piece, place);
    const std::string_view text = stretch.of(piece);
    if (ByteScan::OneForms(text).next(0) < text.size()) return std::nullopt;
    WordScanner scanner(text);
    for (WordScanner::Token token; scanner.next(token);)
        if (stretch.begin + token.range.begin >= from && !addAlone(token.stem)) return std::nullopt;
    return stretch.end;
}

/// Counts a word that is read without its neighbours; false when it can be one of a phrase.
bool KeywordMatcher::Counter::addAlone(std::string_view stem) {
    const std::uint32_t number = matcher_.stemNumber(stem);
    if (number == nowhere) return true;
    if (matcher_.stems_[number].isInPhrase) return false;
    if (const auto keyword = matcher_.stems_[number].keyword) found(*keyword);
    return true;
}

void KeywordMatcher::Counter::found(std::size_t keyword) {
    if (times_[keyword]++ == 0) touched_.push_back(keyword);
}

void KeywordMatcher::Counter::step(std::string_view stem) {
    const std::uint32_t number = matcher_.stemNumber(stem);
    if (number == nowhere) {
        node_ = root;
        return;
    }
    std::uint32_t next = matcher_.child(node_, number);
    while (next == nowhere && node_ != root) {
        node_ = matcher_.nodes_[node_].fallback;
        next = matcher_.child(node_, number);
    }
    node_ = next == nowhere ? root : next;
    for (std::uint32_t node = node_; node != root; node = matcher_.nodes_[node].shorter) {
        if (const auto keyword = matcher_.nodes_[node].keyword) found(*keyword);
    }
}

const std::vector<KeywordMatcher::Counter::Found>& KeywordMatcher::Counter::finish() {
    found_.clear();
    for (const std::size_t keyword : touched_)
        found_.push_back({keyword, std::exchange(times_[keyword], 0)});
    touched_.clear();
    node_ = root;
    return found_;
}
}  // namespace ombrix

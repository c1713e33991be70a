#include "OmbrixMarkdownKit/Words/KeywordMatcher.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "OmbrixMarkdownKit/Words/OneOnOne.h"
#include "OmbrixMarkdownKit/Words/Stemmer.h"
#include "OmbrixMarkdownKit/Words/WordScanner.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

/// With more prefixes than this, looking for each costs as much as cutting every word.
constexpr std::size_t mostPrefixes = 24;

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

std::optional<ByteScan::WordStarts> startsOf(
    const std::vector<std::vector<std::string>>& keywords) {
    std::vector<std::string> prefixes;
    for (const auto& stems : keywords) {
        std::ranges::move(prefixesOf(stems), std::back_inserter(prefixes));
        if (prefixes.size() > mostPrefixes) return std::nullopt;
    }
    return ByteScan::WordStarts(std::move(prefixes));
}
}  // namespace

KeywordMatcher::KeywordMatcher(const std::vector<std::string>& keywords) : nodes_(1) {
    keywords_.reserve(keywords.size());
    for (const auto& keyword : keywords) {
        const auto stems = Text::splitDroppingEmpty(keyword, " ");
        keywords_.emplace_back(stems.begin(), stems.end());
        insert(keywords_.size() - 1);
    }
    link();
    starts_ = startsOf(keywords_);
}

void KeywordMatcher::insert(std::size_t keyword) {
    std::uint32_t node = root;
    for (const auto& stem : keywords_[keyword]) {
        const auto number =
            stems_.try_emplace(stem, static_cast<std::uint32_t>(stems_.size())).first->second;
        firstBytes_[static_cast<unsigned char>(stem[0])] = true;
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
    if (!firstBytes_[static_cast<unsigned char>(stem[0])]) return nowhere;
    const auto found = stems_.find(stem);
    return found == stems_.end() ? nowhere : found->second;
}

std::uint32_t KeywordMatcher::child(std::uint32_t node, std::uint32_t stem) const {
    const auto found = children_.find(std::uint64_t{node} << 32U | stem);
    return found == children_.end() ? nowhere : found->second;
}

std::size_t KeywordMatcher::nextPlace(std::string_view text, std::size_t from) const {
    return starts_ ? starts_->next(text, from) : std::min(from, text.size());
}

KeywordMatcher::Counter::Counter(const KeywordMatcher& matcher)
    : matcher_(matcher), times_(matcher.keywords_.size(), 0) {}

void KeywordMatcher::Counter::add(std::string_view piece) {
    WordScanner scanner(piece);
    for (WordScanner::Token token; scanner.next(token);) step(token.stem);
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
        if (const auto keyword = matcher_.nodes_[node].keyword) {
            if (times_[*keyword]++ == 0) touched_.push_back(*keyword);
        }
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

#include "OmbrixAnswerKit/Commitments/SpokenWords.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "OmbrixMarkdownKit/Transcript/TextNormalize.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

/// Shorter turns are an echo only when they are equal: "yes, yes" after "yes" is spoken twice.
constexpr std::size_t fewestEchoWords = 4;

/// The distinct words, sorted. Repeats are removed before the list is twice as long as that.
std::vector<std::string_view> distinct(const SpokenWords& words) {
    std::vector<std::string_view> known;
    const auto withoutRepeats = [&] {
        std::ranges::sort(known);
        known.erase(std::unique(known.begin(), known.end()), known.end());
    };
    std::size_t limit = 4096;
    SpokenWords::Walk walk(words);
    for (std::string_view word; walk.next(word);) {
        if (known.size() == limit) {
            withoutRepeats();
            limit = std::max(limit, 2 * known.size());
        }
        known.push_back(word);
    }
    withoutRepeats();
    return known;
}

/// True when both texts have four fifths of the distinct words of either.
bool shareMostWords(const SpokenWords& a, const SpokenWords& b) {
    const bool aIsSmaller = a.joined().size() <= b.joined().size();
    const auto known = distinct(aIsSmaller ? a : b);
    // Once the larger text has added more than a quarter of new words the share cannot be reached.
    // For ordinary neighbours that is after a few words.
    std::vector<bool> isShared(known.size());
    std::set<std::string_view> added;
    SpokenWords::Walk larger(aIsSmaller ? b : a);
    for (std::string_view word; larger.next(word);) {
        const auto place = std::ranges::lower_bound(known, word);
        if (place != known.end() && *place == word)
            isShared[static_cast<std::size_t>(place - known.begin())] = true;
        else if (added.insert(word); added.size() * 4 > known.size())
            return false;
    }
    const auto shared = static_cast<std::size_t>(std::ranges::count(isShared, true));
    return shared * 5 >= (known.size() + added.size()) * 4;
}

/// True when one text contains the other, which has seven tenths of its characters.
bool holdsMostOf(const SpokenWords& a, const SpokenWords& b) {
    std::size_t shorterCount = Characters::count(a.joined());
    std::size_t longerCount = Characters::count(b.joined());
    const std::string* shorter = &a.joined();
    const std::string* longer = &b.joined();
    if (shorterCount > longerCount) {
        std::swap(shorterCount, longerCount);
        std::swap(shorter, longer);
    }
    if (longerCount * 7 > shorterCount * 10) return false;
    // Unlike std::string::find this is linear for texts that repeat themselves.
    return ::memmem(longer->data(), longer->size(), shorter->data(), shorter->size()) != nullptr;
}
}  // namespace

SpokenWords::SpokenWords(std::string_view text)
    : joined_(TextNormalize::runs(Text::folded(text))) {}

bool SpokenWords::hasAtLeast(std::size_t n) const {
    Walk walk(*this);
    std::string_view word;
    std::size_t count = 0;
    while (count < n && walk.next(word)) ++count;
    return count == n;
}

std::vector<std::string_view> SpokenWords::list() const {
    std::vector<std::string_view> words;
    Walk walk(*this);
    for (std::string_view word; walk.next(word);) words.push_back(word);
    return words;
}

std::string_view SpokenWords::first() const {
    return std::string_view(joined_).substr(0, joined_.find(' '));
}

bool SpokenWords::isEchoOf(const SpokenWords& previous) const {
    if (isEmpty() || previous.isEmpty()) return false;
    if (*this == previous) return true;
    if (!hasAtLeast(fewestEchoWords) || !previous.hasAtLeast(fewestEchoWords)) return false;
    return shareMostWords(*this, previous) || holdsMostOf(*this, previous);
}
}  // namespace ombrix

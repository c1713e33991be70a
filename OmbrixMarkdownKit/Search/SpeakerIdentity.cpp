#include "OmbrixMarkdownKit/Search/SpeakerIdentity.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

std::string foldedLabel(std::string_view label) { return Text::folded(Text::trimmed(label)); }

std::vector<std::string> aliasesOf(std::string_view userName) {
    const std::string_view name = Text::trimmed(userName);
    if (name.empty()) return {};
    std::vector<std::string> aliases{std::string(name)};
    const auto words = Characters::splitAtWhiteSpace(name);
    if (!words.empty() && words.front() != name) aliases.emplace_back(words.front());
    return aliases;
}

std::size_t sharedCount(const std::vector<std::string>& a, const std::vector<std::string>& b) {
    std::size_t shared = 0;
    for (auto left = a.begin(), right = b.begin(); left != a.end() && right != b.end();) {
        const int order = left->compare(*right);
        if (order == 0) ++shared;
        if (order <= 0) ++left;
        if (order >= 0) ++right;
    }
    return shared;
}
}  // namespace

SpeakerIdentity::SpeakerIdentity(std::vector<std::string> labels) : aliases(std::move(labels)) {}

SpeakerIdentity::SpeakerIdentity(std::string_view userName) : aliases(aliasesOf(userName)) {}

bool SpeakerIdentity::matches(std::string_view label) const {
    const std::string folded = foldedLabel(label);
    return !folded.empty() && std::ranges::any_of(aliases, [&](const std::string& alias) {
        return foldedLabel(alias) == folded;
    });
}

namespace Participation {

WordSet::WordSet(std::string_view text) : stems_(QueryTokenizer::tokens(text)) {
    std::ranges::sort(stems_);
    const auto repeats = std::ranges::unique(stems_);
    stems_.erase(repeats.begin(), repeats.end());
}

bool WordSet::echoes(const WordSet& other) const {
    if (stems_.empty() || other.stems_.empty()) return false;
    const std::size_t larger = std::max(stems_.size(), other.stems_.size());
    const std::size_t smaller = std::min(stems_.size(), other.stems_.size());
    if (10 * smaller < 9 * larger) return false;  // they cannot share enough
    return 10 * sharedCount(stems_, other.stems_) >= 9 * larger;
}

TurnCounter::TurnCounter(const SpeakerIdentity& identity) {
    for (const auto& alias : identity.aliases) {
        if (std::string folded = foldedLabel(alias); !folded.empty())
            foldedAliases_.push_back(std::move(folded));
    }
}

bool TurnCounter::isUser(std::string_view speaker) {
    // The two labels are empty until one was seen, so an empty label must not be compared with
    // them; it is nobody.
    if (speaker.empty() || foldedAliases_.empty() || speaker == otherLabel_) return false;
    if (speaker == userLabel_) return true;
    const bool user =
        std::ranges::find(foldedAliases_, foldedLabel(speaker)) != foldedAliases_.end();
    (user ? userLabel_ : otherLabel_) = speaker;
    return user;
}

bool TurnCounter::isEchoOfPrevious(std::string_view text) {
    if (!previous_) return false;
    if (!previousWords_) previousWords_.emplace(*previous_);
    return WordSet(text).echoes(*previousWords_);
}

void TurnCounter::add(std::string_view speaker, std::string_view text) {
    if (!isUser(speaker)) {
        previous_ = text;
        previousWords_.reset();
    } else if (isSubstantive(text) && !isEchoOfPrevious(text)) {
        ++count_;
    }
}

bool isSubstantive(std::string_view text) {
    constexpr std::size_t fewWords = 3;
    // Most texts reach their fourth word within a few ASCII bytes; only the others are split.
    std::size_t words = 0;
    bool inWord = false;
    for (const char c : text) {
        if (!Text::isAscii(c)) return Characters::splitAtWhiteSpace(text).size() > fewWords;
        const bool blank = Text::isWhiteSpace(static_cast<unsigned char>(c));
        if (!blank && !inWord && ++words > fewWords) return true;
        inWord = !blank;
    }
    return false;
}

bool isEcho(std::string_view text, std::optional<std::string_view> previous) {
    return previous && WordSet(text).echoes(WordSet(*previous));
}

std::int64_t substantiveTurnCount(const TranscriptDocument& document,
                                  const SpeakerIdentity& identity) {
    TurnCounter counter(identity);
    for (const auto& turn : document.turns) counter.add(turn.speaker, turn.text);
    return counter.count();
}

bool spoke(const TranscriptDocument& document, const SpeakerIdentity& identity,
           std::int64_t minTurns) {
    TurnCounter counter(identity);
    return std::ranges::any_of(document.turns, [&](const TranscriptDocument::Turn& turn) {
        counter.add(turn.speaker, turn.text);
        return counter.hasSpoken(minTurns);
    });
}
}  // namespace Participation
}  // namespace ombrix

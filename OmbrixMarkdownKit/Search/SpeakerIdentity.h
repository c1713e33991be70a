// Who the user is among the speakers of a transcript, and whether they took part. A name in the
// list of participants is not enough. Of the user's turns, those that echo the other side (the
// microphone also hears the loudspeaker) and those as short as a "yes" do not count.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

namespace ombrix {

/// The labels under which one person speaks.
struct SpeakerIdentity {
    std::vector<std::string> aliases;

    /// The given labels and no others; none means nobody.
    explicit SpeakerIdentity(std::vector<std::string> labels);
    /// The name without white space around it, and its first word when that differs: "Tomas Reyes"
    /// is "Tomas Reyes" and "Tomas". An empty name is nobody.
    explicit SpeakerIdentity(std::string_view userName);

    /// True when the label is one of the aliases, ignoring case, diacritics and the white space
    /// around both. An empty label is nobody's.
    bool matches(std::string_view label) const;

    bool operator==(const SpeakerIdentity&) const = default;
};

namespace Participation {

/// The set of words of a text, for comparing texts.
class WordSet {
  public:
    explicit WordSet(std::string_view text);

    /// True when the two share at least nine tenths of the larger one, as equal sets do. False when
    /// one is empty.
    bool echoes(const WordSet& other) const;

  private:
    std::vector<std::string> stems_;  // ascending, each once
};

/// Counts the substantive turns of one person, turn after turn. Keeps a view of the other side's
/// last text, which must be valid until the next turn of another speaker. Linear in the texts
/// (times the logarithm of a turn's words), however speakers alternate.
class TurnCounter {
  public:
    explicit TurnCounter(const SpeakerIdentity& identity);

    /// The next turn, in the order of the transcript.
    void add(std::string_view speaker, std::string_view text);
    /// The user's turns so far that are substantive and no echo of what the other side said last.
    std::int64_t count() const { return count_; }
    /// True once the count is enough for `spoke`; later turns cannot change that.
    bool hasSpoken(std::int64_t minTurns) const { return count_ >= (minTurns < 1 ? 1 : minTurns); }

  private:
    bool isUser(std::string_view speaker);
    bool isEchoOfPrevious(std::string_view text);

    std::vector<std::string> foldedAliases_;
    std::string userLabel_, otherLabel_;  // the last ones seen, so that equal labels fold once
    std::optional<std::string_view> previous_;
    std::optional<WordSet> previousWords_;  // of `previous_`, made when first needed
    std::int64_t count_ = 0;
};

/// True when the text has more than three words, cut at white space.
bool isSubstantive(std::string_view text);

/// True when `text` repeats `previous`, what the other side said last: their stems are the same, or
/// share at least nine tenths of the larger set. False without `previous` and when either has no
/// word.
bool isEcho(std::string_view text, std::optional<std::string_view> previous);

/// How many turns of the person are substantive and no echo of the last turn of another speaker
/// before them.
std::int64_t substantiveTurnCount(const TranscriptDocument& document,
                                  const SpeakerIdentity& identity);

/// True when that count is at least `minTurns`, or at least 1 when `minTurns` is below 1. Stops
/// reading as soon as it is reached.
bool spoke(const TranscriptDocument& document, const SpeakerIdentity& identity,
           std::int64_t minTurns);
}  // namespace Participation
}  // namespace ombrix

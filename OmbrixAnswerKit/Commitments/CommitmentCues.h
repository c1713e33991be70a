// The phrases by which a promise, a request, a reply to one and a deadline are known in spoken
// English. All tests ignore case and take curly apostrophes for straight ones.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Regex.h"

namespace ombrix::CommitmentExtractor {

/// An expression, ignoring case, that begins with \b and a literal out of a known few. A scan for
/// those finds out quickly that a text, as nearly all of them, holds no match. The scan never
/// changes what is found; it spares the expression the text before the first place worth a look.
class Cue {
  public:
    /// Every match begins with one of `openings`: lower-case ASCII, the first character a letter or
    /// a digit. An opening that is a digit stands for all digits, those of other scripts too.
    Cue(std::string_view pattern, std::vector<std::string_view> openings);

    /// The first match in a text with straight apostrophes. Linear.
    std::optional<ByteRange> firstMatch(std::string_view text) const;
    const Regex& regex() const { return regex_; }

  private:
    std::optional<std::size_t> firstOpening(std::string_view text) const;
    bool opensWithDigit() const;

    Regex regex_;
    std::vector<std::string_view> openings_;
    std::array<bool, 128> first_{};  // the openings' first characters, in both cases
};

/// The three kinds of deadline, in the order in which they are tried.
const std::array<Cue, 3>& deadlinePatterns();
const Cue& firstPersonCue();
const Cue& listenerCue();
const Cue& requestCue();

/// The first phrase that names a deadline, as written: "by Friday", "end of the month". The three
/// kinds of phrase are tried one after the other over the whole text.
std::optional<std::string> deadline(std::string_view text);

/// "I'll send it", "let me check"; not "I can't", "I can see that" or "I'll never".
bool hasFirstPersonCue(std::string_view text);
/// "I'll get you the deck", "back to you".
bool isAddressedToListener(std::string_view text);
/// "can you ...", "please send ..."; not "please note".
bool hasRequestCue(std::string_view text);
/// "Sure", "Will do", or a short promise back that points at what was asked ("I'll do that").
bool isAcknowledgement(std::string_view text);

/// A text with straight apostrophes: a copy only when it may have curly ones. The view is valid as
/// long as this and the given text are.
class StraightText {
  public:
    explicit StraightText(std::string_view text);
    StraightText(const StraightText&) = delete;
    StraightText& operator=(const StraightText&) = delete;
    std::string_view view() const { return view_; }

  private:
    std::string copy_;
    std::string_view view_;
};
}  // namespace ombrix::CommitmentExtractor

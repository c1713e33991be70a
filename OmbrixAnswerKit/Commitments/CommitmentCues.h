// The phrases that mark a promise, a request, a reply to one and a deadline in spoken English. All
// tests ignore case and read curly apostrophes as straight ones.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ombrix::CommitmentCues {

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

/// A text with straight apostrophes; makes a copy only when it may have curly ones. The view is
/// valid as long as this object and the given text are.
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
}  // namespace ombrix::CommitmentCues

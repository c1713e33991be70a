// The name of a commitment: a function of the meeting, the words and the person, so it is the same
// after every landing that yields the same words. It does not depend on the day it is due, the
// quote or the certainty. What the user writes about a commitment names it by this id.
#pragma once

#include <string>
#include <string_view>

namespace ombrix::CommitmentID {

/// "c-" and 8 lower-case hexadecimal digits. The words count as `normalize` gives them, the person
/// in lower case, the meeting key as it is.
std::string make(std::string_view meetingKey, std::string_view what, std::string_view whoKey);
/// The same for words as `normalize` gives them and a key in lower case, where many ids are made.
std::string makeNormalized(std::string_view meetingKey, std::string_view words,
                           std::string_view lowercasedKey);

/// The words in lower case without punctuation, single blanks between them: "Send the Q3 deck!" and
/// "send  the q3 deck" are the same. Letters, marks and numbers stay, scalar by scalar.
std::string normalize(std::string_view what);

/// True for "c-" and 8 hexadecimal digits, which may be upper-case ones that `make` never writes.
bool isValid(std::string_view text);
}  // namespace ombrix::CommitmentID

// The form of a text that hashes are made of, so that a change of case, punctuation or spacing
// alone does not change them.
#pragma once

#include <string>
#include <string_view>

namespace ombrix::TextNormalize {

/// The text in lower case with its runs of letters, marks and digits joined by single blanks:
/// "Hello,  World!" is "hello world", "don't" is "don t". Empty when there are none. Linear. Files
/// on disk hold hashes of this form: it never changes.
std::string words(std::string_view text);

/// The runs of letters, marks and digits of the text, scalar by scalar, in the case they are
/// written in, joined by single blanks.
std::string runs(std::string_view text);
}  // namespace ombrix::TextNormalize

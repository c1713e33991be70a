// One word of a text, cut where it stands: the same that `WordScanner` gives, without the words
// before it. docs/search.md says why nothing farther away can change it.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace ombrix::WordAt {

struct PlainWord {
    std::string_view letters;  ///< of the text: ASCII letters and digits, without a possessive
    std::size_t end = 0;       ///< of the word, with its possessive
};

/// The word that starts at `at`, which is an ASCII letter or digit, when it is plain: nothing on
/// either side joins it but a possessive. Its normal form is `letters` in lower case. Nothing for
/// every other word. Reads no more than the word and some bytes beside it.
std::optional<PlainWord> plain(std::string_view text, std::size_t at);

/// True for what the forms of "one on one" are made of: a word that may be one with its neighbours.
bool isPartOfOneForm(std::string_view letters);
}  // namespace ombrix::WordAt

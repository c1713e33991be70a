// Words as the key compares them: in lower case, cut at everything that is neither letter nor
// digit. Simpler than the words of a search: "can't" is two words here, and nothing is left out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ombrix::KeyWords {

/// The words of `text`, in order: "J. Smith-Ek (2)" gives "j", "smith", "ek" and "2". A character
/// counts by its first scalar, so an accent belongs to its letter. Linear.
std::vector<std::string> of(std::string_view text);

/// The words that stand in `lowered`, a text in lower case, as views of it. A `joiner`, an ASCII
/// character, counts as a letter, as "-" does in the name of a host.
std::vector<std::string_view> inLowered(std::string_view lowered, char joiner = 'a');

/// Each word once, where it stands first. Linear.
std::vector<std::string> distinct(std::vector<std::string> words);
}  // namespace ombrix::KeyWords

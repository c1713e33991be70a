// The suffix stripper behind `QueryTokenizer::stem`.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ombrix::Stemmer {

/// The stem of a normal form of so many `characters`: a part of `normalForm`, a constant, or, when
/// letters had to change, the bytes of `storage`.
std::string_view stem(std::string_view normalForm, std::size_t characters, std::string& storage);

/// Letters that every normal form of the given stem begins with; never empty for a stem that is
/// not. The search for a stem may pass over all words that begin otherwise.
std::string commonBeginning(std::string_view stem);
}  // namespace ombrix::Stemmer

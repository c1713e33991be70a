// What is left of a word when it is compared: case, diacritics, punctuation and possessives go.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ombrix::NormalForm {

/// "Café" is "cafe", "Bob's" is "bob", "don't" is "dont", "q3," is "q3". Empty when `word` has no
/// letter and no number. Linear.
std::string of(std::string_view word);

/// Appends `of(word)`; returns its number of characters. Quick for words of letters, of any script.
std::size_t append(std::string& result, std::string_view word);
}  // namespace ombrix::NormalForm

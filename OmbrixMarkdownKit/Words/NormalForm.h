// What is left of a word when it is compared: case, diacritics, punctuation and possessives go.
#pragma once

#include <string>
#include <string_view>

namespace ombrix::NormalForm {

/// "Café" is "cafe", "Bob's" is "bob", "don't" is "dont", "q3," is "q3". Empty when `word` has no
/// letter and no number. Linear.
std::string of(std::string_view word);
}  // namespace ombrix::NormalForm

// How a person is called in talk and in text, as one regular expression. It is for hiding, so it
// finds what others may be called by, too, rather than too little.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ombrix::NamePattern {

/// Finds these names of one person, none of them in the middle of a word. Of "Ana Ruiz":
///
///   Ana Ruiz, ruiz  ana, Ruiz, Ana, **Ana** Ruiz, ana-ruiz   the whole name: its words in any
///                                  case, from any of them on, with anything of that kind between
///   Ana, ANA, name:ana             the first name with its capital, or as a key
///   A. Ruiz, Ruiz, A.              its initial with the surname
///   Mr. Ruiz, Frau RUIZ            the surname with its capital after a title: Mr., Dr., Frau,
///   pani ...
///
/// Of 田中 花子 it finds 田中花子 and 田中さん. Of three words and more the first and the last are
/// a whole name, too. A bare surname is not found, since relatives have it; nor is a single word in
/// lower case, since many are words.
std::string of(const std::vector<std::string>& names);

/// "Ana Ruiz" of "Ruiz, Ana"; a name without a comma as it is.
std::string inOrder(std::string_view name);
}  // namespace ombrix::NamePattern

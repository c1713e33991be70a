// Constant sets of words, checked and sorted by the compiler. Short ones are literals, long ones
// are files of the library's texts with white space between the words:
//
//   constexpr auto webmail = wordSet({"gmail", "yahoo"});
//   constexpr auto commonWords = wordSetOf<400>(Embedded::keyCommonWordsTxt);
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace ombrix {

template <std::size_t count>
struct WordSet {
    std::array<std::string_view, count> words;  ///< in ascending order

    constexpr bool contains(std::string_view word) const {
        return std::ranges::binary_search(words, word);
    }
};

/// Does not compile when a word stands there twice or is not in lower case.
template <std::size_t count>
consteval WordSet<count> wordSet(std::array<std::string_view, count> words) {
    std::ranges::sort(words);
    if (std::ranges::adjacent_find(words) != words.end()) throw "a word twice";
    for (const auto word : words) {
        if (word.empty()) throw "an empty word";
        for (const char c : word)
            if (c >= 'A' && c <= 'Z') throw "a capital letter";
    }
    return {words};
}

template <std::size_t count>
consteval WordSet<count> wordSet(const std::string_view (&words)[count]) {
    return wordSet(std::to_array(words));
}

/// The words of a text, `count` of them; does not compile when there are more or fewer.
template <std::size_t count>
consteval WordSet<count> wordSetOf(std::string_view text) {
    constexpr std::string_view gaps = " \n";
    std::array<std::string_view, count> words;
    std::size_t found = 0;
    for (std::size_t at = text.find_first_not_of(gaps); at != text.npos;
         at = text.find_first_not_of(gaps, at)) {
        const std::size_t end = std::min(text.find_first_of(gaps, at), text.size());
        if (found == count) throw "more words than the table has";
        words[found++] = text.substr(at, end - at);
        at = end;
    }
    if (found != count) throw "fewer words than the table has";
    return wordSet(words);
}
}  // namespace ombrix

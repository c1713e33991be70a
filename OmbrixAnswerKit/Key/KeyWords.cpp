#include "OmbrixAnswerKit/Key/KeyWords.h"

#include <unordered_set>

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::KeyWords {

std::vector<std::string_view> inLowered(std::string_view lowered, char joiner) {
    std::vector<std::string_view> words;
    words.reserve(8);  // as many as most names and titles have
    Characters::Cursor cursor(lowered);
    std::size_t begin = 0;
    const auto finish = [&](std::size_t end) {
        if (end > begin) words.push_back(lowered.substr(begin, end - begin));
    };
    const auto isOfWord = [&](std::size_t at) {
        const char c = lowered[at];
        if (Text::isAscii(c)) return Text::isAsciiAlphanumeric(c) || c == joiner;
        return Text::isLetterOrNumber(Utf8::decode(lowered, at).scalar);
    };
    for (std::size_t at = 0; at < lowered.size();) {
        const std::size_t next = cursor.after(at);
        if (!isOfWord(at)) {
            finish(at);
            begin = next;
        }
        at = next;
    }
    finish(lowered.size());
    return words;
}

std::vector<std::string> of(std::string_view text) {
    const std::string lowered = Text::lowercased(text);
    const auto words = inLowered(lowered);
    return {words.begin(), words.end()};
}

std::vector<std::string> distinct(std::vector<std::string> words) {
    std::unordered_set<std::string> seen;
    std::erase_if(words, [&](const std::string& word) { return !seen.insert(word).second; });
    return words;
}
}  // namespace ombrix::KeyWords

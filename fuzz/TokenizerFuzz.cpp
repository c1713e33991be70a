// Words in any bytes. The first line of the input is a question, the rest a text. The fast ways of
// splitting, counting and finding words give what the plain ways give.
#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Law.h"
#include "OmbrixMarkdownKit/Words/KeywordMatcher.h"
#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Words.h"

using namespace ombrix;
using Fuzz::law;

namespace {

std::vector<QueryTokenizer::Word> checkedWords(std::string_view text) {
    const auto words = QueryTokenizer::words(text);
    const auto tokens = QueryTokenizer::tokens(text);
    law(words.size() == tokens.size(), "a token for each word");
    std::size_t place = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const auto& [raw, stem, range] = words[i];
        law(place <= range.begin && range.begin < range.end && range.end <= text.size(),
            "words follow each other inside the text");
        place = range.end;
        law(stem == tokens[i] && stem == QueryTokenizer::stem(raw), "a token is its word's stem");
        law(raw == QueryTokenizer::normalize(raw), "normalizing twice changes nothing");
    }
    return words;
}

void checkBoundaries(std::string_view text) {
    std::vector<ByteRange> plain;
    if (!text.empty()) Words::appendIcuWords(text, {0, text.size()}, plain);
    law(Words::ranges(text) == plain, "words are split where ICU splits the whole text");
}

void checkCounts(const std::vector<std::string>& keywords, std::string_view text) {
    const std::vector<std::string> tokens = QueryTokenizer::tokens(text);
    const KeywordMatcher matcher(keywords);
    KeywordMatcher::Counter count(matcher);
    count.add(text);
    std::vector<std::size_t> times(keywords.size(), 0);
    for (const auto& found : count.finish()) times.at(found.keyword) = found.times;
    for (std::size_t i = 0; i < keywords.size(); ++i) {
        const auto& stems = matcher.keywords()[i];
        law(times[i] == QueryTokenizer::count(stems, tokens), "counted together as counted alone");
        const auto range = QueryTokenizer::firstRange(stems, text);
        law(range.has_value() == (times[i] > 0), "what is counted is found");
        law(!range || (range->begin < range->end && range->end <= text.size()), "inside the text");
    }
    count.addWhole(text);
    for (const auto& found : count.finish())
        law(std::exchange(times.at(found.keyword), 0) == found.times,
            "counted at places as in all");
    law(std::ranges::count(times, 0U) == std::ssize(times), "no keyword is skipped");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [question, text] = Fuzz::firstLineAndRest(Fuzz::text(data, size));
    checkBoundaries(text);
    const auto words = checkedWords(text);
    const auto keywords = QueryTokenizer::keywords(question);
    law(std::set(keywords.begin(), keywords.end()).size() == keywords.size(), "no keyword twice");
    checkCounts(keywords, text);
    if (!words.empty()) {
        checkCounts({words.back().stem}, text);
        checkCounts({words.front().stem + " " + words[words.size() / 2].stem, words.front().stem},
                    text);
    }
    law(Text::folded(Text::folded(text)) == Text::folded(text), "folding twice changes nothing");
    return 0;
}

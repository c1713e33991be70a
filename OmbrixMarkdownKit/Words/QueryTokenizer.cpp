#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "OmbrixMarkdownKit/Words/NormalForm.h"
#include "OmbrixMarkdownKit/Words/WordScanner.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"
#include "OmbrixPlatform/WordSet.h"

namespace ombrix::QueryTokenizer {
namespace {

constexpr auto temporalWords = wordSet({
    "today",    "tomorrow", "yesterday", "tonight",   "week", "weeks", "month",   "months",
    "year",     "years",    "day",       "days",      "next", "last",  "past",    "coming",
    "upcoming", "ago",      "since",     "until",     "till", "by",    "end",     "this",
    "recent",   "recently", "now",       "currently", "soon", "later", "earlier",
});

constexpr auto numberWords = wordSet({
    "one",       "two",      "three",    "four",   "five",     "six",      "seven",   "eight",
    "nine",      "ten",      "eleven",   "twelve", "thirteen", "fourteen", "fifteen", "sixteen",
    "seventeen", "eighteen", "nineteen", "twenty", "couple",   "few",      "several",
});

// Question words and the system's own command words ("recap", "open", "land") are among them.
// clang-format off
constexpr auto stopWords = wordSet({
    // articles, prepositions, conjunctions
    "a", "an", "the", "and", "or", "but", "of", "to", "in", "on", "at", "for", "with", "about", "from",
    "as", "into", "over", "up", "out", "off", "than", "then", "so", "if", "no", "not", "nor", "yes",
    "across", "between", "among", "within", "throughout", "regarding", "including", "without",
    // auxiliaries
    "is", "are", "was", "were", "be", "been", "being", "am", "do", "did", "does", "done", "doing",
    "have", "has", "had", "having", "can", "could", "would", "should", "will", "shall", "may",
    "might", "must", "need", "needs", "needed",
    // pronouns and pointers
    "i", "me", "my", "mine", "we", "us", "our", "ours", "you", "your", "yours", "he", "him", "his",
    "she", "her", "hers", "they", "them", "their", "theirs", "it", "its", "that", "those", "these",
    "there", "here",
    // question words
    "what", "which", "who", "whom", "whose", "how", "when", "where", "why",
    // quantities
    "all", "any", "some", "each", "every", "much", "many", "more", "most", "just", "also", "only",
    "very", "too", "own", "other", "such",
    "anything", "everything", "something", "nothing",
    // verbs that carry no subject
    "recap", "make", "made", "get", "got", "go", "going", "went", "say", "said", "tell", "told",
    "give", "given", "want", "still", "open", "land", "landed", "let",
    // fillers
    "ok", "okay", "hi", "hey", "oh", "um", "uh", "ah", "yeah", "yep", "nope", "well",
    // contractions without their apostrophe
    "dont", "cant", "wont", "isnt", "arent", "wasnt", "werent", "havent", "hasnt", "hadnt", "didnt",
    "doesnt", "couldnt", "wouldnt", "shouldnt",
    "im", "ive", "id", "ill", "youre", "youve", "youll", "youd", "hes", "shes", "theyre", "theyve",
    "theyll", "weve", "wed", "lets", "thats", "theres", "whats", "whos", "hows", "wheres", "whens",
});
// clang-format on

static_assert(temporalWords.words.size() == 31);
static_assert(numberWords.words.size() == 23);
static_assert(stopWords.words.size() == 194);

bool carriesNothing(std::string_view word) {
    return stopWords.contains(word) || temporalWords.contains(word) || numberWords.contains(word);
}

bool isContent(std::string_view raw, std::string_view stem) {
    return !carriesNothing(raw) && !carriesNothing(stem);
}

/// About how many words a text has: English ones take five bytes and a half.
std::size_t likelyCount(std::string_view text) { return text.size() / 5; }

bool holdsWhiteSpace(std::string_view text) {
    Characters::Cursor cursor(text);
    for (std::size_t at = 0; at < text.size(); at = cursor.after(at))
        if (Text::isWhiteSpace(Utf8::decode(text, at).scalar)) return true;
    return false;
}

/// For each number of matched stems, less one: how many are still matched when the next word is
/// another. That is the longest proper prefix of the stems which is also a suffix of what matched.
std::vector<std::size_t> fallbacks(std::span<const std::string> stems) {
    std::vector<std::size_t> fallback(stems.size(), 0);
    for (std::size_t i = 1, matched = 0; i < stems.size(); ++i) {
        while (matched > 0 && stems[i] != stems[matched]) matched = fallback[matched - 1];
        if (stems[i] == stems[matched]) ++matched;
        fallback[i] = matched;
    }
    return fallback;
}

/// Keeps each string once, in the order of first appearance.
class Collector {
  public:
    void add(std::string text) {
        if (seen_.insert(text).second) result_.push_back(std::move(text));
    }
    std::vector<std::string> take() { return std::move(result_); }

  private:
    std::unordered_set<std::string> seen_;
    std::vector<std::string> result_;
};
}  // namespace

std::string normalize(std::string_view word) { return NormalForm::of(word); }

std::string stem(std::string_view normalForm) {
    std::string storage;
    return std::string(Stemmer::stem(normalForm, Characters::count(normalForm), storage));
}

std::vector<Word> words(std::string_view text) {
    std::vector<Word> result;
    result.reserve(likelyCount(text));
    WordScanner scanner(text);
    for (WordScanner::Token token; scanner.next(token);)
        result.push_back({std::string(token.raw), std::string(token.stem), token.range});
    return result;
}

std::vector<std::string> tokens(std::string_view text) {
    std::vector<std::string> stems;
    stems.reserve(likelyCount(text));
    WordScanner scanner(text);
    for (WordScanner::Token token; scanner.next(token);) stems.emplace_back(token.stem);
    return stems;
}

std::vector<std::string> keywords(std::string_view query) {
    Collector keywords;
    for (const std::string& term : terms(query)) {
        const auto found = words(term);
        if (found.size() >= 2 && holdsWhiteSpace(term)) {
            std::vector<std::string> stems;
            for (const Word& word : found) stems.push_back(word.stem);
            keywords.add(Text::joined(stems, " "));
            continue;
        }
        for (const Word& word : found)
            if (isContent(word) && !word.stem.empty()) keywords.add(word.stem);
    }
    return keywords.take();
}

bool isContent(const Word& word) { return isContent(word.raw, word.stem); }

std::optional<ByteRange> firstRange(std::span<const std::string> stems, std::string_view text) {
    if (stems.empty()) return std::nullopt;
    const auto fallback = fallbacks(stems);
    std::vector<std::size_t> starts(stems.size());  // of the last words read, in a ring
    std::size_t matched = 0;
    std::size_t count = 0;
    WordScanner scanner(text);
    for (WordScanner::Token token; scanner.next(token);) {
        starts[count++ % starts.size()] = token.range.begin;
        while (matched > 0 && token.stem != stems[matched]) matched = fallback[matched - 1];
        if (token.stem == stems[matched]) ++matched;
        if (matched == stems.size())
            return ByteRange{starts[count % starts.size()], token.range.end};
    }
    return std::nullopt;
}

std::size_t count(std::span<const std::string> phrase, std::span<const std::string> tokens) {
    if (phrase.empty() || phrase.size() > tokens.size()) return 0;
    const auto fallback = fallbacks(phrase);
    std::size_t matched = 0;
    std::size_t places = 0;
    for (const std::string& token : tokens) {
        if (matched == phrase.size()) matched = fallback[matched - 1];
        while (matched > 0 && token != phrase[matched]) matched = fallback[matched - 1];
        if (token == phrase[matched]) ++matched;
        if (matched == phrase.size()) ++places;
    }
    return places;
}

std::vector<std::string> terms(std::string_view query) {
    std::vector<std::string> terms;
    std::string buffer;
    bool inQuote = false;
    const auto emit = [&] {
        if (!buffer.empty()) terms.push_back(std::exchange(buffer, {}));
    };
    std::string straight(query);
    for (const std::string_view quote : {"\u201C", "\u201D", "\u201E"})
        if (Text::contains(straight, quote)) straight = Text::replacingAll(straight, quote, "\"");
    Characters::Cursor cursor(straight);
    for (std::size_t at = 0; at < straight.size();) {
        const std::size_t next = cursor.after(at);
        const auto character = std::string_view(straight).substr(at, next - at);
        if (character == "\"") {
            if (inQuote) emit();
            inQuote = !inQuote;
        } else if (!inQuote && Text::isWhiteSpace(Utf8::decode(straight, at).scalar)) {
            emit();
        } else {
            buffer += character;
        }
        at = next;
    }
    emit();
    return terms;
}
}  // namespace ombrix::QueryTokenizer

// The names of `KeyMatcher`: who a participant is, and which companies and words say nothing.
#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "OmbrixAnswerKit/Key/KeyMatcher.h"
#include "OmbrixAnswerKit/Key/KeyWords.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"
#include "OmbrixPlatform/WordSet.h"
#include "embedded/OmbrixAnswerKit/key/commonWords.txt.h"

namespace ombrix::KeyMatcher {
namespace {

/// "co.uk": the company stands before both.
constexpr auto secondLevel = wordSet({"co", "com", "org", "net", "ac", "gov", "edu"});
constexpr auto webmail = wordSet({"gmail",  "googlemail", "outlook", "hotmail", "live",     "msn",
                                  "icloud", "me",         "mac",     "yahoo",   "ymail",    "aol",
                                  "proton", "protonmail", "pm",      "gmx",     "fastmail", "hey",
                                  "zoho",   "yandex",     "mail",    "comcast"});
constexpr auto genericLabels = wordSet({"me", "you", "them", "unknown", "guest", "host"});
constexpr auto groupWords = wordSet(
    {"team",       "teams",      "calendar",  "room",        "rooms",   "interview", "interviews",
     "hiring",     "recruiting", "staff",     "everyone",    "all",     "group",     "committee",
     "department", "dept",       "software",  "engineering", "design",  "product",   "ops",
     "operations", "sales",      "marketing", "support",     "finance", "legal",     "office",
     "conference", "board",      "hq"});

// Two runs: the ordinary words of work and mail, which would pick a meeting by accident, and words
// of workplaces and calendars.
constexpr auto commonWords = wordSetOf<400>(Embedded::OmbrixAnswerKit::keyCommonWordsTxt);
static_assert(std::ranges::all_of(commonWords.words,
                                  [](std::string_view word) { return word.size() >= 4; }));

constexpr std::string_view titleSeparators[] = {"/", "<>",  "&",     "+",     "|",
                                                ",", " x ", " and ", " with "};

bool holdsDigit(std::string_view word) {
    if (Utf8::isAscii(word)) return std::ranges::any_of(word, Text::isAsciiDigit);
    Characters::Cursor cursor(word);
    for (std::size_t at = 0; at < word.size(); at = cursor.after(at))
        if (Text::isDigit(Utf8::decode(word, at).scalar)) return true;
    return false;
}

std::string lettersOf(std::string_view text) {
    std::string letters;
    Characters::Cursor cursor(text);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t next = cursor.after(at);
        if (Text::isLetter(Utf8::decode(text, at).scalar)) letters += text.substr(at, next - at);
        at = next;
    }
    return letters;
}

/// True for a word that no name has.
bool isNoName(std::string_view token) {
    return !Characters::hasAtLeast(token, 2) || holdsDigit(token) || groupWords.contains(token);
}

bool isTheUser(const std::vector<std::string_view>& tokens, const Me& me) {
    if (me.tokens.empty()) return false;
    const auto isMine = [&](std::string_view token) { return me.tokens.contains(token); };
    if (std::ranges::all_of(tokens, isMine)) return true;
    return std::ranges::all_of(me.tokens, [&](const std::string& mine) {
        return std::ranges::find(tokens, mine) != tokens.end();
    });
}

/// The person of a name that is shown, cut into words; `raw` is what was shown.
std::optional<Person> displayed(const std::vector<std::string_view>& tokens, std::string_view raw,
                                const Me& me, const WordsSet& orgs) {
    constexpr std::size_t mostTokens = 4;
    if (tokens.empty() || tokens.size() > mostTokens || tokens.front() == "speaker")
        return std::nullopt;
    if (raw.find_first_of("([") != raw.npos) return std::nullopt;
    Person person{.full = Text::joined(tokens, " ")};
    if (genericLabels.contains(person.full) || std::ranges::any_of(tokens, isNoName) ||
        isTheUser(tokens, me)) {
        return std::nullopt;
    }
    const std::string_view first = tokens.front();
    if (tokens.size() >= 2 && Characters::hasAtLeast(first, 3) && !orgs.contains(first))
        person.first = std::string(first);
    return person;
}

/// The person of "jsmith", what stands before the "@" of an address.
std::optional<Person> handle(const std::string& piece, const Me& me, const WordsSet& orgs) {
    if (!Characters::hasAtLeast(piece, 3) || me.handles.contains(piece) || orgs.contains(piece))
        return std::nullopt;
    Person person{.full = piece};
    if (Characters::hasAtLeast(piece, 4)) {
        person.initial = Characters::prefix(piece, 1);
        person.last = piece.substr(person.initial->size());
    }
    return person;
}

/// Persons in the order in which they come, each once.
class PeopleOnce {
  public:
    void add(std::optional<Person> person) {
        if (person && keys_.insert(keyOf(*person)).second) people_.push_back(std::move(*person));
    }
    std::vector<Person> people() && { return std::move(people_); }

  private:
    std::vector<Person> people_;
    std::unordered_set<std::string> keys_;
};

std::optional<std::string> orgOf(std::string_view participant) {
    const std::size_t at = participant.rfind('@');
    if (at == participant.npos) return std::nullopt;
    const std::string domain = Text::lowercased(participant.substr(at + 1));
    const auto labels = KeyWords::inLowered(domain, '-');
    if (labels.size() < 2) return std::nullopt;
    std::string_view candidate = labels[labels.size() - 2];
    const bool isOfCountry = labels.size() > 2 && Characters::count(labels.back()) == 2;
    if (isOfCountry && secondLevel.contains(candidate)) candidate = labels[labels.size() - 3];
    if (webmail.contains(candidate)) return std::nullopt;
    return std::string(candidate);
}
}  // namespace

Me::Me(std::span<const std::string> names) {
    for (const std::string& name : names) {
        const auto words = nameTokens(name);
        if (words.empty()) continue;
        tokens.insert(words.begin(), words.end());
        handles.insert(words.front());
        std::string rest;
        for (std::size_t i = 1; i < words.size(); ++i) rest += words[i];
        if (words.size() == 1) continue;
        handles.insert(words.front() + rest);
        handles.insert(std::string(Characters::prefix(words.front(), 1)) + rest);
    }
}

std::optional<Person> person(std::string_view raw, const Me& me, const WordsSet& orgs) {
    auto text = Text::trimmed(raw);
    for (std::size_t angle; (angle = text.find('<', 1)) != text.npos;)
        text = Text::trimmed(text.substr(0, angle));
    const std::size_t at = text.find('@');
    const std::string lowered = Text::lowercased(text.substr(0, at));
    const auto tokens = KeyWords::inLowered(lowered);
    if (at == text.npos) return displayed(tokens, text, me, orgs);

    std::vector<std::string> pieces;
    for (const auto token : tokens)
        if (std::string letters = lettersOf(token); !letters.empty())
            pieces.push_back(std::move(letters));
    if (pieces.size() == 1) return handle(pieces.front(), me, orgs);
    return displayed({pieces.begin(), pieces.end()}, "", me, orgs);
}

std::string keyOf(Person person) {
    // `first` follows from the rest. The name "anna" and the handle of anna@ek.se differ only by
    // the initial; no name has an "@".
    if (person.initial) person.full += '@';
    return std::move(person.full);
}

std::vector<Person> people(const AskMeeting& meeting, const Me& me, const WordsSet& orgs) {
    PeopleOnce people;
    for (const auto& participant : meeting.participants) people.add(person(participant, me, orgs));
    return std::move(people).people();
}

std::vector<Person> titleNames(std::string_view title, const Me& me, const WordsSet& orgs) {
    const std::string padded = " " + Text::lowercased(title) + " ";
    std::vector<std::string_view> pieces{padded};
    for (const auto separator : titleSeparators) {
        std::vector<std::string_view> smaller;
        for (const auto piece : pieces)
            for (const auto part : Text::split(piece, separator)) smaller.push_back(part);
        pieces = std::move(smaller);
    }
    if (pieces.size() == 1) return {};
    PeopleOnce names;
    for (const auto piece : pieces) names.add(person(piece, me, orgs));
    return std::move(names).people();
}

WordsSet orgNames(std::span<const AskMeeting> pool) {
    WordsSet names;
    for (const AskMeeting& meeting : pool)
        for (const auto& participant : meeting.participants)
            if (auto name = orgOf(participant)) names.insert(std::move(*name));
    return names;
}

WordsSet plainWords(std::span<const AskMeeting> pool) {
    return plainWords(pool, [](std::string_view) { return true; });
}

WordsSet plainWords(std::span<const AskMeeting> pool,
                    const std::function<bool(std::string_view word)>& matters) {
    std::unordered_map<std::string, std::size_t> titles;
    for (const AskMeeting& meeting : pool) {
        const std::string lowered = Text::lowercased(meeting.title);
        auto words = KeyWords::inLowered(lowered);
        std::erase_if(words, [&](std::string_view word) { return !matters(word); });
        std::ranges::sort(words);
        words.erase(std::ranges::unique(words).begin(), words.end());
        for (const auto word : words)
            if (Characters::hasAtLeast(word, 4)) ++titles[std::string(word)];
    }
    WordsSet plain;
    for (const auto word : commonWords.words)
        if (matters(word)) plain.emplace(word);
    const std::size_t many = std::max<std::size_t>(pool.size() / 25, 3);
    for (const auto& [word, count] : titles)
        if (count > many) plain.insert(word);
    return plain;
}

std::vector<std::string> nameTokens(std::string_view text) { return KeyWords::of(text); }
}  // namespace ombrix::KeyMatcher

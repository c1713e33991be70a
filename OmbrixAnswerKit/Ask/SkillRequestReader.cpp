#include "OmbrixAnswerKit/Ask/SkillRequestReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <unordered_set>
#include <utility>

#include "OmbrixAnswerKit/Ask/AskScope.h"
#include "OmbrixAnswerKit/Ask/SkillNames.h"
#include "OmbrixMarkdownKit/Search/TimeScopeParser.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::SkillRequestReader {
namespace {

constexpr auto genericNouns = std::to_array<std::string_view>(
    {"meetings", "meeting", "sessions", "session", "calls", "call", "conversations", "conversation",
     "syncs", "sync", "chats", "chat"});

constexpr std::string_view projectNouns =
    "project|account|client|team|workstream|launch|deal|folder|series";

/// All nouns of a meetings phrase, the longest first, so that "1:1s" is not read as "1:1".
std::string nounAlternatives() {
    std::vector<std::string_view> nouns;
    for (const auto& row : kindTable) nouns.push_back(row.spelling);
    nouns.insert(nouns.end(), genericNouns.begin(), genericNouns.end());
    std::ranges::stable_sort(nouns, std::greater<>(), &std::string_view::size);
    std::vector<std::string> escaped;
    for (const auto noun : nouns) escaped.push_back(Regex::escaped(noun));
    return Text::joined(escaped, "|");
}

/// Group 1 is the word for recent, 2 the count, 3 the name, 4 the noun.
const Regex& meetingsPhrase() {
    static const Regex regex(
        R"((?<![\p{L}\p{N}])(?:(?:my|the|our|all)\s+)?(?:(last|past|latest|previous|recent)\s+)?)"
        R"((?:(\d{1,2}|one|two|three|four|five|six|seven|eight|nine|ten)\s+)?)"
        R"(((?:[\p{L}\p{N}][\p{L}\p{N}'’&.:-]*\s+){0,3}?)()" +
            nounAlternatives() + R"()(?![\p{L}\p{N}]))",
        Regex::Case::ignored);
    return regex;
}

/// Group 1 is the name, 2 the noun.
const Regex& projectPhrase() {
    static const Regex regex(
        R"((?<![\p{L}\p{N}])(?:on|about|for|from|in)\s+(?:(?:the|my|our)\s+)?)"
        R"(((?:[\p{L}\p{N}][\p{L}\p{N}'’&.:-]*\s+){0,2}?[\p{L}\p{N}][\p{L}\p{N}'’&.:-]*)\s+()" +
            std::string(projectNouns) + R"()(?![\p{L}\p{N}]))",
        Regex::Case::ignored);
    return regex;
}

/// The stretches of `text` between pieces that are too long for words. A phrase may start within a
/// piece ("re-review"), so the time to search one grows with the square of its length.
std::vector<std::string_view> searchable(std::string_view text) {
    constexpr std::size_t longestPiece = 200;
    std::vector<std::string_view> stretches;
    std::size_t start = 0;
    for (const std::string_view piece : Characters::splitAtWhiteSpace(text)) {
        if (piece.size() <= longestPiece) continue;
        const auto place = static_cast<std::size_t>(piece.data() - text.data());
        stretches.push_back(text.substr(start, place - start));
        start = place + piece.size();
    }
    stretches.push_back(text.substr(start));
    return stretches;
}

/// A plural in "s" may drop its own: "Jonas' reviews".
std::string_view withoutPossessive(std::string_view word) {
    const std::string_view dropped = dropPossessive(word);
    if (dropped.size() != word.size()) return dropped;
    for (const std::string_view ending : {"s'", "s’"})
        if (word.ends_with(ending)) return word.substr(0, word.size() - ending.size() + 1);
    return word;
}

/// What stands before the noun of a meetings phrase.
struct Before {
    bool isRecent = false;
    std::optional<std::int64_t> count{};
    std::vector<std::string> name{};  ///< the words that tell something
};

/// The words of a name that tell something, without the possessive of the last.
std::vector<std::string> nameWords(std::span<const std::string_view> words) {
    std::vector<std::string> name;
    for (const std::string_view word : words)
        if (!isQuiet(word) && !startsWithArticle(word)) name.emplace_back(word);
    if (!name.empty()) name.back() = withoutPossessive(name.back());
    return name;
}

bool isRecencyWord(std::string_view word) {
    static const Regex regex("^(?:last|past|latest|previous|recent)$", Regex::Case::ignored);
    return regex.found(word);
}

/// True for a number of more than two digits: nobody counts meetings so far, so it is a name.
bool isLongNumber(std::string_view word) {
    return word.size() > 2 && Text::isAsciiDigit(word.front());
}

/// The groups of `meetingsPhrase`. In "from my latest call", "for two demos" and "Ilse's last two
/// reviews" the expression takes all words before the noun for a name; words for recent and counts
/// mean there what they mean elsewhere. The number of "phase 2 calls" is part of the name.
Before before(const Regex::Match& match, std::string_view text) {
    Before before{.isRecent = match.has(1), .count = number(match.group(2, text))};
    std::vector<std::string_view> name;
    bool mayCount = !match.has(2);
    for (const std::string_view word : Characters::splitAtWhiteSpace(match.group(3, text))) {
        const bool isRecent = isRecencyWord(word);
        before.isRecent = before.isRecent || isRecent;
        if (mayCount && !before.count && !isLongNumber(word)) before.count = number(word);
        if (before.count && mayCount) {
            mayCount = false;
            continue;
        }
        if (!isQuiet(word)) name.push_back(word);
        mayCount = !match.has(2) && !before.count &&
                   (name.empty() || isRecent || withoutPossessive(word).size() < word.size());
    }
    before.name = nameWords(name);
    return before;
}

/// A list of texts without repeats.
class Once {
  public:
    void add(std::string_view text, std::string key) {
        if (keys_.insert(std::move(key)).second) texts_.emplace_back(text);
    }
    std::vector<std::string> take() { return std::move(texts_); }
    bool empty() const { return texts_.empty(); }

  private:
    std::unordered_set<std::string> keys_;
    std::vector<std::string> texts_;
};

/// Gathers what a request names, phrase by phrase.
class Gathering {
  public:
    Gathering(std::vector<AskMeeting> pool, std::string_view userName)
        : pool_(std::move(pool)), userName_(userName) {}

    void addTime(const TimeScopeParser::Parse& parse) {
        for (const std::string& phrase : parse.matchedPhrases) addPhrase(phrase);
        scope_ = scope_.merging(parse.scope);
    }

    void addMeetings(std::string_view text) {
        for (const auto& match : meetingsPhrase().matches(text)) {
            const std::string_view noun = match.group(4, text);
            auto [isRecent, count, name] = before(match, text);
            if (!count && isRecent && !Text::caseFolded(noun).ends_with('s')) count = 1;
            const auto kind = kindOf(noun);
            if (!count && !kind && name.empty()) continue;  // "my meetings" names nothing
            addPhrase(match.range().of(text));
            if (count) scope_ = scope_.merging({.lastN = count});
            if (kind && std::ranges::find(kinds_, *kind) == kinds_.end()) kinds_.push_back(*kind);
            addName(name, SkillNames::Persons::included);
        }
    }

    void addProjects(std::string_view text) {
        for (const auto& match : projectPhrase().matches(text)) {
            const auto name = nameWords(Characters::splitAtWhiteSpace(match.group(1, text)));
            if (name.empty()) continue;
            addPhrase(match.range().of(text));
            addName(name, SkillNames::Persons::excluded);
        }
    }

    Read result() {
        if (phrases_.empty()) return Read::none;
        return {.phrases = phrases_.take(),
                .material = material(),
                .person = scope_.participant,
                .unmatched = unmatched_.take()};
    }

  private:
    void addPhrase(std::string_view phrase) { phrases_.add(phrase, std::string(phrase)); }

    void addName(const std::vector<std::string>& words, SkillNames::Persons persons) {
        const std::string name = Text::joined(words, " ");
        auto& resolved = persons == SkillNames::Persons::included ? names_ : projects_;
        if (words.empty() || !resolved.insert(name).second) return;
        if (!vocabulary_) vocabulary_.emplace(pool_, userName_);
        if (const auto scope = vocabulary_->scopeOf(name, persons)) {
            scope_ = scope_.merging(*scope);
            foundName_ = true;
        } else {
            for (const std::string& word : words) unmatched_.add(word, Text::folded(word));
        }
    }

    std::vector<std::string> material() const {
        if (!unmatched_.empty() && !foundName_) return {};
        AnswerScope uncounted = scope_;
        uncounted.lastN.reset();
        std::vector<std::string> ids;
        for (const AskMeeting& meeting : AskContext::apply(uncounted, pool_)) {
            if (scope_.lastN && static_cast<std::int64_t>(ids.size()) >= *scope_.lastN) break;
            if (isOfKind(meeting)) ids.push_back(meeting.id);
        }
        return ids;
    }

    bool isOfKind(const AskMeeting& meeting) const {
        return kinds_.empty() || std::ranges::any_of(kinds_, [&](std::string_view kind) {
                   return isKind(kind, userName_, meeting);
               });
    }

    std::vector<AskMeeting> pool_;  // newest first
    std::string_view userName_;
    std::optional<SkillNames> vocabulary_;  // of the pool, made for the first name
    AnswerScope scope_;
    std::vector<std::string_view> kinds_;
    std::unordered_set<std::string> names_, projects_;  // those looked up
    bool foundName_ = false;
    Once phrases_, unmatched_;
};
}  // namespace

const Read Read::none{};

std::optional<Command> split(std::string_view ask) {
    std::string_view text = Text::trimmed(ask);
    if (!text.starts_with('/')) return std::nullopt;
    text.remove_prefix(1);
    Characters::Cursor characters(text);
    std::size_t end = 0;
    for (std::size_t next; end < text.size(); end = next) {
        next = characters.after(end);
        const char32_t scalar = Utf8::decode(text, end).scalar;
        if (text.substr(end, next - end) == "-" || Text::isLetterOrNumber(scalar)) continue;
        if (!Text::isWhiteSpace(scalar)) return std::nullopt;
        break;
    }
    if (end == 0) return std::nullopt;
    return Command{.command = Text::lowercased(text.substr(0, end)),
                   .request = std::string(Text::trimmed(text.substr(end)))};
}

Read read(std::string_view request, std::span<const AskMeeting> pool, std::string_view userName,
          Instant now, const Calendar& calendar) {
    Gathering gathering(AskMeeting::newestFirst({pool.begin(), pool.end()}), userName);
    const auto time = TimeScopeParser::parse(request, now, calendar);
    gathering.addTime(time);
    const auto stretches = searchable(time.strippedQuestion);
    for (const std::string_view stretch : stretches) gathering.addMeetings(stretch);
    for (const std::string_view stretch : stretches) gathering.addProjects(stretch);
    return gathering.result();
}
}  // namespace ombrix::SkillRequestReader

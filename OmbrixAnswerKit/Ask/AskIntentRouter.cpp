#include "OmbrixAnswerKit/Ask/AskIntentRouter.h"

#include <algorithm>

#include "OmbrixAnswerKit/Ask/ShapeWords.h"
#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixPlatform/FoldedText.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {

namespace AskIntentRouter {
namespace {

// Cues are lower-case ASCII that begins and ends in a letter; `firstCue` relies on it. Their order
// is the order in which they win.
constexpr auto openEndedCues = std::to_array<std::string_view>(
    {// about the user: the first `selfDirectedCount`
     "performance review", "self review", "self-review", "be better at", "be better in",
     "get better at", "get better in", "improve my", "how can i improve", "how do i improve",
     "do i come across", "feedback for me", "my strengths", "my weaknesses",
     // about the library
     "ideas for", "brainstorm", "what could i build", "what should i build", "vibe code",
     "themes across", "themes in", "patterns in", "patterns across", "what should i write",
     "draft my", "write my", "lessons from", "what have i learned", "reflect on",
     "retrospective on my"});
constexpr std::size_t selfDirectedCount = 14;

constexpr auto myCommitmentsCues = std::to_array<std::string_view>(
    {"what did i commit", "did i commit", "i committed", "what have i committed", "i promised",
     "my action items", "my commitments", "my open items", "i owe", "do i owe", "i said i would",
     "i said i'd", "on the hook for"});

constexpr auto owedToMeCues = std::to_array<std::string_view>(
    {"owed to me", "waiting on", "who owes me", "owes me", "owe me", "promised me",
     "follow up with me", "get back to me", "owed me"});

constexpr auto planCues = std::to_array<std::string_view>(
    {"tackle", "on my plate", "need to do", "needs doing", "priorities", "priority", "focus on",
     "to-do", "todo", "what should i work on", "what should i be working on", "what do i work on"});

constexpr auto decisionsCues = std::to_array<std::string_view>(
    {"decided", "decide", "decision", "decisions", "agreed", "settled", "landed on", "land on"});

constexpr auto catchUpCues =
    std::to_array<std::string_view>({"catch me up", "what did i miss", "recap", "summary of",
                                     "summarize", "summarise", "fill me in"});

constexpr std::array<Row, 6> rows{{
    {AskIntent::openEnded, openEndedCues},
    {AskIntent::myCommitments, myCommitmentsCues},
    {AskIntent::owedToMe, owedToMeCues},
    {AskIntent::plan, planCues},
    {AskIntent::decisions, decisionsCues},
    {AskIntent::catchUp, catchUpCues},
}};

struct RankedCue {
    std::string_view cue;
    AskIntent intent;
};

// All cues in the order in which they win.
constexpr auto rankedCues = [] {
    constexpr std::size_t count = [] {
        std::size_t sum = 0;
        for (const Row& row : rows) sum += row.cues.size();
        return sum;
    }();
    std::array<RankedCue, count> all{};
    std::size_t next = 0;
    for (const Row& row : rows)
        for (const std::string_view cue : row.cues) all[next++] = {cue, row.intent};
    return all;
}();

constexpr bool isLowerCaseLetter(char c) { return c >= 'a' && c <= 'z'; }

static_assert(std::ranges::all_of(rankedCues, [](const RankedCue& each) {
    return isLowerCaseLetter(each.cue.front()) && isLowerCaseLetter(each.cue.back());
}));

// A cue is found as whole words when \b matches between its outermost letter and the neighbour. For
// an ASCII neighbour that is simple. For any other one ICU decides, from the neighbour alone: \b
// reads back over marks to the nearest other character, and forward one scalar. So no expression
// ever has to search the whole question.

bool beginsWord(std::string_view text, std::size_t place) {
    if (place == 0) return true;
    if (Text::isAscii(text[place - 1])) return !Text::isAsciiWordByte(text[place - 1]);
    std::size_t from = place;  // back to the nearest ASCII character, which is never a mark
    while (from > 0 && !Text::isAscii(text[from - 1])) --from;
    if (from > 0) --from;
    static const Regex boundaryBeforeLastLetter("\\ba\\z");
    return boundaryBeforeLastLetter.found(std::string(text.substr(from, place - from)) + "a");
}

bool endsWord(std::string_view text, std::size_t place) {
    if (place == text.size()) return true;
    if (Text::isAscii(text[place])) return !Text::isAsciiWordByte(text[place]);
    static const Regex boundaryAfterFirstLetter("^a\\b");
    return boundaryAfterFirstLetter.found(
        "a" + std::string(text.substr(place, Utf8::decode(text, place).length)));
}

/// The place in `rankedCues` of the first cue that is in `text` as whole words; the size of
/// `rankedCues` when none is.
std::size_t firstCue(std::string_view text) {
    std::size_t best = rankedCues.size();
    for (std::size_t place = 0; place < text.size() && best > 0; ++place) {
        if (!isLowerCaseLetter(text[place])) continue;
        if (place > 0 && Text::isAsciiWordByte(text[place - 1])) continue;
        const std::string_view rest = text.substr(place);
        for (std::size_t rank = 0; rank < best; ++rank) {
            const std::string_view cue = rankedCues[rank].cue;
            if (rest.starts_with(cue) && endsWord(text, place + cue.size()) &&
                beginsWord(text, place)) {
                best = rank;
            }
        }
    }
    return best;
}

/// True when the question has keywords besides the words that ask to be caught up.
bool hasSubject(std::string_view question, std::string_view cue) {
    std::string rest(question);
    if (const auto range = FoldedText(question).find(cue)) rest.erase(range->begin, range->size());
    return !QueryTokenizer::keywords(rest).empty();
}

constexpr std::int64_t workHalfLifeDays = 7;

AskPlan policy(std::string_view question, const Classification& found,
               std::optional<std::int64_t> horizonDays) {
    AskPlan plan{.intent = found.intent};
    switch (found.intent) {
        case AskIntent::plan:
        case AskIntent::myCommitments:
        case AskIntent::owedToMe:
            plan.windowDays =
                horizonDays ? std::clamp<std::int64_t>(*horizonDays, 7, 30) : std::int64_t{14};
            plan.participation = true;
            plan.shape = AnswerShape::commitments;
            plan.recencyHalfLifeDays = workHalfLifeDays;
            break;
        case AskIntent::decisions:
            plan.windowDays = 30;
            plan.shape = AnswerShape::timeline;
            break;
        case AskIntent::catchUp:
            plan.windowDays = hasSubject(question, *found.cue) ? 0 : 7;
            break;
        case AskIntent::freeform:
            plan.shape = ShapeWords::legacyShape(question);
            break;
        case AskIntent::openEnded:
            plan.windowDays = 180;
            plan.participation = std::ranges::count(selfDirectedCues(), *found.cue) > 0;
            plan.tier = AnswerTier::deep;
            break;
    }
    return plan;
}

std::string rationale(const AskPlan& plan, std::optional<std::string_view> cue,
                      bool hasTypedScope) {
    std::string line(rawValue(plan.intent));
    line += " — ";
    line += cue ? "matched \"" + std::string(*cue) + "\"" : "no intent cue";
    line += "; window ";
    line += hasTypedScope ? "typed scope" : std::to_string(plan.windowDays) + " d";
    if (plan.participation) line += "; only where you spoke";
    if (plan.tier == AnswerTier::deep) line += "; deep";
    return line;
}
}  // namespace

std::span<const Row> table() { return rows; }

std::span<const std::string_view> selfDirectedCues() {
    return std::span(openEndedCues).first(selfDirectedCount);
}

Classification classify(std::string_view question) {
    const std::size_t rank = firstCue(Text::withStraightApostrophes(Text::lowercased(question)));
    if (rank == rankedCues.size()) return {};
    return {.intent = rankedCues[rank].intent, .cue = rankedCues[rank].cue};
}

AskPlan route(std::string_view question, std::optional<std::int64_t> horizonDays,
              bool hasTypedScope) {
    const Classification found = classify(question);
    AskPlan plan = policy(question, found, horizonDays);
    if (hasTypedScope) plan.windowDays = 0;
    plan.rationale = rationale(plan, found.cue, hasTypedScope);
    return plan;
}
}  // namespace AskIntentRouter
}  // namespace ombrix

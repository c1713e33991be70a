// The names of participants and titles, which people and calendars write. The first line is what a
// window shows, each line after it a participant or a title.
//
// libFuzzer: -max_len=4096
#include <string>
#include <vector>

#include "Law.h"
#include "OmbrixAnswerKit/Key/KeyMatcher.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

const std::vector<std::string> userNames{"Nadia Brandt"};

void checkPerson(std::string_view raw, const KeyMatcher::Me& me, const KeyMatcher::WordsSet& orgs) {
    const auto person = KeyMatcher::person(raw, me, orgs);
    if (!person) return;
    const auto words = KeyMatcher::nameTokens(person->full);
    law(!words.empty() && words.size() <= 4, "a name has one to four words");
    law(Text::joined(words, " ") == person->full, "a name is its words");
    law(!person->first || *person->first == words.front(), "the first name is the first word");
    law(person->initial.has_value() == person->last.has_value(), "a handle has both parts");
    law(!person->initial || *person->initial + *person->last == person->full,
        "the parts of a handle are the handle");
}

/// What a title says of a person is found when the window says it too.
void checkWorld(const KeyMatcher::Surface& surface, const std::vector<AskMeeting>& pool) {
    const auto world = KeyMatcher::world(surface, pool, {}, userNames.front(), {}, "2026-07-31");
    law(world == KeyMatcher::world(surface, pool, {}, userNames.front(), {}, "2026-07-31"),
        "matched twice, the same");
    law(world.candidates.size() <= KeyMatcher::maxCandidates, "few candidates");
    for (const auto& candidate : world.candidates)
        for (const auto& term : candidate.terms)
            law(term == "1:1" || KeyMatcher::nameTokens(term) == std::vector{term},
                "a term is a word");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [shown, rest] = Fuzz::firstLineAndRest(Fuzz::text(data, size));
    std::vector<AskMeeting> pool;
    for (const auto line : Text::split(rest, "\n")) {
        if (pool.size() % 3 == 0) pool.push_back({.date = "2026-07-30"});
        AskMeeting& meeting = pool.back();
        meeting.id = std::to_string(pool.size());
        meeting.participants.emplace_back(line);
        meeting.title = line;
        pool.push_back({.id = "t", .title = std::string(line), .date = std::string(line)});
    }
    const KeyMatcher::Me me(userNames);
    const auto orgs = KeyMatcher::orgNames(pool);
    for (const AskMeeting& meeting : pool) {
        for (const auto& participant : meeting.participants) {
            checkPerson(participant, me, orgs);
            const auto person = KeyMatcher::person(participant, me, orgs);
            if (!person || person->initial) continue;
            const std::vector<AskMeeting> alone{
                {.date = "2026-07-31", .participants = {participant}}};
            const bool isCompany = KeyMatcher::orgNames(alone) != orgs;
            if (isCompany) continue;
            law(KeyMatcher::world({.windowTitle = person->full}, alone, {}, userNames.front(), {},
                                  "2026-07-31")
                        .candidates.size() == 1,
                "who is named is found");
        }
        KeyMatcher::titleNames(meeting.title, me, orgs);
        KeyMatcher::day(meeting.date);
    }
    checkWorld({.windowTitle = std::string(shown),
                .fieldText = std::string(shown),
                .nearText = std::string(rest.substr(0, rest.size() / 2))},
               pool);
    return 0;
}

#include "OmbrixAnswerKit/Grounding/AnswerScopeStatement.h"

#include <gtest/gtest.h>

namespace ombrix {

TEST(AnswerScopeStatement, SaysHowManyAndWhatNarrowedThem) {
    const AnswerScope none;
    const AnswerScope clients{.folder = "Work/Clients/"};
    const struct {
        AnswerScopeStatement::Input input;
        const char* line;
    } rows[] = {
        {{5, 5, 5, true, none}, "5 meetings in scope across your library, newest first"},
        {{1, 1, 1, true, clients}, "1 meeting in scope · in Clients"},
        {{0, 0, 9, true, none}, "0 meetings in scope across your library, newest first"},
        {{3, 3, 0, false, none}, "0 meetings in scope"},
        {{0, 0, 40, false, clients}, "0 of 40 meetings in scope matched · in Clients"},
        {{1, 2, 9, false, none}, "1 of 2 matching meetings across your library, newest first"},
        {{1, 1, 9, false, {.meetingIDs = {{"a"}}}}, "1 matching meeting · this meeting"},
        {{2, 2, 9, false, {.meetingIDs = {{"a", "b"}}}}, "2 matching meetings"},
        {{2, 2, 9, false, {.participant = "", .folder = ""}}, "2 matching meetings"},
        {{2, 2, 9, false, {.participant = "Ann", .folder = "//"}},
         "2 matching meetings · with Ann · in //"},
        // Of the time, one thing.
        {{2, 2, 9, false, {.lastN = 3}, {"last week", "in May"}, 7},
         "2 matching meetings · last week, in May"},
        {{2, 2, 9, false, {.lastN = 3}, {}, 1}, "2 matching meetings · the past 1 days"},
        {{2, 2, 9, false, {.dateFrom = "2026-05-01", .lastN = 3}, {}, 0},
         "2 matching meetings · the last 3"},
        {{2, 2, 9, false, {.dateFrom = "2026-05-01", .dateTo = "2026-05-09"}, {}, -1},
         "2 matching meetings · 2026-05-01 to 2026-05-09"},
        {{2, 2, 9, false, {.dateFrom = "2026-05-01", .dateTo = ""}},
         "2 matching meetings · since 2026-05-01"},
        {{2, 2, 9, false, {.dateTo = "2026-05-09"}}, "2 matching meetings"},
        // The policy's note comes last.
        {{2, 2, 9, false, none, {}, {}, "Wider."},
         "2 matching meetings across your library, newest first · Wider."},
        {{2, 2, 9, false, none, {}, 14, ""}, "2 matching meetings · the past 14 days"},
    };
    for (const auto& [input, line] : rows) EXPECT_EQ(AnswerScopeStatement::line(input), line);
}
}  // namespace ombrix

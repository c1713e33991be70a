#include "OmbrixAnswerKit/Grounding/AnswerCoverageNote.h"

#include <gtest/gtest.h>

namespace ombrix {
namespace {

using Paths = std::set<std::string>;

TEST(AnswerCoverageNote, NamesWhatWasReadAndCountsTheRest) {
    const CoverageMeeting a{"a", "A", "2026-05-03"}, b{"b", "B", "2026-12-31"};
    const CoverageMeeting c{"c", "C", "2026-8-12"}, d{"d", "D", "2026-02-30"};
    const struct {
        std::vector<CoverageMeeting> sent;
        Paths read;
        const char* line;
    } rows[] = {
        {{a}, {"a"}, "Read A, May 3, in full."},
        {{c}, {"c"}, "Read C in full."},
        {{d}, {"d"}, "Read D in full."},
        {{b, a}, {"a", "b"}, "Read B and A in full."},
        {{a, b}, {"b", "x"}, "Read B, Dec 31, in full. Notes from 1 more."},
        {{a, b, c, d}, {"a", "c"}, "Read A and C in full. Notes from 2 more."},
        {{a, b, c}, {"a", "b", "c"}, "Read A, B and 1 more in full."},
        {{b}, {}, "From the notes of B, Dec 31."},
        {{a, b, c, d}, {}, "From the notes of A, B and 2 more."},
    };
    for (const auto& [sent, read, line] : rows)
        EXPECT_EQ(AnswerCoverageNote::line(sent, read), line);
    EXPECT_EQ(AnswerCoverageNote::line(std::vector<CoverageMeeting>(), Paths{"a"}), std::nullopt);
}

TEST(AnswerCoverageNote, APackIsToldByWhatEachMeetingGave) {
    using Meeting = AnswerContextPack::Meeting;
    const Meeting spoken{.id = "s", .title = "S", .date = "2026-05-03", .turns = {{"A", "b"}}};
    const Meeting noted{.id = "n", .title = "N", .date = "", .notes = "x"};
    const Meeting listed{.id = "l", .title = "L", .date = "2026-06-10", .actionItems = {{"x"}}};
    const Meeting silent{.id = "e", .title = "E", .date = "2026-06-10"};
    const struct {
        std::vector<Meeting> pack;
        std::optional<std::string> line;
    } rows[] = {
        {{}, std::nullopt},
        {{silent}, std::nullopt},
        {{silent, listed}, "From the notes of L, Jun 10."},
        {{noted, listed}, "From the notes of N and L."},
        {{noted, spoken, silent}, "From the transcript of S, May 3. Notes from 1 more."},
        {{spoken, spoken}, "From the transcripts of S and S."},
        {{spoken, spoken, noted, spoken, listed},
         "From the transcripts of S, S and 1 more. Notes from 2 more."},
    };
    for (const auto& [pack, line] : rows) EXPECT_EQ(AnswerCoverageNote::line(pack), line);
}
}  // namespace
}  // namespace ombrix

// The whole engine, as whoever drives it does: three meetings are landed, their follow-ups merged,
// a memory file and a card written; then the user edits, and everything is rendered again.
#include <gtest/gtest.h>

#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixMemoryKit/EngineRecipes.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsFile.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsMerger.h"
#include "OmbrixMemoryKit/Memory/BeforeFile.h"
#include "OmbrixMemoryKit/Memory/MemoryCandidates.h"
#include "OmbrixMemoryKit/Memory/MemoryFiles.h"
#include "OmbrixMemoryKit/Memory/MemoryNotes.h"
#include "OmbrixMemoryKit/Notes/NotesBlockEdit.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

const Instant now = *parseIsoInstant("2026-09-02T08:00:00Z");
const std::string list = "c-9805c279", invitation = "c-29a4591b";  // see CommitmentID.h

std::string landAnswer(const std::string& facts) {
    return R"({"version": 1, "summary": "The launch moved on.", "notes": [{"topic": "Launch",
        "bullets": ["It moves to October."]}], "unresolved_speakers": [], "not_sure": [], )" +
           facts + "}";
}

const std::string kickoff = landAnswer(R"("decisions": [], "open_questions": [], "resolutions": [],
    "commitments": [{"direction": "user_owes", "who": "Ana Ruiz", "who_key": "name:ana ruiz",
      "what": "Send the price list", "quote": "I'll send you the price list", "speaker": "Me",
      "due_raw": "next Friday", "due": "2026-08-28", "certainty": "recorded"}],
    "memory": [{"entity_key": "name:ana ruiz", "kind": "person", "fact": "Ana runs the launch.",
      "quote": "I run the launch", "certainty": "recorded"}])");
const std::string second = landAnswer(R"("commitments": [], "resolutions": [], "memory": [],
    "decisions": [{"text": "The launch moves to October", "quote": "October it is", "speaker": "Me"}],
    "open_questions": [{"text": "Who pays for the fair?", "quote": "And who pays?"}])");
const std::string third = landAnswer(R"("decisions": [], "open_questions": [], "memory": [],
    "commitments": [{"direction": "user_owes", "who": "Ana Ruiz", "who_key": "name:ana ruiz",
      "what": "Draft the invitation!", "quote": "I will draft it", "speaker": "Me",
      "due_raw": "Saturday", "due": "2026-09-05", "certainty": "recorded"}],
    "resolutions": [{"id": "c-9805c279", "status": "done", "quote": "Got the list, thanks",
      "new_due": null}])");

LandSidecar landed(const char* key, const char* date, const std::string& answer) {
    const LandSidecar sidecar{.meetingKey = key,
                              .title = std::string("Launch ") + date,
                              .date = date,
                              .participants = {"Ana Ruiz", "Dana Reyes"},
                              .landedAt = now,
                              .route = "claudeCode",
                              .recipeVersion = std::string(EngineRecipes::landVersion),
                              .output = LandOutput::decode(answer)};
    return LandSidecar::decode(sidecar.encode());  // as the file has it
}

TEST(Engine, ThreeMeetingsBecomeFilesThatKeepWhatTheUserWrites) {
    const std::vector<LandSidecar> sidecars = {landed("m-50fe30b6f9c761d2", "2026-08-18", kickoff),
                                               landed("m-1f51b1cc0111d5ec", "2026-08-25", second),
                                               landed("m-5192ea0f691cd52b", "2026-09-01", third)};
    const std::string today = "2026-09-02";

    // The ledger: the list is sent, the invitation is open.
    const auto ledger = FollowUpsMerger::merge(sidecars, {}, today, {});
    ASSERT_EQ(ledger.closed.size(), 1U);
    EXPECT_EQ(ledger.closed[0].id, list);
    ASSERT_EQ(ledger.youOweLive.size(), 1U);
    EXPECT_EQ(ledger.youOweLive[0].id, invitation);
    std::string followUps = *FollowUpsFile::render(ledger, "Claude", now, std::nullopt);

    // A memory file, of what the meetings say about the person.
    const auto candidates = MemoryCandidates::collect("name:ana ruiz", {}, sidecars);
    ASSERT_EQ(candidates.size(), 1U);
    const std::vector<std::string> all = {"m-50fe30b6f9c761d2", "m-1f51b1cc0111d5ec"};
    EXPECT_EQ(MemoryCandidates::thread("thread:launch", all, sidecars, "Dana Reyes")[0].who,
              "Dana Reyes");
    const auto output = ConsolidateOutput::decode(R"({"version": 1, "kind": "person",
        "who": [{"text": "Runs the launch.", "sources": ["[Launch 2026-08-18, 2026-08-18]"]}],
        "what_this_is": [], "through_line": "One launch.", "decisions": [], "open": [{"text":
        "Draft the invitation", "direction": "user_owes", "due": "2026-09-05", "follow_up_id":
        "c-29a4591b", "sources": ["[Launch 2026-09-01, 2026-09-01]"]}], "not_sure": []})");
    const auto meetings = MemoryCandidates::meetings("name:ana ruiz", {}, sidecars);
    const MemoryFileMeta meta{.title = *MemoryCandidates::display("name:ana ruiz", sidecars),
                              .key = "name:ana ruiz",
                              .firstSeen = meetings.front().date,
                              .lastSeen = meetings.back().date,
                              .meetings = 3};
    std::string memory = *MemoryFile::render(meta, output, "Claude", now, 3);
    const auto parsed = MemoryFile::parse(memory);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->meta, meta);

    // A card, of the memory file's region.
    EXPECT_TRUE(Text::contains(
        BeforeInput{.people = {{.engineRegionText = parsed->engineText}}}.canonical().json,
        "You owe: Draft the invitation, due Sep 5 · id c-29a4591b"));
    const auto card = BeforeOutput::decode(R"({"version": 1, "who_and_when": "Ana Ruiz · third",
        "not_sure": [], "you_owe": [{"text": "The invitation", "sources":
        ["[Launch 2026-09-01, 2026-09-01]"]}], "they_owe": [], "unanswered": [], "changed_since":
        [], "openers": [{"text": "a", "sources": []}, {"text": "b", "sources": []}, {"text": "c",
        "sources": []}]})")
                          .card("Launch", now, {meta.title}, {}, "Claude", now);
    const auto utc = Calendar::gregorianUtc();
    EXPECT_EQ(BeforeFile::parse(BeforeFile::render(card, "Claude", now, 1, utc), utc), card);

    // The user edits the follow-ups, the memory file's notes and the notes of a transcript.
    followUps += "- reword: " + invitation + ": Draft the letter\n";
    memory = MemoryNotes::replacing("Prefers mornings.", memory);
    const std::string transcript = "---\ntitle: Launch\n---\n\n## Transcript\n\n**Me:** Hi.\n";
    const EngineProvenance writer{
        .route = EngineProvenance::Route::claudeCode, .model = "claude-sonnet-4-5", .at = now};
    const std::string noted = TranscriptEditor::setEnhancedSections(
        transcript, NotesBlockRenderer::payload(sidecars[2].output, writer, utc));
    const auto edited =
        NotesBlockEdit::replace(NotesBlockEdit::Section::summary, "Mine.", noted, now);
    ASSERT_TRUE(edited);
    EXPECT_TRUE(edited->starts_with(transcript) && Text::contains(*edited, "Mine."));
    EXPECT_EQ(EngineProvenance::parse(*TranscriptEditor::machineProvenance(*edited))->edited, now);

    // All is rendered again, and what the user wrote holds.
    for (int again = 0; again < 3; ++again) {
        const auto wishes = Corrections::parse(*Corrections::section(followUps));
        const auto next = FollowUpsMerger::merge(sidecars, wishes, today, {});
        ASSERT_EQ(next.youOweLive.size(), 1U);
        EXPECT_EQ(next.youOweLive[0].what, "Draft the letter");
        followUps = *FollowUpsFile::render(next, "Claude", now, followUps);
        memory = *MemoryFile::render(meta, output, "Claude", now, 3, memory);
        EXPECT_TRUE(Text::contains(followUps, "**Draft the letter**"));
        EXPECT_EQ(MemoryNotes::body(memory), "Prefers mornings.");
        EXPECT_EQ(MemoryFile::parse(memory)->engineText, parsed->engineText);
    }
}
}  // namespace
}  // namespace ombrix

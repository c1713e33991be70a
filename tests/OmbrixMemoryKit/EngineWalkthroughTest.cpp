// The whole engine goes the way of docs/engine-walkthrough.md. What models answer and the user
// types is read from the page, and whatever the engine makes of it has to be what the page shows.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>

#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixMemoryKit/EngineRecipes.h"
#include "OmbrixMemoryKit/Identity/ContentFingerprint.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixMemoryKit/Identity/MeetingKey.h"
#include "OmbrixMemoryKit/Land/LandInputBuilder.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsFile.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsMerger.h"
#include "OmbrixMemoryKit/Memory/BeforeFile.h"
#include "OmbrixMemoryKit/Memory/EntityInputs.h"
#include "OmbrixMemoryKit/Memory/MemoryFiles.h"
#include "OmbrixMemoryKit/Memory/MemoryNotes.h"
#include "OmbrixMemoryKit/Notes/NotesBlockEdit.h"
#include "OmbrixMemoryKit/Notes/NotesOwnership.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

const std::string ana = "name:ana ruiz", launch = "thread:autumn launch", user = "Dana Reyes";
const std::string model = "claude-sonnet-4-5", writer = EngineProvenance::writerName(model);
const Instant now = *parseIsoInstant("2026-09-01T10:00:00Z");
const Instant later = *parseIsoInstant("2026-09-02T08:00:00Z");
const Instant eve = *parseIsoInstant("2026-09-08T08:50:00Z"), call = eve + std::chrono::minutes(10);
const Calendar utc = Calendar::gregorianUtc();

/// The code blocks of the page by the name that follows their language.
class Page {
  public:
    Page() {
        const auto text = Files::text(OMBRIX_DOCS "/engine-walkthrough.md");
        EXPECT_TRUE(text);
        LineCursor lines(*text);
        while (const auto line = lines.next()) {
            if (!line->starts_with("```")) continue;
            std::string& block = blocks_[std::string(line->substr(line->find(' ') + 1))];
            for (auto inner = lines.next(); inner && *inner != "```"; inner = lines.next())
                block.append(*inner) += '\n';
        }
    }
    ~Page() {
        for (const auto& [name, block] : blocks_) EXPECT_TRUE(used_.contains(name)) << name;
    }

    std::string block(const std::string& name) {
        used_.insert(name);
        return blocks_.contains(name) ? blocks_[name] : "no block " + name;
    }
    void shows(const std::string& name, std::string_view text) { EXPECT_EQ(block(name), text); }
    /// Line breaks and the order of keys do not count.
    void showsJson(const std::string& name, std::string_view json) {
        const auto form = [](std::string_view text) {
            return Json::write(Json::parse(text), Json::Style::file);
        };
        EXPECT_EQ(form(block(name)), form(json)) << name;
    }

  private:
    std::map<std::string, std::string> blocks_;
    std::set<std::string> used_;
};

LandSidecar landed(const TranscriptDocument& meeting, std::string inputHash, LandOutput output) {
    const LandSidecar sidecar{
        .meetingKey = MeetingKey::make({}, meeting.startedAt, meeting.date, meeting.title),
        .contentFingerprint = ContentFingerprint::make(meeting.title, meeting.date,
                                                       meeting.participants, meeting.turns),
        .relativePath = "Launch/" + meeting.date + " " + meeting.title + ".md",
        .title = meeting.title,
        .date = meeting.date,
        .participants = meeting.participants,
        .landedAt = now,
        .route = "claudeCode",
        .model = model,
        .recipeVersion = std::string(EngineRecipes::landVersion),
        .inputHash = std::move(inputHash),
        .output = std::move(output)};
    return LandSidecar::decode(sidecar.encode());  // as the file has it
}

/// What the model is told about an answer that is not taken.
std::string refusal(const std::function<void()>& take) {
    try {
        take();
    } catch (const RefusedAnswer& refused) {
        return std::string(refused.what()) + "\n";
    }
    return "taken";
}

TEST(Engine, GoesTheWayOfThePage) {
    Page page;
    const std::string transcript = page.block("transcript");
    const auto meeting = MarkdownTranscriptParser::parse(transcript);
    ASSERT_TRUE(meeting);
    std::vector<LandSidecar> sidecars;
    for (const auto& [title, date, answer] :
         {std::tuple("Launch kickoff", "2026-08-18", "kickoff-answer"),
          std::tuple("Launch weekly", "2026-08-25", "second-answer")})
        sidecars.push_back(
            landed({.title = title, .date = date, .participants = meeting->participants}, {},
                   LandOutput::decode(page.block(answer))));
    const auto merged = [&](Instant at, std::string_view file = {}) {
        const auto wishes = Corrections::parse(Corrections::section(file).value_or(""));
        return FollowUpsMerger::merge(sidecars, wishes, ISODate::string(at, utc), {});
    };

    const auto changed = [&](const char* name, const char* from, const char* to) {
        return Text::replacingAll(page.block(name), from, to);
    };

    // The third meeting is landed, and its transcript gets notes.
    const auto landInput = LandInputBuilder::build(*meeting, user, merged(now).open({ana}, 10),
                                                   {{ana, "Runs the launch."}}, {})
                               .canonical();
    page.showsJson("land-input", landInput.json);
    page.shows("land-refusal", refusal([&] {
                   LandOutput::decode(changed("land-answer", "2026-09-05", "Saturday"));
               }));
    sidecars.push_back(
        landed(*meeting, landInput.hash, LandOutput::decode(page.block("land-answer"))));
    page.showsJson("sidecar", sidecars[2].encode());
    ASSERT_TRUE(NotesOwnership::classify(transcript).engineMayWrite());
    const EngineProvenance provenance{
        .route = EngineProvenance::Route::claudeCode, .model = model, .at = now};
    const std::string noted = TranscriptEditor::setEnhancedSections(
        transcript, NotesBlockRenderer::payload(sidecars[2].output, provenance, utc));
    ASSERT_TRUE(noted.starts_with(transcript));
    page.shows("notes-block", noted.substr(transcript.size()));

    // The follow-ups of all three.
    auto ledger = merged(now);
    std::string followUps = *FollowUpsFile::render(ledger, writer, now, std::nullopt);
    page.shows("follow-ups", followUps);

    // A person, then a thread.
    const auto inputOf = [&](const MemoryEntity& entity, std::string_view existing) {
        return EntityInputs::consolidate(entity, EntityInputs::candidates(entity, user),
                                         EntityInputs::openRows({&entity, 1}, ledger),
                                         MemoryFile::parse(existing), user, ledger.today);
    };
    const auto taken = [&](const MemoryEntity& entity, const std::string& answer) {
        auto output = ConsolidateOutput::decode(answer);
        EntityCitations::check(output, inputOf(entity, ""));
        return output;
    };
    const auto fileOf = [&](const MemoryEntity& entity, const ConsolidateOutput& output, Instant at,
                            std::string_view existing) {
        return MemoryFile::render(EntityInputs::meta(entity, entity.display), output, writer, at,
                                  std::ssize(EntityInputs::candidates(entity, user)), existing);
    };
    const auto person = EntityInputs::entity(ana, {}, sidecars);
    page.showsJson("person-input", inputOf(person, "").canonical().json);
    page.shows("person-refusal", refusal([&] {
                   taken(person, changed("person-answer", "c-6ccb2958", "c-00000000"));
               }));
    const auto personOutput = taken(person, page.block("person-answer"));
    std::string file = *fileOf(person, personOutput, now, "");
    page.shows("person-file", file);
    const auto thread = EntityInputs::entity(launch, {}, sidecars);
    page.showsJson("thread-input", inputOf(thread, "").canonical().json);
    const std::string threadFile =
        *fileOf(thread, taken(thread, page.block("thread-answer")), now, "");
    page.shows("thread-file", threadFile);

    // A card for the next call.
    const std::string day = ISODate::string(call, utc);
    const auto last = EntityInputs::lastMeeting({&person, 1}, day);
    BeforeInput before{
        .people = {EntityInputs::beforeText(person, MemoryFile::parse(file))},
        .thread = EntityInputs::beforeText(thread, MemoryFile::parse(threadFile)),
        .lastSummary = BeforeLastSummary{last->title, last->date, last->output.summary},
        .userName = user,
        .today = day};
    for (const auto& row : EntityInputs::openRows(std::vector{person, thread}, ledger))
        before.openFollowUps.push_back(EntityInputs::followUp(row));
    page.showsJson("before-input", before.canonical().json);
    page.shows("before-refusal", refusal([&] {
                   BeforeOutput::decodeOrRefuse(
                       changed("before-answer", "\"version\": 1", "\"version\": 3"));
               }));
    const auto output = BeforeOutput::decodeOrRefuse(page.block("before-answer"));
    EntityCitations::check(output, before);
    const auto card =
        output.card("Launch weekly", call, {person.display}, thread.display, writer, eve);
    const std::string cardFile = BeforeFile::render(card, writer, eve, 3, utc);
    page.shows("card", cardFile);
    EXPECT_EQ(BeforeFile::parse(cardFile, utc), card);

    // The user edits all of it, and it is rendered again and again.
    const std::string wishes = page.block("typed-follow-ups");
    followUps += wishes;
    file = MemoryNotes::replacing(page.block("typed-notes"), file) + page.block("typed-person");
    const auto edited = NotesBlockEdit::replace(NotesBlockEdit::Section::summary,
                                                page.block("typed-summary"), noted, later);
    ASSERT_TRUE(edited && edited->starts_with(transcript));
    page.shows("notes-block-again", edited->substr(transcript.size()));
    EXPECT_FALSE(NotesOwnership::classify(*edited).engineMayWrite());
    for (int again = 0; again < 3; ++again) {
        ledger = merged(later, followUps);
        followUps = *FollowUpsFile::render(ledger, writer, later, followUps);
        file = *fileOf(person, personOutput, later, file);
        std::string rows;
        for (const auto* row : {&ledger.owedLive.at(0), &ledger.closed.at(0)})
            rows += FollowUpsFile::rowLine(*row, ledger.today) + "\n";
        page.shows("rows-again", rows);
        EXPECT_TRUE(followUps.ends_with(std::string(FollowUpsFile::humanTail) + wishes));
        page.shows("person-file-below", EngineRegion::parse(file)->after.substr(2));
        const auto next = inputOf(person, file);
        page.showsJson("person-input-again",
                       Json::write(Json::object({{"corrections", next.corrections},
                                                 {"prior_not_sure", next.priorNotSure}}),
                                   Json::Style::canonical));
    }
    const std::string damaged = Text::replacingAll(file, EngineRegion::closeMarker, "");
    EXPECT_FALSE(fileOf(person, personOutput, later, damaged));
}
}  // namespace
}  // namespace ombrix

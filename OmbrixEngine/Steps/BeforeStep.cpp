#include "OmbrixEngine/Steps/BeforeStep.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include "OmbrixCLI/PathArguments.h"
#include "OmbrixEngine/Protocol/Ask.h"
#include "OmbrixEngine/Steps/PrivateSources.h"
#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixMemoryKit/Memory/BeforeFile.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

/// "2026-09-08T10:00", with seconds or without, with "T" or a blank, on the machine's clock; or an
/// instant with "Z" or an offset.
Instant startOf(std::string_view given, const Calendar& calendar) {
    std::string text(Text::trimmed(given));
    constexpr std::size_t dayLength = 10, minutesLength = 16;
    if (text.size() > dayLength && text[dayLength] == ' ') text[dayLength] = 'T';
    const bool lacksSeconds = text.size() >= minutesLength &&
                              (text.size() == minutesLength || text[minutesLength] != ':');
    if (lacksSeconds) text.insert(minutesLength, ":00");
    if (const auto instant = parseIsoInstant(text)) return *instant;
    if (const auto instant = calendar.parseWallClock(text)) return *instant;
    throw CLIError::invalidInput("'" + printable(given) + "' is no time.",
                                 "--for is a day and a time: 2026-09-08T10:00.");
}

std::int64_t countSources(const BeforeCard& card) {
    std::set<std::pair<std::string_view, std::string_view>> sources;
    for (const auto& line : card.lines)
        for (const auto& source : line.sources) sources.emplace(source.title, source.date);
    return static_cast<std::int64_t>(sources.size());
}
}  // namespace

BeforeStep::BeforeStep(EngineWorkspace& workspace, const UpcomingCall& call)
    : workspace_(workspace),
      title_(Text::flattened(call.title)),
      start_(startOf(call.time, workspace.calendar())) {
    if (title_.empty())
        throw CLIError::invalidInput("The call has no title.", "Pass --title TITLE.");
    const auto people = resolve(call.people);
    const auto& privacy = workspace.privacy();
    const auto thread = call.thread ? std::optional(Entities::named(workspace, *call.thread))
                                    : sharedThread(people);
    const std::string day = workspace.calendar().dayString(start_);
    for (const auto& person : people) {
        people_.push_back(Entities::title(person));
        input_.people.push_back(shown(person));
    }
    if (thread) {
        Entities::requirePublic(workspace, *thread);
        thread_ = Entities::title(*thread);
        input_.thread = shown(*thread);
    }
    for (const auto& row : Entities::openRows(workspace, people))
        input_.openFollowUps.push_back(EntityInputs::followUp(row));
    if (const auto last = EntityInputs::lastMeeting(people, day))
        input_.lastSummary = {privacy.cleanedText(last->title), last->date, last->output.summary};
    input_.userName = workspace.userName();
    input_.today = workspace.today();
    question_ = askInput(workspace, encode(input_));

    std::string slug = BeforeFile::slug(title_);
    if (slug.empty()) slug = "call";
    path_ =
        workspace.memoryPath(Paths::joined(BeforeFile::subfolder, BeforeFile::fileName(day, slug)));
    const auto there = workspace.folder().bytes(path_);
    if (there && !Text::trimmed(*there).empty() && !BeforeFile::declares(*there))
        throw CLIError::invalidInput(printable(path_) + " is no card, so it is left alone.",
                                     "Move the file away, or give the call another title.");
}

std::vector<MemoryEntity> BeforeStep::resolve(std::string_view names) {
    std::vector<MemoryEntity> people;
    const auto userKey = EntityKeys::normalizeKey(workspace_.userName());
    for (const auto word : Text::split(names, ",")) {
        const auto name = Text::trimmed(word);
        if (name.empty()) continue;
        try {
            auto person = Entities::named(workspace_, name);
            const auto isKnown = [&](const auto& other) { return other.key == person.key; };
            const bool isUser = userKey && std::ranges::count(person.keys, *userKey) > 0;
            if (isUser || std::ranges::any_of(people, isKnown)) continue;
            Entities::requirePublic(workspace_, person);
            if (person.kind != LandMemoryFact::Kind::person)
                throw CLIError::invalidInput("'" + printable(name) + "' is a thread.");
            if (person.meetings.empty() && Entities::file(workspace_, person) == nullptr)
                throw CLIError::notFound("No meeting with '" + printable(name) + "' is landed.");
            people.push_back(std::move(person));
        } catch (const CLIError& error) {
            workspace_.warnings().push_back("Left out: " + std::string(error.what()));
        }
    }
    if (people.empty()) {
        std::string message = "The meetings know none of these people.";
        for (const auto& warning : workspace_.warnings())
            if (warning.starts_with("Left out: ")) message += " " + warning;
        throw CLIError::notFound(message, "ombrix-engine status lists people with their keys.");
    }
    return people;
}

/// The thread in most of whose meetings all of the people were, of equals the one that was met
/// about last; only threads with a memory file count.
std::optional<MemoryEntity> BeforeStep::sharedThread(const std::vector<MemoryEntity>& people) {
    using Rank = std::tuple<std::ptrdiff_t, std::string, std::string>;
    const auto meetings = EntityInputs::sharedMeetings(people);
    std::optional<std::pair<Rank, MemoryEntity>> best;
    for (const auto& file : workspace_.memoryFiles()) {
        if (!file.parsed || file.parsed->meta.kind != LandMemoryFact::Kind::thread) continue;
        auto thread = Entities::ofKey(workspace_, file.key);
        const auto shared = std::ranges::count_if(thread.meetings, [&](const LandSidecar& meeting) {
            return meetings.contains(meeting.meetingKey);
        });
        if (shared == 0 || Entities::isPrivate(workspace_, thread)) continue;
        Rank rank{shared, thread.meetings.back().date, thread.key};
        if (!best || best->first < rank) best = {std::move(rank), std::move(thread)};
    }
    if (!best) return std::nullopt;
    return std::move(best->second);
}

BeforeEntityText BeforeStep::shown(const MemoryEntity& entity) {
    auto text =
        EntityInputs::beforeText(entity, Entities::contents(Entities::file(workspace_, entity)));
    // What an answer copies must be found in the input again.
    text.engineRegionText =
        workspace_.privacy().cleanedText(PrivateSources(workspace_).without(text.engineRegionText));
    return text;
}

void BeforeStep::plan(ChangeSet& changes, const GivenAnswer& answer,
                      const BeforeOutput& output) const {
    const std::string writer = EngineProvenance::writerName(answer.model);
    const auto card = output.card(title_, start_, people_, thread_, writer, workspace_.now());
    const auto render =
        [card, writer, now = workspace_.now(), sources = countSources(card),
         calendar = workspace_.calendar()](
            const std::optional<std::string>& existing) -> std::optional<std::string> {
        if (!existing || Text::trimmed(*existing).empty())
            return BeforeFile::render(card, writer, now, sources, calendar);
        if (!BeforeFile::declares(*existing)) return std::nullopt;
        const auto old = BeforeFile::parse(*existing, calendar);
        const Instant at = old && old->writtenAt ? *old->writtenAt : now;
        auto same = BeforeFile::render(card, writer, at, sources, calendar);
        if (same == *existing) return same;
        return BeforeFile::render(card, writer, now, sources, calendar);
    };
    changes.rewrite(path_, render);
}
}  // namespace ombrix

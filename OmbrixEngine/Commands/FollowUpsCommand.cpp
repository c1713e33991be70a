#include <algorithm>
#include <iterator>

#include "OmbrixCLI/Envelope.h"
#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Steps/Entities.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsPresentation.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

namespace Presentation = FollowUpsPresentation;
using Rows = FollowUpRows;

struct FollowUpsOptions {
    std::string by = "person";
    std::optional<std::string> person;
    bool all = false;
    GlobalOptions global;
};

/// The row's own fields, and below "labels" what a view shows of them.
Json::Value shown(const FollowUpRow& row, const std::string& today) {
    std::vector<std::string> ids = {row.id};
    if (row.recurrence) ids = row.recurrence->memberIDs;
    const auto due =
        row.due ? std::optional(Presentation::dueLabel(*row.due, today)) : std::nullopt;
    return Json::object({{"id", row.id},
                         {"ids", ids},
                         {"direction", row.direction},
                         {"what", row.what},
                         {"who", row.who},
                         {"whoKey", row.whoKey},
                         {"said", row.said},
                         {"dueRaw", row.dueRaw},
                         {"due", row.due},
                         {"quote", row.quote},
                         {"speaker", row.speaker},
                         {"certainty", row.certainty},
                         {"important", row.important},
                         {"isDone", row.isDone()},
                         {"meetingKey", row.meetingKey},
                         {"sourceTitle", row.sourceTitle},
                         {"sourceDate", row.sourceDate},
                         {"labels", Json::object({
                                        {"status", Presentation::statusPill(row, today).text()},
                                        {"direction", Presentation::directionLabel(row)},
                                        {"counterpart", Presentation::counterpart(row)},
                                        {"due", due},
                                        {"source", Presentation::sourceLabel(row, today)},
                                        {"recurrence", Presentation::recurrenceLabel(row, today)},
                                        {"speaker", Presentation::speakerLabel(row)},
                                    })}});
}

Json::Array shown(const Rows& rows, const std::string& today) {
    Json::Array list;
    for (const auto& row : rows) list.push_back(shown(row, today));
    return list;
}

Rows wanted(EngineWorkspace& workspace, const FollowUpsLedger& ledger,
            const FollowUpsOptions& options) {
    Rows rows = Presentation::openRows(ledger);
    std::ranges::copy(ledger.older, std::back_inserter(rows));  // open, if long not mentioned
    if (options.all)
        for (const auto* list : {&ledger.notSure, &ledger.closed})
            std::ranges::copy(*list, std::back_inserter(rows));
    if (!options.person) return rows;
    // The person's own files are shown whole, what private meetings said among them.
    const auto entity = EntityInputs::entity(Entities::named(workspace, *options.person).key,
                                             workspace.aliases(), workspace.landed());
    const auto isOfMeeting = [&](const FollowUpRow& row) {
        return std::ranges::find(entity.meetings, row.meetingKey, &LandSidecar::meetingKey) !=
               entity.meetings.end();
    };
    const auto isOfPerson = [&](const FollowUpRow& row) {
        return std::ranges::find(entity.keys, Text::lowercased(row.whoKey)) != entity.keys.end();
    };
    std::erase_if(rows, [&](const FollowUpRow& row) {
        return entity.kind == LandMemoryFact::Kind::thread ? !isOfMeeting(row) : !isOfPerson(row);
    });
    return rows;
}

void followUps(const CLIContext& context, const FollowUpsOptions& options) {
    EngineWorkspace workspace(context);
    workspace.tolerateDamagedAliases();
    const auto ledger = workspace.ledger();
    const auto& today = ledger.today;
    Rows rows = wanted(workspace, ledger, options);
    Json::Members data;
    data.emplace("today", today);
    data.emplace("meetingsRead", ledger.meetingsRead);
    data.emplace("count", static_cast<std::int64_t>(rows.size()));
    if (options.by == "time") {
        data.emplace("rows", shown(Presentation::byTime(std::move(rows)), today));
    } else {
        Json::Array groups;
        for (const auto& group : Presentation::byPerson(std::move(rows)))
            groups.push_back(Json::object({{"who", group.who},
                                           {"whoKey", group.whoKey},
                                           {"openCount", group.openCount()},
                                           {"rows", shown(group.rows, today)}}));
        data.emplace("people", std::move(groups));
    }
    emitSuccess(context, std::move(data), workspace.warnings());
}
}  // namespace

void declareFollowUps(Command root) {
    const Command command =
        root.subcommand("follow-ups", "What the user owes and is owed, by person or by time.");
    const auto options = command.options<FollowUpsOptions>();
    command.option("--by ORDER", options->by, "person or time.");
    command.option("--person ENTITY", options->person,
                   "Only those with this person or of this thread.");
    command.flag("--all", options->all,
                 "Also those that are not sure, or closed in the last 30 days.");
    command.validate([options] {
        if (options->by != "person" && options->by != "time")
            throw UsageError("--by is person or time.");
    });
    command.run(options, followUps);
}
}  // namespace ombrix

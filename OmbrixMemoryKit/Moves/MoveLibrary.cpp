#include "OmbrixMemoryKit/Moves/MoveLibrary.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "OmbrixMemoryKit/Moves/MoveEvidence.h"
#include "OmbrixMemoryKit/Moves/MoveLifecycle.h"
#include "OmbrixMemoryKit/Moves/NextMoveFile.h"

namespace ombrix::MoveLibrary {
namespace {

bool isOpen(const ResolvedMove& move) {
    return move.state.obligation == Obligation::open && !move.state.dismissed;
}

MoveAction actionOf(const MoveCorrection& correction, std::string_view preparedAt) {
    switch (correction.kind) {
        case MoveCorrection::Kind::discard:
            return MoveActions::Dismiss{std::string(preparedAt)};
        case MoveCorrection::Kind::restore:
            return MoveActions::Restore{std::string(preparedAt)};
        default:
            return MoveActions::MarkDone{DoneBy::you, correction.on};
    }
}

MoveState withoutRecord(const PreparedMove& move, const Knowledge& known, Detail detail) {
    if (detail == Detail::whole) return MoveLifecycle::initial(move, known.preparation);
    // Copying the work of every move into its first revision would take longer than reading it.
    MoveState state;
    state.moveId = move.id;
    state.preparation = known.preparation;
    return state;
}

MoveState stateOf(const PreparedMove& move, const Knowledge& known, Detail detail) {
    const auto record = known.records.find(move.id);
    MoveState state = record == known.records.end() ? withoutRecord(move, known, detail)
                                                    : record->second.state(Preparation::ready);
    const auto corrections = known.corrections.find(move.id);
    if (corrections == known.corrections.end()) return state;
    return apply(corrections->second, std::move(state), move.preparedAt);
}
}  // namespace

std::vector<ResolvedMove> resolve(std::vector<PrepareSidecar> sidecars, const Knowledge& known,
                                  const MoveSources& sources) {
    sortNewestFirst(sidecars);
    std::vector<ResolvedMove> moves;
    for (auto& sidecar : sidecars)
        for (auto& [move, state] : movesOf(std::move(sidecar), known))
            moves.push_back(MoveEvidence::resolve(std::move(move), std::move(state), sources));
    return moves;
}

void sortNewestFirst(std::vector<PrepareSidecar>& sidecars) {
    std::ranges::stable_sort(sidecars, [](const PrepareSidecar& a, const PrepareSidecar& b) {
        return std::tie(a.date, a.preparedAt) > std::tie(b.date, b.preparedAt);
    });
}

std::vector<MoveInState> movesOf(PrepareSidecar sidecar, const Knowledge& known, Detail detail) {
    auto moves = PrepareMapping::moves(std::move(sidecar.output), sidecar.meetingKey,
                                       isoInstant(sidecar.preparedAt));
    std::ranges::stable_partition(
        moves, [](const PreparedMove& move) { return move.stance == Stance::stated; });
    std::vector<MoveInState> result;
    result.reserve(moves.size());
    for (auto& move : moves) {
        MoveState state = stateOf(move, known, detail);
        result.push_back({std::move(move), std::move(state)});
    }
    return result;
}

MoveState apply(std::span<const MoveCorrection> corrections, MoveState state,
                std::string_view preparedAt) {
    for (const auto& correction : corrections)
        if (correction.id == state.moveId)
            state = MoveLifecycle::reduce(std::move(state), actionOf(correction, preparedAt));
    return state;
}

CorrectionsByMove corrections(std::span<const std::string> files) {
    CorrectionsByMove result;
    for (const auto& file : files) {
        const auto parsed = NextMoveFile::parse(file);
        if (!parsed) continue;
        for (const auto& correction : parsed->corrections)
            result[correction.id].push_back(correction);
    }
    return result;
}

const ResolvedMove* head(std::span<const ResolvedMove> moves) {
    const ResolvedMove* first = nullptr;
    for (const auto& move : moves) {
        if (!isOpen(move)) continue;
        if (move.move.stance == Stance::stated) return &move;
        if (first == nullptr) first = &move;
    }
    return first;
}

std::map<std::string, std::vector<std::string>> byMeeting(std::span<const ResolvedMove> moves) {
    std::map<std::string, std::vector<std::string>> result;
    for (const auto& each : moves) result[each.move.sourceId].push_back(each.move.id);
    return result;
}

std::set<std::string> servedCommitmentIDs(std::span<const ResolvedMove> moves,
                                          std::span<const FollowUpRow> rows) {
    std::set<std::string> named;
    for (const auto& each : moves)
        if (!each.state.dismissed)
            named.insert(each.move.commitmentIds.begin(), each.move.commitmentIds.end());
    std::set<std::string> served = named;
    for (const auto& row : rows) {
        std::vector<std::string> ids{row.id};
        if (row.recurrence)
            ids.insert(ids.end(), row.recurrence->memberIDs.begin(),
                       row.recurrence->memberIDs.end());
        if (std::ranges::any_of(ids, [&](const std::string& id) { return named.contains(id); }))
            served.insert(ids.begin(), ids.end());
    }
    return served;
}
}  // namespace ombrix::MoveLibrary

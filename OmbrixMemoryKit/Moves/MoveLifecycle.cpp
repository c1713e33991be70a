#include "OmbrixMemoryKit/Moves/MoveLifecycle.h"

#include <cstdint>
#include <utility>

#include "OmbrixMemoryKit/Moves/PrepareSidecar.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::MoveLifecycle {
namespace {

using namespace MoveActions;

/// The index of the last revision.
std::int64_t newest(const MoveState& state) {
    return static_cast<std::int64_t>(state.revisions.size()) - 1;
}

void forget(MoveState& state, const std::string& lineId) {
    state.edits.erase(lineId);
    state.conflicts.erase(lineId);
}

/// What an action does to a state. Gives the event to add, or nothing when the action makes no
/// sense and the state is as it was.
struct Reducer {
    MoveState& state;

    struct Event {
        MoveEventKind kind;
        std::optional<std::string> note = std::nullopt;
    };
    using Outcome = std::optional<Event>;

    Outcome operator()(Prepared&) const {
        return prepare(Preparation::ready, MoveEventKind::prepared);
    }
    Outcome operator()(Fail&) const { return prepare(Preparation::failed, MoveEventKind::failed); }
    Outcome operator()(Pause&) const { return prepare(Preparation::paused, MoveEventKind::paused); }
    Outcome operator()(Retry&) const {
        return prepare(Preparation::preparing, MoveEventKind::retried);
    }
    Outcome prepare(Preparation preparation, MoveEventKind kind) const {
        state.preparation = preparation;
        return Event{kind};
    }

    Outcome operator()(Edit& action) const {
        const Revision* const current = state.revision(state.current);
        if (current == nullptr) return {};
        const auto prepared = lineText(action.lineId, *current);
        if (!prepared) return {};
        const auto trimmed = Text::trimmed(action.text);
        const bool isReversal = trimmed.empty() || trimmed == *prepared;
        forget(state, action.lineId);
        if (!isReversal) state.edits.emplace(std::move(action.lineId), std::move(action.text));
        return Event{MoveEventKind::edited};
    }

    Outcome operator()(Copied& action) const {
        state.delivery = {Delivery::Kind::copied, {}};
        state.copiedAt = action.at;
        return Event{MoveEventKind::copied};
    }
    Outcome operator()(CopyFailed&) const {
        state.delivery = {Delivery::Kind::copyFailed, {}};
        return Event{MoveEventKind::copyFailed};
    }
    Outcome operator()(HandedOff& action) const {
        state.delivery = {Delivery::Kind::handedOff, action.to};
        return Event{MoveEventKind::handedOff, std::move(action.to)};
    }

    Outcome operator()(Regenerate& action) const {
        if (state.dismissed) return {};
        state.revisions.push_back(std::move(action.revision));
        if (state.edits.empty()) {
            state.current = newest(state);
            state.candidate.reset();
        } else {
            state.candidate = newest(state);
        }
        return Event{MoveEventKind::regenerated};
    }
    Outcome operator()(Revise& action) const {
        if (!action.revision.claims.empty()) state.dismissed = false;
        state.revisions.push_back(std::move(action.revision));
        state.candidate = newest(state);
        return Event{MoveEventKind::revised};
    }
    Outcome operator()(Adopt&) const {
        const Revision* const current = state.revision(state.current);
        const Revision* const offered = state.revision(state.candidate);
        if (current == nullptr || offered == nullptr) return {};
        state.conflicts.clear();
        for (const auto& [lineId, text] : state.edits) {
            const auto before = lineText(lineId, *current);
            const auto after = lineText(lineId, *offered);
            if (before && after && *before != *after) state.conflicts.emplace(lineId, *after);
        }
        state.current = *state.candidate;
        state.candidate.reset();
        return Event{MoveEventKind::adopted};
    }
    Outcome operator()(KeepMine&) const {
        state.candidate.reset();
        return Event{MoveEventKind::kept};
    }
    Outcome operator()(UseNewLine& action) const {
        forget(state, action.lineId);
        return Event{MoveEventKind::usedNewLine};
    }

    Outcome operator()(Dismiss&) const {
        state.dismissed = true;
        return Event{MoveEventKind::dismissed};
    }
    Outcome operator()(Restore&) const {
        state.dismissed = false;
        return Event{MoveEventKind::restored};
    }
    Outcome operator()(MarkDone& action) const {
        state.obligation = Obligation::done;
        state.doneBy = action.by;
        return Event{MoveEventKind::done, std::string(rawValue(action.by))};
    }
    Outcome operator()(Reopen&) const {
        state.obligation = Obligation::open;
        state.doneBy.reset();
        return Event{MoveEventKind::reopened};
    }
};
}  // namespace

Revision baseRevision(const PreparedMove& move) {
    return PrepareMapping::revision(move, move.id + "#prepared", "Prepared", move.preparedAt, {});
}

MoveState initial(const PreparedMove& move, Preparation preparation) {
    MoveState state;
    state.moveId = move.id;
    state.preparation = preparation;
    state.revisions.push_back(baseRevision(move));
    if (preparation == Preparation::ready)
        state.events.push_back({move.preparedAt, MoveEventKind::prepared, std::nullopt});
    return state;
}

MoveState reduce(MoveState state, MoveAction action) {
    auto at = std::visit([](const auto& each) { return each.at; }, action);
    if (auto event = std::visit(Reducer{state}, action))
        state.events.push_back({std::move(at), event->kind, std::move(event->note)});
    return state;
}

std::optional<std::string_view> lineText(std::string_view lineId, const Revision& revision) {
    for (const auto& block : revision.blocks)
        for (const auto& line : block.lines)
            if (line.id == lineId) return line.text;
    return std::nullopt;
}
}  // namespace ombrix::MoveLifecycle

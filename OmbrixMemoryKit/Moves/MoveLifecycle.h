// What can happen to a move. `reduce` is a pure function from a state and an action to the next
// state; no state is final.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "OmbrixMemoryKit/Moves/MoveState.h"

namespace ombrix {

/// The actions. Each carries its time `at`, which becomes the time of its event.
namespace MoveActions {

/// The user writes a line in their own words.
struct Edit {
    std::string lineId, text, at;
};
struct Copied {
    std::string at;
};
struct CopyFailed {
    std::string at;
};
/// The user asked for the work to be made again.
struct Regenerate {
    Revision revision;
    std::string at;
};
/// A later meeting changed the work.
struct Revise {
    Revision revision;
    std::string at;
};
/// The user takes the revision on offer.
struct Adopt {
    std::string at;
};
/// The user declines it.
struct KeepMine {
    std::string at;
};
/// The user gives up their edit of one line.
struct UseNewLine {
    std::string lineId, at;
};
struct Dismiss {
    std::string at;
};
struct Restore {
    std::string at;
};
struct MarkDone {
    DoneBy by = DoneBy::you;
    std::string at;
};
struct Reopen {
    std::string at;
};
/// The work went to another application.
struct HandedOff {
    std::string to, at;
};
struct Prepared {
    std::string at;
};
struct Fail {
    std::string at;
};
struct Pause {
    std::string at;
};
struct Retry {
    std::string at;
};
}  // namespace MoveActions

using MoveAction = std::variant<MoveActions::Edit, MoveActions::Copied, MoveActions::CopyFailed,
                                MoveActions::Regenerate, MoveActions::Revise, MoveActions::Adopt,
                                MoveActions::KeepMine, MoveActions::UseNewLine,
                                MoveActions::Dismiss, MoveActions::Restore, MoveActions::MarkDone,
                                MoveActions::Reopen, MoveActions::HandedOff, MoveActions::Prepared,
                                MoveActions::Fail, MoveActions::Pause, MoveActions::Retry>;

namespace MoveLifecycle {

/// The prepared move as its own first revision, "<move id>#prepared".
Revision baseRevision(const PreparedMove& move);

/// The state of a move to which nothing has happened: open, shown, with the base revision alone.
/// Its history has a "prepared" event when it is ready, else nothing.
MoveState initial(const PreparedMove& move, Preparation preparation);

/// The state after an action. An action that makes no sense (editing a line that the current
/// revision does not have, adopting without an offer, regenerating a dismissed move) gives the
/// state as it was; every other one adds one event. Indexes that are valid stay so.
///
/// A line is the same line in every revision that has its id. An edit therefore stays when a
/// revision is adopted; where the new revision changed that line, `conflicts` keeps what it says.
MoveState reduce(MoveState state, MoveAction action);

/// The text of the first line with that id; shows the revision's bytes.
std::optional<std::string_view> lineText(std::string_view lineId, const Revision& revision);
}  // namespace MoveLifecycle
}  // namespace ombrix

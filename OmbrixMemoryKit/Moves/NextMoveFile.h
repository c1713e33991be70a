// A move as a Markdown file that the user can read, correct and add notes to. One a move, in
// `EnginePaths::nextMovesFolder` of the Memory folder:
//
//   ---
//   title: Send Osterby the price list
//   source: Ombrix Next Move
//   kind: message
//   ...
//   ---
//   <!-- ombrix:engine v1 by="Claude Sonnet 4.5" at="2026-07-27T10:04:11Z" sources="1" -->
//   To: Ann Jones
//   ...
//   <!-- /ombrix:engine -->
//   ## Notes
//   (Yours. Ombrix never edits below its markers.)
//
//   ## Corrections
//   - done: mv-1a2b3c4d on 2026-07-28
//
// The engine writes down to its close marker; what is below is the user's and survives every
// rewrite. See EngineRegion.h.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Moves/MoveCorrections.h"
#include "OmbrixMemoryKit/Moves/MoveMarkdown.h"
#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/EnumNames.h"

namespace ombrix::NextMoveFile {

/// The folder inside the Memory folder.
constexpr std::string_view subfolder = EnginePaths::nextMovesFolder;

enum class State { open, done, discarded };
constexpr auto rawValues(State) {  // files on disk hold these
    return EnumNames::table<State>(
        {{State::open, "open"}, {State::done, "done"}, {State::discarded, "discarded"}});
}

/// The frontmatter. A line feed inside a value is written as a blank.
struct Meta {
    std::string title{};
    MoveKind kind = MoveKind::prompt;
    Stance stance = Stance::stated;
    std::string meeting{};      ///< its title
    std::string meetingDate{};  ///< its day
    std::string meetingKey{};
    std::string moveId{};
    std::vector<std::string> commitments{};
    std::optional<std::string> due{};  ///< a day
    std::vector<std::string> recipients{};
    State state = State::open;
    Instant updated{};
    bool operator==(const Meta&) const = default;
};

/// Turns of one meeting that an exchange in the file cites.
struct Cited {
    std::string sourceId{};  ///< the meeting's key
    std::vector<std::string> turnIds{};
    bool operator==(const Cited&) const = default;
};

struct Parsed {
    Meta meta{};
    std::string engineText{};  ///< the region's content
    std::vector<Cited> cited{};
    std::vector<MoveCorrection> corrections{};
    std::optional<std::string> writer{};  ///< of the open marker
    std::optional<Instant> writtenAt{};   ///< of the open marker
    bool operator==(const Parsed&) const = default;
};

/// The whole file. Of an `existing` file what is below its close marker is kept, with LF line ends
/// and one at its end; one without any marker is kept whole below the region. Nothing when its
/// markers are damaged: then leave the file alone. `context.userName` signs.
std::optional<std::string> render(const ResolvedMove& move, const Meta& meta,
                                  const MoveMarkdown::Context& context, std::string_view writer,
                                  Instant at, std::optional<std::string_view> existing);

/// The work and the exchanges behind it, each below a comment that names its turns. No text in it
/// can be taken for a marker or such a comment. Ends in a line feed.
std::string regionContent(const ResolvedMove& move, const MoveMarkdown::Context& context);

/// Nothing when the text is no next-move file: another `source`, a missing key (but for `due`), an
/// unknown kind, stance or state, an unreadable `updated`, or no readable region. Never throws.
std::optional<Parsed> parse(std::string_view text);
}  // namespace ombrix::NextMoveFile

// A move as plain text: what Copy puts on the pasteboard, and what a next-move file shows. A
// message is a mail, a hold an invitation, and everything else a prompt. Lines show the user's own
// words where they edited them.
#pragma once

#include <string>
#include <string_view>

#include "OmbrixMemoryKit/Moves/ResolvedMove.h"

namespace ombrix::MoveMarkdown {

/// Who signs, and when it is. Both may be empty: nobody signs, and a day is shown without its year.
struct Context {
    std::string userName{};
    std::string today{};  ///< a day; days of other years are shown with their year
};

/// The text that a user reads: `emailText` for a message with an email, `inviteText` for a hold
/// with an invite, else `promptText` with its evidence.
std::string render(const ResolvedMove& move, const Context& context);
/// The same work without evidence and without a line feed at its end: the copy payload. Empty for a
/// prompt without lines.
std::string work(const ResolvedMove& move, const Context& context);

enum class Evidence { without, with };

/// The blocks, what is not decided yet, and then the exchanges when they are asked for. Ends in a
/// line feed.
std::string promptText(const ResolvedMove& move, Evidence evidence);
/// The mail: header, greeting, lines and sign-off. The move has an email. Ends in a line feed.
std::string emailText(const ResolvedMove& move, std::string_view userName);
/// The invitation: title, day and time, people and lines. The move has an invite. Ends in a line
/// feed.
std::string inviteText(const ResolvedMove& move, std::string_view today);

enum class Clip { none, quotes };

/// What was said, a line a turn; `Clip::quotes` shortens each by `clipQuote`.
/// Without a line feed at its end:
///
///   Earlier call
///   From Product weekly, 2026-07-27 (Ann Jones, Tomas Vale)
///   12:03 Ann Jones: We keep the price.
std::string exchangeText(const ResolvedExchange& exchange, Clip clip);

/// "Prompt", "Email draft" or "Calendar invite".
std::string_view kindLabel(MoveKind kind);
/// "Thursday, July 30"; a text that is no day comes back unchanged.
std::string longDay(std::string_view day);
/// `longDay`, with ", 2026" when the day is of another year than `today`, which may be empty.
std::string withYear(std::string_view day, std::string_view today);
/// Seconds as "1:02:03" or "02:03". A time before 0 or without a number is 0.
std::string stamp(double seconds);
}  // namespace ombrix::MoveMarkdown

#include "OmbrixMemoryKit/Moves/MoveMarkdown.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>
#include <vector>

#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixMemoryKit/Region/QuoteClip.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::MoveMarkdown {
namespace {

using Pieces = std::vector<std::string>;
constexpr std::string_view blankLine = "\n\n";

std::string joinedPieces(const Pieces& pieces) { return Text::joined(pieces, blankLine); }

template <typename Item>
std::string bullets(const std::vector<Item>& items) {
    std::string text;
    for (const auto& item : items) text.append(text.empty() ? "- " : "\n- ").append(item.text);
    return text;
}

std::string blockPiece(const ResolvedBlock& block) {
    if (!block.label.empty()) return "## " + block.label + "\n" + bullets(block.lines);
    std::string text;
    for (const auto& line : block.lines) {
        if (&line != &block.lines.front()) text += ' ';
        text += line.text;
    }
    return text;
}

Pieces promptPieces(const ResolvedMove& move) {
    Pieces pieces;
    for (const auto& block : move.blocks)
        if (!block.lines.empty()) pieces.push_back(blockPiece(block));
    if (!move.unresolved.empty())
        pieces.push_back("## Not decided yet\n" + bullets(move.unresolved));
    return pieces;
}

Pieces emailPieces(const ResolvedMove& move, std::string_view userName) {
    const EmailDraft& email = *move.email;
    Pieces pieces{"To: " + Text::joined(email.to, ", ") + "\nSubject: " + email.subject};
    if (!email.to.empty()) {
        const auto words = Characters::splitAtWhiteSpace(email.to.front());
        if (!words.empty()) pieces.push_back(std::string(words.front()) + ",");
    }
    for (const ResolvedLine* line : move.lines()) pieces.push_back(line->text);
    pieces.push_back("Thanks,");
    if (!userName.empty()) pieces.back().append("\n").append(userName);
    return pieces;
}

Pieces invitePieces(const ResolvedMove& move, std::string_view today) {
    const Invite& invite = *move.invite;
    std::string head = invite.title + "\n" + withYear(invite.date, today);
    if (invite.time) head += ", " + *invite.time;
    if (invite.minutes) head += " · " + std::to_string(*invite.minutes) + " minutes";
    if (!invite.with.empty()) head += "\nWith " + Text::joined(invite.with, ", ");
    Pieces pieces{std::move(head)};
    std::string lines;
    for (const ResolvedLine* line : move.lines())
        lines.append(lines.empty() ? "- " : "\n- ").append(line->text);
    if (!lines.empty()) pieces.push_back(std::move(lines));
    return pieces;
}

enum class Form { email, invite, prompt };

Form formOf(const ResolvedMove& move) {
    if (move.move.kind == MoveKind::message && move.email) return Form::email;
    if (move.move.kind == MoveKind::hold && move.invite) return Form::invite;
    return Form::prompt;
}

std::string turnLine(const ResolvedTurn& turn, Clip clip) {
    std::string line;
    if (turn.atSec) line = stamp(*turn.atSec) + " ";
    // A turn of several paragraphs is one line all the same.
    const std::string text =
        Text::contains(turn.text, "\n") ? Text::flattened(turn.text) : turn.text;
    line += turn.speaker + ": " + (clip == Clip::quotes ? clipQuote(text) : text);
    if (turn.changed) line += " (changed since)";
    return line;
}
}  // namespace

std::string render(const ResolvedMove& move, const Context& context) {
    switch (formOf(move)) {
        case Form::email:
            return emailText(move, context.userName);
        case Form::invite:
            return inviteText(move, context.today);
        default:
            return promptText(move, Evidence::with);
    }
}

std::string work(const ResolvedMove& move, const Context& context) {
    switch (formOf(move)) {
        case Form::email:
            return joinedPieces(emailPieces(move, context.userName));
        case Form::invite:
            return joinedPieces(invitePieces(move, context.today));
        default:
            return joinedPieces(promptPieces(move));
    }
}

std::string promptText(const ResolvedMove& move, Evidence evidence) {
    std::string text = joinedPieces(promptPieces(move)) + "\n";
    if (evidence == Evidence::without) return text;
    for (const auto& exchange : move.exchanges)
        text += "\n" + exchangeText(exchange, Clip::none) + "\n";
    return text;
}

std::string emailText(const ResolvedMove& move, std::string_view userName) {
    return joinedPieces(emailPieces(move, userName)) + "\n";
}

std::string inviteText(const ResolvedMove& move, std::string_view today) {
    return joinedPieces(invitePieces(move, today)) + "\n";
}

std::string exchangeText(const ResolvedExchange& exchange, Clip clip) {
    std::string text;
    if (exchange.superseded) text += "No longer holds\n";
    if (exchange.earlier) text += "Earlier call\n";
    const MoveSource& source = *exchange.source;
    text += "From " + source.title + ", " + source.date;
    if (!source.people.empty()) text += " (" + Text::joined(source.people, ", ") + ")";
    for (const auto& turn : exchange.turns) text += "\n" + turnLine(turn, clip);
    return text;
}

std::string_view kindLabel(MoveKind kind) {
    switch (kind) {
        case MoveKind::message:
            return "Email draft";
        case MoveKind::hold:
            return "Calendar invite";
        default:
            return "Prompt";
    }
}

std::string longDay(std::string_view day) { return ISODate::formatted(day, "EEEE, MMMM d"); }

std::string withYear(std::string_view day, std::string_view today) {
    if (today.empty() || Characters::prefix(day, 4) == Characters::prefix(today, 4))
        return longDay(day);
    return ISODate::formatted(day, "EEEE, MMMM d, y");
}

std::string stamp(double seconds) {
    constexpr double longest = 1e9;
    const auto whole = seconds > 0 ? static_cast<long>(std::min(seconds, longest)) : 0L;
    const long hours = whole / 3600, minutes = whole / 60 % 60, rest = whole % 60;
    std::array<char, 32> text{};
    if (hours > 0)
        std::snprintf(text.data(), text.size(), "%ld:%02ld:%02ld", hours, minutes, rest);
    else
        std::snprintf(text.data(), text.size(), "%02ld:%02ld", minutes, rest);
    return text.data();
}
}  // namespace ombrix::MoveMarkdown

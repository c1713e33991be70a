#include "OmbrixMemoryKit/Ledger/FollowUpsFile.h"

#include <initializer_list>
#include <utility>
#include <variant>

#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsMerger.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsPresentation.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixMemoryKit/Region/EngineText.h"
#include "OmbrixMemoryKit/Region/Frontmatter.h"
#include "OmbrixMemoryKit/Region/QuoteClip.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::FollowUpsFile {
namespace {

constexpr std::string_view dot = " · ";
constexpr std::string_view noDate = "no date";
constexpr std::string_view fence = "---\n";
constexpr std::string_view layout = "laid out by Ombrix";
constexpr std::string_view updatedKey = "updated", meetingsReadKey = "meetings_read";

std::string joined(std::initializer_list<std::string_view> pieces) {
    std::string text;
    for (const auto piece : pieces) text += piece;
    return text;
}

std::string bracketed(std::string_view title, std::string_view date) {
    return joined({"[", title, ", ", date, "]"});
}

std::string quoted(std::string_view quote) {
    return quote.empty() ? std::string() : joined({"\"", clipQuote(quote), "\""});
}

/// `dueRaw` for a day that is not known.
std::string dayOrWords(const std::optional<std::string>& day, const FollowUpRow& row,
                       std::string_view today) {
    if (day) return ISODate::monthDay(*day, today);
    return row.dueRaw.empty() ? std::string(noDate) : row.dueRaw;
}

/// The pieces that rows of several statuses have.
struct RowPieces {
    const FollowUpRow& row;
    std::string_view today;

    /// "- **Send the deck** · to Ana"
    std::string head() const {
        return joined({"- **", row.what, "**", dot, FollowUpsPresentation::counterpart(row)});
    }
    /// "said Sep 1 · came up 3 times since Jun 2"
    std::string said() const {
        std::string text = "said " + ISODate::monthDay(row.said, today);
        if (const auto& again = row.recurrence)
            text += joined({dot, "came up ", std::to_string(again->count), " times since ",
                            ISODate::monthDay(again->firstSaid, today)});
        return text;
    }
    std::string source() const {
        return joined({quoted(row.quote), " ", bracketed(row.sourceTitle, row.sourceDate)});
    }
    std::string id() const { return joined({dot, "id ", row.id}); }

    /// A line but for done rows. Without a quote the blank in front of it is left over.
    std::string line(std::initializer_list<std::string_view> pieces) const {
        return Text::replacingAll(joined({joined(pieces), dot, source(), id()}), "·  [", "· [");
    }

    std::string operator()(const FollowUpRow::Late& late) const {
        const std::string due = row.due ? ISODate::monthDay(*row.due, today) : row.dueRaw;
        return line(
            {head(), dot, said(), dot, "due ", due, dot, FollowUpsPresentation::lateBy(late.days)});
    }
    std::string operator()(const FollowUpRow::Live&) const {
        return line(
            {head(), dot, said(), dot, row.due ? "due " : "", dayOrWords(row.due, row, today)});
    }
    std::string operator()(const FollowUpRow::Renegotiated& moved) const {
        const std::string to = moved.to ? ISODate::monthDay(*moved.to, today) : std::string(noDate);
        return line({head(), dot, said(), dot, dayOrWords(moved.from, row, today), " → ", to, " ",
                     bracketed(moved.sourceTitle, moved.sourceDate)});
    }
    std::string operator()(const FollowUpRow::NotSure&) const {
        const bool userOwes = row.direction == CommitmentDirection::userOwes;
        const std::string reading = userOwes ? "you owe " + row.who : row.who + " owes you";
        return line({"- Reads as: ", row.what, " (", reading, ")", dot, said()});
    }
    std::string operator()(const FollowUpRow::Done& done) const {
        const std::string promised =
            joined({head(), dot, "promised ", ISODate::monthDay(row.said, today)});
        const std::string on = ISODate::monthDay(done.confirmedOn, today);
        if (done.quote.empty()) return joined({promised, ", marked done ", on, " by you", id()});
        return joined({promised, ", confirmed done ", on, dot, quoted(done.quote), " ",
                       bracketed(done.sourceTitle, done.confirmedOn), id()});
    }
};

void appendSection(std::string& text, std::string_view heading, std::string_view lead,
                   const FollowUpRows& rows, std::string_view today) {
    text += joined({"\n## ", heading, "\n", rows.empty() ? "(none)\n" : lead});
    for (const auto& row : rows) {
        text += rowLine(row, today);
        text += '\n';
    }
}

/// What a line "key: value" says; nothing for another key.
std::optional<std::string_view> valueOf(std::string_view key, std::string_view line) {
    if (!line.starts_with(key) || !line.substr(key.size()).starts_with(':')) return std::nullopt;
    return Text::trimmed(line.substr(key.size() + 1));
}
}  // namespace

std::optional<std::string> render(const FollowUpsLedger& ledger, std::string_view writer,
                                  Instant updated, std::optional<std::string_view> existing) {
    const std::string head = frontmatter(updated, ledger.meetingsRead);
    const std::string openLine =
        EngineRegion::openMarker(joined({writer, "; ", layout}), updated, ledger.meetingsRead);
    const std::string content = regionContent(ledger, writer);
    if (!existing || Text::trimmed(*existing).empty())
        return EngineRegion::compose(head, openLine, content, humanTail);
    const auto parsed = EngineRegion::parse(*existing);
    if (!parsed) return std::nullopt;
    return joined({head, "\n", EngineText::withoutFrontmatter(parsed->before), openLine, "\n",
                   content, EngineRegion::closeMarker, parsed->after});
}

std::string frontmatter(Instant updated, std::int64_t meetingsRead) {
    ombrix::Frontmatter::Writer fields;
    fields.bare("title", "Follow Ups")
        .bare("source", EnginePaths::followUpsSource)
        .bare(updatedKey, isoInstant(updated))
        .bare(meetingsReadKey, std::to_string(meetingsRead))
        .bare("schema", schema);
    return fields.text();
}

std::string regionContent(const FollowUpsLedger& ledger, std::string_view writer) {
    const std::string olderLead =
        joined({"Nobody has mentioned these in ", std::to_string(FollowUpsMerger::daysUntilOlder),
                " days. They stay here until you close them.\n"});
    const struct {
        std::string_view heading, lead;
        const FollowUpRows& rows;
    } sections[] = {
        {"You owe, late", {}, ledger.youOweLate},
        {"You owe, live", {}, ledger.youOweLive},
        {"Owed to you, late", {}, ledger.owedLate},
        {"Owed to you, live", {}, ledger.owedLive},
        {"Changed along the way", {}, ledger.changed},
        {"Closed recently", {}, ledger.closed},
        {"Not sure", {}, ledger.notSure},
        {"Older", olderLead, ledger.older},
    };
    std::string text =
        joined({"Rows are what ", EngineText::onOneLine(writer), " found in your meetings, ",
                layout, ". Every row quotes its source.\n"});
    for (const auto& [heading, lead, rows] : sections)
        appendSection(text, heading, lead, rows, ledger.today);
    return EngineRegion::withoutMarkers(std::move(text));
}

std::string rowLine(const FollowUpRow& row, std::string_view today) {
    return EngineText::onOneLine(std::visit(RowPieces{row, today}, row.status));
}

std::optional<Frontmatter> parseFrontmatter(std::string_view given) {
    if (!declares(given)) return std::nullopt;
    const std::string text = Text::withLineFeeds(given);
    std::optional<Instant> updated;
    std::optional<std::int64_t> meetingsRead;
    LineCursor lines(std::string_view(text).substr(fence.size()));
    while (!lines.isAtEnd()) {
        const auto line = Text::trimmed(*lines.next());
        if (line == "---") break;
        if (const auto value = valueOf(updatedKey, line))
            updated = parseIsoInstant(*value);
        else if (const auto count = valueOf(meetingsReadKey, line))
            meetingsRead = Numbers::parseInteger<std::int64_t>(*count);
    }
    if (!updated || !meetingsRead) return std::nullopt;
    return Frontmatter{.updated = *updated, .meetingsRead = *meetingsRead};
}

bool declares(std::string_view given) {
    const std::string text = Text::withLineFeeds(given);
    return text.starts_with(fence) &&
           Text::contains(text, joined({"\nsource: ", EnginePaths::followUpsSource, "\n"}));
}
}  // namespace ombrix::FollowUpsFile

// Who promised what in a meeting, found by rules over the spoken turns and the listed action items;
// no model takes part. A promise is seen from the user's side: owed by the user, owed to the user,
// or between others. The words stay as they were spoken.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Commitments/CommitmentCues.h"
#include "OmbrixAnswerKit/Shape/StructuredAnswer.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixPlatform/EnumNames.h"

namespace ombrix {

struct Commitment {
    /// In the order in which lists show them.
    enum class Direction { userOwes, owedToUser, other };

    Direction direction = Direction::other;
    std::optional<std::string> owner;     ///< who owes; for the user the user's display name
    std::string text;                     ///< the words of the turn or the item, on one line
    std::optional<std::string> deadline;  ///< the phrase in the text that names one, as written
    double confidence = 0;                ///< one of the three constants below: which rule found it
    std::string meetingID;                ///< the id that was handed to `extract`
    std::string meetingTitle;
    std::string meetingDate;  ///< "YYYY-MM-DD" as text; empty when unknown

    static constexpr double actionItemConfidence = 0.95;
    static constexpr double firstPersonConfidence = 0.85;
    static constexpr double requestConfidence = 0.7;

    bool operator==(const Commitment&) const = default;
};

constexpr auto rawValues(Commitment::Direction) {
    return EnumNames::table<Commitment::Direction>({
        {Commitment::Direction::userOwes, "userOwes"},
        {Commitment::Direction::owedToUser, "owedToUser"},
        {Commitment::Direction::other, "other"},
    });
}

namespace CommitmentExtractor {

// The tests that the rules consist of.
using CommitmentCues::deadline;
using CommitmentCues::hasFirstPersonCue;
using CommitmentCues::hasRequestCue;
using CommitmentCues::isAcknowledgement;
using CommitmentCues::isAddressedToListener;
/// True when the words of `text` are an echo of those of the turn before it; false without one.
bool isEcho(std::string_view text, const TranscriptDocument::Turn* previous);

/// A promise as views of its document, of its id and of the user's names, which have to outlive it.
/// A document may have a million promises and a title of a megabyte, and a list of promises shows a
/// dozen; only those are copied.
struct Finding {
    Commitment::Direction direction = Commitment::Direction::other;
    std::optional<std::string_view> owner{};
    std::string_view text{};  ///< of the turn or the item, unchanged
    bool isListed = false;    ///< an action item, which keeps its curly apostrophes
    double confidence = 0;
    std::string_view meetingID{};
    const TranscriptDocument* document = nullptr;
};

/// The promises of one document: those of its turns, in order, then those of its action items, in
/// order. `id` becomes their `meetingID`. `userAliases` are the user's names, the display name
/// first; "you" and "me" always count as the user, and without another name the display name is
/// "You". Time and memory are linear in the document, except for sorting the words of echoes.
std::vector<Finding> find(const TranscriptDocument& document, std::string_view id,
                          std::span<const std::string> userAliases);

/// The finding with copies of its texts, and with its deadline.
Commitment written(const Finding& finding);

/// What `find` finds as commitments, each with its own copy of the title.
std::vector<Commitment> extract(const TranscriptDocument& document, std::string_view id,
                                std::span<const std::string> userAliases);

/// The first `cap` commitments of a direction, or of all when none is given: the latest meeting
/// first, then by direction, then the highest confidence first, then as given. A negative cap
/// counts as 0.
std::vector<Commitment> select(std::span<const Commitment> commitments,
                               std::optional<Commitment::Direction> direction, std::int64_t cap);
/// The same for findings.
std::vector<Finding> select(std::span<const Finding> findings,
                            std::optional<Commitment::Direction> direction, std::int64_t cap);

/// What `select` gives as an answer of the shape `commitments`: one item a commitment, its text
/// with the number of its meeting after it ("send the deck [2]"). `citationIDs` are the meetings,
/// each once, in order.
StructuredAnswer assemble(std::span<const Commitment> commitments,
                          std::optional<Commitment::Direction> direction, std::int64_t cap);

/// "2 commitments across 1 meeting, quoted from your transcripts."; nothing when `count` is
/// below 1.
std::optional<std::string> summary(std::int64_t count, std::int64_t meetings);
}  // namespace CommitmentExtractor
}  // namespace ombrix

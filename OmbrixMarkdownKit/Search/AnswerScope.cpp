#include "OmbrixMarkdownKit/Search/AnswerScope.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include "OmbrixMarkdownKit/Search/SpeakerIdentity.h"
#include "OmbrixPlatform/FoldedText.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using MaybeText = std::optional<std::string>;

bool isGiven(const MaybeText& text) { return text && !text->empty(); }

/// The first one when it is given, else the second as it is.
const MaybeText& firstGiven(const MaybeText& first, const MaybeText& second) {
    return isGiven(first) ? first : second;
}

/// What `choose` returns for two values; if only one is there, that one.
template <typename T, typename Choice>
std::optional<T> combined(const std::optional<T>& a, const std::optional<T>& b, Choice choose) {
    if (a && b) return choose(*a, *b);
    return a ? a : b;
}

enum class Bound { later, earlier };
MaybeText combinedDay(const MaybeText& a, const MaybeText& b, Bound bound) {
    if (!isGiven(a) && !isGiven(b)) return std::nullopt;
    if (!isGiven(a) || !isGiven(b)) return firstGiven(a, b);
    return bound == Bound::later ? std::max(*a, *b) : std::min(*a, *b);
}

AnswerScope::IDs intersection(const AnswerScope::IDs& a, const AnswerScope::IDs& b) {
    AnswerScope::IDs shared;
    std::ranges::set_intersection(a, b, std::inserter(shared, shared.end()));
    return shared;
}

std::vector<std::string> loweredPieces(std::string_view path) {
    std::vector<std::string> pieces;
    for (const auto piece : Text::splitDroppingEmpty(path, "/"))
        pieces.push_back(Text::lowercased(piece));
    return pieces;
}
}  // namespace

constinit const AnswerScope AnswerScope::all{};

bool AnswerScope::admitsFacts(std::string_view id, std::string_view date,
                              const std::vector<std::string>& participants) const {
    if (meetingIDs && !meetingIDs->contains(id)) return false;
    if (isGiven(participant) && std::ranges::none_of(participants, [&](const std::string& name) {
            return FoldedText(name).contains(*participant);
        })) {
        return false;
    }
    if (isGiven(dateFrom) && date < *dateFrom) return false;
    return !isGiven(dateTo) || date <= *dateTo;
}

bool AnswerScope::admitsFolder(std::string_view id) const {
    return !isGiven(folder) || pathIsInFolder(id, *folder);
}

bool AnswerScope::admits(std::string_view id, const TranscriptDocument& document) const {
    if (!admitsFacts(id, document.date, document.participants)) return false;
    return !speaker ||
           Participation::spoke(document, SpeakerIdentity(speaker->userName), speaker->minTurns);
}

std::vector<std::size_t> AnswerScope::admittedIndexes(
    std::span<const IdentifiedDocument> documents) const {
    const std::uint64_t wanted = lastN
                                     ? static_cast<std::uint64_t>(std::max<std::int64_t>(*lastN, 0))
                                     : std::numeric_limits<std::uint64_t>::max();
    std::vector<std::size_t> admitted;
    for (std::size_t i = 0; i < documents.size() && admitted.size() < wanted; ++i) {
        // The folder first: it costs least, and the turns most.
        if (admitsFolder(documents[i].id) && admits(documents[i].id, documents[i].document))
            admitted.push_back(i);
    }
    return admitted;
}

std::vector<IdentifiedDocument> AnswerScope::apply(
    std::span<const IdentifiedDocument> documents) const {
    std::vector<IdentifiedDocument> kept;
    for (const std::size_t i : admittedIndexes(documents)) kept.push_back(documents[i]);
    return kept;
}

AnswerScope AnswerScope::merging(const AnswerScope& other) const {
    return {
        .dateFrom = combinedDay(dateFrom, other.dateFrom, Bound::later),
        .dateTo = combinedDay(dateTo, other.dateTo, Bound::earlier),
        .lastN = combined(lastN, other.lastN,
                          [](std::int64_t a, std::int64_t b) { return std::min(a, b); }),
        .participant = firstGiven(other.participant, participant),
        .meetingIDs = combined(meetingIDs, other.meetingIDs, intersection),
        .speaker = combined(speaker, other.speaker,
                            [](const SpeakerFilter& mine, const SpeakerFilter& others) {
                                return SpeakerFilter{
                                    .userName =
                                        others.userName.empty() ? mine.userName : others.userName,
                                    .minTurns = std::max(mine.minTurns, others.minTurns)};
                            }),
        .folder = firstGiven(other.folder, folder),
    };
}

bool AnswerScope::pathIsInFolder(std::string_view path, std::string_view folder) {
    const auto wanted = loweredPieces(folder);
    const auto pieces = loweredPieces(path);
    return !wanted.empty() && !std::ranges::search(pieces, wanted).empty();
}

Json::Value encode(const SpeakerFilter& filter) {
    return Json::object({{"userName", filter.userName}, {"minTurns", filter.minTurns}});
}

SpeakerFilter decode(Json::As<SpeakerFilter>, const Json::Object& in) {
    return {.userName = in.required<std::string>("userName"),
            .minTurns = in.required<std::int64_t>("minTurns")};
}

Json::Value encode(const AnswerScope& scope) {
    return Json::object({{"dateFrom", scope.dateFrom},
                         {"dateTo", scope.dateTo},
                         {"lastN", scope.lastN},
                         {"participant", scope.participant},
                         {"meetingIDs", scope.meetingIDs},
                         {"speaker", scope.speaker},
                         {"folder", scope.folder}});
}

AnswerScope decode(Json::As<AnswerScope>, const Json::Object& in) {
    return {.dateFrom = in.optional<std::string>("dateFrom"),
            .dateTo = in.optional<std::string>("dateTo"),
            .lastN = in.optional<std::int64_t>("lastN"),
            .participant = in.optional<std::string>("participant"),
            .meetingIDs = in.optional<AnswerScope::IDs>("meetingIDs"),
            .speaker = in.optional<SpeakerFilter>("speaker"),
            .folder = in.optional<std::string>("folder")};
}
}  // namespace ombrix

std::size_t std::hash<ombrix::SpeakerFilter>::operator()(
    const ombrix::SpeakerFilter& filter) const noexcept {
    const std::size_t name = std::hash<std::string>{}(filter.userName);
    return name * 31 + std::hash<std::int64_t>{}(filter.minTurns);
}

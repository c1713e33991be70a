// Which transcripts count for a question: the filter that a question's words, a view or an option
// resolve to. It compares days as strings and knows no clock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

/// A transcript and what it is called by, as a rule the path of its file.
struct IdentifiedDocument {
    std::string id;
    TranscriptDocument document;
    bool operator==(const IdentifiedDocument&) const = default;
};

/// Only meetings in which this person really spoke; see `Participation::spoke`.
struct SpeakerFilter {
    std::string userName;
    std::int64_t minTurns = 0;  ///< below 1 means 1
    bool operator==(const SpeakerFilter&) const = default;
};

/// Every field narrows; an absent one, and a text that is empty, lets everything pass.
struct AnswerScope {
    using IDs = std::set<std::string, std::less<>>;

    std::optional<std::string> dateFrom{};  ///< "YYYY-MM-DD", inclusive
    std::optional<std::string> dateTo{};    ///< "YYYY-MM-DD", inclusive
    std::optional<std::int64_t> lastN{};    ///< only the first so many that pass; below 0 means 0
    std::optional<std::string> participant{};  ///< stands in a participant's name
    std::optional<IDs> meetingIDs{};           ///< an empty set admits nothing
    std::optional<SpeakerFilter> speaker{};    ///< an empty name is nobody and admits nothing
    std::optional<std::string> folder{};       ///< folders one behind the other: "Acme/Weekly"

    /// The scope with every field absent.
    static const AnswerScope all;
    /// True for a scope that equals `all`; one that holds an empty text does not.
    bool isAll() const { return *this == all; }

    /// What can be told without the turns: ids, participant and the two days. A document without a
    /// date stands before every `dateFrom`.
    bool admitsFacts(std::string_view id, std::string_view date,
                     const std::vector<std::string>& participants) const;
    /// True when the id, taken as a path, lies in `folder`, or no folder is asked for.
    bool admitsFolder(std::string_view id) const;
    /// The facts and the speaker. The folder is left to `apply`, whose ids are paths.
    bool admits(std::string_view id, const TranscriptDocument& document) const;

    /// The indexes of the documents that pass every field, folder included, in their order; of them
    /// the first `lastN`, so give the documents newest first.
    std::vector<std::size_t> admittedIndexes(std::span<const IdentifiedDocument> documents) const;
    /// Copies of those documents. A caller that only reads them spares the copies by the indexes.
    std::vector<IdentifiedDocument> apply(std::span<const IdentifiedDocument> documents) const;

    /// Both scopes at once: the later `dateFrom`, the earlier `dateTo`, the smaller `lastN`, the
    /// ids that stand in both sets. Of `participant`, `folder` and the speaker's name the one of
    /// `other` counts unless it is empty; of `minTurns` the greater. Two windows that do not meet
    /// merge to one that ends before it begins and admits nothing.
    AnswerScope merging(const AnswerScope& other) const;

    /// True when the folder's pieces stand one behind the other among the pieces of the path, in
    /// any depth, compared in lower case: "/x/Acme/Weekly/a.md" is in "acme/weekly", not in "Acm".
    /// A folder without pieces holds nothing.
    static bool pathIsInFolder(std::string_view path, std::string_view folder);

    bool operator==(const AnswerScope&) const = default;
};

/// Under the field names; an absent field has no key.
Json::Value encode(const SpeakerFilter& filter);
Json::Value encode(const AnswerScope& scope);
/// Missing and null are both "nothing"; a filter needs both its fields. Throws
/// `Json::DecodingError`.
SpeakerFilter decode(Json::As<SpeakerFilter>, const Json::Object& in);
AnswerScope decode(Json::As<AnswerScope>, const Json::Object& in);
}  // namespace ombrix

template <>
struct std::hash<ombrix::SpeakerFilter> {
    std::size_t operator()(const ombrix::SpeakerFilter& filter) const noexcept;
};

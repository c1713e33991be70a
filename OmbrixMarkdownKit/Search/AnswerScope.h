// Which transcripts count for a question: the filter that a question's words, a view or an option
// resolve to. Days are compared as strings; no clock is needed.
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

/// A transcript and its id, usually the path of its file.
struct IdentifiedDocument {
    std::string id;
    TranscriptDocument document;
    bool operator==(const IdentifiedDocument&) const = default;
};

/// Only meetings in which this person spoke; see `Participation::spoke`.
struct SpeakerFilter {
    std::string userName;
    std::int64_t minTurns = 0;  ///< below 1 means 1
    bool operator==(const SpeakerFilter&) const = default;
};

/// Every field narrows; an absent one and an empty text admit everything.
struct AnswerScope {
    using IDs = std::set<std::string, std::less<>>;

    std::optional<std::string> dateFrom{};  ///< "YYYY-MM-DD", inclusive
    std::optional<std::string> dateTo{};    ///< "YYYY-MM-DD", inclusive
    std::optional<std::int64_t> lastN{};  ///< only this many, the first that pass; below 0 means 0
    std::optional<std::string> participant{};  ///< part of a participant's name
    std::optional<IDs> meetingIDs{};           ///< an empty set admits nothing
    std::optional<SpeakerFilter> speaker{};    ///< an empty name is nobody and admits nothing
    std::optional<std::string> folder{};       ///< nested folders: "Acme/Weekly"

    /// The scope with every field absent.
    static const AnswerScope all;
    /// True for a scope that equals `all`; one that holds an empty text does not.
    bool isAll() const { return *this == all; }

    /// What can be decided without the turns: ids, participant and the two days. A document without
    /// a date is before every `dateFrom`.
    bool admitsFacts(std::string_view id, std::string_view date,
                     const std::vector<std::string>& participants) const;
    /// True when the id, taken as a path, is inside `folder`, or there is no `folder`.
    bool admitsFolder(std::string_view id) const;
    /// The facts and the speaker. The folder is left to `apply`, whose ids are paths.
    bool admits(std::string_view id, const TranscriptDocument& document) const;

    /// The indexes of the documents that pass every field, folder included, in their order; of them
    /// the first `lastN`, so give the documents newest first.
    std::vector<std::size_t> admittedIndexes(std::span<const IdentifiedDocument> documents) const;
    /// Copies of those documents. A caller that only reads them uses the indexes instead.
    std::vector<IdentifiedDocument> apply(std::span<const IdentifiedDocument> documents) const;

    /// Both scopes at once: the later `dateFrom`, the earlier `dateTo`, the smaller `lastN`, the
    /// ids in both sets, and the greater `minTurns`. `participant`, `folder` and the speaker's name
    /// are those of `other` unless they are empty there. Two windows that do not overlap merge to
    /// one that ends before it begins and admits nothing.
    AnswerScope merging(const AnswerScope& other) const;

    /// True when the folder's pieces follow each other among the pieces of the path, at any depth,
    /// compared in lower case: "/x/Acme/Weekly/a.md" is in "acme/weekly", not in "Acm".
    /// A folder without pieces contains nothing.
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

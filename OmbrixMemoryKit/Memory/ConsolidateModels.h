// What the consolidate recipe is given and returns: the facts that land recorded about one person
// or one thread become the content of a memory file. MemoryCandidates.h gathers the facts,
// MemoryFiles.h writes the file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Land/CanonicalInput.h"
#include "OmbrixMemoryKit/Land/LandModels.h"
#include "OmbrixPlatform/EnumNames.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

// ---- the input --------------------------------------------------------------------------------

struct ConsolidateEntity {
    std::string key{};  ///< see EntityKeys.h
    LandMemoryFact::Kind kind = LandMemoryFact::Kind::person;
    std::string display{};
    std::vector<std::string> aliases{};
    bool operator==(const ConsolidateEntity&) const = default;
};

/// One thing that a meeting said about the entity.
struct ConsolidateCandidate {
    enum class Kind { decision, openQuestion };

    std::string fact{}, quote{};
    std::string meetingTitle{}, date{};         ///< of the meeting
    Certainty certainty = Certainty::recorded;  ///< `recorded` or `read`
    std::optional<Kind> kind{};                 ///< nothing for a fact
    std::optional<std::string> who{};           ///< who settled a decision
    bool operator==(const ConsolidateCandidate&) const = default;
};

constexpr auto rawValues(ConsolidateCandidate::Kind) {  // the model is told these
    return EnumNames::table<ConsolidateCandidate::Kind>(
        {{ConsolidateCandidate::Kind::decision, "decision"},
         {ConsolidateCandidate::Kind::openQuestion, "open_question"}});
}

/// A row of the ledger as the recipes see it.
struct ConsolidateOpenFollowUp {
    std::string id{};
    std::string direction{};  ///< raw string of a `CommitmentDirection`
    std::string who{}, what{};
    std::optional<std::string> due{};  ///< an ISO day
    std::string said{};                ///< the day of the meeting
    std::string source{};              ///< "[title, date]"
    bool operator==(const ConsolidateOpenFollowUp&) const = default;
};

struct ConsolidateInput {
    std::int64_t version = 1;
    std::string hash{};  ///< `canonical` fills it in
    ConsolidateEntity entity{};
    std::string userName{};
    std::vector<ConsolidateCandidate> candidates{};
    std::vector<ConsolidateOpenFollowUp> openFollowUps{};
    std::vector<std::string> corrections{};   ///< canonical lines, see Corrections.h
    std::vector<std::string> priorNotSure{};  ///< of the memory file as it is now
    std::string today{};                      ///< an ISO day

    /// The text to send, and its hash; see CanonicalInput.h.
    CanonicalInput canonical() const;
    bool operator==(const ConsolidateInput&) const = default;
};

Json::Value encode(ConsolidateEntity entity);
Json::Value encode(ConsolidateCandidate candidate);
Json::Value encode(ConsolidateOpenFollowUp followUp);
Json::Value encode(ConsolidateInput input);

// ---- the output -------------------------------------------------------------------------------

/// A line and what it rests on, each source as "[title, date]".
struct SourcedLine {
    std::string text{};
    std::vector<std::string> sources{};
    bool operator==(const SourcedLine&) const = default;
};

struct ConsolidateDecision {
    std::string text{}, by{};
    std::optional<std::string> date{};  ///< an ISO day
    std::vector<std::string> sources{};
    bool operator==(const ConsolidateDecision&) const = default;
};

/// Something unresolved between the user and the entity.
struct ConsolidateOpen {
    enum class Direction { userOwes, owedToUser, question, other };

    std::string text{};
    Direction direction = Direction::other;
    std::optional<std::string> due{};         ///< an ISO day
    std::optional<std::string> followUpID{};  ///< a `CommitmentID`, when it is a follow-up
    std::vector<std::string> sources{};
    bool operator==(const ConsolidateOpen&) const = default;
};

constexpr auto rawValues(ConsolidateOpen::Direction) {  // the model writes these
    return EnumNames::table<ConsolidateOpen::Direction>(
        {{ConsolidateOpen::Direction::userOwes, "user_owes"},
         {ConsolidateOpen::Direction::owedToUser, "owed_to_user"},
         {ConsolidateOpen::Direction::question, "question"},
         {ConsolidateOpen::Direction::other, "other"}});
}

struct ConsolidateOutput {
    std::int64_t version = 1;
    LandMemoryFact::Kind kind = LandMemoryFact::Kind::person;
    std::vector<SourcedLine> who{};         ///< of a person
    std::vector<SourcedLine> whatThisIs{};  ///< of a thread
    std::string throughLine{};
    std::vector<ConsolidateDecision> decisions{};  ///< of a thread
    std::vector<ConsolidateOpen> open{};
    std::vector<std::string> notSure{};

    /// The record in a model's answer, refused whole. Keys the record does not have are ignored;
    /// "date", "due" and "follow_up_id" may be missing or null. Throws `LandOutput::DecodeError`:
    /// `notJSON`, `unsupportedVersion`, or `invalidDate` for "decisions.date" or "open.due".
    static ConsolidateOutput decode(std::string_view data);
    bool operator==(const ConsolidateOutput&) const = default;
};

// The codecs read a record's shape alone.
Json::Value encode(SourcedLine line);
SourcedLine decode(Json::As<SourcedLine>, const Json::Object& in);
Json::Value encode(ConsolidateDecision decision);
ConsolidateDecision decode(Json::As<ConsolidateDecision>, const Json::Object& in);
Json::Value encode(ConsolidateOpen open);
ConsolidateOpen decode(Json::As<ConsolidateOpen>, const Json::Object& in);
Json::Value encode(ConsolidateOutput output);
ConsolidateOutput decode(Json::As<ConsolidateOutput>, const Json::Object& in);
}  // namespace ombrix

// The land record: what a model returns for one meeting. Follow-ups, memory files, cards and next
// moves are all computed from these records. The JSON keys are those of the recipe's schema.
//
// Every claim has the words it rests on in `quote`, at most 240 characters by the schema; nothing
// here enforces that, what is shown is clipped.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OmbrixMemoryKit/Land/AnswerFault.h"
#include "OmbrixPlatform/EnumNames.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

enum class CommitmentDirection { userOwes, owedToUser, other };

constexpr auto rawValues(CommitmentDirection) {  // files on disk hold these
    return EnumNames::table<CommitmentDirection>(
        {{CommitmentDirection::userOwes, "user_owes"},
         {CommitmentDirection::owedToUser, "owed_to_user"},
         {CommitmentDirection::other, "other"}});  // between other people
}

enum class Certainty { recorded, read, calendarInferred };

constexpr auto rawValues(Certainty) {  // files on disk hold these
    return EnumNames::table<Certainty>(
        {{Certainty::recorded, "recorded"},  // a named speaker said it
         {Certainty::read, "read"},          // inferred, or the speaker has no name
         {Certainty::calendarInferred,
          "calendar-inferred"}});  // the one far-end label is the one other person invited
}

struct LandNoteTopic {
    std::string topic{};
    std::vector<std::string> bullets{};
    bool operator==(const LandNoteTopic&) const = default;
};

struct LandDecision {
    std::string text{}, quote{}, speaker{};
    bool operator==(const LandDecision&) const = default;
};

struct LandOpenQuestion {
    std::string text{}, quote{};
    bool operator==(const LandOpenQuestion&) const = default;
};

struct LandCommitment {
    CommitmentDirection direction = CommitmentDirection::other;
    std::string who{};     ///< the other party, as it is shown
    std::string whoKey{};  ///< see EntityKeys.h; as the model wrote it
    std::string what{}, quote{}, speaker{};
    std::string dueRaw{};              ///< the words as said
    std::optional<std::string> due{};  ///< an ISO day, when the words are one
    Certainty certainty = Certainty::read;
    bool operator==(const LandCommitment&) const = default;
};

/// What this meeting said about a commitment of an earlier one.
struct LandResolution {
    enum class Status { done, renegotiated };

    std::string id{};  ///< a `CommitmentID` that the model was given
    Status status = Status::done;
    std::string quote{};
    std::optional<std::string> newDue{};  ///< an ISO day
    bool operator==(const LandResolution&) const = default;
};

constexpr auto rawValues(LandResolution::Status) {  // files on disk hold these
    return EnumNames::table<LandResolution::Status>(
        {{LandResolution::Status::done, "done"},
         {LandResolution::Status::renegotiated, "renegotiated"}});
}

struct LandMemoryFact {
    enum class Kind { person, thread };

    std::string entityKey{};
    Kind kind = Kind::person;
    std::string fact{}, quote{};
    Certainty certainty = Certainty::read;
    bool operator==(const LandMemoryFact&) const = default;
};

constexpr auto rawValues(LandMemoryFact::Kind) {  // files on disk hold these
    return EnumNames::table<LandMemoryFact::Kind>(
        {{LandMemoryFact::Kind::person, "person"}, {LandMemoryFact::Kind::thread, "thread"}});
}

struct LandOutput {
    class DecodeError;

    std::int64_t version = 1;
    std::string summary{};
    std::vector<LandNoteTopic> notes{};
    std::vector<LandDecision> decisions{};
    std::vector<LandOpenQuestion> openQuestions{};
    std::vector<LandCommitment> commitments{};
    std::vector<LandResolution> resolutions{};
    std::vector<LandMemoryFact> memory{};
    std::vector<std::string> unresolvedSpeakers{};  ///< labels, as the transcript has them
    std::vector<std::string> notSure{};

    /// The record in a model's answer. It is refused whole, so that nothing is computed from half a
    /// record. Keys the record does not have are ignored; "notes", "due" and "new_due" may be
    /// missing, and the latter two null. Throws `DecodeError`, for the first of these that is
    /// wrong: the JSON, the version, the notes' form, the days, talk about the process in prose
    /// fields.
    static LandOutput decode(std::string_view data);
    bool operator==(const LandOutput&) const = default;
};

/// Why a record of a model is refused. Programs look at `reason`; `fault` says it to the model.
class LandOutput::DecodeError : public RefusedAnswer {
  public:
    enum class Reason {
        unsupportedVersion,  ///< `version` says which
        invalidDate,         ///< `field`, as in "commitments.due", and its `value`
        notJSON,             ///< no JSON, a missing key, a wrong type or an unknown enumerator
        invalidNotes,
        notesCommentary,
    };
    Reason reason = Reason::notJSON;
    std::int64_t version = 0;
    std::string field{}, value{};

    static DecodeError unsupportedVersion(std::int64_t version);
    /// `path` leads to the field of one item, "commitments[2].due".
    static DecodeError invalidDate(std::string_view field, std::string_view value,
                                   std::string path = {});
    static DecodeError notJSON(AnswerFault fault = {}) {
        return {Reason::notJSON, std::move(fault)};
    }
    static DecodeError invalidNotes(AnswerFault fault = {}) {
        return {Reason::invalidNotes, std::move(fault)};
    }
    static DecodeError notesCommentary(AnswerFault fault = {}) {
        return {Reason::notesCommentary, std::move(fault)};
    }

    /// The record that `Json::decode` reads in `answer`; its errors become `notJSON`.
    template <typename Record>
    static Record shapeOf(std::string_view answer);

    /// True for the same reason, whatever the faults say.
    bool operator==(const DecodeError& other) const;

  private:
    DecodeError(Reason why, AnswerFault fault) : RefusedAnswer(std::move(fault)), reason(why) {}
};

template <typename Record>
Record LandOutput::DecodeError::shapeOf(std::string_view answer) {
    try {
        return Json::decode<Record>(answer);
    } catch (const Json::SyntaxError&) {
        throw notJSON(AnswerFault::ofText(answer));
    } catch (const Json::DecodingError& error) {
        throw notJSON(AnswerFault::of(error));
    }
}

// The codecs read a record's shape alone: what `LandOutput::decode` checks besides is not checked.
Json::Value encode(LandNoteTopic topic);
LandNoteTopic decode(Json::As<LandNoteTopic>, const Json::Object& in);
Json::Value encode(LandDecision decision);
LandDecision decode(Json::As<LandDecision>, const Json::Object& in);
Json::Value encode(LandOpenQuestion question);
LandOpenQuestion decode(Json::As<LandOpenQuestion>, const Json::Object& in);
Json::Value encode(LandCommitment commitment);
LandCommitment decode(Json::As<LandCommitment>, const Json::Object& in);
Json::Value encode(LandResolution resolution);
LandResolution decode(Json::As<LandResolution>, const Json::Object& in);
Json::Value encode(LandMemoryFact fact);
LandMemoryFact decode(Json::As<LandMemoryFact>, const Json::Object& in);
Json::Value encode(LandOutput output);
LandOutput decode(Json::As<LandOutput>, const Json::Object& in);
}  // namespace ombrix

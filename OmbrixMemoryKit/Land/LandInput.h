// The one JSON object that the land prompt describes as the first user turn. LandInputBuilder.h
// assembles it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixMemoryKit/Land/CanonicalInput.h"
#include "OmbrixPlatform/Json.h"

namespace ombrix {

struct LandInputMeeting {
    std::string title{};
    std::string date{};  ///< the day, as the transcript has it
    std::vector<std::string> participants{};
    std::int64_t remoteLabelCount = 0;  ///< of the whole meeting, also in a chunk of it
    std::vector<TranscriptDocument::Turn> turns{};
    bool operator==(const LandInputMeeting&) const = default;
};

/// A commitment of an earlier meeting that is still open.
struct LandOpenFollowUp {
    std::string id{};
    std::string direction{};  ///< raw string of a `CommitmentDirection`
    std::string who{}, what{};
    std::optional<std::string> due{};  ///< an ISO day
    bool operator==(const LandOpenFollowUp&) const = default;
};

/// One line about a person in the meeting, from earlier meetings.
struct LandAttendeeStub {
    std::string key{}, oneLine{};
    bool operator==(const LandAttendeeStub&) const = default;
};

/// Which part of a long transcript, `i` of `n`, counted from 1.
struct LandChunk {
    std::int64_t i = 1, n = 1;
    bool operator==(const LandChunk&) const = default;
};

struct LandInput {
    std::int64_t version = 1;
    std::string hash{};  ///< `canonical` fills it in
    LandInputMeeting meeting{};
    std::string userName{};
    std::vector<LandOpenFollowUp> openFollowUps{};
    std::vector<LandAttendeeStub> attendeeStubs{};
    std::vector<std::string> corrections{};  ///< canonical lines, see Corrections.h
    std::optional<LandChunk> chunk{};

    /// The text to send, and its hash; see CanonicalInput.h.
    CanonicalInput canonical() const;
    bool operator==(const LandInput&) const = default;
};

Json::Value encode(LandInputMeeting meeting);
Json::Value encode(LandOpenFollowUp followUp);
Json::Value encode(LandAttendeeStub stub);
Json::Value encode(const LandChunk& chunk);
Json::Value encode(LandInput input);
}  // namespace ombrix

// The one JSON object that the `prepare` prompt describes as the first user turn: a landed meeting,
// its turns with their ids, and the commitments that the record found in it. The application fills
// it in, and decides whether a long transcript is cut to a window around the commitments
// (`chunked`).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "OmbrixMemoryKit/Land/CanonicalInput.h"
#include "OmbrixMemoryKit/Land/LandModels.h"
#include "OmbrixPlatform/Json.h"

namespace ombrix {

struct PrepareTurn {
    std::string id{};  ///< of TranscriptTurnID.h; what the answer cites
    std::string speaker{}, text{};
    bool operator==(const PrepareTurn&) const = default;
};

struct PrepareInputMeeting {
    std::string title{};
    std::string date{};  ///< a day
    std::vector<std::string> participants{};
    std::int64_t remoteLabelCount = 0;  ///< how many speaker labels of the far end there are
    std::vector<PrepareTurn> turns{};
    bool operator==(const PrepareInputMeeting&) const = default;
};

/// A commitment of the land record, and the id that a move names it by.
struct PrepareCommitment {
    PrepareCommitment() = default;
    PrepareCommitment(std::string commitmentID, LandCommitment commitment);

    std::string id{};  ///< see CommitmentID.h
    CommitmentDirection direction = CommitmentDirection::other;
    std::string who{}, whoKey{}, what{}, quote{}, speaker{}, dueRaw{};
    std::optional<std::string> due{};  ///< a day
    Certainty certainty = Certainty::read;
    bool operator==(const PrepareCommitment&) const = default;
};

struct PrepareInput {
    std::int64_t version = 1;
    std::string hash{};  ///< `canonical` fills it in
    PrepareInputMeeting meeting{};
    std::vector<PrepareCommitment> commitments{};
    std::vector<LandDecision> decisions{};
    std::vector<LandOpenQuestion> openQuestions{};
    std::string userName{};
    std::string today{};                     ///< a day
    std::vector<std::string> corrections{};  ///< canonical lines, see Corrections.h
    bool chunked = false;                    ///< `turns` is not the whole transcript
    bool operator==(const PrepareInput&) const = default;

    /// The text to send, and its hash; see CanonicalInput.h.
    CanonicalInput canonical() const;
};

Json::Value encode(const PrepareTurn& turn);
Json::Value encode(const PrepareInputMeeting& meeting);
Json::Value encode(const PrepareCommitment& commitment);
Json::Value encode(const PrepareInput& input);
}  // namespace ombrix

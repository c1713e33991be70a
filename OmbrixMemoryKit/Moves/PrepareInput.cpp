#include "OmbrixMemoryKit/Moves/PrepareInput.h"

#include <utility>

namespace ombrix {

PrepareCommitment::PrepareCommitment(std::string commitmentID, LandCommitment commitment)
    : id(std::move(commitmentID)),
      direction(commitment.direction),
      who(std::move(commitment.who)),
      whoKey(std::move(commitment.whoKey)),
      what(std::move(commitment.what)),
      quote(std::move(commitment.quote)),
      speaker(std::move(commitment.speaker)),
      dueRaw(std::move(commitment.dueRaw)),
      due(std::move(commitment.due)),
      certainty(commitment.certainty) {}

CanonicalInput PrepareInput::canonical() const { return canonicalInput(encode(*this)); }

Json::Value encode(const PrepareTurn& turn) {
    return Json::object({{"id", turn.id}, {"speaker", turn.speaker}, {"text", turn.text}});
}

Json::Value encode(const PrepareInputMeeting& meeting) {
    return Json::object({{"title", meeting.title},
                         {"date", meeting.date},
                         {"participants", meeting.participants},
                         {"remote_label_count", meeting.remoteLabelCount},
                         {"turns", meeting.turns}});
}

Json::Value encode(const PrepareCommitment& commitment) {
    return Json::object({{"id", commitment.id},
                         {"direction", commitment.direction},
                         {"who", commitment.who},
                         {"who_key", commitment.whoKey},
                         {"what", commitment.what},
                         {"quote", commitment.quote},
                         {"speaker", commitment.speaker},
                         {"due_raw", commitment.dueRaw},
                         {"due", commitment.due},
                         {"certainty", commitment.certainty}});
}

Json::Value encode(const PrepareInput& input) {
    return Json::object({{"version", input.version},
                         {"hash", input.hash},
                         {"meeting", input.meeting},
                         {"commitments", input.commitments},
                         {"decisions", input.decisions},
                         {"open_questions", input.openQuestions},
                         {"user_name", input.userName},
                         {"today", input.today},
                         {"corrections", input.corrections},
                         {"chunked", input.chunked}});
}
}  // namespace ombrix

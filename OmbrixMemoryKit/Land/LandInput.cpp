#include "OmbrixMemoryKit/Land/LandInput.h"

#include <utility>

namespace ombrix {

CanonicalInput LandInput::canonical() const { return canonicalInput(encode(*this)); }

Json::Value encode(LandInputMeeting meeting) {
    return Json::object({{"title", std::move(meeting.title)},
                         {"date", std::move(meeting.date)},
                         {"participants", std::move(meeting.participants)},
                         {"remote_label_count", meeting.remoteLabelCount},
                         {"turns", meeting.turns}});
}

Json::Value encode(LandOpenFollowUp followUp) {
    return Json::object({{"id", std::move(followUp.id)},
                         {"direction", std::move(followUp.direction)},
                         {"who", std::move(followUp.who)},
                         {"what", std::move(followUp.what)},
                         {"due", std::move(followUp.due)}});
}

Json::Value encode(LandAttendeeStub stub) {
    return Json::object({{"key", std::move(stub.key)}, {"one_line", std::move(stub.oneLine)}});
}

Json::Value encode(const LandChunk& chunk) {
    return Json::object({{"i", chunk.i}, {"n", chunk.n}});
}

Json::Value encode(LandInput input) {
    return Json::object({{"version", input.version},
                         {"hash", std::move(input.hash)},
                         {"meeting", std::move(input.meeting)},
                         {"user_name", std::move(input.userName)},
                         {"open_follow_ups", std::move(input.openFollowUps)},
                         {"attendee_stubs", std::move(input.attendeeStubs)},
                         {"corrections", std::move(input.corrections)},
                         {"chunk", input.chunk}});
}
}  // namespace ombrix

// What earlier meetings give the landing of one: open follow-ups of its people, a line about each
// of them, the user's corrections. Only meetings before it count, and the ledger is that of its own
// day. So what landing it, or any later meeting, brings about does not change its input.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixEngine/Workspace/EngineWorkspace.h"
#include "OmbrixMemoryKit/Land/LandInput.h"

namespace ombrix {

class LandHistory {
  public:
    explicit LandHistory(EngineWorkspace& workspace);

    /// The canonical keys of the people of a meeting but the user: the participants, then those
    /// who speak under a name. Without private people.
    std::vector<std::string> people(const TranscriptDocument& header,
                                    const std::vector<std::string>& speakers) const;

    struct Context {
        std::vector<LandOpenFollowUp> openFollowUps{};
        std::vector<LandAttendeeStub> stubs{};
        std::vector<Correction> corrections{};
    };
    Context context(const TranscriptEntry& entry, const std::vector<std::string>& people);

    struct Meeting {
        const TranscriptEntry* entry = nullptr;
        std::vector<std::string> people{};
    };
    /// For each meeting a number that changes when something of its context does. One pass over the
    /// sidecars for all meetings.
    std::vector<std::uint64_t> digests(const std::vector<Meeting>& meetings);

  private:
    /// The person of a commitment that a correction names, and the place of its meeting.
    struct Owner {
        std::string person;
        std::size_t place = 0;
    };
    const std::map<std::string, Owner, std::less<>>& owners();
    std::vector<Correction> corrections(std::size_t before, std::string_view meetingKey,
                                        const std::set<std::string, std::less<>>& people);

    EngineWorkspace& workspace_;
    std::optional<std::map<std::string, Owner, std::less<>>> owners_;
};
}  // namespace ombrix

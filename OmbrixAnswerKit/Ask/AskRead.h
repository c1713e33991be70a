// What one ask reads. An ask that starts with a skill's command may name its meetings
// ("/slack-recap my last 3 Lumen meetings"); any other ask is about the place where the user
// stands.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Ask/ViewContext.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

struct AskRead {
    std::optional<std::string> command{};  ///< the skill's name, without the slash
    std::string request{};                 ///< what stands after the command; without one, the ask
    std::vector<std::string> material{};   ///< ids of meetings, in the order to read them in
    std::vector<std::string> unmatched{};  ///< words of the request that no meeting on file has
    std::optional<std::string> person{};   ///< a participant the request names, as listed there
    std::vector<std::string> phrases{};    ///< the parts of the request that named something
    std::string statement{};               ///< of the place; see `AskContext::statement`

    /// True when the ask itself names what to read; false when the place decides.
    bool named() const { return !phrases.empty(); }
    /// "No meetings on file match Lumen or Acme."; nothing when every word matched.
    std::optional<std::string> saidBack() const;

    bool operator==(const AskRead&) const = default;
};

namespace AskContext {

/// What is known when an ask is read.
struct Surroundings {
    std::vector<AskMeeting> pool{};      ///< all meetings, newest first
    AnswerScope scope{};                 ///< what the view itself narrows to
    std::vector<std::string> series{};   ///< ids that belong with the context's meeting
    std::string userName{};              ///< empty when unknown
    std::optional<std::string> title{};  ///< of the context's meeting
};

/// Reads `ask` at the clock `now`. Without a command or a request, and when the request names
/// nothing, the material is that of the place (`material`). A request names meetings among those of
/// `baseScope`. Never throws; linear in the ask, and in the pool but for sorting it.
AskRead read(std::string_view ask, const AskViewContext& context, const Surroundings& around,
             Instant now, const Calendar& calendar);
}  // namespace AskContext
}  // namespace ombrix

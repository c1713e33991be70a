// Any text as the ask of a skill, against a few meetings.
//
// libFuzzer: -max_len=2048
#include <algorithm>
#include <string>

#include "Law.h"
#include "OmbrixAnswerKit/Ask/AskRead.h"
#include "OmbrixAnswerKit/Ask/SkillRequestReader.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

const AskContext::Surroundings& around() {
    static const AskContext::Surroundings surroundings{
        .pool = {{.id = "c",
                  .title = "Lumen: design review",
                  .date = "2026-08-20",
                  .participants = {"Zoë O’Neil", "Nadia Brandt"},
                  .folder = "Projects/Lumen"},
                 {.id = "b", .title = "1:1", .date = "2026-08-12", .participants = {"Bo Ek"}},
                 {.id = "a", .title = "会議", .date = "2026-07-01", .participants = {"שלום"}}},
        .userName = "Nadia Brandt"};
    return surroundings;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Calendar calendar("Europe/Berlin", Calendar::Weekday::monday, 4);
    static const Instant now = *parseIsoInstant("2026-08-21T12:00:00Z");
    const std::string_view ask = Fuzz::text(data, size);
    const AskViewContext view = AskContext::day(now, calendar);

    const AskRead read = AskContext::read(ask, view, around(), now, calendar);
    law(read == AskContext::read(ask, view, around(), now, calendar), "read twice, the same");
    const auto split = SkillRequestReader::split(ask);
    law(read.command.has_value() == split.has_value(), "the command is that of the ask");
    law(!split || (!split->command.empty() && Text::trimmed(split->request) == split->request),
        "a command has a name, a request no blanks around it");
    law(read.named() || (read.unmatched.empty() && !read.person), "only phrases name something");
    law(read.named() || read.material.size() == around().pool.size(), "else the place decides");
    std::string ids;
    for (const std::string& id : read.material) ids += id;
    law(std::ranges::is_sorted(ids, std::ranges::greater()) && ids.size() <= 3, "newest first");
    return 0;
}

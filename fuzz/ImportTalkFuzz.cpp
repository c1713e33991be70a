// Talk with clocks, labels or names without case, of any bytes, and of anything that comes near it:
// each line that has one of the forms counts, whether the whole proves to be a conversation or not.
#include "ImportLaws.h"
#include "OmbrixMarkdownKit/Import/AnyExport.h"
#include "OmbrixMarkdownKit/Import/Talk.h"
#include "OmbrixMarkdownKit/Import/TimedLines.h"

namespace {

using namespace ombrix;
using namespace TranscriptImport;

std::vector<Turn> turnsOfAnyLines(std::string_view text) {
    return meetingOf(
               readTalk(
                   text,
                   [](std::string_view line) -> std::optional<TalkLine> {
                       const auto found = timedLine(line);
                       if (!found) return std::nullopt;
                       Fuzz::law(found->form == TimedForm::clockOnly || !found->name.empty(),
                                 "a name");
                       Fuzz::law(found->clock.seconds >= 0, "a clock");
                       return TalkLine{found->name, found->organisation, found->text, found->clock};
                   }))
        .turns;
}

std::vector<ParsedMeeting> meetingsOf(std::string_view text) {
    std::vector<ParsedMeeting> meetings{{.turns = turnsOfAnyLines(text)}};
    if (auto found = readAnyExport(text, "2026-07-30"))
        for (auto& meeting : found->meetings) meetings.push_back(std::move(meeting));
    return meetings;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return Fuzz::importLaws(data, size, meetingsOf);
}

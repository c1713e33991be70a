// Talk with clocks, labels or names without case, of any bytes, and of anything that comes near it:
// each line that has one of the forms counts, whether the whole proves to be a conversation or not.
#include "ImportLaws.h"
#include "OmbrixMarkdownKit/Import/AnyExport.h"
#include "OmbrixMarkdownKit/Import/SaidTimes.h"
#include "OmbrixMarkdownKit/Import/SheetOfTurns.h"
#include "OmbrixMarkdownKit/Import/Talk.h"
#include "OmbrixMarkdownKit/Import/TimedLines.h"
#include "OmbrixMarkdownKit/Import/TimedTalk.h"

namespace {

using namespace ombrix;
using namespace TranscriptImport;

std::optional<TalkLine> anyLine(std::string_view line) {
    const auto found = timedLine(line);
    if (!found) return std::nullopt;
    Fuzz::law(found->form == TimedForm::clockOnly || !found->name.empty(), "a name");
    Fuzz::law(found->clock.seconds >= 0, "a clock");
    return TalkLine{found->name,  found->organisation, found->text,
                    found->clock, found->isInBrackets, found->hasColon};
}

std::vector<Turn> turnsOfAnyLines(std::string_view text) {
    Talk talk = readTalk(text, anyLine);
    giveBackSaidTimes(talk);
    Fuzz::law(talk.lines.empty() || !talk.lines.front().speaker.empty(), "somebody begins");
    return meetingOf(talk).turns;
}

std::vector<ParsedMeeting> meetingsOf(std::string_view text) {
    std::vector<ParsedMeeting> meetings{{.turns = turnsOfAnyLines(text)}};
    if (auto below = readClocksBelowNames(text)) meetings.push_back(std::move(*below));
    if (auto sheet = readSheetOfTurns(text)) meetings.push_back(std::move(*sheet));
    if (auto found = readAnyExport(text, "2026-07-30"))
        for (auto& meeting : found->meetings) meetings.push_back(std::move(meeting));
    return meetings;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return Fuzz::importLaws(data, size, meetingsOf);
}

#include "OmbrixMarkdownKit/Import/TimedTalk.h"

#include <algorithm>

#include "OmbrixMarkdownKit/Import/ExportFacts.h"
#include "OmbrixMarkdownKit/Import/Talk.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

/// Without a name that comes again, more speeches are the entries of a list.
constexpr std::size_t mostWithoutReturn = 5;
constexpr std::size_t mostLinesASpeech = 40;
constexpr std::size_t mostLinesBefore = 40;

/// What a call's page tells ahead of its first speech.
struct CallPage {
    std::optional<std::string> title, date;
    bool hasLink = false;

    bool isOne() const { return title && hasLink; }
};

/// "Pricing weekly - May 14".
void readHeading(CallPage& page, std::string_view line,
                 const std::optional<std::string>& reference) {
    for (const std::string_view dash : {" - ", " – ", " — "}) {
        const std::size_t at = line.rfind(dash);
        if (at == line.npos) continue;
        const auto day = Text::trimmed(line.substr(at + dash.size()));
        page.date = isoDay(day);
        if (!page.date) page.date = dayWithoutYear(day, reference);
        if (!page.date && !dayWithoutYear(day, "2000-12-31")) continue;  // a leap year
        line = line.substr(0, at);
        line.remove_prefix(std::min(line.find_first_not_of("# "), line.size()));
        page.title = Text::trimmed(line);
        return;
    }
}

CallPage callPageOf(std::string_view text, const std::optional<std::string>& reference) {
    CallPage page;
    bool isFirst = true;
    LineCursor lines(text);
    while (const auto next = lines.next()) {
        const auto line = Text::trimmed(*next);
        if (line.empty()) continue;
        if (timedLine(line)) break;
        if (std::exchange(isFirst, false)) readHeading(page, line, reference);
        if (Text::contains(line, "http://") || Text::contains(line, "https://"))
            page.hasLink = true;
    }
    return page;
}

/// What a line is in a text whose speeches have that form.
std::optional<TalkLine> talkLine(const std::optional<TimedLine>& found, TimedForm form) {
    if (!found) return std::nullopt;
    const bool isHeader = form == TimedForm::nameThenClock;
    const bool saysNothing = form == TimedForm::nameThenSpeech &&
                             found->form == TimedForm::nameThenClock && found->hasColon;
    if (found->form == form || saysNothing ||
        (isHeader && found->form == TimedForm::nameThenSpeech))
        return TalkLine{found->name, found->organisation, found->text, found->clock};
    if (found->form == TimedForm::clockOnly &&
        (form == TimedForm::clockThenSpeech || found->text.empty()))
        return TalkLine{.text = found->text, .clock = found->clock};
    return std::nullopt;
}

bool isWithinReason(const Talk& talk, const Voices& voices) {
    return voices.speeches >= 2 && !voices.clocksGoBack && voices.texts > 0 &&
           voices.codeLike * 3 <= voices.texts && !voices.areRecords &&
           talk.lines.size() <= voices.speeches * mostLinesASpeech &&
           talk.linesBefore <= mostLinesBefore + 2 * voices.speeches;
}

/// True when the names are those of people who talk, and not of a list of chapters or of what is on
/// today: somebody speaks again, or the talk is short. Of words in a script without case, which all
/// may be names, two must come again.
bool isAmongPeople(const Voices& voices, bool haveColons) {
    if (voices.caseless > 0 && !haveColons) return voices.returning >= 2;
    if (voices.returning > 0) return true;
    if (voices.areClocksRound || voices.speeches > mostWithoutReturn) return false;
    return (voices.areAllPersonal() && voices.caseless == 0) || (haveColons && voices.beginsAtZero);
}

/// Logs have names that return, too; theirs are single words, and few lines end like sentences.
bool readsLikeLog(const Voices& voices, TimedForm form) {
    return form == TimedForm::clockThenSpeech && voices.personal == 0 &&
           voices.sentences * 2 < voices.texts;
}
}  // namespace

void TimedSigns::look(std::string_view trimmedLine) {
    const auto found = timedLine(trimmedLine);
    if (found && found->form != TimedForm::clockOnly)
        ++counts_[static_cast<std::size_t>(found->form)];
}

std::vector<TimedForm> TimedSigns::forms() const {
    std::vector<TimedForm> forms;
    for (std::size_t form = 0; form < counts_.size(); ++form)
        if (counts_[form] > 0) forms.push_back(static_cast<TimedForm>(form));
    std::ranges::stable_sort(forms, [this](TimedForm a, TimedForm b) {
        return counts_[static_cast<std::size_t>(a)] > counts_[static_cast<std::size_t>(b)];
    });
    return forms;
}

std::optional<ParsedMeeting> readTimedTalk(std::string_view text, TimedForm form,
                                           const std::optional<std::string>& reference) {
    bool haveColons = true;
    std::size_t withoutName = 0;
    const Talk talk = readTalk(text, [&](std::string_view line) {
        const auto found = timedLine(line);
        auto said = talkLine(found, form);
        if (said && said->speaker.empty() && !said->text.empty()) ++withoutName;
        if (said && !said->speaker.empty() && !found->hasColon) haveColons = false;
        return said;
    });
    const Voices voices = voicesOf(talk);
    if (!isWithinReason(talk, voices) || withoutName > voices.speeches) return std::nullopt;
    if (readsLikeLog(voices, form)) return std::nullopt;
    CallPage page;
    if (form == TimedForm::clockThenName) page = callPageOf(text, reference);
    if (!page.isOne() && !isAmongPeople(voices, haveColons)) return std::nullopt;
    ParsedMeeting meeting = meetingOf(talk);
    if (page.isOne()) {
        meeting.format = Format::fathomText;
        meeting.title = page.title;
        if (page.date) meeting.date = page.date;
    }
    return meeting;
}
}  // namespace ombrix::TranscriptImport

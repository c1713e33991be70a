#include "OmbrixMarkdownKit/Import/TimedTalk.h"

#include <algorithm>
#include <unordered_set>

#include "OmbrixMarkdownKit/Import/ExportFacts.h"
#include "OmbrixMarkdownKit/Import/SaidTimes.h"
#include "OmbrixMarkdownKit/Import/Talk.h"
#include "OmbrixMarkdownKit/Import/Voices.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

/// Without a name that comes again, more speeches are the entries of a list.
constexpr std::size_t mostWithoutReturn = 5;
constexpr std::size_t mostLinesASpeech = 40;
constexpr std::size_t mostLinesBefore = 40;
/// Three people may well speak twice in one order.
constexpr std::size_t leastRoundsOfRecords = 3;

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
    const bool saysNothing = form == TimedForm::nameThenSpeech &&
                             found->form == TimedForm::nameThenClock && found->hasColon;
    const bool saysMore =
        form == TimedForm::nameThenClock && found->form == TimedForm::nameThenSpeech;
    if (found->form == form || saysNothing || saysMore) {
        TalkLine line{.speaker = found->name,
                      .organisation = found->organisation,
                      .clock = found->clock,
                      .isInBrackets = found->isInBrackets,
                      .hasColon = found->hasColon};
        if (form != TimedForm::clockThenName) line.text = found->text;
        return line;
    }
    // "[00:09] And Tom, of course." goes on with the one before, as "[00:09] and Tom" does.
    const bool goesOn = form == TimedForm::clockThenSpeech &&
                        found->form == TimedForm::clockThenName && found->isInBrackets;
    if (goesOn || (found->form == TimedForm::clockOnly &&
                   (form == TimedForm::clockThenSpeech || found->text.empty())))
        return TalkLine{
            .text = found->text, .clock = found->clock, .isInBrackets = found->isInBrackets};
    return std::nullopt;
}

bool haveColons(const Talk& talk) {
    return std::ranges::all_of(talk.lines, [](const TalkLine& line) {
        return line.speaker.empty() || !line.clock || line.hasColon;
    });
}

bool isWithinReason(const Talk& talk, const Voices& voices) {
    const auto withoutName = std::ranges::count_if(talk.lines, [](const TalkLine& line) {
        return line.clock && line.speaker.empty() && !line.text.empty();
    });
    return voices.speeches >= 2 && !voices.clocksGoBack && voices.texts > 0 && voices.areProse() &&
           voices.rounds < leastRoundsOfRecords &&
           static_cast<std::size_t>(withoutName) <= voices.speeches &&
           talk.lines.size() <= voices.speeches * mostLinesASpeech &&
           talk.linesBefore <= mostLinesBefore + 2 * voices.speeches;
}

/// True when the names are those of people who talk, and not of a list of chapters or of what is on
/// today: somebody speaks again, or the talk is short. Of words in a script without case, which all
/// may be names, two must come again.
bool isAmongPeople(const Talk& talk, const Voices& voices) {
    if (voices.areScheduled) return false;
    const bool areColons = haveColons(talk);
    if (voices.caseless > 0 && !areColons) return voices.returning >= 2;
    if (voices.returning > 0) return true;
    if (voices.areClocksRound || voices.speeches > mostWithoutReturn) return false;
    return (voices.areAllPersonal() && voices.caseless == 0) || (areColons && voices.beginsAtZero);
}

/// Logs, recipes and timetables have names that return, too; theirs are single words, and few lines
/// end like sentences. Neither do those of a raw transcript, which begins with its recording.
bool readsLikeLog(const Voices& voices, TimedForm form) {
    if (voices.personal > 0 || voices.endLikeSentences()) return false;
    if (form != TimedForm::clockThenSpeech) return voices.returning < 2 && !voices.beginsAtZero;
    return voices.returning < 2 || !voices.beginsAtZero || voices.phrases * 2 < voices.texts;
}

/// Each name beside the clock below it, on one line: "Ana Ruiz 00:03".
std::string withClocksBesideNames(std::string_view text) {
    std::string beside;
    std::string_view name;
    std::size_t emptyLines = 0;  // between the two
    const auto end = [&] {
        if (!name.empty()) beside.append(name).append(1 + emptyLines, '\n');
        name = {};
        emptyLines = 0;
    };
    LineCursor lines(text);
    while (const auto next = lines.next()) {
        const auto line = Text::trimmed(*next);
        if (!name.empty() && isClockAlone(line)) {
            beside.append(name).append(" ").append(line).append("\n");
            name = {};
            emptyLines = 0;
        } else if (!name.empty() && line.empty()) {
            ++emptyLines;
        } else {
            end();
            if (isNameAlone(line))
                name = line;
            else
                beside.append(*next).append("\n");
        }
    }
    end();
    return beside;
}
}  // namespace

void TimedSigns::look(std::string_view trimmedLine) {
    const auto found = timedLine(trimmedLine);
    if (found && found->form != TimedForm::clockOnly)
        ++counts_[static_cast<std::size_t>(found->form)];
    else if (found && found->text.empty() && isNameAlone(lastLine_))
        isClockBelowName_ = true;
    if (!trimmedLine.empty()) lastLine_ = trimmedLine;
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
    Talk talk =
        readTalk(text, [form](std::string_view line) { return talkLine(timedLine(line), form); });
    giveBackSaidTimes(talk);
    const Voices voices = voicesOf(talk);
    if (!isWithinReason(talk, voices) || readsLikeLog(voices, form)) return std::nullopt;
    CallPage page;
    if (form == TimedForm::clockThenName) page = callPageOf(text, reference);
    if (!page.isOne() && !isAmongPeople(talk, voices)) return std::nullopt;
    ParsedMeeting meeting = meetingOf(talk);
    if (page.isOne()) {
        meeting.format = Format::fathomText;
        meeting.title = page.title;
        if (page.date) meeting.date = page.date;
    }
    return meeting;
}

std::optional<ParsedMeeting> readClocksBelowNames(std::string_view text) {
    auto meeting =
        readTimedTalk(withClocksBesideNames(text), TimedForm::nameThenClock, std::nullopt);
    if (!meeting) return std::nullopt;
    std::unordered_set<std::string_view> speakers;
    for (const Turn& turn : meeting->turns) speakers.insert(turn.speaker);
    return speakers.size() < meeting->turns.size() ? std::move(meeting) : std::nullopt;
}
}  // namespace ombrix::TranscriptImport

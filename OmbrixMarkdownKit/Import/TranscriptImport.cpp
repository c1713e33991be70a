#include "OmbrixMarkdownKit/Import/TranscriptImport.h"

#include "OmbrixMarkdownKit/Import/AnyExport.h"
#include "OmbrixMarkdownKit/Import/LineEnds.h"
#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

/// A title as a transcript's header gives it back, where a pair of double quotes around a value
/// does not belong to it.
std::string headerTitle(std::string_view title) {
    const std::string plain = plainLine(title);
    std::string_view rest = plain;
    while (rest.size() >= 2 && rest.starts_with('"') && rest.ends_with('"'))
        rest = Text::trimmed(rest.substr(1, rest.size() - 2));
    return std::string(rest);
}

/// What a meeting gets from outside when it does not tell it.
struct Defaults {
    std::string title;
    std::optional<std::string> date;
};

Defaults defaultsFor(std::string_view filename, const std::optional<std::string>& fallbackDate) {
    std::string title = headerTitle(titleFromFilename(filename));
    if (title.empty()) title = untitled;
    auto day = numericDay(filename);
    return {std::move(title), day ? std::move(day) : fallbackDate};
}

Result resultOf(const ParsedMeeting& meeting, Format format, const Defaults& defaults,
                std::string_view filename) {
    Result result{.format = meeting.format.value_or(format),
                  .title = headerTitle(meeting.title.value_or("")),
                  .participants = orderedParticipants(meeting.turns),
                  .turnCount = static_cast<std::int64_t>(meeting.turns.size()),
                  .date = meeting.date ? meeting.date : defaults.date};
    if (result.title.empty()) result.title = defaults.title;
    result.markdown = render(result.title, result.date, result.participants, meeting.turns,
                             result.format, filename);
    return result;
}
}  // namespace

const char* Failure::what() const noexcept {
    switch (kind_) {
        case Kind::unrecognizedFormat:
            return "not a transcript of a known format";
        case Kind::noSpeech:
            return "no speech in it";
        case Kind::alreadyOmbrix:
            return "already an Ombrix transcript";
    }
    return "";
}

std::optional<Format> detect(std::string_view text) {
    std::string storage;
    const auto found = recognized(withPlainLineEnds(text, storage));
    return found ? std::optional(found->format) : std::nullopt;
}

std::vector<Result> convertAll(std::string_view text, std::string_view filename,
                               const std::optional<std::string>& fallbackDate) {
    std::string storage;
    text = withPlainLineEnds(text, storage);
    if (OmbrixTranscriptMarker::declares(text)) throw Failure(Failure::Kind::alreadyOmbrix);
    const auto day = numericDay(filename);
    const auto found = readAnyExport(text, day ? day : fallbackDate);
    if (!found) throw Failure(Failure::Kind::unrecognizedFormat);
    if (found->meetings.empty()) throw Failure(Failure::Kind::noSpeech);

    const Defaults defaults = defaultsFor(filename, fallbackDate);
    std::vector<Result> results;
    results.reserve(found->meetings.size());
    for (const ParsedMeeting& meeting : found->meetings)
        results.push_back(resultOf(meeting, found->format, defaults, filename));
    return results;
}

Result convert(std::string_view text, std::string_view filename,
               const std::optional<std::string>& fallbackDate) {
    return std::move(convertAll(text, filename, fallbackDate).front());
}
}  // namespace ombrix::TranscriptImport

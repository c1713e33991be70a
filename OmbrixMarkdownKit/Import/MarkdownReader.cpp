#include "OmbrixMarkdownKit/Import/MarkdownReader.h"

#include "OmbrixMarkdownKit/Import/ExportFacts.h"
#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::string_view titleKey = "title:";
constexpr std::string_view dateKey = "date:";
constexpr std::string_view frontMatterMark = "---";
constexpr std::string_view titleMark = "# ";

/// The value of a "key:" line, without quotes and apostrophes around it.
std::string_view unquoted(std::string_view value) {
    constexpr std::string_view quotes = "\"'";
    value = Text::trimmed(value);
    const std::size_t begin = value.find_first_not_of(quotes);
    if (begin == value.npos) return {};
    return Text::trimmed(value.substr(begin, value.find_last_not_of(quotes) + 1 - begin));
}

class MarkdownReader {
  public:
    ParsedMeeting meeting;

    /// A trimmed line, the first one included.
    void read(std::string_view line) {
        const bool isFirst = std::exchange(isFirstLine_, false);
        if (line == frontMatterMark && (isFirst || isInFrontMatter_)) {
            isInFrontMatter_ = isFirst;
            return;
        }
        if (isInFrontMatter_)
            readFact(line);
        else
            readBody(line);
    }

  private:
    /// The last title and the last day count; an empty or unreadable one is none.
    bool readFact(std::string_view line) {
        if (line.starts_with(titleKey)) {
            const auto value = unquoted(line.substr(titleKey.size()));
            if (!value.empty()) meeting.title = value;
            return true;
        }
        if (line.starts_with(dateKey)) {
            if (auto day = isoDay(unquoted(line.substr(dateKey.size())))) meeting.date = day;
            return true;
        }
        return false;
    }

    void readBody(std::string_view line) {
        if (line.starts_with('#')) {
            if (line.starts_with(titleMark) && !meeting.title)
                meeting.title = Text::trimmed(line.substr(titleMark.size()));
            speaker_.reset();
            return;
        }
        if (!hasSpeech_ && readFact(line)) return;
        if (const auto speech = exportSpeechLine(line, storage_)) {
            hasSpeech_ = true;
            speaker_ = speech->speaker;
            append(meeting.turns, *speaker_, speech->text);
        } else if (speaker_) {
            append(meeting.turns, *speaker_, stripBullet(line));
        }
    }

    bool isFirstLine_ = true;
    bool isInFrontMatter_ = false;
    bool hasSpeech_ = false;
    std::optional<std::string_view> speaker_;
    std::string storage_;
};
}  // namespace

ParsedMeeting readMarkdown(std::string_view text) {
    MarkdownReader reader;
    LineCursor lines(text);
    while (const auto line = lines.next()) reader.read(Text::trimmed(*line));
    return std::move(reader.meeting);
}
}  // namespace ombrix::TranscriptImport

#include "OmbrixMarkdownKit/Import/LinkedQuotes.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>

#include "OmbrixMarkdownKit/Import/JsonDates.h"
#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixMarkdownKit/Import/TalkNames.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::string_view sign = "#startMs=";
constexpr std::string_view titleMark = "# ";
constexpr std::string_view boldMark = "**";

/// Like string_view's find, which stops at every "#" and so is slow on code.
bool holdsSign(std::string_view text) {
    return !text.empty() && ::memmem(text.data(), text.size(), sign.data(), sign.size());
}

std::string_view withoutPrefix(std::string_view text, std::string_view prefix) {
    if (text.starts_with(prefix)) text.remove_prefix(prefix.size());
    return text;
}

std::string_view withoutBold(std::string_view label) {
    label = withoutPrefix(trimmedName(label), boldMark);
    if (label.ends_with(boldMark)) label.remove_suffix(boldMark.size());
    return trimmedName(label);
}

/// The line without the marks of quotes, nested ones too, and one bullet.
std::string_view withoutQuoteMarks(std::string_view line) {
    while (line.starts_with('>')) line = Text::trimmed(line.substr(1));
    return stripBullet(line);
}

struct LinkedQuote {
    std::string_view speaker, text;
    std::optional<std::string> day;
};

/// `line` is without quote marks.
std::optional<LinkedQuote> linkedQuote(std::string_view line) {
    line = withoutPrefix(line, boldMark);
    const std::size_t close = line.starts_with('[') ? line.find("](") : line.npos;
    const std::size_t end = close == line.npos ? line.npos : line.find(')', close);
    if (end == line.npos) return std::nullopt;
    const auto target = line.substr(close, end - close);
    const std::size_t start = target.find(sign);
    if (start == target.npos) return std::nullopt;

    LinkedQuote quote{.speaker = normalizeSpeaker(withoutBold(line.substr(1, close - 1)))};
    auto digits = target.substr(start + sign.size());
    digits = digits.substr(0, digits.find_first_not_of("0123456789"));
    if (const auto time = Numbers::parseInteger<std::int64_t>(digits))
        quote.day = dayOfEpoch(static_cast<double>(*time));
    auto rest = Text::trimmed(withoutPrefix(line.substr(end + 1), boldMark));
    for (const std::string_view colon : {":", "："}) {
        if (!rest.starts_with(colon)) continue;
        rest = withoutPrefix(rest.substr(colon.size()), boldMark);
        break;
    }
    quote.text = Text::trimmed(rest);
    return quote;
}

class QuoteReader {
  public:
    void read(std::string_view line) {
        const bool isQuoted = line.starts_with('>');
        const auto bare = withoutQuoteMarks(line);
        if (auto quote = linkedQuote(bare)) {
            if (!meeting_.date) meeting_.date = std::move(quote->day);
            speaker_ = quote->speaker;
            append(meeting_.turns, quote->speaker, quote->text);
            return;
        }
        if (line.starts_with(titleMark)) {
            finish();
            meeting_.title = Text::trimmed(line.substr(titleMark.size()));
        }
        // A quote goes on in lines that are quoted, or that follow it without an empty one.
        const bool goesOn =
            speaker_ && !line.starts_with('#') && (isQuoted || (!line.empty() && !wasEmpty_));
        wasEmpty_ = line.empty();
        if (goesOn)
            append(meeting_.turns, *speaker_, bare);
        else if (!line.empty())
            speaker_.reset();
    }

    std::vector<ParsedMeeting> finished() {
        finish();
        return std::move(meetings_);
    }

  private:
    void finish() {
        speaker_.reset();
        meeting_.format = Format::limitlessMarkdown;
        if (!meeting_.turns.empty()) meetings_.push_back(std::move(meeting_));
        meeting_ = {};
    }

    std::vector<ParsedMeeting> meetings_;
    ParsedMeeting meeting_;
    std::optional<std::string_view> speaker_;
    bool wasEmpty_ = false;
};
}  // namespace

std::vector<ParsedMeeting> readLinkedQuotes(std::string_view text) {
    if (!holdsSign(text)) return {};
    QuoteReader reader;
    LineCursor lines(text);
    while (const auto line = lines.next()) reader.read(Text::trimmed(*line));
    return reader.finished();
}
}  // namespace ombrix::TranscriptImport

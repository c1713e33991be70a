#include "OmbrixMarkdownKit/Import/ImportPatterns.h"

#include <algorithm>

#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::size_t longestName = 48;

/// What a dot does not match.
bool endsLine(char32_t scalar) {
    return (scalar >= 0x0A && scalar <= 0x0D) || scalar == 0x85 || scalar == 0x2028 ||
           scalar == 0x2029;
}

bool hasLineEnd(std::string_view text) {
    return std::ranges::any_of(text, [](char c) { return c >= 0x0A && c <= 0x0D; }) ||
           Text::contains(text, "\u0085") || Text::contains(text, "\u2028") ||
           Text::contains(text, "\u2029");
}

/// A place in a line. Each step says whether it went, and stays where it was if not.
class Place {
  public:
    Place(std::string_view line, std::size_t at) : line_(line), at_(at) {}

    std::string_view rest() const { return line_.substr(at_); }
    bool isAtEnd() const { return at_ == line_.size(); }

    bool step(char c) {
        if (isAtEnd() || line_[at_] != c) return false;
        ++at_;
        return true;
    }
    bool stepOneOf(std::string_view characters) {
        return !isAtEnd() && Text::contains(characters, line_.substr(at_, 1)) && step(line_[at_]);
    }
    bool whiteSpace() {
        const std::size_t start = at_;
        while (stepIf(Text::isWhiteSpace)) {
        }
        return at_ > start;
    }
    /// Goes over as many digits as there are, up to `most`, when there are at least `least`.
    bool digits(std::size_t least, std::size_t most) {
        const std::size_t start = at_;
        std::size_t count = 0;
        while (count < most && stepIf(Text::isDecimalDigit)) ++count;
        if (count >= least) return true;
        at_ = start;
        return false;
    }
    /// `\d{1,2}:\d{2}(:\d{2})?`, with as many hours as `mostFirst` digits.
    bool clock(std::size_t mostFirst = 2) {
        if (!digits(1, mostFirst) || !step(':') || !digits(2, 2)) return false;
        Place seconds = *this;
        if (seconds.step(':') && seconds.digits(2, 2)) *this = seconds;
        return true;
    }

  private:
    bool stepIf(bool (*holds)(char32_t)) {
        if (isAtEnd()) return false;
        const auto [scalar, length] = Utf8::decode(line_, at_);
        if (!holds(scalar)) return false;
        at_ += length;
        return true;
    }

    std::string_view line_;
    std::size_t at_;
};

/// Calls `follows` with each place after which a name of 1 to 48 scalars could end, first to last,
/// until it gives something. A name ends before white space or a colon.
template <typename Follows>
auto firstNameEnd(std::string_view line, Follows follows) -> decltype(follows(std::size_t())) {
    std::size_t at = 0;
    for (std::size_t count = 0; count < longestName && at < line.size(); ++count) {
        const auto [scalar, length] = Utf8::decode(line, at);
        if (endsLine(scalar)) break;
        at += length;
        if (at == line.size()) break;
        if (line[at] != ':' && !Text::isWhiteSpace(Utf8::decode(line, at).scalar)) continue;
        if (auto found = follows(at)) return found;
    }
    return std::nullopt;
}

/// The time in "Ann (00:12 am): text", from the blank after the name to the bracket.
bool stepOverTime(Place& place) {
    if (!place.whiteSpace()) return false;
    place.stepOneOf("([");
    if (!place.clock()) return false;
    place.whiteSpace();
    Place half = place;
    if (half.stepOneOf("AaPp") && half.stepOneOf("Mm")) place = half;
    place.stepOneOf(")]");
    return true;
}

std::optional<std::string_view> textAfterColon(Place place) {
    place.whiteSpace();
    if (!place.step(':') || !place.whiteSpace()) return std::nullopt;
    const auto text = place.rest();
    if (text.empty() || hasLineEnd(text)) return std::nullopt;
    return text;
}
}  // namespace

std::optional<SpeechLine> timedSpeech(std::string_view line) {
    if (!Text::contains(line, ":")) return std::nullopt;
    return firstNameEnd(line, [&](std::size_t end) -> std::optional<SpeechLine> {
        const Place name(line, end);
        Place time = name;
        auto text = stepOverTime(time) ? textAfterColon(time) : std::nullopt;
        if (!text) text = textAfterColon(name);
        if (!text) return std::nullopt;
        return SpeechLine{line.substr(0, end), *text};
    });
}

std::optional<std::string_view> otterHeader(std::string_view line) {
    if (!Text::contains(line, ":")) return std::nullopt;
    return firstNameEnd(line, [&](std::size_t end) -> std::optional<std::string_view> {
        Place place(line, end);
        if (!place.whiteSpace() || !place.clock()) return std::nullopt;
        place.whiteSpace();
        if (!place.isAtEnd()) return std::nullopt;
        return line.substr(0, end);
    });
}

std::string_view withoutLeadingClock(std::string_view line) {
    Place place(line, 0);
    place.step('[');
    if (!place.clock()) return line;
    place.step(']');
    place.whiteSpace();
    return place.rest();
}

bool beginsWithCueTiming(std::string_view line) {
    Place place(line, 0);
    if (!place.clock(line.size()) || !place.stepOneOf(".,") || !place.digits(3, 3)) return false;
    place.whiteSpace();
    return place.rest().starts_with("-->");
}

std::string_view stripTags(std::string_view text, std::string& storage) {
    std::size_t open = text.find('<');
    if (open == text.npos) return text;
    std::size_t kept = 0;  // up to here `text` is in `storage`
    storage.clear();
    while (open != text.npos) {
        const std::size_t close = text.find('>', open);
        if (close == text.npos) break;
        if (close > open + 1) {
            storage.append(text, kept, open - kept);
            kept = close + 1;
        }
        open = text.find('<', close + 1);
    }
    if (kept == 0) return text;
    return storage.append(text, kept);
}
}  // namespace ombrix::TranscriptImport

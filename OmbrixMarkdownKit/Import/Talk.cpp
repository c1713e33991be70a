#include "OmbrixMarkdownKit/Import/Talk.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "OmbrixMarkdownKit/Import/ExportFacts.h"
#include "OmbrixMarkdownKit/Import/ImportPatterns.h"
#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixMarkdownKit/Import/TalkNames.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"
#include "OmbrixPlatform/WordSet.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::string_view frontMatterMark = "---";
constexpr std::string_view titleMark = "# ";

constexpr auto titleKeys =
    wordSet({"title", "meeting title", "topic", "标题", "標題", "主题", "会议主题", "件名",
             "タイトル", "会議名", "제목", "회의 제목", "العنوان", "כותרת", "शीर्षक", "หัวข้อ"});
constexpr auto dateKeys =
    wordSet({"date", "meeting date", "日期", "日付", "日時", "会议日期", "开会时间", "会议时间",
             "날짜", "일시", "التاريخ", "תאריך", "दिनांक", "तारीख", "วันที่"});

struct Fact {
    std::string key;  ///< in lower case
    std::string_view value;
};

/// "Title: x", "**Date:** x", "标题：x".
std::optional<Fact> factOf(std::string_view line) {
    constexpr std::size_t longestKey = 60;
    constexpr std::string_view wide = "：", around = "*\"' ";
    std::size_t colon = std::min(line.find(':'), line.find(wide));
    if (colon == line.npos || colon > longestKey) return std::nullopt;
    const std::size_t width = line[colon] == ':' ? 1 : wide.size();
    const auto bare = [&](std::string_view part) {
        const std::size_t begin = part.find_first_not_of(around);
        if (begin == part.npos) return std::string_view();
        return trimmedName(part.substr(begin, part.find_last_not_of(around) + 1 - begin));
    };
    return Fact{Text::lowercased(bare(line.substr(0, colon))), bare(line.substr(colon + width))};
}

/// "----", "***": a line between parts of a page.
bool isRule(std::string_view line) {
    return line.size() >= 3 && line.find_first_not_of("-*_=") == line.npos;
}

/// "# Title", "## Section"; "#1 on the list" is said by somebody.
bool isHeading(std::string_view line) {
    const std::size_t end = line.find_first_not_of('#');
    return end != 0 && (end == line.npos || line[end] == ' ');
}

class TalkReader {
  public:
    using Read = std::function<std::optional<TalkLine>(std::string_view)>;
    explicit TalkReader(const Read& read) : read_(read) {}

    Talk talk;

    /// True when what was read cannot become a talk; its lines would take ten times its memory.
    bool isLost() const {
        constexpr std::size_t mostLines = 2000, mostLinesASpeech = 40;
        return talk.linesBefore > mostLines ||
               talk.lines.size() > mostLines + speeches_ * mostLinesASpeech;
    }

    /// A trimmed line, the first one included.
    void read(std::string_view line) {
        const bool isFirst = std::exchange(isFirstLine_, false);
        const bool isGap = line.empty() || isRule(line);
        if (line == frontMatterMark && (isFirst || isInFrontMatter_)) {
            isInFrontMatter_ = isFirst;
        } else if (isInFrontMatter_) {
            readFact(line);
        } else if (!isGap) {
            readBody(line);
        } else {
            endHeading(false);
        }
        wasGap_ = isGap;
    }

  private:
    bool readFact(std::string_view line) {
        const auto fact = factOf(line);
        if (!fact || fact->value.empty()) return false;
        if (titleKeys.contains(fact->key)) {
            talk.title = fact->value;
            return true;
        }
        if (!dateKeys.contains(fact->key)) return false;
        if (auto day = isoDay(fact->value)) talk.date = std::move(day);
        return true;
    }

    void readBody(std::string_view line) {
        if (talk.lines.empty() && !isHeading(line) && readFact(line)) return;
        auto speech = read_(line);
        endHeading(!speech && !isHeading(line) && stripBullet(line).size() == line.size());
        if (speech) {
            if (speech->speaker.empty() && !isSpoken_) return;
            isSpoken_ = true;
            if (!speech->speaker.empty()) ++speeches_;
            speech->line = line;
            talk.lines.push_back(*speech);
        } else if (isHeading(line)) {
            if (isSpoken_ && !wasGap_)
                heldHeading_ = line;
            else
                takeHeading(line);
        } else if (isSpoken_) {
            talk.lines.push_back({.text = stripBullet(line), .line = line});
        } else if (talk.lines.empty()) {
            ++talk.linesBefore;
        }
    }

    void takeHeading(std::string_view line) {
        if (line.starts_with(titleMark) && !talk.title)
            talk.title = Text::trimmed(line.substr(titleMark.size()));
        isSpoken_ = false;
    }

    /// The next line has shown what it is that stood right below a speech.
    void endHeading(bool isSaid) {
        const auto line = std::exchange(heldHeading_, {});
        if (line.empty()) return;
        if (isSaid)
            talk.lines.push_back({.text = line, .line = line});
        else
            takeHeading(line);
    }

    const Read& read_;
    bool isFirstLine_ = true;
    bool isInFrontMatter_ = false;
    bool isSpoken_ = false;
    bool wasGap_ = false;
    std::string_view heldHeading_;  // right below a speech, and perhaps a part of it
    std::size_t speeches_ = 0;
};

/// The names under which people of different organisations speak.
std::unordered_set<std::string_view> sharedNames(const Talk& talk) {
    std::unordered_map<std::string_view, std::string_view> organisations;
    std::unordered_set<std::string_view> shared;
    for (const auto& line : talk.lines) {
        if (line.organisation.empty()) continue;
        const auto [at, isNew] = organisations.emplace(line.speaker, line.organisation);
        if (!isNew && at->second != line.organisation) shared.insert(line.speaker);
    }
    return shared;
}

}  // namespace

Talk readTalk(std::string_view text, const TalkReader::Read& read) {
    TalkReader reader(read);
    LineCursor lines(text);
    while (const auto line = lines.next()) {
        reader.read(Text::trimmed(*line));
        if (reader.isLost()) return {};
    }
    return std::move(reader.talk);
}

ParsedMeeting meetingOf(const Talk& talk) {
    const auto shared = sharedNames(talk);
    ParsedMeeting meeting{.title = talk.title, .date = talk.date};
    std::string speaker, storage;
    for (const auto& line : talk.lines) {
        if (!line.speaker.empty()) {
            speaker = line.speaker;
            if (!line.organisation.empty() && shared.contains(line.speaker))
                speaker.append(" (").append(line.organisation).append(")");
        }
        append(meeting.turns, speaker, stripTags(line.text, storage));
    }
    return meeting;
}
}  // namespace ombrix::TranscriptImport

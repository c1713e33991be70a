#include "OmbrixMarkdownKit/Import/TalkNames.h"

#include <algorithm>
#include <array>
#include <string>

#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"
#include "OmbrixPlatform/WordSet.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::size_t mostWords = 4;
constexpr std::size_t mostCharacters = 48;
constexpr std::size_t mostCharactersInAWord = 20;
constexpr std::size_t bytesACharacter = 16;  // more is no name, and need not be counted

constexpr auto documentWords = wordSet({
    // remarks
    "attention",
    "caution",
    "example",
    "examples",
    "hint",
    "hints",
    "important",
    "reminder",
    "tip",
    "tips",
    "todo",
    "fixme",
    "warning",
    "warnings",
    "see",
    "see also",
    // facts about a document
    "abstract",
    "author",
    "authors",
    "background",
    "bug",
    "bugs",
    "contact",
    "contents",
    "copyright",
    "default",
    "defaults",
    "description",
    "details",
    "email",
    "features",
    "file",
    "files",
    "from",
    "homepage",
    "id",
    "installation",
    "introduction",
    "keywords",
    "language",
    "license",
    "link",
    "links",
    "location",
    "maintainer",
    "name",
    "options",
    "path",
    "purpose",
    "reference",
    "references",
    "requirements",
    "section",
    "source",
    "status",
    "subject",
    "synopsis",
    "to",
    "topic",
    "type",
    "url",
    "usage",
    "version",
    "where",
    "when",
    "why",
    "what",
    "how",
    // changes
    "added",
    "breaking",
    "changed",
    "changes",
    "deprecated",
    "fixed",
    "fixes",
    "improved",
    "new",
    "removed",
    "security",
    "updated",
    // code and logs
    "alert",
    "args",
    "arguments",
    "build",
    "client",
    "critical",
    "daemon",
    "debug",
    "error",
    "errors",
    "exception",
    "fatal",
    "info",
    "information",
    "input",
    "kernel",
    "log",
    "main",
    "notice",
    "output",
    "parameters",
    "pass",
    "passed",
    "fail",
    "failed",
    "process",
    "request",
    "response",
    "result",
    "results",
    "return",
    "returns",
    "server",
    "service",
    "skipped",
    "start",
    "step",
    "stop",
    "stdout",
    "stderr",
    "system",
    "task",
    "test",
    "thread",
    "throws",
    "total",
    "trace",
    "value",
    "verbose",
    "warn",
    "worker",
    // schedules
    "break",
    "breakfast",
    "closing",
    "coffee",
    "dinner",
    "keynote",
    "lunch",
    "opening",
    "registration",
    "welcome",
    "intro",
    "outro",
    // Chinese and Japanese
    "注",
    "注意",
    "注释",
    "备注",
    "備註",
    "備考",
    "说明",
    "說明",
    "説明",
    "例",
    "例如",
    "示例",
    "例子",
    "参数",
    "參數",
    "引数",
    "返回",
    "返回值",
    "戻り値",
    "默认",
    "默认值",
    "类型",
    "用法",
    "使い方",
    "使用方法",
    "警告",
    "提示",
    "重要",
    "问",
    "答",
    "問",
    "问题",
    "問題",
    "回答",
    "解决",
    "解決",
    "标题",
    "標題",
    "主题",
    "件名",
    "日期",
    "日付",
    "日時",
    "时间",
    "時間",
    "地点",
    "場所",
    "作者",
    "版本",
    "名称",
    "姓名",
    "氏名",
    "电话",
    "電話",
    "地址",
    "住所",
    "邮箱",
    "网址",
    "目录",
    "摘要",
    "要約",
    "概要",
    "议题",
    "議題",
    "参加者",
    "出席者",
    "与会者",
    "会议",
    "会議",
    "决定事项",
    "決定事項",
    "次回",
    "功能",
    "機能",
    "特点",
    "原因",
    "方法",
    "结果",
    "結果",
    "结论",
    "輸入",
    "输入",
    "输出",
    "入力",
    "出力",
    "来源",
    "许可证",
    "译者",
    "参考",
    "関連",
    "補足",
    "意味",
    "意思",
    "用例",
    "例文",
    "例句",
    "品詞",
    "词性",
    "名詞",
    "名词",
    "動詞",
    "动词",
    "読み",
    "读音",
    "発音",
    "拼音",
    "出典",
    // Korean
    "참고",
    "주의",
    "예",
    "예시",
    "설명",
    "날짜",
    "일시",
    "시간",
    "장소",
    "제목",
    "작성자",
    "버전",
    "참석자",
    "안건",
    "요약",
    "질문",
    "답변",
    "이름",
    "전화",
    "주소",
    "경고",
    "결과",
    "사용법",
    // Arabic, Hebrew, Indic, Thai
    "ملاحظة",
    "تنبيه",
    "تحذير",
    "مثال",
    "التاريخ",
    "الوقت",
    "المكان",
    "العنوان",
    "الموضوع",
    "الحضور",
    "الملخص",
    "سؤال",
    "جواب",
    "الاسم",
    "הערה",
    "אזהרה",
    "דוגמה",
    "תאריך",
    "שעה",
    "מקום",
    "כותרת",
    "נושא",
    "משתתפים",
    "סיכום",
    "שאלה",
    "תשובה",
    "שם",
    "नोट",
    "उदाहरण",
    "दिनांक",
    "तारीख",
    "समय",
    "स्थान",
    "शीर्षक",
    "विषय",
    "प्रश्न",
    "उत्तर",
    "नाम",
    "หมายเหตุ",
    "ตัวอย่าง",
    "วันที่",
    "เวลา",
    "สถานที่",
    "หัวข้อ",
    "สรุป",
    "คำถาม",
    "คำตอบ",
    "ชื่อ",
});

constexpr auto particles = wordSet({"af",  "al",  "av",  "bin", "bint", "da", "de", "del", "della",
                                    "den", "der", "di",  "do",  "dos",  "du", "el", "ibn", "la",
                                    "le",  "ten", "ter", "van", "von",  "y",  "zu", "zur"});

bool isDirectionMark(char32_t scalar) {
    return scalar == 0x200E || scalar == 0x200F || scalar == 0x061C || scalar == 0xFEFF ||
           (scalar >= 0x202A && scalar <= 0x202E) || (scalar >= 0x2066 && scalar <= 0x2069);
}

bool isAround(char32_t scalar) { return Text::isWhiteSpace(scalar) || isDirectionMark(scalar); }

/// What stands inside words of names: apostrophes, dots of abbreviations, joiners.
bool isInsideWord(char32_t scalar) {
    constexpr auto marks = std::to_array<char32_t>(
        {'-', '\'', '.', 0x2019, 0x00B7, 0x05F3, 0x05F4, 0x200C, 0x200D, 0x30FB, 0xFF65});
    return std::ranges::find(marks, scalar) != marks.end();
}

template <typename Holds>
bool allScalars(std::string_view text, Holds holds) {
    for (std::size_t at = 0; at < text.size();) {
        const auto [scalar, length] = Utf8::decode(text, at);
        if (!holds(scalar)) return false;
        at += length;
    }
    return true;
}

bool isCaselessWord(std::string_view word) {
    return Text::isCaselessLetter(Utf8::decode(word, 0).scalar) &&
           allScalars(word, [](char32_t scalar) {
               return Text::isCaselessLetter(scalar) || Text::isLetter(scalar) ||
                      isInsideWord(scalar);
           });
}

/// A word of a name beside a clock; "発言者2" has its number at the end.
bool isNameWord(std::string_view word) {
    if (isNameShaped(word)) return true;
    return Text::isCaselessLetter(Utf8::decode(word, 0).scalar) &&
           allScalars(word, [](char32_t scalar) {
               return Text::isLetterOrNumber(scalar) || Text::isCaselessLetter(scalar) ||
                      isInsideWord(scalar);
           });
}

bool isTooLong(std::string_view name) {
    return name.size() > mostCharacters * bytesACharacter ||
           (name.size() > mostCharacters && Characters::hasAtLeast(name, mostCharacters + 1));
}

/// The words between blanks; none when there are more than names have.
struct NameWords {
    std::array<std::string_view, mostWords> words;
    std::size_t count = 0;

    explicit NameWords(std::string_view name) {
        while (!name.empty()) {
            const std::size_t end = std::min(name.find(' '), name.size());
            if (end > 0) {
                if (count == mostWords) {
                    count = 0;
                    return;
                }
                words[count++] = name.substr(0, end);
            }
            name.remove_prefix(std::min(end + 1, name.size()));
        }
    }
    auto begin() const { return words.begin(); }
    auto end() const { return words.begin() + static_cast<std::ptrdiff_t>(count); }
};
}  // namespace

std::string_view trimmedName(std::string_view name) {
    while (!name.empty()) {
        const auto [scalar, length] = Utf8::decode(name, 0);
        if (!isAround(scalar)) break;
        name.remove_prefix(length);
    }
    while (!name.empty()) {
        const std::size_t last = Utf8::scalarStartBefore(name, name.size());
        if (!isAround(Utf8::decode(name, last).scalar)) break;
        name = name.substr(0, last);
    }
    return name;
}

bool isTalkName(std::string_view name) {
    if (name.empty() || isTooLong(name)) return false;
    if (isSpeakerLabel(name)) return true;
    const NameWords words(name);
    if (words.count == 0 || !isNameWord(words.words.front())) return false;
    const bool areWords = std::ranges::all_of(
        words, [](auto word) { return isNameWord(word) || particles.contains(word); });
    const bool holdsLetter = !allScalars(name, [](char32_t s) { return !Text::isLetter(s); });
    return areWords && holdsLetter && !isNobody(name);
}

bool isCaselessName(std::string_view name) {
    if (name.empty() || Text::isAscii(name.front()) || isTooLong(name)) return false;
    const NameWords words(name);
    if (words.count == 0 || !std::ranges::all_of(words, isCaselessWord)) return false;
    if (words.count == 1 && Characters::hasAtLeast(name, mostCharactersInAWord + 1)) return false;
    return !isNobody(name);
}

bool isSpeakerLabel(std::string_view name) {
    constexpr auto beginnings = std::to_array<std::string_view>({"speaker", "spk", "spkr"});
    constexpr std::size_t mostDigits = 3;
    const std::size_t mark = name.find_first_of("_-");
    if (mark == name.npos || mark > beginnings.front().size()) return false;
    const auto number = name.substr(mark + 1);
    const bool isLabel = std::ranges::any_of(beginnings, [&](auto word) {
        return word.size() == mark && Text::startsWithIgnoringAsciiCase(name, word);
    });
    if (!isLabel || number.empty()) return false;
    if (number == "UNKNOWN" || (number.size() == 1 && number[0] >= 'A' && number[0] <= 'Z'))
        return true;
    return number.size() <= mostDigits && std::ranges::all_of(number, Text::isAsciiDigit);
}

bool isPersonal(std::string_view name) {
    if (isSpeakerLabel(name) || normalizeSpeaker(name) == "Me" || name == "Them") return true;
    if (!Text::isAscii(name.front()) && Text::isCaselessLetter(Utf8::decode(name, 0).scalar))
        return true;
    const NameWords words(name);  // "Mail Server" is no person's
    return words.count >= 2 && !isNobody(words.words[words.count - 1]);
}

bool isNobody(std::string_view name) {
    const std::string lower = Text::lowercased(name);
    return documentWords.contains(lower) || isSectionWord(name);
}
}  // namespace ombrix::TranscriptImport

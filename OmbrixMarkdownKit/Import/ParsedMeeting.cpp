#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"

#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::string_view commentOpen = "<!--";
constexpr std::string_view harmlessCommentOpen = "<! --";
constexpr std::string_view nameEnd = ":**";

/// Single bytes, which the library finds many at a step; nearly all texts hold neither.
bool isPlain(std::string_view text) {
    return text.find('\n') == text.npos && text.find('\r') == text.npos &&
           text.find(commentOpen) == text.npos;
}

/// Goes through the name once, so that what is left when an ":**" is gone forms no other.
std::string withoutNameEnds(std::string_view name) {
    std::string result;
    for (const char c : name) {
        result += c;
        if (result.ends_with(nameEnd)) result.resize(result.size() - nameEnd.size());
    }
    return result;
}
}  // namespace

void appendPlain(std::string& line, std::string_view text) {
    if (isPlain(text)) {
        line += text;
        return;
    }
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto rest = text.substr(at);
        if (rest.starts_with(commentOpen)) {
            line += harmlessCommentOpen;
            at += commentOpen.size() - 1;
        } else if (rest.starts_with("\r\n")) {
            line += ' ';
            ++at;
        } else {
            line += rest.front() == '\n' || rest.front() == '\r' ? ' ' : rest.front();
        }
    }
}

std::string plainLine(std::string_view text) {
    std::string line;
    appendPlain(line, Text::trimmed(text));
    return line;
}

std::string plainName(std::string_view name) {
    std::string plain = plainLine(name);
    if (Text::contains(plain, nameEnd)) plain = plainLine(withoutNameEnds(plain));
    return plain.empty() ? std::string(unknownSpeaker) : plain;
}

void append(std::vector<Turn>& turns, std::string_view speaker, std::string_view text) {
    text = Text::trimmed(text);
    if (text.empty()) return;
    if (turns.empty() || turns.back().speaker != speaker) {
        std::string name = plainName(speaker);
        if (turns.empty() || turns.back().speaker != name) {
            turns.push_back({std::move(name), {}});
            appendPlain(turns.back().text, text);
            return;
        }
    }
    turns.back().text += ' ';
    appendPlain(turns.back().text, text);
}
}  // namespace ombrix::TranscriptImport

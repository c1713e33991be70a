// The spelling of generated speech: capitals, and what editors make of plain letters and quotes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace ombrix::Spelling {

enum class Kind {
    plain,
    quotes,   ///< typographic quotes and apostrophes
    accents,  ///< every fourth "a" before two letters is an "ä"
};

inline bool read(std::string_view name, Kind& kind) {
    if (name == "plain") kind = Kind::plain;
    if (name == "quotes") kind = Kind::quotes;
    if (name == "accents") kind = Kind::accents;
    return name == "plain" || name == "quotes" || name == "accents";
}

/// The letter at `at` as a capital, if it is a small letter of a language that is generated.
inline void capitalize(std::string& text, std::size_t at) {
    const auto byte = [&](std::size_t i) -> unsigned {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
    };
    if (byte(at) >= 'a' && byte(at) <= 'z') {
        text[at] = static_cast<char>(byte(at) - 0x20);
        return;
    }
    if ((byte(at) & 0xE0U) != 0xC0) return;
    const unsigned small = (byte(at) & 0x1FU) << 6U | (byte(at + 1) & 0x3FU);
    unsigned capital = small;
    if ((small >= 0x3B1 && small <= 0x3C9 && small != 0x3C2) || (small >= 0x430 && small <= 0x44F))
        capital = small - 0x20;
    else if (small >= 0x100 && small <= 0x137)
        capital = small & ~1U;
    text[at] = static_cast<char>(0xC0U | capital >> 6U);
    text[at + 1] = static_cast<char>(0x80U | (capital & 0x3FU));
}

inline void curlApostrophes(std::string& text, std::size_t from) {
    for (std::size_t at = text.find('\'', from); at != std::string::npos; at = text.find('\'', at))
        text.replace(at, 1, "’");
}

namespace Detail {
inline std::string curled(std::string_view text) {
    std::string result;
    for (const char c : text) c == '\'' ? result += "’" : c == '"' ? result += "“" : result += c;
    return result;
}

inline std::string accented(std::string_view text) {
    const auto isSmall = [&](std::size_t at) {
        return at < text.size() && text[at] >= 'a' && text[at] <= 'z';
    };
    std::string result;
    std::size_t seen = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool counts = text[at] == 'a' && isSmall(at + 1) && isSmall(at + 2);
        if (counts && ++seen % 4 == 0)
            result += "ä";
        else
            result += text[at];
    }
    return result;
}
}  // namespace Detail

/// The transcript with its spoken part, the lines from "## Transcript" on, in another spelling.
inline std::string ofTranscript(std::string_view text, Kind kind) {
    const std::size_t spoken = std::min(text.find("## Transcript"), text.size());
    std::string result(text.substr(0, spoken));
    if (kind == Kind::plain) return result.append(text.substr(spoken));
    return result + (kind == Kind::quotes ? Detail::curled(text.substr(spoken))
                                          : Detail::accented(text.substr(spoken)));
}
}  // namespace ombrix::Spelling

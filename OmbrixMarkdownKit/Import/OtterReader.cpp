#include "OmbrixMarkdownKit/Import/OtterReader.h"

#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {

std::optional<std::string_view> otterSpeaker(std::string_view line) {
    const auto header = otterHeader(line);
    if (!header) return std::nullopt;
    const auto name = Text::trimmed(*header);
    return isNameShaped(name) ? std::optional(normalizeSpeaker(name)) : std::nullopt;
}

std::vector<Turn> readOtter(std::string_view text) {
    std::vector<Turn> turns;
    std::optional<std::string_view> speaker;
    LineCursor lines(text);
    while (const auto next = lines.next()) {
        const auto line = Text::trimmed(*next);
        if (const auto name = otterSpeaker(line))
            speaker = name;
        else if (speaker)
            append(turns, *speaker, line);
    }
    return turns;
}
}  // namespace ombrix::TranscriptImport

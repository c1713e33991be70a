#include "OmbrixMarkdownKit/Import/SegmentSpeaker.h"

#include <array>
#include <utility>

#include "OmbrixMarkdownKit/Import/JsonFields.h"
#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

std::optional<std::string_view> named(std::string_view value) {
    value = Text::trimmed(value);
    return value.empty() ? std::nullopt : std::optional(normalizeSpeaker(value));
}

/// Whose voice a channel carries; nothing for the name of no channel.
std::optional<std::string_view> channelSpeaker(const std::optional<Json::Node>& field) {
    constexpr auto channels = std::to_array<std::pair<std::string_view, std::string_view>>({
        {"microphone", "Me"},
        {"mic", "Me"},
        {"me", "Me"},
        {"user", "Me"},
        {"system", "Them"},
        {"speaker", "Them"},
        {"them", "Them"},
    });
    const auto text = stringIn(field);
    if (!text) return std::nullopt;
    for (const auto& [channel, speaker] : channels)
        if (*text == channel) return speaker;
    return std::nullopt;
}

/// The speaker as an object.
std::optional<SegmentSpeaker> describedSpeaker(const SpeakerFields& segment) {
    static constexpr auto keys = std::to_array<std::string_view>(
        {"display_name", "name", "diarization_label", "attribution", "source"});
    const auto [displayName, name, label, attribution, source] = fields(*segment.speaker, keys);
    if (const auto text = stringIn(displayName))
        return SegmentSpeaker{named(*text), Format::fathomJSON};
    if (const auto text = stringIn(name)) {
        if (attribution) return SegmentSpeaker{named(*text), Format::circlebackJSON};
        return SegmentSpeaker{named(*text),
                              segment.source ? std::optional(Format::granolaJSON) : std::nullopt};
    }
    if (const auto text = stringIn(label)) return SegmentSpeaker{named(*text), Format::granolaJSON};
    for (const auto& field : {attribution, source})
        if (const auto speaker = channelSpeaker(field))
            return SegmentSpeaker{speaker, Format::granolaJSON};
    return std::nullopt;
}
}  // namespace

SegmentSpeaker speakerOf(const SpeakerFields& segment) {
    if (const auto text = stringIn(segment.speakerName))
        return {named(*text), Format::firefliesJSON};
    if (segment.speaker && segment.speaker->isObject()) {
        if (const auto speaker = describedSpeaker(segment)) return *speaker;
    }
    if (const auto text = stringIn(segment.speaker)) {
        return {named(*text),
                segment.timestamp ? std::optional(Format::circlebackJSON) : std::nullopt};
    }
    if (const auto speaker = channelSpeaker(segment.source)) return {speaker, Format::granolaJSON};
    return {};
}
}  // namespace ombrix::TranscriptImport

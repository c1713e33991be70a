#include "OmbrixMemoryKit/Moves/MoveCorrections.h"

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "OmbrixMemoryKit/Region/Corrections.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::MoveCorrections {
namespace {

using Kind = MoveCorrection::Kind;

constexpr auto keywords = std::to_array<std::pair<Kind, std::string_view>>({
    {Kind::done, "done:"},
    {Kind::discard, "discard:"},
    {Kind::restore, "restore:"},
});

bool isMoveID(std::string_view text) {
    constexpr std::size_t fewestCharacters = 4;
    return text.starts_with("mv-") && Characters::hasAtLeast(text, fewestCharacters);
}

std::optional<MoveCorrection> correction(Kind kind, std::string_view payload) {
    std::string_view on;
    if (kind == Kind::done) {
        const auto pieces = Text::split(payload, " on ");
        if (pieces.size() != 2) return std::nullopt;
        payload = pieces[0];
        on = Text::trimmed(pieces[1]);
        if (!Corrections::isISODate(on)) return std::nullopt;
    }
    const auto id = Text::trimmed(payload);
    if (!isMoveID(id)) return std::nullopt;
    return MoveCorrection{.kind = kind, .id = std::string(id), .on = std::string(on)};
}
}  // namespace

std::vector<MoveCorrection> parse(std::string_view text) {
    std::vector<MoveCorrection> result;
    LineCursor lines(text);
    while (const auto line = lines.next()) {
        if (!line->starts_with('-')) continue;
        const std::string body = Text::lowercased(Text::trimmed(line->substr(1)));
        for (const auto& [kind, keyword] : keywords) {
            if (!body.starts_with(keyword)) continue;
            if (auto found = correction(kind, std::string_view(body).substr(keyword.size())))
                result.push_back(std::move(*found));
        }
    }
    return result;
}
}  // namespace ombrix::MoveCorrections

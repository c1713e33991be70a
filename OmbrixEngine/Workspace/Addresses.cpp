#include "OmbrixEngine/Workspace/Addresses.h"

#include <algorithm>
#include <array>

#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Addresses {
namespace {

constexpr std::string_view label = "(address)";
constexpr auto atSigns = std::to_array<std::string_view>(
    {"@", "\uFF20", "\uFE6B", "%40", "&#64;", "&#x40;", "&commat;"});
constexpr std::string_view firstBytes = "@%&\xEF";
constexpr std::string_view around = "<>()[]{}\"',;:|";

/// The length of the at sign that begins at `place`, or 0.
std::size_t atSignAt(std::string_view text, std::size_t place) {
    if (place >= text.size() || firstBytes.find(text[place]) == firstBytes.npos) return 0;
    const auto rest = text.substr(place);
    const auto* const found = std::ranges::find_if(
        atSigns, [&](std::string_view sign) { return rest.starts_with(sign); });
    return found == atSigns.end() ? 0 : found->size();
}

std::size_t nextAtSign(std::string_view text, std::size_t from) {
    std::size_t place = text.find_first_of(firstBytes, from);
    while (place != text.npos && atSignAt(text, place) == 0)
        place = text.find_first_of(firstBytes, place + 1);
    return place;
}

bool isPiece(std::string_view text, std::size_t place) {
    const char32_t scalar = Utf8::decode(text, place).scalar;
    return !Text::isWhiteSpace(scalar) &&
           (scalar >= 0x80 || around.find(static_cast<char>(scalar)) == around.npos);
}

/// The start of the piece that ends at `end`, not ahead of `from`.
std::size_t pieceStart(std::string_view text, std::size_t from, std::size_t end) {
    while (end > from) {
        const std::size_t before = Utf8::scalarStartBefore(text, end);
        if (!isPiece(text, before)) break;
        end = before;
    }
    return end;
}

/// The end of the piece that starts at `start`: an at sign ends it.
std::size_t pieceEnd(std::string_view text, std::size_t start) {
    while (start < text.size() && atSignAt(text, start) == 0 && isPiece(text, start))
        start += Utf8::decode(text, start).length;
    return start;
}

std::size_t afterBlanks(std::string_view text, std::size_t place) {
    return std::min(text.find_first_not_of(" \t", place), text.size());
}

std::size_t beforeBlanks(std::string_view text, std::size_t from, std::size_t place) {
    while (place > from && (text[place - 1] == ' ' || text[place - 1] == '\t')) --place;
    return place;
}

/// "example.com" and "example.co.uk", with what ends a sentence after it.
bool isDomain(std::string_view piece) {
    while (!piece.empty() && std::string_view(".!?").find(piece.back()) != std::string_view::npos)
        piece.remove_suffix(1);
    const std::size_t point = piece.rfind('.');
    if (point == piece.npos || point == 0) return false;
    const auto last = piece.substr(point + 1);
    return last.size() > 1 && std::ranges::none_of(last, Text::isAsciiDigit);
}

/// Pieces and at signs without a gap.
struct Run {
    ByteRange range;
    bool isAddress = false;  ///< an at sign is neither its beginning nor its end
};

/// The run with the at sign at `place`, its first one.
Run runAround(std::string_view text, std::size_t from, std::size_t place) {
    const std::size_t start = pieceStart(text, from, place);
    Run run{{start, place}};
    auto& end = run.range.end;
    while (const std::size_t sign = atSignAt(text, end)) {
        const std::size_t after = end + sign;
        const std::size_t piece = pieceEnd(text, after);
        if (end > start && (piece > after || atSignAt(text, after) > 0)) run.isAddress = true;
        end = piece;
    }
    return run;
}

/// The same as an address when it is one with blanks beside its at sign.
Run withBlanks(std::string_view text, std::size_t from, std::size_t place, Run run) {
    const std::size_t sign = place + atSignAt(text, place);
    const std::size_t domain = run.range.end > sign ? sign : afterBlanks(text, sign);
    const std::size_t end = std::max(run.range.end, pieceEnd(text, domain));
    if (!isDomain(text.substr(domain, end - domain))) return run;
    const std::size_t word = run.range.begin < place ? place : beforeBlanks(text, from, place);
    const std::size_t start = pieceStart(text, from, word);
    return start == word ? run : Run{{start, end}, true};
}
}  // namespace

std::string hidden(std::string_view text) {
    std::string result;
    std::size_t done = 0;  // what is in `result`
    std::size_t from = 0;  // where a run may begin
    for (std::size_t place = nextAtSign(text, 0); place != text.npos;
         place = nextAtSign(text, from)) {
        Run run = runAround(text, from, place);
        if (!run.isAddress) run = withBlanks(text, from, place, run);
        from = run.range.end;
        if (!run.isAddress) continue;
        result.append(text.substr(done, run.range.begin - done)).append(label);
        done = from;
    }
    return result.append(text.substr(done));
}
}  // namespace ombrix::Addresses

#include "OmbrixMarkdownKit/Transcript/TranscriptTurnID.h"

#include <algorithm>

#include "OmbrixMarkdownKit/Transcript/TextNormalize.h"
#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptTurnID {
namespace {

constexpr std::size_t hashBytes = 3;
constexpr std::size_t hashDigits = 2 * hashBytes;
constexpr std::size_t fewestPositionDigits = 3;

/// What `locate` returns for an id whose own position has another hash.
Match elsewhere(std::size_t place, std::string_view wanted, std::span<const std::string> hashes) {
    const auto distance = [place](std::size_t index) {
        return index < place ? place - index : index - place;
    };
    std::optional<std::size_t> nearest;
    for (std::size_t i = 0; i < hashes.size(); ++i)
        if (hashes[i] == wanted && (!nearest || distance(i) < distance(*nearest))) nearest = i;
    if (nearest) return Match::moved(*nearest);
    return place < hashes.size() ? Match::stale(place) : Match::missing();
}

std::size_t zeroBased(const Parsed& id) { return static_cast<std::size_t>(id.position) - 1; }
}  // namespace

std::string hash(std::string_view text) {
    return Digest::hex(Digest::sha256(TextNormalize::words(text)).data(), hashBytes);
}

std::string make(std::size_t index, std::string_view text) {
    const std::string digits = std::to_string(index);
    std::string id = "t";
    if (digits.size() < fewestPositionDigits) id.append(fewestPositionDigits - digits.size(), '0');
    return id + digits + "-" + hash(text);
}

std::vector<std::string> ids(std::span<const TranscriptDocument::Turn> turns) {
    std::vector<std::string> result;
    result.reserve(turns.size());
    for (const auto& turn : turns) result.push_back(make(result.size() + 1, turn.text));
    return result;
}

std::optional<Parsed> parse(std::string_view id) {
    const std::size_t dash = id.find('-');
    if (!id.starts_with('t') || dash == std::string_view::npos) return std::nullopt;
    const std::string_view digits = id.substr(1, dash - 1);
    const std::string_view hash = id.substr(dash + 1);
    if (digits.size() < fewestPositionDigits) return std::nullopt;
    const auto position = Numbers::parseInteger<std::int64_t>(digits);
    if (!position || *position < 1) return std::nullopt;
    if (hash.size() != hashDigits || !std::ranges::all_of(hash, Text::isAsciiHexDigit))
        return std::nullopt;
    return Parsed{.position = *position, .hash = std::string(hash)};
}

std::vector<std::string> hashes(std::span<const TranscriptDocument::Turn> turns) {
    std::vector<std::string> result;
    result.reserve(turns.size());
    for (const auto& turn : turns) result.push_back(hash(turn.text));
    return result;
}

Match locate(std::string_view id, std::span<const TranscriptDocument::Turn> turns) {
    const auto parsed = parse(id);
    if (!parsed) return Match::missing();
    const std::size_t place = zeroBased(*parsed);
    if (place < turns.size() && hash(turns[place].text) == parsed->hash) return Match::exact(place);
    return elsewhere(place, parsed->hash, hashes(turns));
}

Match locate(std::string_view id, std::span<const std::string> hashes) {
    const auto parsed = parse(id);
    if (!parsed) return Match::missing();
    const std::size_t place = zeroBased(*parsed);
    if (place < hashes.size() && hashes[place] == parsed->hash) return Match::exact(place);
    return elsewhere(place, parsed->hash, hashes);
}
}  // namespace ombrix::TranscriptTurnID

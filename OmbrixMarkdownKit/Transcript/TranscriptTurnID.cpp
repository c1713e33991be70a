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

/// Of ascending places, not none, the nearest; of two at the same distance the lower one.
std::size_t nearest(std::size_t place, std::span<const std::size_t> places) {
    const auto above = std::ranges::lower_bound(places, place);
    if (above == places.begin()) return *above;
    const std::size_t below = *(above - 1);
    return above == places.end() || place - below <= *above - place ? below : *above;
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
    return Index(hashes(turns)).locate(id);
}

Index::Index(std::span<const std::string> hashes) : turnCount_(hashes.size()) {
    for (std::size_t i = 0; i < hashes.size(); ++i) places_[hashes[i]].push_back(i);
}

Match Index::locate(std::string_view id) const {
    const auto parsed = parse(id);
    if (!parsed) return Match::missing();
    const std::size_t place = zeroBased(*parsed);
    if (const auto found = places_.find(parsed->hash); found != places_.end()) {
        const std::size_t index = nearest(place, found->second);
        return index == place ? Match::exact(index) : Match::moved(index);
    }
    return place < turnCount_ ? Match::stale(place) : Match::missing();
}
}  // namespace ombrix::TranscriptTurnID

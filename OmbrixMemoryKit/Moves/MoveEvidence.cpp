#include "OmbrixMemoryKit/Moves/MoveEvidence.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

#include "OmbrixMarkdownKit/Transcript/TranscriptTurnID.h"
#include "OmbrixMemoryKit/Moves/MoveLifecycle.h"

namespace ombrix::MoveEvidence {
namespace {

constexpr double closeInSeconds = 90;

// ---- citations --------------------------------------------------------------------------------

using Claims = std::vector<const Claim*>;

/// Of those with one id the first.
Claims distinct(const std::vector<Claim>& claims) {
    Claims result;
    std::set<std::string_view> taken;
    for (const auto& claim : claims)
        if (taken.insert(claim.id).second) result.push_back(&claim);
    return result;
}

/// See `claimPool`.
Claims poolOf(const PreparedMove& move, const Revision& revision) {
    std::set<std::string_view> wanted;
    for (const auto& block : revision.blocks)
        for (const auto& line : block.lines)
            wanted.insert(line.claimIds.begin(), line.claimIds.end());
    for (const auto& item : revision.unresolved)
        wanted.insert(item.claimIds.begin(), item.claimIds.end());

    Claims pool = distinct(revision.claims);
    for (const Claim* claim : pool) wanted.erase(claim->id);
    for (const auto& claim : move.claims)
        if (wanted.erase(claim.id) > 0) pool.push_back(&claim);
    return pool;
}

/// What claims cite of one turn.
struct CitedTurn {
    std::vector<std::size_t> claims;  // their places among the claims, ascending
    bool changed = false;
};

/// What claims cite of one meeting.
struct CitedSource {
    std::shared_ptr<const MoveSource> source;
    std::map<std::size_t, CitedTurn> turns{};        // by index
    std::optional<TranscriptTurnID::Index> index{};  // made for the first id that does not hold
};

struct Citations {
    std::vector<CitedSource> sources;  // in the order in which they are first cited
    EvidenceStanding standing = EvidenceStanding::verified;
    std::map<const MoveSource*, std::size_t> places;  // in `sources`
};

TranscriptTurnID::Match locate(std::string_view id, CitedSource& place) {
    if (const auto index = place.source->turnIndex(id))
        return TranscriptTurnID::Match::exact(*index);
    if (!place.index) {
        std::vector<std::string> hashes;
        hashes.reserve(place.source->turns.size());
        for (const auto& turn : place.source->turns) hashes.push_back(turn.hash());
        place.index.emplace(hashes);
    }
    return place.index->locate(id);
}

CitedSource& cited(Citations& citations, const std::shared_ptr<const MoveSource>& source) {
    const auto [place, isNew] = citations.places.emplace(source.get(), citations.sources.size());
    if (isNew) citations.sources.push_back({source});
    return citations.sources[place->second];
}

void cite(const std::string& turnId, std::size_t claim, CitedSource& place, Citations& citations) {
    using Kind = TranscriptTurnID::Match::Kind;
    const auto match = locate(turnId, place);
    if (match.kind == Kind::missing || match.kind == Kind::stale)
        citations.standing = EvidenceStanding::stale;
    if (match.kind == Kind::missing) return;
    CitedTurn& turn = place.turns[match.index];
    if (match.kind == Kind::stale) turn.changed = true;
    if (turn.claims.empty() || turn.claims.back() != claim) turn.claims.push_back(claim);
}

Citations citationsOf(const Claims& claims, const MoveSources& sources) {
    Citations citations;
    for (std::size_t claim = 0; claim < claims.size(); ++claim) {
        for (const EvidenceRef& ref : claims[claim]->refs) {
            const auto source = sources.find(ref.sourceId);
            if (source == sources.end()) {
                citations.standing = EvidenceStanding::stale;
                continue;
            }
            CitedSource& place = cited(citations, source->second);
            for (const auto& turnId : ref.turnIds) cite(turnId, claim, place, citations);
        }
    }
    return citations;
}

// ---- exchanges --------------------------------------------------------------------------------

/// Turns of one meeting, the last one included.
struct TurnRange {
    std::size_t first = 0, last = 0;
};

bool isClose(const MoveTurn& a, const MoveTurn& b) {
    return !a.atSec || !b.atSec || std::abs(*a.atSec - *b.atSec) <= closeInSeconds;
}

TurnRange withContext(TurnRange range, const std::vector<MoveTurn>& turns) {
    TurnRange wide = range;
    if (range.first > 0 && isClose(turns[range.first - 1], turns[range.first])) --wide.first;
    if (range.last + 1 < turns.size() && isClose(turns[range.last], turns[range.last + 1]))
        ++wide.last;
    return wide;
}

/// Joins ranges that share or touch a turn. They come in the order of their first turns.
std::vector<TurnRange> merged(const std::vector<TurnRange>& ranges) {
    std::vector<TurnRange> result;
    for (const TurnRange& range : ranges) {
        if (!result.empty() && range.first <= result.back().last + 1)
            result.back().last = std::max(result.back().last, range.last);
        else
            result.push_back(range);
    }
    return result;
}

std::vector<TurnRange> rangesOf(const CitedSource& cited) {
    std::vector<TurnRange> ranges;
    for (const auto& [index, turn] : cited.turns) ranges.push_back({index, index});
    ranges = merged(ranges);
    for (auto& range : ranges) range = withContext(range, cited.source->turns);
    return merged(ranges);
}

ResolvedTurn resolvedTurn(const MoveTurn& turn, const CitedTurn* cited, const Claims& all) {
    ResolvedTurn result{.id = turn.id(),
                        .atSec = turn.atSec,
                        .speaker = turn.speaker,
                        .text = turn.text,
                        .cited = cited != nullptr,
                        .claimIds = {},
                        .changed = cited != nullptr && cited->changed};
    if (cited != nullptr)
        for (const auto claim : cited->claims) result.claimIds.push_back(all[claim]->id);
    return result;
}

ResolvedExchange exchangeOf(const TurnRange& range, const CitedSource& cited, const Claims& all) {
    ResolvedExchange exchange;
    exchange.source = cited.source;
    std::set<std::size_t> claims;
    for (std::size_t i = range.first; i <= range.last; ++i) {
        const auto found = cited.turns.find(i);
        const CitedTurn* const turn = found == cited.turns.end() ? nullptr : &found->second;
        exchange.turns.push_back(resolvedTurn(cited.source->turns[i], turn, all));
        if (turn == nullptr) continue;
        if (exchange.anchors.empty())
            exchange.key = cited.source->id + "#" + exchange.turns.back().id;
        exchange.anchors.push_back(i);
        claims.insert(turn->claims.begin(), turn->claims.end());
    }
    for (const auto claim : claims) {
        exchange.claimIds.push_back(all[claim]->id);
        exchange.earlier |= all[claim]->earlier;
        exchange.superseded |= all[claim]->superseded;
    }
    return exchange;
}

/// The indexes of the exchanges that hold a claim, by its id.
using Anchors = std::unordered_map<std::string_view, std::vector<std::size_t>>;

/// Views the exchanges.
Anchors anchorsIn(const std::vector<ResolvedExchange>& exchanges) {
    Anchors anchors;
    for (std::size_t i = 0; i < exchanges.size(); ++i)
        for (const auto& id : exchanges[i].claimIds) anchors[id].push_back(i);
    return anchors;
}

/// The indexes of the exchanges that hold any of these claims.
std::vector<std::size_t> anchorsOf(const std::vector<std::string>& claimIds,
                                   const Anchors& anchors) {
    std::set<std::size_t> found;
    for (const auto& id : claimIds)
        if (const auto of = anchors.find(id); of != anchors.end())
            found.insert(of->second.begin(), of->second.end());
    return {found.begin(), found.end()};
}

// ---- lines ------------------------------------------------------------------------------------

ResolvedLine resolvedLine(const MoveLine& line, const MoveState& state, const Anchors& anchors) {
    ResolvedLine result{.id = line.id,
                        .text = line.text,
                        .baseText = line.text,
                        .edited = false,
                        .conflict = std::nullopt,
                        .claimIds = line.claimIds,
                        .anchors = anchorsOf(line.claimIds, anchors)};
    if (const auto edit = state.edits.find(line.id); edit != state.edits.end()) {
        result.text = edit->second;
        result.edited = true;
    }
    if (const auto conflict = state.conflicts.find(line.id); conflict != state.conflicts.end())
        result.conflict = conflict->second;
    return result;
}

std::shared_ptr<const MoveSource> sourceOf(const PreparedMove& move, const MoveSources& sources) {
    const auto found = sources.find(move.sourceId);
    return found == sources.end() ? nullptr : found->second;
}

/// A line and the label of its block.
using Lines = std::vector<std::pair<const MoveLine*, const std::string*>>;

/// The lines of a revision, of those with one id the first.
Lines linesOf(const Revision& revision) {
    Lines lines;
    std::set<std::string_view> seen;
    for (const auto& block : revision.blocks)
        for (const auto& line : block.lines)
            if (seen.insert(line.id).second) lines.emplace_back(&line, &block.label);
    return lines;
}

std::map<std::string_view, const MoveLine*> byId(const Lines& lines) {
    std::map<std::string_view, const MoveLine*> result;
    for (const auto& [line, label] : lines) result.emplace(line->id, line);
    return result;
}
}  // namespace

std::vector<Claim> claimPool(const PreparedMove& move, const Revision& revision) {
    std::vector<Claim> pool;
    for (const Claim* claim : poolOf(move, revision)) pool.push_back(*claim);
    return pool;
}

Exchanges buildExchanges(std::span<const Claim> claims, const MoveSources& sources,
                         std::string_view ownMeeting) {
    Claims order;
    for (const Claim& claim : claims) order.push_back(&claim);
    Citations citations = citationsOf(order, sources);
    std::ranges::stable_partition(citations.sources, [ownMeeting](const CitedSource& cited) {
        return cited.source->id == ownMeeting;
    });
    Exchanges result{.list = {}, .standing = citations.standing};
    for (const auto& cited : citations.sources)
        for (const auto& range : rangesOf(cited))
            result.list.push_back(exchangeOf(range, cited, order));
    return result;
}

std::vector<ResolvedExchange> exchanges(std::span<const Claim> claims, const MoveSources& sources) {
    return buildExchanges(claims, sources).list;
}

const ResolvedExchange* exchange(std::string_view claimId,
                                 std::span<const ResolvedExchange> exchanges) {
    const auto holds = [claimId](const ResolvedExchange& each) {
        return std::ranges::find(each.claimIds, claimId) != each.claimIds.end();
    };
    const auto found = std::ranges::find_if(exchanges, holds);
    return found == exchanges.end() ? nullptr : &*found;
}

std::vector<LineChange> diffRevisions(const Revision& from, const Revision& to) {
    using enum LineChange::Kind;
    const Lines before = linesOf(from), after = linesOf(to);
    const auto old = byId(before), current = byId(after);
    std::vector<LineChange> changes;
    for (const auto& [line, label] : after) {
        const auto match = old.find(line->id);
        if (match == old.end())
            changes.push_back({line->id, *label, added, std::nullopt, line->text});
        else if (match->second->text != line->text)
            changes.push_back({line->id, *label, changed, match->second->text, line->text});
    }
    for (const auto& [line, label] : before)
        if (!current.contains(line->id))
            changes.push_back({line->id, *label, removed, line->text, std::nullopt});
    return changes;
}

Outline outline(const PreparedMove& move, const MoveState& state, const MoveSources& sources) {
    const Revision* const revision = state.revision(state.current);
    const Claims pool = revision == nullptr ? distinct(move.claims) : poolOf(move, *revision);
    return {.title = revision != nullptr && revision->title ? *revision->title : move.title,
            .evidence = citationsOf(pool, sources).standing,
            .hasCandidate = state.revision(state.candidate) != nullptr,
            .source = sourceOf(move, sources)};
}

ResolvedMove resolve(PreparedMove move, MoveState state, const MoveSources& sources) {
    ResolvedMove result;
    const Revision* const current = state.revision(state.current);
    result.revision = current != nullptr ? *current : MoveLifecycle::baseRevision(move);
    const Revision& revision = result.revision;

    const auto pool = claimPool(move, revision);
    for (const auto& claim : pool) result.claims.push_back({claim, result.claims.size() + 1});
    auto evidence = buildExchanges(pool, sources, move.sourceId);
    result.evidence = evidence.standing;
    result.exchanges = std::move(evidence.list);
    const Anchors anchors = anchorsIn(result.exchanges);

    for (const auto& block : revision.blocks) {
        auto& shown = result.blocks.emplace_back(ResolvedBlock{block.id, block.label, {}});
        for (const auto& line : block.lines)
            shown.lines.push_back(resolvedLine(line, state, anchors));
    }
    for (const auto& item : revision.unresolved)
        result.unresolved.push_back(
            {item.id, item.text, item.claimIds, anchorsOf(item.claimIds, anchors)});

    if (const Revision* const candidate = state.revision(state.candidate)) {
        result.candidate = *candidate;
        result.changes = diffRevisions(revision, *candidate);
    }
    result.title = revision.title.value_or(move.title);
    result.recipients = revision.recipients ? revision.recipients : move.recipients;
    result.due = revision.due ? revision.due : move.due;
    result.invite = revision.invite ? revision.invite : move.invite;
    result.email = move.email;
    result.source = sourceOf(move, sources);
    result.move = std::move(move);
    result.state = std::move(state);
    return result;
}
}  // namespace ombrix::MoveEvidence

// Random moves, revisions and states. Ids come from small sets, so that they meet each other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "OmbrixMemoryKit/Moves/MoveLifecycle.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::test {

class RandomMoves {
  public:
    explicit RandomMoves(unsigned seed) : random_(seed) {}

    std::size_t below(std::size_t bound) { return random_.below(bound); }
    bool chance(std::size_t in) { return below(in) == 0; }
    std::string id(char kind) { return kind + std::to_string(below(4)); }
    std::string text() { return Utf8::repaired(random_.mixed(below(6), 6)); }

    template <typename Make>
    auto list(std::size_t most, Make make) {
        std::vector<decltype(make())> items;
        for (std::size_t left = below(most + 1); left > 0; --left) items.push_back(make());
        return items;
    }
    template <typename Make>
    auto maybe(Make make) {
        return chance(2) ? std::optional(make()) : std::nullopt;
    }
    std::vector<std::string> ids(char kind) {
        return list(3, [&] { return id(kind); });
    }
    std::vector<std::string> texts() {
        return list(2, [&] { return text(); });
    }
    template <typename Enum>
    Enum any() {
        return EnumNames::rows<Enum>[below(EnumNames::rows<Enum>.size())].first;
    }

    MoveBlock block() {
        const auto line = [&] { return MoveLine{id('l'), text(), ids('c')}; };
        return {id('b'), chance(3) ? "" : text(), list(3, line)};
    }
    Claim claim() {
        const auto ref = [&] { return EvidenceRef{id('m'), ids('t')}; };
        return {id('c'), text(), any<ClaimRole>(), list(2, ref), chance(3), chance(3)};
    }
    Invite invite() {
        return {.title = text(),
                .date = "2026-07-30",
                .time = maybe([] { return std::string("09:30"); }),
                .minutes = maybe([&] { return static_cast<std::int64_t>(below(90)); }),
                .with = texts(),
                .cites = {ids('c'), maybe([&] { return ids('c'); }), ids('c')}};
    }
    MoveDue due() { return {"2026-07-31", text()}; }
    Unresolved unresolved() { return {id('u'), text(), ids('c')}; }

    PreparedMove move() {
        return {.id = "mv-" + id('0'),
                .sourceId = id('m'),
                .commitmentIds = ids('k'),
                .kind = any<MoveKind>(),
                .stance = any<Stance>(),
                .title = text(),
                .recipients = maybe([&] { return texts(); }),
                .due = maybe([&] { return due(); }),
                .preparedAt = "2026-07-27T10:00:00Z",
                .blocks = list(3, [&] { return block(); }),
                .unresolved = list(2, [&] { return unresolved(); }),
                .claims = list(3, [&] { return claim(); }),
                .hedge = maybe([&] { return text(); }),
                .idea = maybe([&] { return text(); }),
                .invite = maybe([&] { return invite(); }),
                .email = maybe([&] {
                    return EmailDraft{texts(), text()};
                })};
    }
    Revision revision() {
        return {.id = id('r'),
                .label = text(),
                .at = text(),
                .reason = maybe([&] {
                    return Revision::Reason{text(), ids('c')};
                }),
                .title = maybe([&] { return text(); }),
                .recipients = maybe([&] { return texts(); }),
                .due = maybe([&] { return due(); }),
                .invite = maybe([&] { return invite(); }),
                .blocks = list(3, [&] { return block(); }),
                .unresolved = list(2, [&] { return unresolved(); }),
                .claims = list(3, [&] { return claim(); })};
    }
    MoveAction action(std::string at) {
        using namespace MoveActions;
        switch (below(17)) {
            case 0:
                return Copied{at};
            case 1:
                return CopyFailed{at};
            case 2:
                return Regenerate{revision(), at};
            case 3:
                return Revise{revision(), at};
            case 4:
                return Adopt{at};
            case 5:
                return KeepMine{at};
            case 6:
                return UseNewLine{id('l'), at};
            case 7:
                return Dismiss{at};
            case 8:
                return Restore{at};
            case 9:
                return MarkDone{any<DoneBy>(), at};
            case 10:
                return Reopen{at};
            case 11:
                return HandedOff{text(), at};
            case 12:
                return Prepared{at};
            case 13:
                return Fail{at};
            case 14:
                return Pause{at};
            case 15:
                return Retry{at};
            default:
                return Edit{id('l'), text(), at};
        }
    }
    MoveState state(const PreparedMove& move) {
        auto state = MoveLifecycle::initial(move, any<Preparation>());
        for (std::size_t left = below(20); left > 0; --left)
            state = MoveLifecycle::reduce(std::move(state), action(std::to_string(left)));
        return state;
    }

  private:
    RandomText random_;
};
}  // namespace ombrix::test

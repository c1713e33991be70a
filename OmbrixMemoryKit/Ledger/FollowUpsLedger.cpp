#include "OmbrixMemoryKit/Ledger/FollowUpsLedger.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <limits>

namespace ombrix {
namespace {

using Lists = std::initializer_list<const FollowUpRows*>;

std::vector<const FollowUpRow*> firstOf(Lists lists, const FollowUpsLedger::Keys& keys,
                                        std::int64_t limit) {
    const auto most = static_cast<std::size_t>(std::max<std::int64_t>(limit, 0));
    std::vector<const FollowUpRow*> found;
    for (const auto* rows : lists) {
        for (const auto& row : *rows) {
            if (found.size() == most) return found;
            if (keys.contains(row.whoKey)) found.push_back(&row);
        }
    }
    return found;
}
}  // namespace

std::string_view FollowUpRow::lastTouched() const {
    const auto* moved = statusAs<Renegotiated>();
    return moved != nullptr ? std::max<std::string_view>(said, moved->sourceDate) : said;
}

std::vector<LandOpenFollowUp> FollowUpsLedger::open(const Keys& keys, std::int64_t limit) const {
    std::vector<LandOpenFollowUp> result;
    const Lists lists = {&youOweLate, &owedLate, &youOweLive, &owedLive, &changed};
    for (const auto* row : firstOf(lists, keys, limit)) {
        result.push_back({.id = row->id,
                          .direction = std::string(rawValue(row->direction)),
                          .who = row->who,
                          .what = row->what,
                          .due = row->due});
    }
    return result;
}

FollowUpRows FollowUpsLedger::openRows(const Keys& keys, std::optional<std::int64_t> limit,
                                       Older wanted) const {
    static const FollowUpRows none;
    const Lists lists = {&youOweLate, &youOweLive, &owedLate,
                         &owedLive,   &changed,    wanted == Older::added ? &older : &none};
    FollowUpRows result;
    const auto most = limit.value_or(std::numeric_limits<std::int64_t>::max());
    for (const auto* row : firstOf(lists, keys, most)) result.push_back(*row);
    return result;
}
}  // namespace ombrix

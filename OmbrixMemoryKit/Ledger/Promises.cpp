#include "OmbrixMemoryKit/Ledger/Promises.h"

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

namespace ombrix {

std::size_t Promises::numberOf(CommitmentDirection direction, std::string_view whoKey,
                               std::string_view words) {
    if (words.empty()) return alone;
    key_ = rawValue(direction);
    key_ += '\x1F';
    key_ += whoKey;
    key_ += '\x1F';
    key_ += words;
    return numbers_.try_emplace(key_, end()).first->second;
}

void Promises::forEach(std::span<const Member> members,
                       const std::function<void(std::span<const std::size_t>)>& take) const {
    std::vector<std::size_t> ends(end(), 0);  // of each promise's piece of `order`; counts at first
    std::vector<std::size_t> inOrder;         // promises, as their first members come
    for (std::size_t i = 0; i < members.size(); ++i) {
        const std::size_t promise = members[i].promise;
        if (promise == alone)
            take({&i, 1});
        else if (++ends[promise] == 1)
            inOrder.push_back(promise);
    }
    std::vector<std::size_t> starts(end(), 0);
    std::size_t place = 0;
    for (const std::size_t promise : inOrder) {
        starts[promise] = place;
        place += std::exchange(ends[promise], place);
    }
    std::vector<std::size_t> order(place);
    for (std::size_t i = 0; i < members.size(); ++i)
        if (members[i].promise != alone) order[ends[members[i].promise]++] = i;
    const auto isBefore = [&](std::size_t a, std::size_t b) {
        return std::tie(members[b].said, members[a].id) < std::tie(members[a].said, members[b].id);
    };
    for (const std::size_t promise : inOrder) {
        const std::span all(order.begin() + static_cast<std::ptrdiff_t>(starts[promise]),
                            order.begin() + static_cast<std::ptrdiff_t>(ends[promise]));
        if (all.size() > 1) std::ranges::stable_sort(all, isBefore);
        take(all);
    }
}
}  // namespace ombrix

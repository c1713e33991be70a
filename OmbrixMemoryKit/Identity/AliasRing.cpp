#include "OmbrixMemoryKit/Identity/AliasRing.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Targets = std::map<std::string, std::set<std::string>>;

struct Step {
    std::string key;
    std::set<std::string>::const_iterator next, end;
};
}  // namespace

std::vector<std::string> aliasRing(std::span<const PersonIdentity> identities) {
    Targets targets;  // the canonical keys of each alias
    for (const auto& identity : identities)
        for (const auto& alias : identity.aliases)
            targets[Text::lowercased(alias)].insert(Text::lowercased(identity.canonical));

    std::set<std::string> done, onTheWay;
    for (const auto& [start, first] : targets) {
        if (done.contains(start)) continue;
        std::vector<Step> way;
        const auto enter = [&](const std::string& key, const std::set<std::string>& next) {
            way.push_back({key, next.begin(), next.end()});
            onTheWay.insert(key);
        };
        enter(start, first);
        while (!way.empty()) {
            auto& step = way.back();
            if (step.next == step.end) {
                done.insert(step.key);
                onTheWay.erase(step.key);
                way.pop_back();
                continue;
            }
            const std::string key = *step.next++;
            if (onTheWay.contains(key)) {
                std::vector<std::string> ring;
                std::ranges::transform(std::ranges::find(way, key, &Step::key), way.end(),
                                       std::back_inserter(ring), &Step::key);
                return ring;
            }
            const auto onward = targets.find(key);
            if (onward != targets.end() && !done.contains(key)) enter(key, onward->second);
        }
    }
    return {};
}
}  // namespace ombrix

#include "OmbrixCore/PerfBudget.h"

#include <algorithm>
#include <cmath>

#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::PerfBudget {
namespace {

constexpr std::array<double, allPaths.size()> budgets{800, 120, 16, 1500};

std::optional<double> sampleOf(const Samples& samples, std::string_view path) {
    const auto found = samples.find(std::string(path));
    if (found == samples.end()) return std::nullopt;
    return found->second;
}

/// Without a fraction, halves away from zero, and never "-0".
std::string rounded(double ms) {
    const double whole = std::round(ms) + 0.0;
    return std::isfinite(whole) ? Numbers::shortest(whole) : Numbers::described(whole);
}
}  // namespace

std::optional<double> budgetMs(std::string_view path) {
    const auto found = std::ranges::find(allPaths, path);
    if (found == allPaths.end()) return std::nullopt;
    return budgets[static_cast<std::size_t>(found - allPaths.begin())];
}

bool isOverBudget(std::string_view path, std::optional<double> ms) {
    const auto budget = budgetMs(path);
    return budget && ms && *ms > *budget;
}

std::vector<std::string_view> misses(const std::optional<Samples>& samples) {
    std::vector<std::string_view> names;
    if (!samples) return names;
    for (const std::string_view path : allPaths)
        if (isOverBudget(path, sampleOf(*samples, path))) names.push_back(path);
    return names;
}

std::string report(const std::optional<Samples>& samples) {
    if (!samples || samples->empty()) return "no perf samples";
    std::vector<std::string> pieces;
    for (const std::string_view path : allPaths) {
        const auto ms = sampleOf(*samples, path);
        if (!ms) continue;
        std::string piece(path);
        piece += " " + rounded(*ms) + " ms / " + rounded(*budgetMs(path));
        if (isOverBudget(path, ms)) piece += " OVER";
        pieces.push_back(std::move(piece));
    }
    return Text::joined(pieces, " · ");
}
}  // namespace ombrix::PerfBudget

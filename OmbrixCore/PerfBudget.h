// How long those actions of the desktop application may take whose delay a person notices.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix::PerfBudget {

// The names under which samples are stored.
inline constexpr std::string_view launchToFirstFrame = "launch";
inline constexpr std::string_view tabSwitch = "switch";
inline constexpr std::string_view libraryGroups = "library";
inline constexpr std::string_view askFirstToken = "ask";

inline constexpr std::array allPaths{launchToFirstFrame, tabSwitch, libraryGroups, askFirstToken};

/// Milliseconds by name.
using Samples = std::map<std::string, double>;

/// The budget in milliseconds; nothing for an unknown name.
std::optional<double> budgetMs(std::string_view path);
/// True when the sample is above the budget; false without a sample and for an unknown name.
bool isOverBudget(std::string_view path, std::optional<double> ms);
/// The names of the samples over budget, in the order of `allPaths`.
std::vector<std::string_view> misses(const std::optional<Samples>& samples);
/// "launch 912 ms / 800 OVER · ask 90 ms / 1500": the known names that have a sample; "no perf
/// samples" when there are none at all.
std::string report(const std::optional<Samples>& samples);
}  // namespace ombrix::PerfBudget

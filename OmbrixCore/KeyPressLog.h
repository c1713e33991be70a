// How presses of the key went, without anything of what was in the field. The desktop application
// appends one line of JSON for each press to a file in the support directory; here it is read and
// counted. Nothing here writes, shortens or removes the file.
//
//   {"bundleID":"com.apple.mail","kind":"empty","outcome":"inserted","partialRead":false,
//    "toFirstDraft":1.9,"at":"2026-07-31T09:30:00Z","source":"meeting"}
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

/// One press.
struct KeyPressSummary {
    std::string bundleID;               ///< the application pressed in
    std::optional<std::string> kind{};  ///< of the plan, or "pull": a meeting taken by hand
    std::string outcome;                ///< "inserted": text landed; the others are the writer's
    std::optional<std::string> path{};  ///< that the press went
    bool partialRead = false;           ///< the window could be read only in part
    std::optional<double> toMark{};     ///< seconds from the press, as the next three
    std::optional<double> toMeetingNamed{};
    std::optional<double> toFirstDraft{};
    std::optional<double> toInserted{};
    Instant at;
    std::optional<std::string> source{};  ///< the kind of the source line
    std::optional<bool> offered{};        ///< whether a result was offered
    bool operator==(const KeyPressSummary&) const = default;
};

/// Under the field names; the instant as "yyyy-MM-ddTHH:mm:ssZ".
Json::Value encode(const KeyPressSummary& summary);
KeyPressSummary decode(Json::As<KeyPressSummary>, const Json::Object& in);

namespace KeyPressLog {

inline constexpr std::string_view fileName = "key-presses.jsonl";

/// The log's path in a support directory.
std::string url(std::string_view support);

/// The presses of one application. A pull is no press.
struct AppStats {
    std::string bundleID;
    std::int64_t presses = 0;
    std::int64_t inserted = 0;                     ///< presses that landed text
    std::optional<double> medianToMeetingNamed{};  ///< seconds, over those that tell them
    std::optional<double> medianToFirstDraft{};
    std::map<std::string, std::int64_t> outcomes{};  ///< presses by outcome
    std::map<std::string, std::int64_t> sources{};   ///< presses by source line, where there is one
    std::int64_t offered = 0;                        ///< presses that offered a result
    std::int64_t pulled = 0;                         ///< pulls that landed text
    bool operator==(const AppStats&) const = default;
};

/// Under the field names; a missing median has no key.
Json::Value encode(const AppStats& stats);

/// Calls `visit` for each press, in the order of the file, which is read piece by piece. A line
/// that is no record is skipped: a torn last line costs one press. Nothing for a file that is
/// missing or cannot be read.
void forEach(const std::string& path, const std::function<void(const KeyPressSummary&)>& visit);

/// The presses of the file, as `forEach` gives them.
std::vector<KeyPressSummary> read(const std::string& path);

/// Counts presses one at a time.
class Tally {
  public:
    void add(const KeyPressSummary& summary);
    std::int64_t count() const { return count_; }  ///< of presses and pulls
    /// The applications with the most presses first, then by identifier.
    std::vector<AppStats> stats() const;

  private:
    struct App {
        AppStats stats;
        std::vector<double> toMeetingNamed{};
        std::vector<double> toFirstDraft{};
    };
    std::map<std::string, App, std::less<>> apps_;
    std::int64_t count_ = 0;
};

/// What a tally of these gives.
std::vector<AppStats> stats(std::span<const KeyPressSummary> summaries);

/// The middle value, or the mean of the two in the middle; nothing for no values.
std::optional<double> median(std::vector<double> values);
}  // namespace KeyPressLog
}  // namespace ombrix

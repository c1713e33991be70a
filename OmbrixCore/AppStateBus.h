// Requests to the running desktop application: the tool posts a named notification, and the
// application answers with a file in the "state" folder of the support directory.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

namespace OmbrixNotifications {
inline constexpr std::string_view dataDidChange = "com.ombrix.dataChanged";

/// Tells a running application to read the database again. Does nothing when nobody listens.
void postDataDidChange();
}  // namespace OmbrixNotifications

/// What the application reports about itself. Fields added after the first version are optional: an
/// older application leaves them out, a newer one may add others.
struct AppStateSnapshot {
    std::int64_t schemaVersion = 0;
    std::string generatedAt;
    std::string appVersion;
    std::string bundlePath;
    std::string recordingState;
    std::optional<std::string> activeMeetingTitle = {};
    bool liveTranscriptEnabled = false;
    std::string appearance;
    std::string outputBasePath;  ///< the transcripts folder
    std::int64_t transcriptCount = 0;
    std::optional<std::string> selectedTranscriptPath = {};
    std::optional<std::string> selectedFolder = {};
    std::string route;  ///< the surface shown
    std::optional<std::string> toast = {};
    std::optional<std::int64_t> finishingCount = {};
    std::optional<std::string> conferenceDetected = {};
    std::optional<std::string> scheduledEnd = {};
    std::optional<bool> autoStopArmed = {};
    std::optional<bool> meetingLikelyActive = {};
    std::optional<std::string> settingsSection = {};
    std::optional<std::string> place = {};
    std::optional<std::map<std::string, double>> perf = {};  ///< milliseconds by `PerfBudget` path
    std::optional<std::map<std::string, std::string>> engineRecipes = {};  ///< version by recipe
    std::optional<bool> calendarFixture = {};
    std::optional<std::string> webBuild = {};
    std::optional<std::map<std::string, std::string>> pill = {};
    bool operator==(const AppStateSnapshot&) const = default;
};

/// Throws `Json::DecodingError` for a missing or null required key and for a wrong type; unknown
/// keys are ignored.
AppStateSnapshot decode(Json::As<AppStateSnapshot>, const Json::Object& in);
/// One key a field; an absent optional writes no key.
Json::Value encode(const AppStateSnapshot& snapshot);

namespace OmbrixAppStateBus {

inline constexpr std::string_view requestNotification = "com.ombrix.app.state-request";
inline constexpr std::string_view snapshotFilePrefix = "state-";
inline constexpr std::chrono::milliseconds pollInterval{50};
/// Bytes of a reply; an honest one has a few thousand.
inline constexpr std::size_t largestReply = std::size_t{16} << 20U;

/// "state" inside the support directory.
std::string stateDirectory(std::string_view support);
/// "state-", the request id and ".json" in that directory.
std::string snapshotURL(std::string_view supportDirectory, std::string_view requestId);

/// What an exchange needs from outside. The default members are the real ones: the session bus, the
/// steady clock and the thread's sleep.
struct Surroundings {
    Surroundings();

    std::function<void(std::string_view name, std::string_view object)> post;
    std::function<std::chrono::steady_clock::time_point()> now;
    std::function<void(std::chrono::nanoseconds)> sleep;
};

/// The moment after which an exchange gives up. The time starts at construction; an infinite one
/// never ends.
class Deadline {
  public:
    Deadline(double seconds, Surroundings surroundings);
    bool hasPassed() const;
    /// Sleeps until the next poll, or until the deadline when that is sooner.
    void sleepUntilNextPoll() const;

  private:
    double remainingSeconds() const;

    Surroundings surroundings_;
    std::chrono::steady_clock::time_point start_;
    double seconds_;
};

/// Reads `file` again and again until `accept` returns true for its text. True then, false when the
/// deadline passed. A file that is missing, not a regular file, larger than `largestReply` or not
/// valid UTF-8 counts as not written yet; `accept` returns false for a half-written one. The file
/// is read at least once.
bool awaitReply(const std::string& file, const Deadline& deadline,
                const std::function<bool(const std::string& text)>& accept);

/// Asks the running application for its state: removes a file left under this id, posts the
/// request, and waits for a file that decodes. The snapshot, or nothing when the time is over.
/// Either way the file of this request is removed; no other file is touched.
std::optional<AppStateSnapshot> requestSnapshot(std::string_view supportDirectory,
                                                std::string_view requestId, double timeoutSeconds,
                                                const Surroundings& surroundings = {});
/// The same with a new id.
std::optional<AppStateSnapshot> requestSnapshot(std::string_view supportDirectory,
                                                double timeoutSeconds);
}  // namespace OmbrixAppStateBus
}  // namespace ombrix

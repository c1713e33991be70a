#include "OmbrixCore/AppStateBus.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/NotificationCenter.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Process.h"
#include "OmbrixPlatform/TemporaryName.h"

namespace ombrix {

void OmbrixNotifications::postDataDidChange() { NotificationCenter::post(dataDidChange); }

AppStateSnapshot decode(Json::As<AppStateSnapshot>, const Json::Object& in) {
    using Integer = std::int64_t;
    using Strings = std::map<std::string, std::string>;
    return {
        .schemaVersion = in.required<Integer>("schemaVersion"),
        .generatedAt = in.required<std::string>("generatedAt"),
        .appVersion = in.required<std::string>("appVersion"),
        .bundlePath = in.required<std::string>("bundlePath"),
        .recordingState = in.required<std::string>("recordingState"),
        .activeMeetingTitle = in.optional<std::string>("activeMeetingTitle"),
        .liveTranscriptEnabled = in.required<bool>("liveTranscriptEnabled"),
        .appearance = in.required<std::string>("appearance"),
        .outputBasePath = in.required<std::string>("outputBasePath"),
        .transcriptCount = in.required<Integer>("transcriptCount"),
        .selectedTranscriptPath = in.optional<std::string>("selectedTranscriptPath"),
        .selectedFolder = in.optional<std::string>("selectedFolder"),
        .route = in.required<std::string>("route"),
        .toast = in.optional<std::string>("toast"),
        .finishingCount = in.optional<Integer>("finishingCount"),
        .conferenceDetected = in.optional<std::string>("conferenceDetected"),
        .scheduledEnd = in.optional<std::string>("scheduledEnd"),
        .autoStopArmed = in.optional<bool>("autoStopArmed"),
        .meetingLikelyActive = in.optional<bool>("meetingLikelyActive"),
        .settingsSection = in.optional<std::string>("settingsSection"),
        .place = in.optional<std::string>("place"),
        .perf = in.optional<std::map<std::string, double>>("perf"),
        .engineRecipes = in.optional<Strings>("engineRecipes"),
        .calendarFixture = in.optional<bool>("calendarFixture"),
        .webBuild = in.optional<std::string>("webBuild"),
        .pill = in.optional<Strings>("pill"),
    };
}

Json::Value encode(const AppStateSnapshot& s) {
    return Json::object({{"schemaVersion", s.schemaVersion},
                         {"generatedAt", s.generatedAt},
                         {"appVersion", s.appVersion},
                         {"bundlePath", s.bundlePath},
                         {"recordingState", s.recordingState},
                         {"activeMeetingTitle", s.activeMeetingTitle},
                         {"liveTranscriptEnabled", s.liveTranscriptEnabled},
                         {"appearance", s.appearance},
                         {"outputBasePath", s.outputBasePath},
                         {"transcriptCount", s.transcriptCount},
                         {"selectedTranscriptPath", s.selectedTranscriptPath},
                         {"selectedFolder", s.selectedFolder},
                         {"route", s.route},
                         {"toast", s.toast},
                         {"finishingCount", s.finishingCount},
                         {"conferenceDetected", s.conferenceDetected},
                         {"scheduledEnd", s.scheduledEnd},
                         {"autoStopArmed", s.autoStopArmed},
                         {"meetingLikelyActive", s.meetingLikelyActive},
                         {"settingsSection", s.settingsSection},
                         {"place", s.place},
                         {"perf", s.perf},
                         {"engineRecipes", s.engineRecipes},
                         {"calendarFixture", s.calendarFixture},
                         {"webBuild", s.webBuild},
                         {"pill", s.pill}});
}

namespace OmbrixAppStateBus {

std::string stateDirectory(std::string_view support) { return Paths::joined(support, "state"); }

std::string snapshotURL(std::string_view supportDirectory, std::string_view requestId) {
    std::string name(snapshotFilePrefix);
    name += requestId;
    name += ".json";
    return Paths::joined(stateDirectory(supportDirectory), name);
}

Surroundings::Surroundings()
    : post([](std::string_view name, std::string_view object) {
          NotificationCenter::post(name, object);
      }),
      now(&std::chrono::steady_clock::now),
      sleep([](std::chrono::nanoseconds time) { std::this_thread::sleep_for(time); }) {}

Deadline::Deadline(double seconds, Surroundings surroundings)
    : surroundings_(std::move(surroundings)), start_(surroundings_.now()), seconds_(seconds) {}

double Deadline::remainingSeconds() const {
    const std::chrono::duration<double> elapsed = surroundings_.now() - start_;
    return seconds_ - elapsed.count();
}

bool Deadline::hasPassed() const { return !(remainingSeconds() > 0); }  // also true for NaN

void Deadline::sleepUntilNextPoll() const {
    using Seconds = std::chrono::duration<double>;
    const Seconds pause = std::min(Seconds(pollInterval), Seconds(remainingSeconds()));
    // Rounded up, so that the last pause before the deadline reaches it.
    if (pause > Seconds::zero())
        surroundings_.sleep(std::chrono::ceil<std::chrono::nanoseconds>(pause));
}

bool awaitReply(const std::string& file, const Deadline& deadline,
                const std::function<bool(const std::string& text)>& accept) {
    while (true) {
        if (const auto text = Files::text(file, largestReply); text && accept(*text)) return true;
        if (deadline.hasPassed()) return false;
        deadline.sleepUntilNextPoll();
    }
}

std::optional<AppStateSnapshot> requestSnapshot(std::string_view supportDirectory,
                                                std::string_view requestId, double timeoutSeconds,
                                                const Surroundings& surroundings) {
    const TemporaryName reply(snapshotURL(supportDirectory, requestId));
    const std::string& file = reply.path();
    Files::remove(file);
    surroundings.post(requestNotification, requestId);
    std::optional<AppStateSnapshot> snapshot;
    const Deadline deadline(timeoutSeconds, surroundings);
    awaitReply(file, deadline, [&](const std::string& text) {
        try {
            snapshot = Json::decode<AppStateSnapshot>(text);
        } catch (const Json::SyntaxError&) {    // half written
        } catch (const Json::DecodingError&) {  // written in steps
        }
        return snapshot.has_value();
    });
    Files::remove(file);
    return snapshot;
}

std::optional<AppStateSnapshot> requestSnapshot(std::string_view supportDirectory,
                                                double timeoutSeconds) {
    return requestSnapshot(supportDirectory, Process::uniqueString(), timeoutSeconds);
}
}  // namespace OmbrixAppStateBus
}  // namespace ombrix

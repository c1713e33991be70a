#include "OmbrixCore/AppStateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <thread>

#include "OmbrixPlatform/PrivateBus.h"
#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

using namespace std::chrono_literals;
using OmbrixAppStateBus::requestSnapshot;
using Clock = std::chrono::steady_clock;

const std::string required =
    R"("schemaVersion":3,"generatedAt":"2026-03-01T09:00:00Z","appVersion":"2.4","bundlePath":"/A.app",)"
    R"("recordingState":"idle","liveTranscriptEnabled":true,"appearance":"dark",)"
    R"("outputBasePath":"/home/ilse/Documents/Ombrix","transcriptCount":12,"route":"recent")";
const std::string optional =
    R"("activeMeetingTitle":"Sync","selectedTranscriptPath":"/t.md","selectedFolder":"F","toast":"T",)"
    R"("finishingCount":1,"conferenceDetected":"C","scheduledEnd":"S","autoStopArmed":false,)"
    R"("meetingLikelyActive":true,"settingsSection":"general","place":"P","perf":{"launch":912.5},)"
    R"("engineRecipes":{"land":"v3"},"calendarFixture":true,"webBuild":"w1","pill":{"dock":"left"})";

AppStateSnapshot decoded(const std::string& text) {
    const Json::Value value = Json::parse(text);
    return decodeAppStateSnapshot(Json::Object(value));
}

/// A desktop application and its clock: time passes only while the tool sleeps.
class FakeApplication {
  public:
    explicit FakeApplication(std::string support) : support_(std::move(support)) {
        surroundings_.post = [this](std::string_view name, std::string_view object) {
            posts_.emplace_back(name, object);
            act();
        };
        surroundings_.now = [this] { return start_ + elapsed_; };
        surroundings_.sleep = [this](std::chrono::nanoseconds time) {
            elapsed_ += time;
            act();
        };
    }
    /// Puts `bytes` into the file of request `id` once `after` has passed.
    void writes(std::chrono::nanoseconds after, std::string id, std::string bytes) {
        plan_.push_back({after, std::move(id), std::move(bytes)});
    }
    std::optional<AppStateSnapshot> asked(const std::string& id, double seconds) {
        return requestSnapshot(support_, id, seconds, surroundings_);
    }
    double secondsPassed() const { return std::chrono::duration<double>(elapsed_).count(); }
    const std::vector<std::pair<std::string, std::string>>& posts() const { return posts_; }

  private:
    struct Step {
        std::chrono::nanoseconds after;
        std::string id;
        std::string bytes;
    };
    void act() {
        for (const Step& step : plan_) {
            if (step.after > elapsed_) continue;
            std::filesystem::create_directories(support_ + "/state");
            std::ofstream(support_ + "/state/state-" + step.id + ".json") << step.bytes;
        }
        std::erase_if(plan_, [&](const Step& step) { return step.after <= elapsed_; });
    }

    std::string support_;
    OmbrixAppStateBus::Surroundings surroundings_;
    Clock::time_point start_ = Clock::now();
    std::chrono::nanoseconds elapsed_{0};
    std::vector<Step> plan_;
    std::vector<std::pair<std::string, std::string>> posts_;
};
}  // namespace

TEST(AppStateBus, ASnapshotReadsBackWithItsKnownKeysOnly) {
    const std::string full = "{" + required + "," + optional + "}";
    const AppStateSnapshot snapshot = decoded("{" + required + "," + optional + R"(,"new":[1]})");
    EXPECT_EQ(snapshot.transcriptCount, 12);
    EXPECT_EQ(snapshot.perf->at("launch"), 912.5);
    EXPECT_EQ(encode(snapshot), Json::parse(full));

    const AppStateSnapshot first = decoded("{" + required + R"(,"toast":null})");
    EXPECT_EQ(first.toast, std::nullopt);
    EXPECT_EQ(encode(first), Json::parse("{" + required + "}"));
}

TEST(AppStateBus, ASnapshotWithAMissingOrWrongFieldIsRefused) {
    const Json::Value whole = Json::parse("{" + required + "," + optional + "}");
    const Json::Value least = Json::parse("{" + required + "}");
    for (const auto& [key, value] : *whole.members()) {
        Json::Members without = *whole.members();
        without.erase(key);
        const bool isRequired = least.member(key) != nullptr;
        const Json::Value missing(without);
        if (isRequired)
            EXPECT_THROW(decodeAppStateSnapshot(Json::Object(missing)), Json::DecodingError) << key;
        else
            EXPECT_NO_THROW(decodeAppStateSnapshot(Json::Object(missing))) << key;
        without[key] = Json::Array{};
        const Json::Value wrong(without);
        EXPECT_THROW(decodeAppStateSnapshot(Json::Object(wrong)), Json::DecodingError) << key;
    }
}

TEST(AppStateBus, AnAnswerIsTakenOnceItIsWholeAndLeavesNoFile) {
    const test::TestFolder support;
    support.write("state/state-OTHER.json", "{" + required + "}");  // an earlier run's
    support.write("state/state-ID.json", "{" + required + R"(,"toast":"stale"})");
    FakeApplication application(support.path());
    const std::string whole = "{" + required + R"(,"toast":"fresh"})";
    application.writes(100ms, "ID", whole.substr(0, whole.size() / 2));
    application.writes(200ms, "ID", "{\"schemaVersion\":3}");
    application.writes(300ms, "ID", "\xFF");
    application.writes(400ms, "ID", whole);
    const auto snapshot = application.asked("ID", 3);
    ASSERT_TRUE(snapshot);
    EXPECT_EQ(snapshot->toast, "fresh");
    EXPECT_NEAR(application.secondsPassed(), 0.4, 0.001);
    EXPECT_THAT(application.posts(),
                testing::ElementsAre(testing::Pair("com.ombrix.app.state-request", "ID")));
    EXPECT_FALSE(std::filesystem::exists(support.at("state/state-ID.json")));
    EXPECT_TRUE(std::filesystem::exists(support.at("state/state-OTHER.json")));
}

TEST(AppStateBus, WithoutAnAnswerTheRequestEndsAtItsDeadline) {
    const test::TestFolder support;
    for (const double seconds : {0.12, 3.0}) {
        FakeApplication application(support.path());
        application.writes(10ms, "ID", "garbage");
        application.writes(std::chrono::milliseconds(5000), "ID", "{" + required + "}");
        EXPECT_EQ(application.asked("ID", seconds), std::nullopt);
        EXPECT_NEAR(application.secondsPassed(), seconds, 1e-6);
        EXPECT_FALSE(std::filesystem::exists(support.at("state/state-ID.json")));
    }
    FakeApplication nobody(support.at("no/such/folder"));
    EXPECT_EQ(nobody.asked("ID", std::numeric_limits<double>::quiet_NaN()), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(support.at("no")));
}

TEST(AppStateBus, AnEndlessDeadlineWaitsForALateAnswer) {
    const test::TestFolder support;
    FakeApplication application(support.path());
    application.writes(60s, "ID", "{" + required + "}");
    EXPECT_TRUE(application.asked("ID", std::numeric_limits<double>::infinity()));
}

TEST(AppStateBus, TheRealExchangeGoesOverTheSessionsBus) {
    const test::PrivateBus bus;
    if (!bus.runs()) GTEST_SKIP() << "no dbus-daemon here";
    test::Ear ear;
    ASSERT_TRUE(ear.listens());
    const test::TestFolder support;
    std::filesystem::create_directory(support.at("state"));

    OmbrixNotifications::postDataDidChange();
    EXPECT_TRUE(ear.hears("com.ombrix.dataChanged", ""));

    std::optional<AppStateSnapshot> snapshot;
    std::thread tool([&] { snapshot = requestSnapshot(support.path(), 10); });
    const std::string id = ear.objectOf("com.ombrix.app.state-request");
    const std::string beside = support.write("state/partial", "{" + required + "}");
    std::filesystem::rename(beside, support.at("state/state-" + id + ".json"));
    tool.join();
    ASSERT_TRUE(snapshot) << ear.all();
    EXPECT_EQ(snapshot->appVersion, "2.4");
    EXPECT_TRUE(std::filesystem::is_empty(support.at("state")));
}
}  // namespace ombrix

#include "OmbrixCore/AppStateBus.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>

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

/// A desktop application and its clock: time passes only while the tool sleeps.
class FakeApplication {
  public:
    explicit FakeApplication(const test::TestFolder& support) : support_(support) {
        surroundings_.post = [this](std::string_view name, std::string_view object) {
            posts += std::string(name) + " " + std::string(object);
            act();
        };
        surroundings_.now = [this] { return start_ + elapsed_; };
        surroundings_.sleep = [this](std::chrono::nanoseconds time) {
            elapsed_ += time;
            act();
        };
    }
    /// Puts `bytes` into the file of request "ID" once `after` has passed.
    void writes(std::chrono::nanoseconds after, std::string bytes) {
        plan_[after] = std::move(bytes);
    }
    std::optional<AppStateSnapshot> asked(double seconds) {
        return requestSnapshot(support_.path(), "ID", seconds, surroundings_);
    }
    double secondsPassed() const { return std::chrono::duration<double>(elapsed_).count(); }
    std::string posts;

  private:
    void act() {
        while (!plan_.empty() && plan_.begin()->first <= elapsed_) {
            support_.write("state/state-ID.json", plan_.begin()->second);
            plan_.erase(plan_.begin());
        }
    }

    const test::TestFolder& support_;
    OmbrixAppStateBus::Surroundings surroundings_;
    Clock::time_point start_ = Clock::now();
    std::chrono::nanoseconds elapsed_{0};
    std::map<std::chrono::nanoseconds, std::string> plan_;
};
}  // namespace

TEST(AppStateBus, OnlyOptionalFieldsMayBeMissingAndNoneMayBeOfAnotherType) {
    const Json::Value whole = Json::parse("{" + required + "," + optional + "}");
    const Json::Value least = Json::parse("{" + required + "}");
    const auto decode = [](const Json::Value& value) {
        return encode(Json::decode<AppStateSnapshot>(Json::write(value, Json::Style::canonical)));
    };
    EXPECT_EQ(decode(whole), whole);
    for (const auto& [key, value] : *whole.members()) {
        Json::Members without = *whole.members(), wrong = without;
        without.erase(key);
        wrong[key] = Json::Array{};
        if (least.member(key) != nullptr)
            EXPECT_THROW(decode(without), Json::DecodingError) << key;
        else
            EXPECT_EQ(decode(without), Json::Value(without)) << key;
        EXPECT_THROW(decode(wrong), Json::DecodingError) << key;
    }
}

TEST(AppStateBus, AnAnswerIsTakenOnceItIsWholeAndLeavesNoFile) {
    const test::TestFolder support;
    support.write("state/state-OTHER.json", "{" + required + "}");  // an earlier run's
    support.write("state/state-ID.json", "{" + required + R"(,"toast":"stale"})");
    FakeApplication application(support);
    const std::string whole = "{" + required + R"(,"toast":"fresh"})";
    application.writes(100ms, whole.substr(0, whole.size() / 2));
    application.writes(300ms, "\xFF");
    application.writes(400ms, whole);
    const auto snapshot = application.asked(3);
    ASSERT_TRUE(snapshot);
    EXPECT_EQ(snapshot->toast, "fresh");
    EXPECT_NEAR(application.secondsPassed(), 0.4, 0.001);
    EXPECT_EQ(application.posts, "com.ombrix.app.state-request ID");
    EXPECT_FALSE(std::filesystem::exists(support.at("state/state-ID.json")));
    EXPECT_TRUE(std::filesystem::exists(support.at("state/state-OTHER.json")));
}

TEST(AppStateBus, WithoutAnAnswerTheRequestEndsAtItsDeadlineIfThereIsOne) {
    const test::TestFolder support;
    for (const double seconds : {0.12, 3.0}) {
        FakeApplication application(support);
        application.writes(10ms, "garbage");
        application.writes(5s, "{" + required + "}");
        EXPECT_EQ(application.asked(seconds), std::nullopt);
        EXPECT_NEAR(application.secondsPassed(), seconds, 1e-6);
        EXPECT_FALSE(std::filesystem::exists(support.at("state/state-ID.json")));
    }
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(requestSnapshot(support.at("no/such/folder"), "ID", nan), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(support.at("no")));
    FakeApplication late(support);
    late.writes(60s, "{" + required + "}");
    EXPECT_TRUE(late.asked(std::numeric_limits<double>::infinity()));
}
}  // namespace ombrix

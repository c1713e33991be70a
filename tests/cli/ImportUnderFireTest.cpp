// Imports that are killed: what has its name is whole, and the next run brings the rest.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <random>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/TestFolder.h"
#include "ToolProcess.h"

namespace ombrix::ToolTests {
namespace {

/// The visible files of a folder with their bytes.
std::map<std::string, std::string> filesIn(const std::string& folder) {
    std::map<std::string, std::string> files;
    for (const auto& name : Files::names(folder))
        if (!name.starts_with('.')) files[name] = Files::bytes(folder + "/" + name);
    return files;
}

std::string vtt(const std::string& words) {
    std::string text = "WEBVTT\n";
    for (int cue = 0; cue < 20; ++cue)
        text += "\n00:00:01.000 --> 00:00:04.000\n<v Ann>" + words + "</v>\n";
    return text;
}

/// 190 exports with one meeting, two of them with the name of another, and ten with several.
void writeExports(const test::TestFolder& folder) {
    for (int i = 0; i < 188; ++i)
        folder.write("in/" + std::to_string(i) + ".vtt", vtt("number " + std::to_string(i)));
    folder.write("in/a/7.vtt", vtt("another seven"));
    folder.write("in/b/7.vtt", vtt("a third seven"));
    for (int i = 0; i < 10; ++i) {
        std::string logs;
        for (int meeting = 0; meeting < 5; ++meeting) {
            logs += (logs.empty() ? "" : ",") +
                    std::string(R"({"title":"t","startTime":"2026-03-02","markdown":"**Ann:** )") +
                    std::to_string(i) + "-" + std::to_string(meeting) + "\"}";
        }
        folder.write("in/logs" + std::to_string(i) + ".json", "{\"lifelogs\":[" + logs + "]}");
    }
}

Call importCall(const test::TestFolder& folder, const std::string& destination) {
    std::filesystem::create_directories(destination);
    return callIn(folder.path(), {OMBRIX_TOOL, "import", folder.at("in"), "--folder", destination});
}

/// Kills it some time after its start, or after `hasBegun` is true for the first time.
void runAndKill(const Call& call, useconds_t after, const std::function<bool()>& hasBegun) {
    std::vector<char*> arguments, environment;
    for (const auto& one : call.arguments) arguments.push_back(const_cast<char*>(one.c_str()));
    for (const auto& one : call.environment) environment.push_back(const_cast<char*>(one.c_str()));
    arguments.push_back(nullptr);
    environment.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    ASSERT_EQ(::posix_spawn(&child, arguments.front(), &actions, nullptr, arguments.data(),
                            environment.data()),
              0);
    ::posix_spawn_file_actions_destroy(&actions);
    while (hasBegun && !hasBegun() && ::waitpid(child, nullptr, WNOHANG) == 0) ::usleep(20);
    ::usleep(after);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

TEST(ImportUnderFire, AKilledImportLeavesWholeTranscriptsAndTheNextRunCompletesIt) {
    // In memory where there is such a folder: ten thousands of files would keep the disk busy.
    const bool hasMemory = Files::isDirectory("/dev/shm");
    const test::Variable temporary("TMPDIR", hasMemory ? "/dev/shm" : "/tmp");
    const test::TestFolder folder;
    writeExports(folder);
    const auto started = std::chrono::steady_clock::now();
    ASSERT_EQ(run(importCall(folder, folder.at("whole"))).status, 0);
    const auto took = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now() - started);
    const auto whole = filesIn(folder.at("whole"));
    ASSERT_EQ(whole.size(), 240U);

    std::mt19937 random(1);
    int interrupted = 0;
    for (int round = 0; round < 100; ++round) {
        const std::string destination = folder.at("out" + std::to_string(round));
        const Call call = importCall(folder, destination);
        // Half of the kills come while files get their names, however busy the machine is.
        if (round % 2 == 0) {
            runAndKill(call, 0, [&] {
                return std::ranges::any_of(Files::names(destination),
                                           [](const auto& name) { return !name.starts_with("."); });
            });
        } else {
            const auto latest = static_cast<unsigned>(took.count());
            runAndKill(call, static_cast<useconds_t>(random() % (latest + 1)), {});
        }
        const auto left = filesIn(destination);
        if (!left.empty() && left.size() < whole.size()) ++interrupted;
        for (const auto& [name, bytes] : left) ASSERT_EQ(bytes, whole.at(name)) << name;
        ASSERT_EQ(run(call).status, 0);
        ASSERT_EQ(filesIn(destination), whole);
        const Outcome again = run(call);
        ASSERT_THAT(again.output, testing::HasSubstr("\"skipped\" : \"200\"")) << again.output;
        ASSERT_THAT(Files::names(destination),
                    testing::Not(testing::Contains(testing::StartsWith(".ombrix-import-"))));
        std::filesystem::remove_all(destination);
    }
    RecordProperty("interrupted", interrupted);
    EXPECT_GT(interrupted, 0) << "some kills came in the middle";
}
}  // namespace
}  // namespace ombrix::ToolTests

// engine-benchmark ENGINE FOLDER [--count N] [--rounds N]
//
// Times `ombrix-engine status` and `refresh` over a landed library, 10,000 transcripts of 50 KB
// with their sidecars, against `cat` of the bytes that they need: the front matters, which are
// copied to files of their own, and the sidecars; the first time, without the cache, of all
// transcripts and sidecars. The library is made in FOLDER when it is missing.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/EngineRecipes.h"
#include "OmbrixMemoryKit/Identity/ContentFingerprint.h"
#include "OmbrixMemoryKit/Identity/MeetingKey.h"
#include "OmbrixMemoryKit/Land/LandSidecar.h"
#include "OmbrixPlatform/Text.h"
#include "ProcessRun.h"
#include "Talk.h"

namespace {

using namespace ombrix;
namespace fs = std::filesystem;

constexpr int people = 60;

std::string person(std::size_t number) { return "Person Number" + std::to_string(number); }
std::string key(std::size_t number) { return "name:" + Text::lowercased(person(number)); }

/// The record of an ordinary meeting: three promises, four facts, two decisions, notes.
LandOutput record(const std::vector<std::size_t>& who, Dice& dice, const std::string& talk) {
    const auto sentence = [&] { return talk.substr(dice.below(talk.size() - 90), 90); };
    LandOutput output{.summary = sentence() + sentence(),
                      .notes = {{"Pricing", {sentence(), sentence()}}, {"Dates", {sentence()}}},
                      .decisions = {{sentence(), sentence(), "Me"}, {sentence(), sentence(), "Me"}},
                      .openQuestions = {{sentence(), sentence()}}};
    for (const auto one : who) {
        output.commitments.push_back({.direction = dice.below(2) == 0
                                                       ? CommitmentDirection::userOwes
                                                       : CommitmentDirection::owedToUser,
                                      .who = person(one),
                                      .whoKey = key(one),
                                      .what = sentence(),
                                      .quote = sentence(),
                                      .speaker = "Me",
                                      .dueRaw = "Friday"});
        output.memory.push_back({.entityKey = key(one), .fact = sentence(), .quote = sentence()});
    }
    output.memory.push_back({.entityKey = "thread:topic " + std::to_string(dice.below(40)),
                             .kind = LandMemoryFact::Kind::thread,
                             .fact = sentence(),
                             .quote = sentence()});
    return output;
}

std::string dayOf(int meeting, int count) {
    const auto day = std::chrono::sys_days(std::chrono::year(2026) / 9 / 30) -
                     std::chrono::days((count - meeting) / 9);
    return isoInstant(Instant(day)).substr(0, 10);
}

void makeLibrary(const fs::path& folder, int count) {
    if (fs::exists(folder)) return;
    const fs::path partial = folder.string() + ".partial";
    fs::remove_all(partial);
    const fs::path land = partial / "library" / EnginePaths::landFolder;
    fs::create_directories(land);
    fs::create_directories(partial / "heads");
    fs::create_directories(partial / "support");
    std::ofstream(partial / "support/config.json")
        << R"({"output_folder_display_path": ")" << (folder / "library").string()
        << R"(", "user_name": "Dana Reyes"})";
    const std::string talk = Talk::ascii(20'000);
    const std::string turns = Talk::transcript(230);
    const std::string body = turns.substr(turns.find("\n## Transcript"));
    Dice dice(5);
    for (int i = 0; i < count; ++i) {
        const std::string name = std::to_string(10'000 + i), day = dayOf(i, count);
        std::vector<std::size_t> who = {dice.below(people), dice.below(people), dice.below(people)};
        std::string head = "---\ntitle: Meeting " + name + "\ndate: " + day +
                           "\nsource: Ombrix\nparticipants:\n  - Dana Reyes\n";
        for (const auto one : who) head += "  - " + person(one) + "\n";
        head += "---\n";
        const std::string text = head + "\n## Notes\n" + body + "\nMeeting " + name + ".\n";
        std::ofstream(partial / "library" / (name + ".md")) << text;
        std::ofstream(partial / "heads" / name) << head;
        const auto document = *MarkdownTranscriptParser::parse(text);
        const LandSidecar sidecar{.meetingKey = MeetingKey::make("", "", day, document.title),
                                  .contentFingerprint = ContentFingerprint::make(
                                      document.title, day, document.participants, document.turns),
                                  .relativePath = name + ".md",
                                  .title = document.title,
                                  .date = day,
                                  .participants = document.participants,
                                  .landedAt = *parseIsoInstant(day + "T18:00:00Z"),
                                  .route = "ownKey",
                                  .model = "claude-sonnet-4-5",
                                  .recipeVersion = std::string(EngineRecipes::landVersion),
                                  .inputHash = "sha256:" + std::string(64, '0'),
                                  .output = record(who, dice, talk)};
        std::ofstream(land / LandSidecar::fileName(sidecar.meetingKey)) << sidecar.encode();
    }
    fs::rename(partial, folder);
}

/// `cat` of the files in these folders.
ProcessRun::Command cat(const fs::path& folder, const std::vector<fs::path>& below,
                        double& megabytes) {
    ProcessRun::Command command{"env", "-C", folder.string(), "cat"};
    for (const auto& place : below) {
        for (const auto& entry : fs::directory_iterator(folder / place)) {
            if (!entry.is_regular_file()) continue;
            megabytes += static_cast<double>(entry.file_size()) / 1e6;
            command.push_back((place / entry.path().filename()).string());
        }
    }
    return command;
}

void print(const char* what, const ProcessRun::Cost& cost, const ProcessRun::Cost& cat,
           double sidecars) {
    std::printf(
        "%-18s %8.1f ms   cat %8.1f ms   ratio %.2f   memory %6.1f MB, %.2f of the "
        "sidecars\n",
        what, cost.seconds * 1000, cat.seconds * 1000, cost.seconds / cat.seconds,
        cost.peakMegabytes, cost.peakMegabytes / sidecars);
}
}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    int count = 10'000, rounds = 11;
    for (std::size_t i = 2; i + 1 < arguments.size(); i += 2)
        (arguments[i] == "--count" ? count : rounds) = std::atoi(arguments[i + 1].c_str());
    if (arguments.size() < 2 || arguments.size() % 2 != 0 || count < 1 || rounds < 1) {
        std::fputs("usage: engine-benchmark ENGINE FOLDER [--count N] [--rounds N]\n", stderr);
        return 64;
    }
    const std::string engine = fs::absolute(arguments[0]);
    const fs::path folder = fs::absolute(arguments[1]);
    makeLibrary(folder, count);
    const std::string support = (folder / "support").string();
    const fs::path land = fs::path("library") / EnginePaths::landFolder;
    double needed = 0, sidecars = 0, whole = 0;
    const auto needs = cat(folder, {"heads", land}, needed);
    cat(folder, {land}, sidecars);
    const auto all = cat(folder, {"library", land}, whole);
    ProcessRun::run({engine, "refresh", "--support-dir", support});  // "Follow Ups.md" is made
    const auto costs = ProcessRun::sideBySide({{engine, "status", "--support-dir", support},
                                               {engine, "refresh", "--support-dir", support},
                                               needs},
                                              rounds);
    std::printf(
        "%d meetings: %.1f MB of front matters and sidecars, of them %.1f MB of sidecars; "
        "median of %d rounds; the goals are ratios of at most 2, and 3 in memory\n",
        count, needed, sidecars, rounds);
    print("status", costs[0], costs[2], sidecars);
    print("refresh", costs[1], costs[2], sidecars);
    const std::string cache = (folder / "library/.ombrix/engine/transcripts.json").string();
    const auto first = ProcessRun::sideBySide(
        {{"sh", "-c",
          "rm -f '" + cache + "'; exec '" + engine + "' status --support-dir '" + support + "'"},
         all},
        std::min(rounds, 5));
    std::printf("without the cache: %.1f MB\n", whole);
    print("status, first time", first[0], first[1], sidecars);
}

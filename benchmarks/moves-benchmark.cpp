// moves-benchmark CLI FOLDER [--rounds N]
//
// Times `moves --json` against `cat` reading the same files: 2,000 transcripts of 40 KB, each with
// a sidecar of 6 prepared moves. The library is made in FOLDER when it is missing.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptTurnID.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Moves/PrepareSidecar.h"
#include "OmbrixPlatform/Files.h"
#include "ProcessRun.h"
#include "Talk.h"

namespace {

using namespace ombrix;
namespace fs = std::filesystem;

constexpr int meetings = 2'000;
constexpr std::size_t movesAMeeting = 6, claimsAMove = 4, turnsATranscript = 150;

/// Work as a model writes it: two blocks of three lines, which rest on four claims, a gap.
PrepareMove preparedMove(std::size_t index, const std::vector<std::string>& turns, Dice& dice,
                         const std::string& talk) {
    const auto sentence = [&] { return talk.substr(dice.below(talk.size() - 90), 90); };
    const std::string key = "piece-of-work-" + std::to_string(index);
    PrepareMove move{.key = key,
                     .commitmentIDs = {"c-" + turns[index].substr(5) + "00"},
                     .kind = index % 3 == 0 ? PrepareMoveKind::message : PrepareMoveKind::prompt,
                     .stance = index % 2 == 0 ? PrepareStance::stated : PrepareStance::suggested,
                     .title = sentence().substr(0, 40),
                     .recipients = {"Søren Weir"},
                     .due = PrepareDue{"2026-06-05", "by Friday"}};
    for (std::size_t i = 0; i < claimsAMove; ++i) {
        const std::size_t cited = dice.below(turns.size() - 1);
        move.claims.push_back({.id = "claim-" + std::to_string(i),
                               .gist = sentence(),
                               .role = PrepareClaimRole::decided,
                               .turnIDs = {turns[cited], turns[cited + 1]}});
    }
    for (const char* block : {"task", "constraints"}) {
        move.blocks.push_back({.id = block, .label = block});
        for (std::size_t i = 0; i < 3; ++i)
            move.blocks.back().lines.push_back({std::string(block) + std::to_string(i),
                                                sentence(),
                                                {"claim-" + std::to_string(i)}});
    }
    move.unresolved.push_back({"gap", sentence(), {"claim-3"}});
    if (move.kind == PrepareMoveKind::message) move.email = {{"Søren Weir"}, move.title};
    return move;
}

void makeLibrary(const fs::path& folder) {
    if (fs::exists(folder)) return;
    const fs::path partial = folder.string() + ".partial";
    const fs::path prepared = partial / EnginePaths::prepareFolder;
    fs::create_directories(prepared);
    const std::string transcript = Talk::transcript(turnsATranscript), talk = Talk::ascii(20'000);
    const auto turns = TranscriptTurnID::ids(MarkdownTranscriptParser::parse(transcript)->turns);
    Dice dice(3);
    for (int i = 0; i < meetings; ++i) {
        const std::string name = std::to_string(10'000 + i);
        std::ofstream(partial / (name + ".md")) << transcript;
        PrepareSidecar sidecar{.meetingKey = "m-00000000000" + name,
                               .contentFingerprint = "0123456789abcdef",
                               .relativePath = name + ".md",
                               .title = "Pricing, weekly",
                               .date = "2026-06-01",
                               .route = "ownKey",
                               .model = "a-model",
                               .recipeVersion = "prepare/v1",
                               .inputHash = "sha256:" + std::string(64, '0')};
        for (std::size_t move = 0; move < movesAMeeting; ++move)
            sidecar.output.moves.push_back(preparedMove(move, turns, dice, talk));
        std::ofstream(prepared / (name + ".json")) << sidecar.encode();
    }
    fs::rename(partial, folder);
}

/// The paths of the files that both read, and how many bytes those in `below` have.
double megabytes(const fs::path& below, ProcessRun::Command& paths) {
    std::uintmax_t bytes = 0;
    for (const auto& entry : fs::directory_iterator(below)) {
        if (!entry.is_regular_file()) continue;
        bytes += entry.file_size();
        paths.push_back(entry.path().string());
    }
    return static_cast<double>(bytes) / 1e6;
}
}  // namespace

int main(int argc, char** argv) {
    const auto [cli, given, rounds] = ProcessRun::orderOf("moves-benchmark", argc, argv, 31);
    const fs::path folder = fs::absolute(given);
    makeLibrary(folder);
    ProcessRun::Command cat{"cat"};
    const double transcripts = megabytes(folder, cat);
    const double sidecars = megabytes(folder / EnginePaths::prepareFolder, cat);
    const auto costs = ProcessRun::sideBySide(
        {{cli, "moves", "--json", "--folder", folder.string()}, cat}, rounds);
    std::printf("moves --json, median of %d rounds; the goals are ratios of at most 3\n", rounds);
    std::printf("%.1f MB of transcripts, %.1f MB of sidecars\n", transcripts, sidecars);
    std::printf("time   %8.2f ms   cat      %8.2f ms   ratio %.2f\n", costs[0].seconds * 1000,
                costs[1].seconds * 1000, costs[0].seconds / costs[1].seconds);
    std::printf("memory %8.1f MB   sidecars %8.1f MB   ratio %.2f\n", costs[0].peakMegabytes,
                sidecars, costs[0].peakMegabytes / sidecars);
}

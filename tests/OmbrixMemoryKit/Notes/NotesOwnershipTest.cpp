#include "OmbrixMemoryKit/Notes/NotesOwnership.h"

namespace ombrix {
namespace {

TEST(NotesOwnership, TheEngineKeepsOutOfNotesThatMayBeSomeoneElses) {
    using Owner = NotesOwnership::Owner;
    const EngineProvenance written{.route = EngineProvenance::Route::ownKey,
                                   .model = "claude-sonnet-4-5",
                                   .at = *parseIsoInstant("2026-09-01T14:03:22Z")};
    EngineProvenance edited = written;
    edited.edited = written.at + std::chrono::hours(1);
    const std::string summary = "\n## Summary\nS.\n", end = "\n<!-- /ombrix:ai -->\n";
    const struct {
        std::string block;
        NotesOwnership expected;
        bool engineMayWrite;
    } cases[] = {
        {summary + "  " + written.machineLine() + end, {Owner::engine, written}, true},
        {summary + edited.machineLine() + end, {Owner::user, edited}, false},
        {"", {Owner::absent}, true},
        {summary + end, {Owner::foreign}, false},
        {summary + "<!-- ombrix:written-by route=\"x\" -->" + end, {Owner::foreign}, false},
        {summary + end + written.machineLine(), {Owner::foreign}, false},
    };
    for (const auto& [block, expected, engineMayWrite] : cases) {
        const auto found =
            NotesOwnership::classify("# T\n\n## Transcript\n\n**Ann:** Hi.\n" + block);
        EXPECT_EQ(found, expected) << block;
        EXPECT_EQ(found.engineMayWrite(), engineMayWrite) << block;
    }
}
}  // namespace
}  // namespace ombrix

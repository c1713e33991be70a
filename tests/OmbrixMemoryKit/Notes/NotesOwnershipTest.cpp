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
    const std::string line = written.machineLine();
    const struct {
        const char* what;
        std::string block;
        Owner owner;
        bool engineMayWrite;
    } cases[] = {
        {"written", "\n## Summary\nS.\n\n  " + line + "\n<!-- /ombrix:ai -->\n", Owner::engine,
         true},
        {"edited", "\n## Summary\nS.\n" + edited.machineLine() + "\n<!-- /ombrix:ai -->\n",
         Owner::user, false},
        {"none", "", Owner::absent, true},
        {"not closed", "\n## Summary\nS.\n" + line + "\n", Owner::absent, true},
        {"no line", "\n## Summary\nS.\n\n<!-- /ombrix:ai -->\n", Owner::foreign, false},
        {"an unknown route",
         "\n## Summary\n<!-- ombrix:written-by route=\"x\" model=\"m\" "
         "at=\"2026-09-01T14:03:22Z\" v=\"1\" -->\n<!-- /ombrix:ai -->\n",
         Owner::foreign, false},
        {"a line after the block", "\n## Summary\nS.\n<!-- /ombrix:ai -->\n" + line, Owner::foreign,
         false},
    };
    for (const auto& [what, block, owner, engineMayWrite] : cases) {
        const auto found =
            NotesOwnership::classify("# T\n\n## Transcript\n\n**Ann:** Hi.\n" + block);
        EXPECT_EQ(found.owner, owner) << what;
        EXPECT_EQ(found.engineMayWrite(), engineMayWrite) << what;
        EXPECT_EQ(found.provenance.has_value(), owner == Owner::engine || owner == Owner::user);
        if (owner == Owner::user) {
            EXPECT_EQ(*found.provenance, edited);
        }
    }
}
}  // namespace
}  // namespace ombrix

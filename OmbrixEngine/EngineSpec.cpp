#include "OmbrixEngine/EngineCommands.h"

namespace ombrix::EngineSpec {

const std::vector<SpecCommand>& commands() {
    static const std::vector<SpecCommand> rows{
        {.name = "spec",
         .usage = "ombrix-engine spec",
         .summary = "Dump the command tree and CLI schema metadata.",
         .examples = {"ombrix-engine spec"}},
        {.name = "status",
         .usage = "ombrix-engine status [--brief]",
         .summary = "What the engine knows of each transcript, person and thread, what is missing "
                    "or stale and why, and the calls to make now.",
         .examples = {"ombrix-engine status", "ombrix-engine status --brief"}},
        {.name = "ask land",
         .usage = "ombrix-engine ask land <meeting>",
         .summary = "Print what a model is asked about one meeting. A long transcript gives its "
                    "chunks one by one, then a last pass over their records.",
         .examples = {"ombrix-engine ask land \"Autumn launch\"",
                      "ombrix-engine ask land m-0f3c9d2e4b5a6871"}},
        {.name = "give land",
         .usage = "ombrix-engine give land <meeting> --input-hash <hash> --model <name> --route "
                  "<ombrix|ownKey|claudeCode> (--stdin | --file <path>) [--dry-run]",
         .summary = "Take the record of one meeting: write its sidecar, the follow-ups and, where "
                    "nobody else wrote them, the notes.",
         .examples = {"ombrix-engine give land m-0f3c9d2e4b5a6871 --input-hash sha256:1f… --model "
                      "claude-sonnet-4-5 --route claudeCode --file answer.json"}},
        {.name = "refresh",
         .usage = "ombrix-engine refresh [--dry-run]",
         .summary = "Compute every derived file again from the sidecars, the aliases and the "
                    "user's corrections.",
         .examples = {"ombrix-engine refresh", "ombrix-engine refresh --dry-run"}},
    };
    return rows;
}
}  // namespace ombrix::EngineSpec

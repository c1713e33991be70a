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
        {.name = "ask consolidate",
         .usage = "ombrix-engine ask consolidate <entity>",
         .summary = "Print what a model is asked for the memory file of one person or thread.",
         .examples = {"ombrix-engine ask consolidate 'name:ana ruiz'",
                      "ombrix-engine ask consolidate thread:q3-launch"}},
        {.name = "ask before",
         .usage = "ombrix-engine ask before --people <names> --title <title> --for <time> "
                  "[--thread <entity>]",
         .summary = "Print what a model is asked for the card of a call with people the user has "
                    "met.",
         .examples = {"ombrix-engine ask before --people 'Ana Ruiz, Ben' --title 'Launch weekly' "
                      "--for 2026-09-08T10:00"}},
        {.name = "ask prepare",
         .usage = "ombrix-engine ask prepare <meeting>",
         .summary = "Print what a model is asked for the next moves of one landed meeting.",
         .examples = {"ombrix-engine ask prepare \"Autumn launch\""}},
        {.name = "give land",
         .usage = "ombrix-engine give land <meeting> --input-hash <hash> --model <name> --route "
                  "<ombrix|ownKey|claudeCode> (--stdin | --file <path>) [--dry-run]",
         .summary = "Take the record of one meeting: write its sidecar, the follow-ups and, where "
                    "nobody else wrote them, the notes.",
         .examples = {"ombrix-engine give land m-0f3c9d2e4b5a6871 --input-hash sha256:1f… --model "
                      "claude-sonnet-4-5 --route claudeCode --file answer.json"}},
        {.name = "give consolidate",
         .usage = "ombrix-engine give consolidate <entity> --input-hash <hash> --model <name> "
                  "--route <ombrix|ownKey|claudeCode> (--stdin | --file <path>) [--dry-run]",
         .summary = "Take the memory file of one person or thread. What the user wrote in it "
                    "stays.",
         .examples = {"ombrix-engine give consolidate 'name:ana ruiz' --input-hash sha256:1f… "
                      "--model claude-sonnet-4-5 --route claudeCode --file answer.json"}},
        {.name = "give before",
         .usage = "ombrix-engine give before --people <names> --title <title> --for <time> "
                  "[--thread <entity>] --input-hash <hash> --model <name> --route "
                  "<ombrix|ownKey|claudeCode> (--stdin | --file <path>) [--dry-run]",
         .summary = "Take the card of a call, and write it into \"Before\" of the Memory folder.",
         .examples = {"ombrix-engine give before --people 'Ana Ruiz, Ben' --title 'Launch weekly' "
                      "--for 2026-09-08T10:00 --input-hash sha256:1f… --model claude-sonnet-4-5 "
                      "--route claudeCode --stdin"}},
        {.name = "give prepare",
         .usage = "ombrix-engine give prepare <meeting> --input-hash <hash> --model <name> --route "
                  "<ombrix|ownKey|claudeCode> (--stdin | --file <path>) [--dry-run]",
         .summary = "Take the next moves of one meeting: the sidecar that `ombrix-cli moves` "
                    "reads.",
         .examples = {"ombrix-engine give prepare m-0f3c9d2e4b5a6871 --input-hash sha256:1f… "
                      "--model claude-sonnet-4-5 --route claudeCode --file answer.json"}},
        {.name = "refresh",
         .usage = "ombrix-engine refresh [--dry-run]",
         .summary = "Compute every derived file again from the sidecars, the aliases and the "
                    "user's corrections.",
         .examples = {"ombrix-engine refresh", "ombrix-engine refresh --dry-run"}},
        {.name = "follow-ups",
         .usage = "ombrix-engine follow-ups [--by <person|time>] [--person <entity>] [--all]",
         .summary = "What the user owes and is owed today, with the words a view shows.",
         .examples = {"ombrix-engine follow-ups", "ombrix-engine follow-ups --by time --all"}},
        {.name = "memory",
         .usage = "ombrix-engine memory <entity>",
         .summary = "What the memory file of a person or thread says, section by section.",
         .examples = {"ombrix-engine memory 'Ana Ruiz'"}},
        {.name = "alias list",
         .usage = "ombrix-engine alias list",
         .summary = "Which names and addresses are one person's.",
         .examples = {"ombrix-engine alias list"}},
        {.name = "alias add",
         .usage = "ombrix-engine alias add <alias> <person> [--display <name>] [--dry-run]",
         .summary = "Say that a name or an address is a person's, and write the follow-ups anew.",
         .examples = {"ombrix-engine alias add 'Ana R.' 'Ana Ruiz'"}},
    };
    return rows;
}
}  // namespace ombrix::EngineSpec

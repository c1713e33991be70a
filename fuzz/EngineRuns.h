// Commands of ombrix-engine over a whole folder.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Law.h"
#include "LibraryInput.h"
#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixPlatform/JsonDocument.h"

namespace ombrix::Fuzz {

using Words = std::vector<std::string>;

/// What was said in each transcript; notes are not.
inline std::map<std::string, std::vector<TranscriptDocument::Turn>> talks(const Tree& tree) {
    std::map<std::string, std::vector<TranscriptDocument::Turn>> turns;
    for (const auto& [path, text] : tree) {
        if (path.starts_with("Memory/")) continue;
        if (const auto document = MarkdownTranscriptParser::parse(text))
            turns[path] = document->turns;
    }
    return turns;
}

/// The `data` of what a command prints; null when it refuses.
inline Json::Value runEngine(const LibraryInput& library, Words words) {
    words.insert(words.end(), {"--now", "2026-09-01"});
    const auto [status, output] = library.run(engineTool(), std::move(words));
    const Json::Value envelope = Json::parse(output);
    law(envelope.member("ok")->boolean() == (status == 0 || status == 2), "the envelope agrees");
    const Json::Value* data = envelope.member("data");
    return data == nullptr ? Json::Value() : *data;
}
}  // namespace ombrix::Fuzz

// The recipes: what the desktop application hands to a model for each step of the engine. A recipe
// is a system prompt, the JSON Schema of the answer and a version. Its texts are the files in
// OmbrixMemoryKit/texts/recipes/, which end in one line feed that the constants do not have.
//
// A digest is the SHA-256 of the prompt's file, so of the prompt and one line feed, in lower-case
// hexadecimal. The build computes it. A changed prompt wants a new version, because records on disk
// name the version they were made with.
#pragma once

#include <string_view>

namespace ombrix::EngineRecipes {

/// One meeting becomes one record, see LandModels.h.
constexpr std::string_view landVersion = "land/v2";
extern const std::string_view landSHA256, landSystemPrompt, landOutputSchemaJSON;

/// The facts about one person or thread become a memory file.
constexpr std::string_view consolidateVersion = "consolidate/v1";
extern const std::string_view consolidateSHA256, consolidateSystemPrompt,
    consolidateOutputSchemaJSON;

/// What is known about the people of the next call becomes a card.
constexpr std::string_view beforeVersion = "before/v1";
extern const std::string_view beforeSHA256, beforeSystemPrompt, beforeOutputSchemaJSON;

/// The commitments of a landed meeting become next moves.
constexpr std::string_view prepareVersion = "prepare/v1";
extern const std::string_view prepareSHA256, prepareSystemPrompt, prepareOutputSchemaJSON;
}  // namespace ombrix::EngineRecipes

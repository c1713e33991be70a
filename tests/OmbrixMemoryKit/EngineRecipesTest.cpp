#include "OmbrixMemoryKit/EngineRecipes.h"

#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/JsonDocument.h"

namespace ombrix {
namespace {

using namespace EngineRecipes;

const struct {
    std::string_view title, sha256, prompt, schema;
} recipes[] = {
    {"LandOutput", landSHA256, landSystemPrompt, landOutputSchemaJSON},
    {"ConsolidateOutput", consolidateSHA256, consolidateSystemPrompt, consolidateOutputSchemaJSON},
    {"BeforeOutput", beforeSHA256, beforeSystemPrompt, beforeOutputSchemaJSON},
    {"PrepareOutput", prepareSHA256, prepareSystemPrompt, prepareOutputSchemaJSON},
};

TEST(EngineRecipes, TheDigestIsOfThePromptAndOneLineFeed) {
    for (const auto& recipe : recipes) {
        EXPECT_EQ(recipe.sha256, Digest::sha256Hex(std::string(recipe.prompt) + "\n"));
        EXPECT_TRUE(recipe.prompt.starts_with("You are Ombrix's engine. ")) << recipe.title;
        EXPECT_TRUE(recipe.prompt.ends_with("No prose outside it.")) << recipe.title;
    }
}

/// Every object of a schema is closed, and asks for each of its properties.
void expectClosed(const Json::Value& schema) {
    if (const auto* items = schema.member("items")) expectClosed(*items);
    const auto* properties = schema.member("properties");
    if (properties == nullptr) return;
    EXPECT_EQ(*schema.member("additionalProperties"), Json::Value(false));
    std::set<std::string> required, known;
    for (const auto& key : *schema.member("required")->array()) required.insert(*key.string());
    for (const auto& [key, property] : *properties->members()) {
        known.insert(key);
        expectClosed(property);
    }
    EXPECT_EQ(required, known);
}

TEST(EngineRecipes, TheSchemasAreClosedAtEveryDepth) {
    for (const auto& recipe : recipes) {
        const Json::Value schema = Json::parse(recipe.schema);
        EXPECT_EQ(*schema.member("title")->string(), recipe.title);
        expectClosed(schema);
    }
}

TEST(EnginePaths, AnEngineFileSaysSoInAWholeLineAfterItsFirst) {
    EXPECT_TRUE(EnginePaths::declaresEngineFile("---\r\ntitle: x\r\nsource: Ombrix Memory\r\n"));
    for (const auto* text : {"source: Ombrix Memory\n", "---\nsource: Ombrix Memory",
                             "---\nsource: Ombrix\n", "---\n source: Ombrix Memory\n"})
        EXPECT_FALSE(EnginePaths::declaresEngineFile(text)) << text;
}
}  // namespace
}  // namespace ombrix

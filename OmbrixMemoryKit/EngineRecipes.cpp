#include "OmbrixMemoryKit/EngineRecipes.h"

#include "embedded/OmbrixMemoryKit/recipes/before.md.h"
#include "embedded/OmbrixMemoryKit/recipes/before.schema.json.h"
#include "embedded/OmbrixMemoryKit/recipes/consolidate.md.h"
#include "embedded/OmbrixMemoryKit/recipes/consolidate.schema.json.h"
#include "embedded/OmbrixMemoryKit/recipes/land.md.h"
#include "embedded/OmbrixMemoryKit/recipes/land.schema.json.h"
#include "embedded/OmbrixMemoryKit/recipes/prepare.md.h"
#include "embedded/OmbrixMemoryKit/recipes/prepare.schema.json.h"

namespace ombrix::EngineRecipes {
namespace {

namespace Texts = Embedded::OmbrixMemoryKit;

/// Does not compile when a file does not end in exactly one line feed.
consteval std::string_view withoutLastLineFeed(std::string_view file) {
    if (!file.ends_with('\n') || file.ends_with("\n\n")) throw "a recipe ends in one line feed";
    return file.substr(0, file.size() - 1);
}
}  // namespace

constinit const std::string_view landSHA256 = Texts::recipesLandMdSHA256;
constinit const std::string_view landSystemPrompt = withoutLastLineFeed(Texts::recipesLandMd);
constinit const std::string_view landOutputSchemaJSON =
    withoutLastLineFeed(Texts::recipesLandSchemaJson);

constinit const std::string_view consolidateSHA256 = Texts::recipesConsolidateMdSHA256;
constinit const std::string_view consolidateSystemPrompt =
    withoutLastLineFeed(Texts::recipesConsolidateMd);
constinit const std::string_view consolidateOutputSchemaJSON =
    withoutLastLineFeed(Texts::recipesConsolidateSchemaJson);

constinit const std::string_view beforeSHA256 = Texts::recipesBeforeMdSHA256;
constinit const std::string_view beforeSystemPrompt = withoutLastLineFeed(Texts::recipesBeforeMd);
constinit const std::string_view beforeOutputSchemaJSON =
    withoutLastLineFeed(Texts::recipesBeforeSchemaJson);

constinit const std::string_view prepareSHA256 = Texts::recipesPrepareMdSHA256;
constinit const std::string_view prepareSystemPrompt = withoutLastLineFeed(Texts::recipesPrepareMd);
constinit const std::string_view prepareOutputSchemaJSON =
    withoutLastLineFeed(Texts::recipesPrepareSchemaJson);
}  // namespace ombrix::EngineRecipes

// The fixed catalogue of models that may write an answer, for the settings of the desktop
// application. Nothing here calls one.
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/EnumNames.h"

namespace ombrix {

enum class AnswerModelTier { standard, deep };

constexpr auto rawValues(AnswerModelTier) {
    return EnumNames::table<AnswerModelTier>(
        {{AnswerModelTier::standard, "standard"}, {AnswerModelTier::deep, "deep"}});
}

/// One row of the catalogue. Its texts are constants of the program.
struct AnswerModelSpec {
    std::string_view id{};
    std::string_view displayName{};
    std::string_view vendor{};
    AnswerModelTier tier = AnswerModelTier::standard;
    bool selectable = false;  ///< may be chosen, by a setting if not from the list
    bool listed = false;      ///< may be shown in the list of models
    std::optional<std::string_view> evaluatedOn{};  ///< "YYYY-MM-DD"
    bool operator==(const AnswerModelSpec&) const = default;
};

namespace AnswerModels {

/// The id of a model that we choose.
inline constexpr std::string_view automatic = "auto";
/// What `automatic` resolves to for an answer.
inline constexpr std::string_view autoDefault = "deepseek-v4-pro";
/// What the memory engine uses when it is left on `automatic`.
inline constexpr std::string_view autoEngineDefault = "deepseek-v4-pro";

inline constexpr auto all = [] {
    using enum AnswerModelTier;
    return std::to_array<AnswerModelSpec>({
        // id, name, vendor, tier, selectable, listed, evaluated on
        {"auto", "Auto", "ombrix", standard, true, true, {}},
        {"claude-sonnet-4-6", "Sonnet 4.6", "anthropic", standard, true, true, "2026-09-11"},
        {"claude-sonnet-5", "Sonnet 5", "anthropic", standard, true, true, "2026-09-11"},
        {"claude-opus-4-6", "Opus 4.6", "anthropic", deep, false, false, "2026-09-11"},
        {"claude-opus-4-8", "Opus 4.8", "anthropic", deep, false, false, "2026-09-11"},
        {"claude-opus-5", "Opus 5", "anthropic", deep, true, true, "2026-09-11"},
        {"gpt-5", "GPT-5", "openai", standard, true, true, {}},
        {"claude-haiku-4-5", "Haiku 4.5", "anthropic", standard, false, false, {}},
        {"deepseek-v4-flash", "DeepSeek V4 Flash", "deepseek", standard, false, false, {}},
        {"deepseek-v4-pro", "DeepSeek V4 Pro", "deepseek", standard, true, false, "2026-09-12"},
        {"deepseek-v3-2", "DeepSeek V3.2", "deepseek", standard, false, false, {}},
        {"kimi-k2-5", "Kimi K2.5", "moonshot", standard, true, true, {}},
    });
}();

/// The row with exactly this id.
std::optional<AnswerModelSpec> spec(std::string_view id);

/// The rows a person may choose, in the order of the table.
std::vector<AnswerModelSpec> offlineSelectable();

/// The rows to show a person who chooses: those of `offlineSelectable` that are listed. The default
/// is deliberately not one of them: "Auto" represents it.
std::vector<AnswerModelSpec> listed();
}  // namespace AnswerModels
}  // namespace ombrix

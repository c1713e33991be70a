// Who wrote the notes in a transcript. Two lines at the end of their block say so, one to people
// and one to machines:
//
//   _Written by Claude Sonnet 4.5 using your Claude Code on Sep 1, 2026. Regenerate or delete any
//   time._                                                                     (all on one line)
//   <!-- ombrix:written-by route="claudeCode" model="claude-sonnet-4-5" at="2026-09-01T14:03:22Z"
//   v="1" edited="2026-09-02T08:00:00Z" -->                                    (all on one line)
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/EnumNames.h"

namespace ombrix {

struct EngineProvenance {
    /// How the model was reached.
    enum class Route {
        ombrix,  ///< the application's own service
        ownKey,
        claudeCode,
    };
    static constexpr std::string_view machinePrefix = TranscriptEditor::provenancePrefix;

    Route route = Route::ombrix;
    std::string model{};  ///< the model's name; written as it is
    Instant at{};
    std::int64_t version = 1;
    std::optional<Instant> edited{};  ///< when the person changed the notes

    /// The line for machines; `parse` reads it back unless `model` holds a double quote.
    std::string machineLine() const;
    /// The line for people. The day is that of the calendar's zone.
    std::string humanLine(const Calendar& calendar) const;
    /// "Written by Claude Sonnet 4.5 using your Claude Code".
    std::string byline() const;

    /// Nothing unless the line, trimmed, is a machine line with a known route, a model, an instant
    /// and a version. An unreadable "edited" counts as absent.
    static std::optional<EngineProvenance> parse(std::string_view machineLine);
    /// A model's name for people: "Claude Sonnet 4.5" for "claude-sonnet-4-5"; for another model
    /// its name in our catalogue, "Auto" when it is not one that is shown there; for an unknown one
    /// "an AI model".
    static std::string writerName(std::string_view model);

    bool operator==(const EngineProvenance&) const = default;
};

constexpr auto rawValues(EngineProvenance::Route) {  // files on disk hold these
    using enum EngineProvenance::Route;
    return EnumNames::table<EngineProvenance::Route>(
        {{ombrix, "ombrix"}, {ownKey, "ownKey"}, {claudeCode, "claudeCode"}});
}
}  // namespace ombrix

// What a person tells the engine: the list under "## Corrections" in their part of an engine file.
// The engine reads it on every run and never rewrites it.
//
//   ## Corrections
//   - not a commitment: c-0a1b2c3d
//   - done: c-0a1b2c3d on 2026-09-01
//   - reword: c-0a1b2c3d: Send the price list
//   - important: c-0a1b2c3d
//   - alias: Ana R.
//   - not: Ana Ruiz of the other office
//   - private
//
// Keywords may be in upper case. A line that is none of these changes nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix {

struct Correction {
    enum class Kind {
        notACommitment,  ///< `id`
        alias,           ///< `text` is another name of the same person
        notSame,         ///< the line "not: ...": `text` is a different person
        done,            ///< `id`, and `on`, a day by its form only: "2026-99-99" is one
        reword,          ///< `id`, and `text`, the words to show
        important,       ///< `id`: a pin in the person's own view, which no model is told of
        isPrivate,       ///< nothing personal may be written
    };
    Kind kind = Kind::isPrivate;
    std::string id{};    ///< a `CommitmentID`; empty for a kind that has none
    std::string text{};  ///< not empty for a kind that has one
    std::string on{};
    bool operator==(const Correction&) const = default;
};

namespace Corrections {

/// True for the form of a day alone, "2026-09-01"; also for "2026-99-99".
bool isISODate(std::string_view text);

/// The text under the first heading "## Corrections", up to the next line that begins with "## ";
/// LF line ends. Nothing without that heading; a blank after it makes it another one.
std::optional<std::string> section(std::string_view in);

/// The corrections in a section, in the order of its lines. Never throws; linear.
std::vector<Correction> parse(std::string_view section);

/// Each as one line in its canonical form, without the dash: "done: c-0a1b2c3d on 2026-09-01".
/// `parse` reads them back when they stand in a list.
std::vector<std::string> lines(const std::vector<Correction>& corrections);

/// Those that a model is told of, in their order: all but `important`.
std::vector<Correction> forRecipe(std::vector<Correction> corrections);
}  // namespace Corrections
}  // namespace ombrix

// What the user tells about a move in the list under "## Corrections" of its file:
//
//   - done: mv-1a2b3c4d on 2026-03-01
//   - discard: mv-1a2b3c4d
//   - restore: mv-1a2b3c4d
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ombrix {

struct MoveCorrection {
    enum class Kind { done, discard, restore };

    Kind kind = Kind::done;
    std::string id{};  ///< a move's, in lower case
    std::string on{};  ///< for `done`: a day by its form only
    bool operator==(const MoveCorrection&) const = default;
};

namespace MoveCorrections {

/// The corrections in the text of that section, in the order of its lines. Capitals do not matter;
/// a line that is none of the three is passed over. Never throws; linear.
std::vector<MoveCorrection> parse(std::string_view text);
}  // namespace MoveCorrections
}  // namespace ombrix

// The difference of two texts as `diff -u` shows it:
//
//   --- a/Memory/Follow Ups.md
//   +++ b/Memory/Follow Ups.md
//   @@ -9,3 +9,3 @@
//    ## You owe, live
//   -(none)
//   +- **Send the deck** · to Ana Ruiz
//
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ombrix::UnifiedDiff {

/// Three lines around each change; empty when the texts are equal. A file that is not there is
/// "/dev/null". A line without a line feed at its end is marked as `diff` does it. Texts that have
/// little in common are shown as one change. Linear in the texts times that limit.
std::string make(std::string_view path, std::optional<std::string_view> before,
                 std::optional<std::string_view> after);
}  // namespace ombrix::UnifiedDiff

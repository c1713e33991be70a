// Where a text stops being JSON, in words for whoever is to mend it: the reader of JsonDocument.h
// is fast and says only that it does.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ombrix::Json {

struct Fault {
    std::size_t at = 0;  ///< byte offset of what is wrong; the text's size when it ends too early
    std::string problem{};
    bool isCut = false;  ///< the text is the beginning of a JSON text
    bool operator==(const Fault&) const = default;
};

/// The first fault of `text`; nothing for JSON that `Document` reads, and for a number that no
/// double holds. Never throws; linear.
std::optional<Fault> firstFault(std::string_view text);
}  // namespace ombrix::Json

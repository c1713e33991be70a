#include "OmbrixCLI/SelectionOption.h"

#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {

std::optional<KeyPress::Range> parseSelection(std::string_view text, std::int64_t length) {
    const auto pieces = Text::splitDroppingEmpty(text, ":");
    if (pieces.size() != 2) return std::nullopt;
    const auto start = Numbers::parseInteger<std::int64_t>(pieces[0]);
    const auto end = Numbers::parseInteger<std::int64_t>(pieces[1]);
    if (!start || !end || *start < 0 || *start > *end || *end > length) return std::nullopt;
    return KeyPress::Range{*start, *end};
}
}  // namespace ombrix

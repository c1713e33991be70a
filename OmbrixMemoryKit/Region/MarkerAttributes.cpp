#include "OmbrixMemoryKit/Region/MarkerAttributes.h"

#include "OmbrixPlatform/Regex.h"

namespace ombrix {

MarkerAttributes::MarkerAttributes(std::string_view line) {
    // A name begins where its run of letters does. Without saying so, a long run that is no name
    // is tried from each of its letters to its end.
    static const Regex attribute("(?<![a-z])([a-z]++)=\"([^\"]*)\"");
    for (const auto& match : attribute.matches(line))
        values_.insert_or_assign(match.group(1, line), match.group(2, line));
}

std::optional<std::string_view> MarkerAttributes::text(std::string_view name) const {
    const auto found = values_.find(name);
    if (found == values_.end()) return std::nullopt;
    return found->second;
}

std::optional<Instant> MarkerAttributes::instant(std::string_view name) const {
    const auto value = text(name);
    return value ? parseIsoInstant(*value) : std::nullopt;
}
}  // namespace ombrix

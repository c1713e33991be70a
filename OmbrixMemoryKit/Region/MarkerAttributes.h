// The attributes of a marker line: by="Claude" at="2026-09-01T14:03:22Z" sources="4".
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string_view>

#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

class MarkerAttributes {
  public:
    /// Every `name="value"` in the line whose name is of lower-case ASCII letters; a value has no
    /// double quotes. Of a name given twice the last one counts. What else the line holds is
    /// passed over. The values are views of `line`. Linear.
    explicit MarkerAttributes(std::string_view line);

    std::optional<std::string_view> text(std::string_view name) const;
    /// Nothing too for a value that is not an instant.
    std::optional<Instant> instant(std::string_view name) const;

  private:
    std::map<std::string_view, std::string_view, std::less<>> values_;
};
}  // namespace ombrix

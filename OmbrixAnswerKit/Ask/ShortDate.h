// A day as sentences about meetings name it: "May 3".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ombrix {

/// The English month in three letters and the day without a leading zero. Nothing unless `date` is
/// a "YYYY-MM-DD" that exists: not for "2026-8-12", "2026-02-30" and an empty text.
std::optional<std::string> shortDate(std::string_view date);
}  // namespace ombrix

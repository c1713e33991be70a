#include "OmbrixAnswerKit/Ask/ShortDate.h"

#include <array>
#include <cstddef>

#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

std::optional<std::string> shortDate(std::string_view date) {
    static constexpr auto months =
        std::to_array<std::string_view>({"Jan", "Feb", "Mar", "Apr", "May", "Jun",  //
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"});
    static const Calendar calendar = Calendar::gregorianUtc();
    const auto instant = calendar.parseDay(date);
    if (!instant) return std::nullopt;
    const auto day = calendar.day(*instant);
    return std::string(months[static_cast<std::size_t>(day.month - 1)]) + " " +
           std::to_string(day.day);
}
}  // namespace ombrix

#include "OmbrixMarkdownKit/Import/JsonDates.h"

#include <cmath>

#include "OmbrixMarkdownKit/Import/ExportFacts.h"
#include "OmbrixMarkdownKit/Import/JsonFields.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix::TranscriptImport {
std::optional<std::string> dayOfEpoch(double value) {
    constexpr double leastSeconds = 1e9;
    constexpr double leastMilliseconds = 1e11;
    constexpr double firstOfYear10000 = 253402300800;  // which has no day of four digits
    if (!(value > leastSeconds)) return std::nullopt;
    const double seconds = value > leastMilliseconds ? value / 1000 : value;
    if (seconds >= firstOfYear10000) return std::nullopt;
    static const Calendar utc = Calendar::gregorianUtc();
    return utc.dayString(Instant(std::chrono::seconds(std::llround(std::floor(seconds)))));
}
std::optional<std::string> dateOf(const Json::Node& object) {
    static constexpr auto keys = std::to_array<std::string_view>(
        {"startTime", "start_time", "recording_start_time", "scheduled_start_time", "created_at",
         "createdAt", "meeting_date", "date", "created", "start"});
    for (const auto& field : fields(object, keys)) {
        if (!field) continue;
        auto day = std::optional<std::string>();
        if (const auto text = field->string())
            day = numericDay(*text);
        else if (const auto number = field->number())
            day = dayOfEpoch(*number);
        if (day) return day;
    }
    return std::nullopt;
}
}  // namespace ombrix::TranscriptImport

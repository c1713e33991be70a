#include "OmbrixCLI/EvaluatedMoment.h"

#include <chrono>

#include "OmbrixCLI/CLIContext.h"
#include "OmbrixCLI/CLIError.h"

namespace ombrix {

Instant evaluatedMoment(const std::optional<std::string>& day, const Calendar& calendar,
                        const std::string& fix) {
    if (!day || day->empty()) return presentTime();
    const auto midnight = calendar.parseDay(*day);
    if (!midnight) throw CLIError::invalidInput("--now must be YYYY-MM-DD, got " + *day + ".", fix);
    return *midnight + std::chrono::hours(12);
}
}  // namespace ombrix

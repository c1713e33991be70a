// What the commands that wait for the running application to answer have in common.
#pragma once

#include <string>
#include <string_view>

#include "OmbrixCLI/CLIError.h"

namespace ombrix::AppRequest {

/// Throws `CLIError` unless `timeoutSeconds` is above zero; NaN is not, infinity is. `example` is
/// the valid number that the fix suggests.
void requirePositiveTimeout(double timeoutSeconds, std::string_view example);

/// The failure of a command that got no answer in time. `request` names it: "app-state".
CLIError unanswered(std::string_view request, double timeoutSeconds, std::string fix);
}  // namespace ombrix::AppRequest

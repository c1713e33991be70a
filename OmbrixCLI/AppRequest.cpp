#include "OmbrixCLI/AppRequest.h"

#include <utility>

#include "OmbrixPlatform/Numbers.h"

namespace ombrix::AppRequest {

void requirePositiveTimeout(double timeoutSeconds, std::string_view example) {
    if (timeoutSeconds > 0) return;
    throw CLIError::invalidInput(
        "--timeout must be greater than zero.",
        "Pass a positive number such as --timeout " + std::string(example) + ".");
}

CLIError unanswered(std::string_view request, double timeoutSeconds, std::string fix) {
    return CLIError::appUnreachable("Ombrix did not answer the " + std::string(request) +
                                        " request within " + Numbers::described(timeoutSeconds) +
                                        "s.",
                                    std::move(fix));
}
}  // namespace ombrix::AppRequest

#include "OmbrixCLI/AppRequest.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCore/AppStateBus.h"

namespace ombrix {
namespace {

struct AppStateOptions {
    double timeoutSeconds = 3;
    GlobalOptions global;
};

void printAppState(const CLIContext& context, const AppStateOptions& options) {
    AppRequest::requirePositiveTimeout(options.timeoutSeconds, "3");
    const auto snapshot =
        OmbrixAppStateBus::requestSnapshot(context.supportDirectory, options.timeoutSeconds);
    if (!snapshot) {
        throw AppRequest::unanswered(
            "app-state", options.timeoutSeconds,
            "Launch Ombrix (a debug build enables the state bus automatically, or set "
            "enable_state_dump / OMBRIX_STATE_DUMP=1), and pass --support-dir if it stores data "
            "outside the default location.");
    }
    emitSuccess(context, encode(*snapshot));
}
}  // namespace

void declareAppState(Command root) {
    Command command = root.subcommand("app-state", "Dump the running app's live UI state.");
    const auto options = command.options<AppStateOptions>();
    command.option("--timeout SECONDS", options->timeoutSeconds,
                   "Seconds to wait for the running app to answer.");
    command.run(options, printAppState);
}
}  // namespace ombrix

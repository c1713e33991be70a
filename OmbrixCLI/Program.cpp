#include "OmbrixCLI/Program.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <exception>
#include <new>
#include <utility>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/CommandLine.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/StandardStreams.h"
#include "OmbrixPlatform/TemporaryName.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::Program {
namespace {

constexpr int usageStatus = 64;

/// `what` as a line.
std::string errorLine(const char* what) { return std::string("Error: ") + what + "\n"; }

int runCommand(const Tool& tool, const std::vector<std::string>& arguments) {
    const std::vector<std::string> words(arguments.begin() + 1, arguments.end());
    CommandLine named(tool.name, tool.abstract, words);
    tool.declare(named, arguments.front());
    std::function<void()> work = named.workOf(words);
    CommandLine all(tool.name, tool.abstract);
    if (!work) {
        tool.declare(all, arguments.front());
        auto choice = all.parse(words);
        if (choice.help) {
            StandardOutput::write(*choice.help);
            return 0;
        }
        work = std::move(choice.work);
    }
    try {
        work();
    } catch (const CLIError& error) {
        emitFailure(Text::joined(arguments, " "), error.errorBody());
        return error.exitStatus();
    } catch (const IncompleteWork&) {
        return IncompleteWork::exitStatus;
    }
    return 0;
}
}  // namespace

void prepareProcess() {
    std::signal(SIGPIPE, SIG_IGN);
    TemporaryName::removeOnSignals();
    std::signal(SIGXFSZ, SIG_IGN);  // a write beyond the limit then fails as on a full disk
    // Opened for the wrong direction, so that using it fails as on a closed descriptor.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) != -1) continue;
        [[maybe_unused]] const int filler =
            ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

int run(const Tool& tool, const std::vector<std::string>& arguments) {
    try {
        if (arguments.empty()) throw UsageError("The process was started without an argument 0");
        return runCommand(tool, arguments);
    } catch (const UsageError& error) {
        writeStandardError(errorLine(error.what()) + error.usage());
        return usageStatus;
    } catch (const std::bad_alloc&) {
        writeStandardError("Error: Out of memory.\n");
        return 1;
    } catch (const std::exception& error) {
        writeStandardError(errorLine(error.what()));
        return 1;
    }
}
}  // namespace ombrix::Program

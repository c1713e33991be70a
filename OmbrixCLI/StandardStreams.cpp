#include "OmbrixCLI/StandardStreams.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

#include "OmbrixPlatform/FileWriting.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {

using FileWriting::writeAll;

void StandardOutput::write(std::string_view text) {
    if (const int error = writeAll(STDOUT_FILENO, text); error != 0) {
        // Whoever reads a pipe and has enough goes away (`| head -1`). That is no failure to tell
        // of: the process ends as one does that never changed what the signal does.
        if (error == EPIPE) {
            std::signal(SIGPIPE, SIG_DFL);
            ::raise(SIGPIPE);
        }
        throw Error("Cannot write to standard output: " + std::generic_category().message(error) +
                    ".");
    }
}

void writeStandardError(std::string_view text) {
    writeAll(STDERR_FILENO, Text::withVisibleControls(text));
}

void writeTerminal(std::string_view text) { writeAll(STDERR_FILENO, text); }
}  // namespace ombrix

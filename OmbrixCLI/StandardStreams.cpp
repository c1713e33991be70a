#include "OmbrixCLI/StandardStreams.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

/// 0 when all of it was written, else the system's error.
int writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {  // the reader may have made the shared pipe non-blocking
            pollfd room{.fd = descriptor, .events = POLLOUT, .revents = 0};
            ::poll(&room, 1, -1);
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}
}  // namespace

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

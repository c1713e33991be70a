#include "ToolProcess.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <mutex>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "JsonPage.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ToolTests {
namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

std::vector<char*> pointers(const std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (const auto& text : texts) result.push_back(const_cast<char*>(text.c_str()));
    result.push_back(nullptr);
    return result;
}

/// In the child; only calls that are safe after a fork.
[[noreturn]] void become(const Call& call, char* const* arguments, char* const* environment,
                         int output, int errors) {
    ::alarm(call.timeoutSeconds);  // outlives the change of program
    if (call.input == Call::closed) {
        ::close(STDIN_FILENO);
    } else {
        const int input = ::open(call.input.empty() ? "/dev/null" : call.input.c_str(), O_RDONLY);
        if (input < 0 || ::dup2(input, STDIN_FILENO) < 0) ::_exit(126);
        ::close(input);
    }
    if (!call.outputTo) {
        ::dup2(output, STDOUT_FILENO);
    } else if (*call.outputTo == Call::closed) {
        ::close(STDOUT_FILENO);
    } else if (*call.outputTo == Call::abandoned) {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0 || ::dup2(ends[1], STDOUT_FILENO) < 0) ::_exit(126);
        ::close(ends[0]);
        ::close(ends[1]);
    } else {
        const int target = ::open(call.outputTo->c_str(), O_WRONLY);
        if (target < 0 || ::dup2(target, STDOUT_FILENO) < 0) ::_exit(126);
    }
    ::dup2(errors, STDERR_FILENO);
    if (!call.workingDirectory.empty() && ::chdir(call.workingDirectory.c_str()) != 0) ::_exit(126);
    ::execve(arguments[0], arguments, environment);
    ::_exit(127);
}

/// All that the descriptor holds up to its end; closes it.
std::string drained(int descriptor) {
    std::string text;
    std::array<char, 1 << 16> buffer{};
    for (;;) {
        const ssize_t got = ::read(descriptor, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) fail("read");
        if (got == 0) break;
        text.append(buffer.data(), static_cast<std::size_t>(got));
    }
    ::close(descriptor);
    return text;
}

void holdToPage(const std::string& output) {
    const auto envelope = JsonPage::envelopeIn(output);
    if (!envelope) return;
    static std::mutex mutex;
    const std::scoped_lock lock(mutex);
    static JsonPage page(OMBRIX_JSON_PAGE);
    const auto problems = page.problems(*envelope);
    if (!problems.empty())
        throw std::runtime_error("docs/json.md: " + Text::joined(problems, "; ") + "\n" + output);
}
}  // namespace

Outcome run(const Call& call) {
    const auto arguments = pointers(call.arguments);
    const auto environment = pointers(call.environment);
    // Standard error goes to a file, so that one pipe is read at a time and neither end waits.
    const int errors = ::memfd_create("errors", MFD_CLOEXEC);
    std::array<int, 2> output{};
    if (errors < 0 || ::pipe2(output.data(), O_CLOEXEC) != 0) fail("pipe2");
    const pid_t child = ::fork();
    if (child < 0) fail("fork");
    if (child == 0) become(call, arguments.data(), environment.data(), output[1], errors);
    ::close(output[1]);
    Outcome outcome;
    outcome.output = drained(output[0]);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    ::lseek(errors, 0, SEEK_SET);
    outcome.errors = drained(errors);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    holdToPage(outcome.output);
    return outcome;
}

Call callIn(const std::string& folder, std::vector<std::string> arguments) {
    return {.arguments = std::move(arguments),
            .environment = cleanEnvironment(folder),
            .workingDirectory = folder};
}

std::vector<std::string> cleanEnvironment(const std::string& folder) {
    std::vector<std::string> result{"TZ=UTC", "LANG=C.UTF-8", "LC_ALL=C.UTF-8",
                                    "PATH=/usr/bin:/bin", "HOME=" + folder};
    // Options of the sanitizers and the bus of this test are passed on.
    for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "OMBRIX_TEST_BUS"}) {
        const char* const value = ::getenv(name);
        if (value == nullptr) continue;
        const bool isBus = std::string(name) == "OMBRIX_TEST_BUS";
        result.push_back(std::string(isBus ? "DBUS_SESSION_BUS_ADDRESS" : name) + "=" + value);
    }
    return result;
}
}  // namespace ombrix::ToolTests

#include "ToolProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace ombrix::ToolTests {
namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

std::vector<char*> pointers(const std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (const auto& text : texts) result.push_back(const_cast<char*>(text.c_str()));
    result.push_back(nullptr);
    return result;
}

bool fits(char shape, char c) {
    if (shape == '9') return std::isdigit(static_cast<unsigned char>(c)) != 0;
    if (shape == 'F') return std::isxdigit(static_cast<unsigned char>(c)) != 0;
    return shape == c;
}

/// In the child; only calls that are safe behind a fork.
[[noreturn]] void become(const Call& call, char* const* arguments, char* const* environment,
                         int output, int errors) {
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

struct Pipe {
    int read = -1;
    int write = -1;
    Pipe() {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) fail("pipe2");
        read = ends[0];
        write = ends[1];
    }
    ~Pipe() {
        closeWrite();
        ::close(read);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void closeWrite() {
        if (write >= 0) ::close(write);
        write = -1;
    }
};

/// Reads both pipes to their ends; false when the time was over before.
bool drain(int output, int errors, Outcome& into, Clock::time_point deadline) {
    std::array<pollfd, 2> ends{{{output, POLLIN, 0}, {errors, POLLIN, 0}}};
    const std::array<std::string*, 2> texts{&into.output, &into.errors};
    std::array<char, 1 << 16> buffer{};
    while (ends[0].fd >= 0 || ends[1].fd >= 0) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return false;
        if (::poll(ends.data(), ends.size(), static_cast<int>(left)) < 0 && errno != EINTR)
            fail("poll");
        for (std::size_t i = 0; i < ends.size(); ++i) {
            if (ends[i].fd < 0 || ends[i].revents == 0) continue;
            const ssize_t got = ::read(ends[i].fd, buffer.data(), buffer.size());
            if (got > 0)
                texts[i]->append(buffer.data(), static_cast<std::size_t>(got));
            else
                ends[i].fd = -1;  // poll passes a negative descriptor over
        }
    }
    return true;
}
}  // namespace

Outcome run(const Call& call) {
    const auto arguments = pointers(call.arguments);
    const auto environment = pointers(call.environment);
    Pipe output, errors;
    const pid_t child = ::fork();
    if (child < 0) fail("fork");
    if (child == 0) become(call, arguments.data(), environment.data(), output.write, errors.write);
    output.closeWrite();
    errors.closeWrite();
    Outcome outcome;
    const auto deadline = Clock::now() + std::chrono::seconds(call.timeoutSeconds);
    if (!drain(output.read, errors.read, outcome, deadline)) ::kill(child, SIGKILL);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    return outcome;
}

std::vector<std::string> cleanEnvironment(const std::string& folder) {
    std::vector<std::string> result{"TZ=UTC", "LANG=C.UTF-8", "LC_ALL=C.UTF-8",
                                    "PATH=/usr/bin:/bin", "HOME=" + folder};
    // What the sanitizers and the test's own bus are told goes through.
    for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "OMBRIX_TEST_BUS"}) {
        const char* const value = ::getenv(name);
        if (value == nullptr) continue;
        const bool isBus = std::string(name) == "OMBRIX_TEST_BUS";
        result.push_back(std::string(isBus ? "DBUS_SESSION_BUS_ADDRESS" : name) + "=" + value);
    }
    return result;
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "ombrix-cli-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) fail("mkdtemp");
    path_ = std::filesystem::canonical(pattern).string();
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string replacingShape(const std::string& text, const std::string& shape,
                           const std::string& replacement) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const bool found = at + shape.size() <= text.size() &&
                           std::equal(shape.begin(), shape.end(),
                                      text.begin() + static_cast<std::ptrdiff_t>(at), fits);
        result += found ? replacement : std::string(1, text[at]);
        at += found ? shape.size() : 1;
    }
    return result;
}

std::string fileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + path);
    return {std::istreambuf_iterator<char>(in), {}};
}

void writeFile(const std::string& path, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    if (!out.flush()) throw std::runtime_error("cannot write " + path);
}
}  // namespace ombrix::ToolTests

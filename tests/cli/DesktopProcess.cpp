#include "DesktopProcess.h"
#include "OmbrixPlatform/Regex.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>

namespace ombrix::ToolTests {

DesktopProcess::DesktopProcess(const std::string& program, const std::string& script,
                               const std::string& stateFolder) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe2 failed");
    child_ = ::fork();
    if (child_ == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        ::execl(program.c_str(), program.c_str(), script.c_str(), stateFolder.c_str(), nullptr);
        ::_exit(127);
    }
    ::close(ends[1]);
    lines_ = ends[0];
    std::string line;
    if (child_ < 0 || !readLine(line, 10'000) || line != "ready")
        throw std::runtime_error("the fake desktop application does not listen: " + line);
}

DesktopProcess::~DesktopProcess() {
    if (child_ > 0) {
        ::kill(child_, SIGTERM);
        while (::waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    ::close(lines_);
}

bool DesktopProcess::readLine(std::string& line, int milliseconds) {
    std::array<char, 4096> buffer{};
    for (;;) {
        if (const auto end = rest_.find('\n'); end != std::string::npos) {
            line = rest_.substr(0, end);
            rest_.erase(0, end + 1);
            return true;
        }
        pollfd input{.fd = lines_, .events = POLLIN, .revents = 0};
        if (::poll(&input, 1, milliseconds) <= 0) return false;
        const ssize_t got = ::read(lines_, buffer.data(), buffer.size());
        if (got <= 0) return false;
        rest_.append(buffer.data(), static_cast<std::size_t>(got));
    }
}

std::vector<std::string> DesktopProcess::heard(std::size_t atLeast) {
    static const Regex uniqueId("[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}");
    std::vector<std::string> result;
    std::string line;
    while (readLine(line, result.size() < atLeast ? 5000 : 100))
        result.push_back(uniqueId.replacingAll(line, [](const Regex::Match&) { return "{id}"; }));
    return result;
}
}  // namespace ombrix::ToolTests

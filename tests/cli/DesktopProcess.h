// The fake desktop application as a process beside the tool.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <vector>

namespace ombrix::ToolTests {

class DesktopProcess {
  public:
    /// Starts it and waits until it listens on the session bus. Throws `std::runtime_error` when it
    /// does not within ten seconds.
    DesktopProcess(const std::string& program, const std::string& script,
                   const std::string& stateFolder);
    ~DesktopProcess();
    DesktopProcess(const DesktopProcess&) = delete;
    DesktopProcess& operator=(const DesktopProcess&) = delete;

    /// Ends it and returns what it heard, "name<TAB>object" each, unique ids as {id}. Waits up to
    /// five seconds for `atLeast` notifications to arrive.
    std::vector<std::string> heard(std::size_t atLeast);

  private:
    /// False when no line came in time.
    bool readLine(std::string& line, int milliseconds);

    pid_t child_ = -1;
    int lines_ = -1;
    std::string rest_;
};
}  // namespace ombrix::ToolTests

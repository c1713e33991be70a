// Runs a program the way a script would: with its own environment, standard input from a file,
// standard output and standard error captured.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace ombrix::ToolTests {

struct Call {
    static constexpr const char* closed = "closed";
    static constexpr const char* abandoned = "abandoned";

    std::vector<std::string> arguments;    ///< argument 0 included; it is the path that is run
    std::vector<std::string> environment;  ///< "NAME=value"; nothing else is inherited
    std::string workingDirectory;
    std::string input = {};  ///< the file that is standard input, or `closed`; "" is empty
    /// Where standard output goes instead of being captured: a path, `closed`, or `abandoned`, a
    /// pipe whose reader has gone.
    std::optional<std::string> outputTo = {};
    unsigned timeoutSeconds = 120;
};

struct Outcome {
    int status = -1;  ///< the exit status, or 1000 plus the signal that ended the process
    std::string output;
    std::string errors;
};

/// A call in `folder` with the clean environment there.
Call callIn(const std::string& folder, std::vector<std::string> arguments);

/// Runs to the end, or to the timeout, after which the process is killed and its status is 1014.
/// Throws `std::system_error` when the process cannot be started, and `std::runtime_error` when it
/// prints an envelope that docs/json.md does not describe.
Outcome run(const Call& call);

/// The environment of every tool test: UTC, C.UTF-8, a home inside `folder`, no variable
/// of ours, and the session bus only when the test itself runs on one.
std::vector<std::string> cleanEnvironment(const std::string& folder);
}  // namespace ombrix::ToolTests

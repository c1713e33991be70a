#include "OmbrixCLI/ProgressLine.h"

#include <unistd.h>

#include <utility>

#include "OmbrixCLI/StandardStreams.h"

namespace ombrix {
namespace {

constexpr std::chrono::milliseconds quietTime{500};
constexpr std::chrono::milliseconds pause{100};
/// To the start of the line, and erases it.
constexpr const char* clearLine = "\r\033[K";
}  // namespace

ProgressLine::ProgressLine(std::string verb)
    : verb_(std::move(verb)),
      isTerminal_(::isatty(STDERR_FILENO) == 1),
      next_(Clock::now() + quietTime) {}

ProgressLine::~ProgressLine() {
    if (isShown_) writeTerminal(clearLine);
}

void ProgressLine::show(std::size_t done, std::size_t all) {
    if (!isTerminal_) return;
    const auto now = Clock::now();
    if (now < next_) return;
    next_ = now + pause;
    isShown_ = true;
    writeTerminal(clearLine + verb_ + " " + std::to_string(done) + " of " + std::to_string(all));
}
}  // namespace ombrix

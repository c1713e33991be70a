// One line on a terminal that says how far long work is: "importing 1200 of 5000". Nothing is shown
// during the first half second, nor when standard error is no terminal, so programs never see it.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace ombrix {

class ProgressLine {
  public:
    /// `verb` is the word ahead of the numbers.
    explicit ProgressLine(std::string verb);
    /// Clears the line if there is one.
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void show(std::size_t done, std::size_t all);

  private:
    using Clock = std::chrono::steady_clock;

    std::string verb_;
    bool isTerminal_;
    bool isShown_ = false;
    Clock::time_point next_;
};
}  // namespace ombrix

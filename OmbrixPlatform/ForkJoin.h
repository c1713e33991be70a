// Work on all cores that shares nothing and has ended when the function returns.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <functional>

namespace ombrix::ForkJoin {

/// How many workers a number of items pays for: one for each `itemsPerWorker`, at least one, at
/// most one for each core that this process may use.
std::size_t workersFor(std::size_t items, std::size_t itemsPerWorker);

/// Hands out the places of a list, each once, from the first to the last. It is all that the
/// workers share.
class Places {
  public:
    explicit Places(std::size_t count) : count_(count) {}

    /// Calls `visit` with one place after the other until there are none.
    template <typename Visit>
    void take(Visit visit) {
        constexpr std::size_t run = 16;  // neighbours in the list are neighbours on the disk
        for (;;) {
            const std::size_t begin = next_.fetch_add(run, std::memory_order_relaxed);
            if (begin >= count_) return;
            for (std::size_t i = begin; i < std::min(begin + run, count_); ++i) visit(i);
        }
    }
    /// Hands out no more.
    void end() { next_.store(count_, std::memory_order_relaxed); }

  private:
    std::size_t count_;
    std::atomic<std::size_t> next_{0};
};

/// Calls `work` once for each worker, on a thread of its own for all but the first; each takes
/// places until there are none. When the system gives fewer threads, the others do the work.
/// Returns when all have ended, and then throws what the first worker that failed threw; after a
/// failure no more places are handed out.
void run(std::size_t count, std::size_t workers, const std::function<void(Places&)>& work);
}  // namespace ombrix::ForkJoin

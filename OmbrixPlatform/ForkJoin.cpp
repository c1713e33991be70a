#include "OmbrixPlatform/ForkJoin.h"

#include <sched.h>

#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace ombrix::ForkJoin {
namespace {

/// The C++ library counts the cores of the machine; a container or `taskset` may allow fewer.
std::size_t usableCores() {
    cpu_set_t allowed;
    CPU_ZERO(&allowed);
    if (::sched_getaffinity(0, sizeof allowed, &allowed) == 0)
        return static_cast<std::size_t>(CPU_COUNT(&allowed));
    return std::max(1U, std::thread::hardware_concurrency());
}
}  // namespace

std::size_t workersFor(std::size_t items, std::size_t itemsPerWorker) {
    return std::clamp<std::size_t>(items / itemsPerWorker, 1, usableCores());
}

void run(std::size_t count, std::size_t workers, const std::function<void(Places&)>& work) {
    Places places(count);
    std::mutex guard;
    std::exception_ptr failure;
    const auto guarded = [&] {
        try {
            work(places);
        } catch (...) {
            places.end();
            const std::lock_guard lock(guard);
            if (!failure) failure = std::current_exception();
        }
    };
    {
        std::vector<std::jthread> threads;
        try {
            for (std::size_t i = 1; i < workers; ++i) threads.emplace_back(guarded);
        } catch (const std::exception&) {  // no more threads, or no memory for one
        }
        guarded();
    }
    if (failure) std::rethrow_exception(failure);
}
}  // namespace ombrix::ForkJoin

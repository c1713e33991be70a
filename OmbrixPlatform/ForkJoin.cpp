#include "OmbrixPlatform/ForkJoin.h"

#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace ombrix::ForkJoin {

std::size_t workersFor(std::size_t items, std::size_t itemsPerWorker) {
    const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
    return std::clamp<std::size_t>(items / itemsPerWorker, 1, cores);
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

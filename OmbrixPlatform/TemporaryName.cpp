#include "OmbrixPlatform/TemporaryName.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <utility>

namespace ombrix {
namespace {

// A handler may use neither locks nor memory that another call manages, so the names are in fixed
// places, each of which is taken and left with one atomic step.
std::array<std::atomic<const char*>, 1024> names;
static_assert(std::atomic<const char*>::is_always_lock_free);

void removeAndDie(int signal) {
    for (const auto& name : names)
        if (const char* const path = name.load()) ::unlink(path);
    ::raise(signal);  // the handler was reset when it was called
}
}  // namespace

TemporaryName::TemporaryName(std::string path) : path_(std::move(path)), slot_(0) {
    for (; slot_ < names.size(); ++slot_) {
        const char* isFree = nullptr;
        if (names[slot_].compare_exchange_strong(isFree, path_.c_str())) return;
    }
}

TemporaryName::~TemporaryName() {
    if (slot_ < names.size()) names[slot_].store(nullptr);
}

void TemporaryName::removeOnSignals() {
    struct sigaction action {};
    action.sa_handler = removeAndDie;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction old {};
        if (::sigaction(signal, nullptr, &old) == 0 && old.sa_handler == SIG_DFL)
            ::sigaction(signal, &action, nullptr);
    }
}
}  // namespace ombrix

// A limit of the process, such as that of open files, lowered for one test.
#pragma once

#include <sys/resource.h>

namespace ombrix::test {

/// Lowers a limit of the process during its lifetime.
class ProcessLimit {
    using Resource = decltype(RLIMIT_FSIZE);

  public:
    ProcessLimit(Resource resource, rlim_t value) : resource_(resource) {
        ::getrlimit(resource, &old_);
        const rlimit lower{value, old_.rlim_max};
        ::setrlimit(resource, &lower);
    }
    ~ProcessLimit() { ::setrlimit(resource_, &old_); }
    ProcessLimit(const ProcessLimit&) = delete;
    ProcessLimit& operator=(const ProcessLimit&) = delete;

  private:
    Resource resource_;
    rlimit old_{};
};
}  // namespace ombrix::test

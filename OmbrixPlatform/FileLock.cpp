#include "OmbrixPlatform/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <thread>
#include <utility>

#include "OmbrixPlatform/FileWriting.h"
#include "OmbrixPlatform/Files.h"

namespace ombrix {

std::optional<FileLock> FileLock::take(const std::string& path,
                                       std::chrono::milliseconds patience) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds pause{10};
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC,
                                  FileWriting::readWriteByUmask);
    if (descriptor < 0) throw Files::Error(errno, "Cannot open", path);
    FileLock lock(descriptor);
    const auto end = Clock::now() + patience;
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) throw Files::Error(errno, "Cannot lock", path);
        if (Clock::now() >= end) return std::nullopt;
        std::this_thread::sleep_for(pause);
    }
    return lock;
}

FileLock::~FileLock() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

FileLock::FileLock(FileLock&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
}  // namespace ombrix

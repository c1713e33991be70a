#include "OmbrixPlatform/AbandonedFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/TemporaryName.h"

namespace ombrix::AbandonedFiles {
namespace {

bool isAbandoned(const std::string& path, int descriptor, std::time_t writtenBefore) {
    struct stat open {
    }, named{};
    return ::fstat(descriptor, &open) == 0 && ::lstat(path.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino && S_ISREG(open.st_mode) &&
           open.st_uid == ::geteuid() && open.st_nlink == 1 && open.st_mtime < writtenBefore &&
           ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
}
}  // namespace

std::size_t remove(const std::string& folder, std::chrono::seconds age) {
    const std::time_t writtenBefore =
        std::chrono::system_clock::to_time_t(std::chrono::system_clock::now() - age);
    std::size_t count = 0;
    for (const auto& name : Files::names(folder)) {
        if (!TemporaryName::isOne(name)) continue;
        const std::string path = Paths::joined(folder, name);
        // Neither follows a link nor waits at a pipe.
        const int descriptor = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (descriptor < 0) continue;
        if (isAbandoned(path, descriptor, writtenBefore) && ::unlink(path.c_str()) == 0) ++count;
        ::close(descriptor);
    }
    return count;
}
}  // namespace ombrix::AbandonedFiles

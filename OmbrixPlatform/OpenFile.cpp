#include "OmbrixPlatform/OpenFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <climits>

namespace ombrix::OpenFile {
namespace {

/// A pipe that took the place of a file does not block, a terminal does not become ours.
constexpr int toRead = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

/// Passes on an open file when it is regular and has at most `largest` bytes.
Descriptor ifRegular(Descriptor file, std::size_t largest, struct stat& facts) {
    if (!file.isOpen() || ::fstat(file.get(), &facts) != 0) return Descriptor();
    if (S_ISREG(facts.st_mode) && static_cast<std::size_t>(facts.st_size) <= largest) return file;
    errno = S_ISDIR(facts.st_mode) ? EISDIR : S_ISREG(facts.st_mode) ? EFBIG : EINVAL;
    return Descriptor();
}
}  // namespace

bool Descriptor::close() {
    const int fd = std::exchange(fd_, -1);
    return fd < 0 || ::close(fd) == 0;
}

Reached::Reached(const std::string& path) : rest_(path) {
    constexpr std::size_t longestCall = PATH_MAX - 1;
    while (rest_.size() > longestCall) {
        const std::size_t cut = rest_.rfind('/', longestCall);
        if (cut == std::string_view::npos || cut == 0) break;
        const std::string step(rest_.substr(0, cut));
        Descriptor next(::openat(folder(), step.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!next.isOpen()) {
            error_ = errno;
            return;
        }
        folder_ = std::move(next);
        rest_.remove_prefix(rest_.find_first_not_of('/', cut));
    }
}

int Reached::folder() const { return folder_.isOpen() ? folder_.get() : AT_FDCWD; }

int Reached::open(int flags) const {
    errno = error_;
    return error_ != 0 ? -1 : ::openat(folder(), name(), flags | O_CLOEXEC);
}

int Reached::stat(struct stat& facts) const {
    errno = error_;
    return error_ != 0 ? -1 : ::fstatat(folder(), name(), &facts, 0);
}

Descriptor regular(const std::string& path, std::size_t largest, struct stat& facts) {
    if (!isPath(path)) {
        errno = ENOENT;
        return Descriptor();
    }
    const Reached reached(path);
    if (reached.stat(facts) != 0) return Descriptor();
    if (S_ISREG(facts.st_mode)) return ifRegular(Descriptor(reached.open(toRead)), largest, facts);
    errno = S_ISDIR(facts.st_mode) ? EISDIR : EINVAL;
    return Descriptor();
}

Descriptor Neighbours::open(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == path.npos || !isPath(path)) {
        errno = ENOENT;
        return Descriptor();
    }
    const auto folder = std::string_view(path).substr(0, slash + 1);  // of "/a", "/"
    if (!folder_.isOpen() || folder != path_) {
        path_ = folder;
        folder_ = Descriptor(Reached(path_).open(O_PATH | O_DIRECTORY));
        if (!folder_.isOpen()) return Descriptor();
    }
    return Descriptor(::openat(folder_.get(), path.c_str() + slash + 1, toRead));
}

Descriptor Neighbours::regular(const std::string& path, std::size_t largest, struct stat& facts) {
    return ifRegular(open(path), largest, facts);
}

std::optional<std::size_t> readUpTo(const Descriptor& file, char* into, std::size_t size) {
    std::size_t count = 0;
    while (count < size) {
        const ssize_t got = ::read(file.get(), into + count, size - count);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return std::nullopt;
        if (got == 0) break;
        count += static_cast<std::size_t>(got);
    }
    return count;
}
}  // namespace ombrix::OpenFile

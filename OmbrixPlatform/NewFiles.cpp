#include "OmbrixPlatform/NewFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "OmbrixPlatform/FileWriting.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {
namespace {

using FileWriting::readWriteByUmask;

std::string folderOf(const std::string& path) {
    const std::string folder(Paths::parent(path));
    return folder.empty() ? "." : folder;
}

/// Names a file that has no name; 0, or the system's error. The magic link is the way that needs no
/// privilege.
int nameUnnamed(int descriptor, const std::string& path) {
    const std::string magic = "/proc/self/fd/" + std::to_string(descriptor);
    return ::linkat(AT_FDCWD, magic.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0
               ? 0
               : errno;
}

/// The same for a file with a temporary name, which it loses. File systems that cannot rename
/// without replacing in one step may know hard links.
int nameTemporary(const std::string& temporary, const std::string& path) {
    if (::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, path.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    if (::link(temporary.c_str(), path.c_str()) != 0) return errno;
    ::unlink(temporary.c_str());
    return 0;
}
}  // namespace

NewFiles::~NewFiles() {
    discardLast(files_.size());
    for (const auto& folder : folders_) FileWriting::flushFolder(folder);
}

std::size_t NewFiles::mostWaiting() {
    constexpr rlim_t enough = 512;
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return 1;
    return static_cast<std::size_t>(std::clamp<rlim_t>(limit.rlim_cur / 2, 1, enough));
}

void NewFiles::add(const std::string& path, std::string_view bytes) {
    if (path.find('\0') != std::string::npos) throw Files::Error(ENOENT, "Cannot write", path);
    Waiting file{.path = path};
    file.descriptor =
        ::open(folderOf(path).c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, readWriteByUmask);
    if (file.descriptor < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL)) {
        file.temporary = std::make_unique<TemporaryName>(TemporaryName::in(folderOf(path)));
        file.descriptor = ::open(file.temporary->path().c_str(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, readWriteByUmask);
        // Says that its writer lives.
        if (file.descriptor >= 0) ::flock(file.descriptor, LOCK_EX | LOCK_NB);
    }
    if (file.descriptor < 0) throw Files::Error(errno, "Cannot write", path);
    if (const int error = FileWriting::writeAll(file.descriptor, bytes); error != 0) {
        discard(file);
        throw Files::Error(error, "Cannot write", path);
    }
    files_.push_back(std::move(file));
}

void NewFiles::discardLast(std::size_t count) {
    for (; count > 0 && !files_.empty(); --count) {
        discard(files_.back());
        files_.pop_back();
    }
}

void NewFiles::discard(const Waiting& file) {
    ::close(file.descriptor);
    if (file.temporary) ::unlink(file.temporary->path().c_str());
}

std::vector<NewFiles::Failure> NewFiles::commit() {
    // All writes start before the first one is waited for, so that the file system can put them,
    // and what it keeps in its journal, to disk together.
    for (const Waiting& file : files_)
        ::sync_file_range(file.descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
    for (Waiting& file : files_) file.error = ::fsync(file.descriptor) == 0 ? 0 : errno;
    std::vector<Failure> failures;
    for (Waiting& file : files_) {
        if (file.error == 0) {
            file.error = file.temporary ? nameTemporary(file.temporary->path(), file.path)
                                        : nameUnnamed(file.descriptor, file.path);
        }
        if (file.error == 0) {
            file.temporary.reset();
            folders_.insert(folderOf(file.path));
        } else {
            failures.push_back({file.path, Files::Error(file.error, "Cannot write", file.path)});
        }
        discard(file);
    }
    files_.clear();
    return failures;
}
}  // namespace ombrix

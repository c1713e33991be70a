#include "OmbrixPlatform/Files.h"

#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/TemporaryName.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Files {
namespace {

class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        close();
        fd_ = std::exchange(other.fd_, -1);
        return *this;
    }

    int get() const { return fd_; }
    bool isOpen() const { return fd_ >= 0; }
    /// False when writes were lost; some file systems report that only here.
    bool close() {
        const int fd = std::exchange(fd_, -1);
        return fd < 0 || ::close(fd) == 0;
    }

  private:
    int fd_;
};

/// False for a path that contains a zero byte; the system would cut it there.
bool isPath(std::string_view path) { return path.find('\0') == std::string_view::npos; }

/// True for errors of the machine and not of one file: what was not read for such a reason may not
/// be taken for missing.
bool isShortage(int code) {
    return code == ENOMEM || code == EMFILE || code == ENFILE || code == EIO;
}

/// A path as the system takes it: one too long for a call is reached from a folder opened on the
/// way. Both functions return -1 on failure and `errno` says why.
class Reached {
  public:
    explicit Reached(const std::string& path) : rest_(path) {
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

    int open(int flags) const {
        errno = error_;
        return error_ != 0 ? -1 : ::openat(folder(), name(), flags | O_CLOEXEC);
    }
    int stat(struct stat& facts) const {
        errno = error_;
        return error_ != 0 ? -1 : ::fstatat(folder(), name(), &facts, 0);
    }

  private:
    int folder() const { return folder_.isOpen() ? folder_.get() : AT_FDCWD; }
    const char* name() const { return rest_.data(); }  // the end of a string, with its zero

    std::string_view rest_;
    Descriptor folder_{-1};
    int error_ = 0;
};

/// Opens a regular file of at most `largest` bytes. Opening a pipe can block, and opening a device
/// can have effects, so the kind is checked before opening, and again on what was opened. When the
/// descriptor is not open, `errno` says why.
Descriptor openRegular(const std::string& path, std::size_t largest, struct stat& facts) {
    if (!isPath(path)) {
        errno = ENOENT;
        return Descriptor(-1);
    }
    const Reached reached(path);
    if (reached.stat(facts) != 0) return Descriptor(-1);
    if (S_ISREG(facts.st_mode)) {
        Descriptor file(reached.open(O_RDONLY | O_NONBLOCK | O_NOCTTY));
        if (!file.isOpen()) return file;
        if (::fstat(file.get(), &facts) == 0 && S_ISREG(facts.st_mode)) {
            if (static_cast<std::size_t>(facts.st_size) <= largest) return file;
            errno = EFBIG;
            return Descriptor(-1);
        }
    }
    errno = S_ISDIR(facts.st_mode) ? EISDIR : EINVAL;
    return Descriptor(-1);
}

/// Reads `size` bytes, or fewer when the file ends; nothing on an error.
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

void writeAll(const Descriptor& file, std::string_view bytes, const std::string& path) {
    while (!bytes.empty()) {
        const ssize_t put = ::write(file.get(), bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) throw Error(errno, "Cannot write", path);
        bytes.remove_prefix(static_cast<std::size_t>(put));
    }
}

void flushFolder(const std::string& folder) {
    const Descriptor handle(
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.isOpen()) ::fsync(handle.get());
}

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

enum class Entry { file, folder, neither };

Entry kindOf(const dirent& entry, int folder) {
    if (entry.d_type == DT_DIR) return Entry::folder;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return Entry::file;
    struct stat facts {};
    if (::fstatat(folder, entry.d_name, &facts, AT_SYMLINK_NOFOLLOW) != 0) return Entry::neither;
    if (S_ISDIR(facts.st_mode)) return Entry::folder;
    if (!S_ISLNK(facts.st_mode)) return Entry::file;
    return ::fstatat(folder, entry.d_name, &facts, 0) != 0 || S_ISDIR(facts.st_mode)
               ? Entry::neither
               : Entry::file;
}

/// An open folder; null, with `errno` set, when it cannot be opened.
Folder openFolder(const std::string& path) {
    const int descriptor = Reached(path).open(O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    if (descriptor < 0) return nullptr;
    Folder folder(::fdopendir(descriptor));
    if (folder == nullptr) ::close(descriptor);  // out of memory: closing leaves `errno` alone
    return folder;
}
}  // namespace

Error::Error(int code, std::string_view operation, std::string_view path)
    : std::system_error(code, std::generic_category(),
                        std::string(operation) + " \"" + std::string(path) + "\"") {}

bool exists(const std::string& path) {
    struct stat facts {};
    return isPath(path) && Reached(path).stat(facts) == 0;
}

bool isDirectory(const std::string& path) {
    struct stat facts {};
    return isPath(path) && Reached(path).stat(facts) == 0 && S_ISDIR(facts.st_mode);
}

bool isRegular(const std::string& path) {
    struct stat facts {};
    return isPath(path) && Reached(path).stat(facts) == 0 && S_ISREG(facts.st_mode);
}

std::optional<std::chrono::sys_seconds> modified(const std::string& path) {
    struct stat facts {};
    if (!isPath(path) || Reached(path).stat(facts) != 0) return std::nullopt;
    return std::chrono::sys_seconds(std::chrono::seconds(facts.st_mtim.tv_sec));
}

std::optional<Facts> facts(const std::string& path) {
    struct stat found {};
    if (!isPath(path) || ::lstat(path.c_str(), &found) != 0) return std::nullopt;
    constexpr std::int64_t perSecond = 1'000'000'000;
    return Facts{.isRegular = S_ISREG(found.st_mode),
                 .isLink = S_ISLNK(found.st_mode),
                 .size = static_cast<std::uint64_t>(found.st_size),
                 .modified = found.st_mtim.tv_sec * perSecond + found.st_mtim.tv_nsec};
}

std::string homeDirectory() {
    std::vector<char> space(1024);
    passwd record{};
    passwd* found = nullptr;
    while (::getpwuid_r(::getuid(), &record, space.data(), space.size(), &found) == ERANGE)
        space.resize(space.size() * 2);
    if (found == nullptr || found->pw_dir == nullptr || *found->pw_dir == '\0') return "/";
    return found->pw_dir;
}

std::string workingDirectory() {
    char* const path = ::getcwd(nullptr, 0);
    if (path == nullptr) throw Error(errno, "Cannot find the working directory", ".");
    std::string result(path);
    std::free(path);
    return result;
}

std::string standardised(std::string_view path) {
    return Paths::standardised(path, path.starts_with('/') ? "/" : workingDirectory());
}

std::optional<std::string_view> Reader::read(const std::string& path, std::size_t largest) {
    return read(path, largest, unlimited);
}

std::optional<std::string_view> Reader::beginning(const std::string& path, std::size_t count) {
    return read(path, unlimited, count);
}

std::optional<std::string_view> Reader::read(const std::string& path, std::size_t largest,
                                             std::size_t count) {
    struct stat facts {};
    const auto nothing = [&path]() -> std::optional<std::string_view> {
        if (isShortage(errno)) throw Error(errno, "Cannot read", path);
        return std::nullopt;
    };
    const Descriptor file = openRegular(path, largest, facts);
    if (!file.isOpen()) return nothing();
    const std::size_t size = std::min(static_cast<std::size_t>(facts.st_size), count);
    if (size > capacity_) {
        buffer_ = std::make_unique_for_overwrite<char[]>(size);
        capacity_ = size;
    }
    const auto length = readUpTo(file, buffer_.get(), size);
    if (!length) return nothing();
    return std::string_view(buffer_.get(), *length);
}

std::string bytes(const std::string& path, std::size_t largest) {
    struct stat facts {};
    const Descriptor file = openRegular(path, largest, facts);
    if (!file.isOpen()) throw Error(errno, "Cannot read", path);
    std::string content(static_cast<std::size_t>(facts.st_size), '\0');
    const auto count = readUpTo(file, content.data(), content.size());
    if (!count) throw Error(errno, "Cannot read", path);
    content.resize(*count);
    return content;
}

std::optional<std::string> text(const std::string& path, std::size_t largest) {
    try {
        std::string content = bytes(path, largest);
        if (Utf8::isValid(content)) return content;
    } catch (const Error& error) {
        if (isShortage(error.code().value())) throw;
    }
    return std::nullopt;
}

void forEachLine(const std::string& path, const std::function<void(std::string_view)>& visit) {
    constexpr std::size_t piece = std::size_t{1} << 20U;
    struct stat facts {};
    const Descriptor file = openRegular(path, unlimited, facts);
    if (!file.isOpen()) return;
    std::string buffer(piece, '\0');
    std::size_t kept = 0;  // bytes of a line that has not ended yet
    for (;;) {
        if (buffer.size() == kept) buffer.resize(kept * 2);
        const auto count = readUpTo(file, buffer.data() + kept, buffer.size() - kept);
        if (!count || *count == 0) break;
        const std::string_view filled(buffer.data(), kept + *count);
        std::size_t begin = 0;
        for (std::size_t end = filled.find('\n', kept); end != filled.npos;
             end = filled.find('\n', begin)) {
            visit(filled.substr(begin, end - begin));
            begin = end + 1;
        }
        kept = filled.size() - begin;
        std::memmove(buffer.data(), buffer.data() + begin, kept);
    }
    if (kept > 0) visit(std::string_view(buffer).substr(0, kept));
}

void walk(const std::string& folder, const std::function<void(std::string path)>& visit) {
    if (!isPath(folder)) throw Error(ENOENT, "Cannot open", folder);
    std::vector<std::string> waiting{folder};
    for (bool isRoot = true; !waiting.empty(); isRoot = false) {
        const std::string place = std::move(waiting.back());
        waiting.pop_back();
        const auto passOver = [&](const char* operation) {
            if (isRoot || isShortage(errno)) throw Error(errno, operation, place);
        };
        const Folder open = openFolder(place);
        if (open == nullptr) {
            passOver("Cannot open");
            continue;
        }
        for (;;) {
            errno = 0;  // the end of a folder and an error differ in nothing else
            const dirent* const entry = ::readdir(open.get());
            if (entry == nullptr) break;
            if (entry->d_name[0] == '.') continue;
            std::string path = Paths::joined(place, entry->d_name);
            const Entry kind = kindOf(*entry, ::dirfd(open.get()));
            if (kind == Entry::folder) waiting.push_back(std::move(path));
            if (kind == Entry::file) visit(std::move(path));
        }
        if (errno != 0) passOver("Cannot read");
    }
}

std::vector<std::string> names(const std::string& folder) {
    std::vector<std::string> result;
    if (!isPath(folder)) return result;
    const auto failed = [&]() -> std::vector<std::string> {
        if (isShortage(errno)) throw Error(errno, "Cannot read", folder);
        return {};
    };
    const Folder open = openFolder(folder);
    if (open == nullptr) return failed();
    for (;;) {
        errno = 0;  // the end of a folder and an error differ in nothing else
        const dirent* const entry = ::readdir(open.get());
        if (entry == nullptr) break;
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") result.emplace_back(name);
    }
    if (errno != 0) return failed();
    std::ranges::sort(result);
    return result;
}

std::optional<std::string> realPath(const std::string& path) {
    if (!isPath(path)) return std::nullopt;
    char* const resolved = ::realpath(path.c_str(), nullptr);
    if (resolved == nullptr) return std::nullopt;
    std::string real(resolved);
    std::free(resolved);
    return real;
}

void createDirectories(const std::string& path) {
    std::error_code failure;
    std::filesystem::create_directories(path, failure);
    if (failure) throw Error(failure.value(), "Cannot create the folder", path);
}

void writeAtomically(const std::string& path, std::string_view content) {
    writeAtomically(path, content, [] { return true; });
}

bool writeAtomically(const std::string& path, std::string_view content,
                     const std::function<bool()>& stillWanted) {
    if (!isPath(path)) throw Error(ENOENT, "Cannot write", path);
    // Links are resolved, so that a link remains a link.
    const std::string target = realPath(path).value_or(path);
    const std::string folder(Paths::parent(target));
    const TemporaryName name(TemporaryName::in(folder));
    const std::string& temporary = name.path();
    constexpr mode_t readWriteByUmask = 0666;
    Descriptor file(
        ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, readWriteByUmask));
    if (!file.isOpen()) throw Error(errno, "Cannot write", path);
    ::flock(file.get(), LOCK_EX | LOCK_NB);  // says that its writer lives
    try {
        struct stat old {};
        if (::stat(target.c_str(), &old) == 0) ::fchmod(file.get(), old.st_mode & 07777U);
        writeAll(file, content, path);
        if (::fsync(file.get()) != 0 || !file.close()) throw Error(errno, "Cannot write", path);
        if (!stillWanted()) {
            ::unlink(temporary.c_str());
            return false;
        }
        if (::rename(temporary.c_str(), target.c_str()) != 0)
            throw Error(errno, "Cannot replace", path);
    } catch (...) {
        ::unlink(temporary.c_str());
        throw;
    }
    flushFolder(folder);
    return true;
}

bool remove(const std::string& path) { return isPath(path) && ::unlink(path.c_str()) == 0; }
}  // namespace ombrix::Files

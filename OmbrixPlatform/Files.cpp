#include "OmbrixPlatform/Files.h"

#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

#include "OmbrixPlatform/FileWriting.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/TemporaryName.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Files {
namespace {

using OpenFile::Descriptor;
using OpenFile::isPath;
using OpenFile::Reached;
using OpenFile::readUpTo;

/// True for errors of the machine and not of one file: what was not read for such a reason may not
/// be taken for missing.
bool isShortage(int code) {
    return code == ENOMEM || code == EMFILE || code == ENFILE || code == EIO;
}

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

enum class Entry { regular, other, folder, neither };

Entry kindOf(const dirent& entry, int folder) {
    if (entry.d_type == DT_REG) return Entry::regular;
    if (entry.d_type == DT_DIR) return Entry::folder;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return Entry::other;
    struct stat facts {};
    if (::fstatat(folder, entry.d_name, &facts, AT_SYMLINK_NOFOLLOW) != 0) return Entry::neither;
    if (S_ISDIR(facts.st_mode)) return Entry::folder;
    if (S_ISLNK(facts.st_mode) &&
        (::fstatat(folder, entry.d_name, &facts, 0) != 0 || S_ISDIR(facts.st_mode)))
        return Entry::neither;
    return S_ISREG(facts.st_mode) ? Entry::regular : Entry::other;
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
    struct stat facts {};
    const Descriptor file = from_ == From::walk ? neighbours_.regular(path, largest, facts)
                                                : OpenFile::regular(path, largest, facts);
    return read(path, file, static_cast<std::size_t>(facts.st_size));
}

std::optional<std::string_view> Reader::beginning(const std::string& path, std::size_t count) {
    if (from_ == From::walk) return read(path, neighbours_.open(path), count);
    struct stat facts {};
    const Descriptor file = OpenFile::regular(path, unlimited, facts);
    return read(path, file, std::min(static_cast<std::size_t>(facts.st_size), count));
}

std::optional<std::string_view> Reader::read(const std::string& path, const Descriptor& file,
                                             std::size_t size) {
    const auto nothing = [&path]() -> std::optional<std::string_view> {
        if (isShortage(errno)) throw Error(errno, "Cannot read", path);
        return std::nullopt;
    };
    if (!file.isOpen()) return nothing();
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
    const Descriptor file = OpenFile::regular(path, largest, facts);
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
    const Descriptor file = OpenFile::regular(path, unlimited, facts);
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

void walk(const std::string& folder, const std::function<void(std::string path)>& visit,
          Seen seen) {
    if (!isPath(folder)) throw Error(ENOENT, "Cannot open", folder);
    std::vector<std::string> waiting{folder};
    for (bool isRoot = true; !waiting.empty(); isRoot = false) {
        const std::string place = std::move(waiting.back());
        waiting.pop_back();
        const auto passOver = [&](const char* operation) {
            if (isRoot || isShortage(errno)) throw Error(errno, operation, place);
        };
        const std::string before = Paths::joined(place, "");
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
            std::string path = before;
            path += entry->d_name;
            const Entry kind = kindOf(*entry, ::dirfd(open.get()));
            if (kind == Entry::folder) waiting.push_back(std::move(path));
            if (kind == Entry::regular || (kind == Entry::other && seen == Seen::allFiles))
                visit(std::move(path));
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
    Descriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                           FileWriting::readWriteByUmask));
    if (!file.isOpen()) throw Error(errno, "Cannot write", path);
    ::flock(file.get(), LOCK_EX | LOCK_NB);  // says that its writer lives
    try {
        struct stat old {};
        if (::stat(target.c_str(), &old) == 0) ::fchmod(file.get(), old.st_mode & 07777U);
        if (const int error = FileWriting::writeAll(file.get(), content); error != 0)
            throw Error(error, "Cannot write", path);
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
    FileWriting::flushFolder(folder);
    return true;
}

bool remove(const std::string& path) { return isPath(path) && ::unlink(path.c_str()) == 0; }
}  // namespace ombrix::Files

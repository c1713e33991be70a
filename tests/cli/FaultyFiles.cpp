// Loaded before the C library into a tool under test (LD_PRELOAD), it makes one call to the file
// system fail. From the environment:
//
//   FAULT_FOLDER  only calls on paths and descriptors below this folder count
//   FAULT_AT      the number of the call that fails, from 1
//   FAULT_KIND    an error's number; "short": a write stores half of its bytes; or "kill": the
//                 process ends there, as if it were killed
//   FAULT_LOG     a file that gets the name of the failed call
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

template <typename Function>
Function original(const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

const char* setting(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

bool isBelow(const char* path) {
    const char* const folder = setting("FAULT_FOLDER");
    return *folder != '\0' && std::strncmp(path, folder, std::strlen(folder)) == 0;
}

bool isBelow(int descriptor) {
    char link[64];
    char path[PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const ssize_t length = ::readlink(link, path, sizeof path - 1);
    if (length < 0) return false;
    path[length] = '\0';
    return isBelow(path);
}

bool wantsShortWrite() { return std::strcmp(setting("FAULT_KIND"), "short") == 0; }

/// True when this call is the one that fails.
bool isTurn(const char* call, bool counts) {
    static int calls = 0;
    if (!counts || ++calls != std::atoi(setting("FAULT_AT"))) return false;
    const int log = original<int (*)(const char*, int, ...)>("open")(
        setting("FAULT_LOG"), O_WRONLY | O_CREAT | O_APPEND, 0644);
    original<ssize_t (*)(int, const void*, std::size_t)>("write")(log, call, std::strlen(call));
    original<int (*)(int)>("close")(log);
    if (std::strcmp(setting("FAULT_KIND"), "kill") == 0) std::raise(SIGKILL);
    return true;
}

/// Fails the call if its turn has come; `errno` then says why.
bool fails(const char* call, bool counts) {
    if (wantsShortWrite() || !isTurn(call, counts)) return false;
    errno = std::atoi(setting("FAULT_KIND"));
    return true;
}

std::size_t writtenSize(const char* call, int descriptor, std::size_t size) {
    return wantsShortWrite() && size > 1 && isTurn(call, isBelow(descriptor)) ? size / 2 : size;
}

bool isPlace(int folder, const char* path) {
    return *path == '/' ? isBelow(path) : folder != AT_FDCWD && isBelow(folder);
}
}  // namespace

// The C library's names and shapes; a call whose turn has not come goes on to it.
#define FAULTY_OPEN(name)                                                          \
    int name(const char* path, int flags, ...) {                                   \
        va_list arguments;                                                         \
        va_start(arguments, flags);                                                \
        const auto mode = va_arg(arguments, mode_t);                               \
        va_end(arguments);                                                         \
        if (fails(#name, isPlace(AT_FDCWD, path))) return -1;                      \
        return original<int (*)(const char*, int, ...)>(#name)(path, flags, mode); \
    }
#define FAULTY_OPENAT(name)                                                                     \
    int name(int folder, const char* path, int flags, ...) {                                    \
        va_list arguments;                                                                      \
        va_start(arguments, flags);                                                             \
        const auto mode = va_arg(arguments, mode_t);                                            \
        va_end(arguments);                                                                      \
        if (fails(#name, isPlace(folder, path))) return -1;                                     \
        return original<int (*)(int, const char*, int, ...)>(#name)(folder, path, flags, mode); \
    }
#define FAULTY_DESCRIPTOR(name)                           \
    int name(int descriptor) {                            \
        if (fails(#name, isBelow(descriptor))) return -1; \
        return original<int (*)(int)>(#name)(descriptor); \
    }

extern "C" {
FAULTY_OPEN(open)
FAULTY_OPEN(open64)
FAULTY_OPENAT(openat)
FAULTY_OPENAT(openat64)
FAULTY_DESCRIPTOR(fsync)
FAULTY_DESCRIPTOR(fdatasync)

ssize_t write(int descriptor, const void* bytes, std::size_t size) {
    if (fails("write", isBelow(descriptor))) return -1;
    return original<ssize_t (*)(int, const void*, std::size_t)>("write")(
        descriptor, bytes, writtenSize("write", descriptor, size));
}

ssize_t pwrite64(int descriptor, const void* bytes, std::size_t size, off64_t at) {
    if (fails("pwrite64", isBelow(descriptor))) return -1;
    return original<ssize_t (*)(int, const void*, std::size_t, off64_t)>("pwrite64")(
        descriptor, bytes, writtenSize("pwrite64", descriptor, size), at);
}

ssize_t read(int descriptor, void* into, std::size_t size) {
    if (fails("read", isBelow(descriptor))) return -1;
    return original<ssize_t (*)(int, void*, std::size_t)>("read")(descriptor, into, size);
}

ssize_t pread64(int descriptor, void* into, std::size_t size, off64_t at) {
    if (fails("pread64", isBelow(descriptor))) return -1;
    return original<ssize_t (*)(int, void*, std::size_t, off64_t)>("pread64")(descriptor, into,
                                                                              size, at);
}

int rename(const char* from, const char* to) {
    if (fails("rename", isPlace(AT_FDCWD, to))) return -1;
    return original<int (*)(const char*, const char*)>("rename")(from, to);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    if (fails("linkat", isPlace(toFolder, to))) return -1;
    return original<int (*)(int, const char*, int, const char*, int)>("linkat")(
        fromFolder, from, toFolder, to, flags);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    if (fails("renameat2", isPlace(toFolder, to))) return -1;
    return original<int (*)(int, const char*, int, const char*, unsigned)>("renameat2")(
        fromFolder, from, toFolder, to, flags);
}

int mkdir(const char* path, mode_t mode) {
    if (fails("mkdir", isPlace(AT_FDCWD, path))) return -1;
    return original<int (*)(const char*, mode_t)>("mkdir")(path, mode);
}

int ftruncate64(int descriptor, off64_t size) {
    if (fails("ftruncate64", isBelow(descriptor))) return -1;
    return original<int (*)(int, off64_t)>("ftruncate64")(descriptor, size);
}
}

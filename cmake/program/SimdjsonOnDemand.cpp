// Part of the programs, not of the libraries. Debian has simdjson only as a shared library of C++,
// which needs the shared C++ library, and relocating these two took a third of every start. Here
// are the functions that our code calls of simdjson, so that the linker drops it (--as-needed) and
// the program can link the C++ library statically. They load simdjson when the first JSON text, or
// the first long text, is read. Its code calls its own functions and not these, which the program
// does not export. docs/dependencies.md has the figures.
#include <dlfcn.h>
#include <simdjson.h>

#include <cstdio>
#include <cstdlib>

namespace {

/// Ends the program as the system does when it cannot find a library at the start.
[[noreturn]] void fail() {
    constexpr int libraryMissing = 127;
    std::fprintf(stderr, "ombrix: error while loading shared libraries: %s\n", ::dlerror());
    std::_Exit(libraryMissing);
}

/// A function or an object of the library by its mangled name.
template <typename Pointer>
Pointer symbol(const char* name) {
    static void* const library = ::dlopen(OMBRIX_SIMDJSON, RTLD_LAZY | RTLD_LOCAL);
    if (library == nullptr) fail();
    void* const found = ::dlsym(library, name);
    if (found == nullptr) fail();
    return reinterpret_cast<Pointer>(found);
}
}  // namespace

namespace simdjson {

internal::atomic_ptr<const implementation>& get_active_implementation() {
    static const auto function =
        symbol<decltype(&get_active_implementation)>("_ZN8simdjson25get_active_implementationEv");
    return function();
}

bool validate_utf8(const char* bytes, std::size_t size) noexcept {
    return get_active_implementation()->validate_utf8(bytes, size);
}
}  // namespace simdjson

#include "OmbrixPlatform/Gio.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace ombrix {

const Gio* Gio::library() {
    static const Gio* const loaded = []() -> const Gio* {
        // Never unloaded: GIO keeps a thread running once a bus is used.
        void* const handle = ::dlopen("libgio-2.0.so.0", RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
        if (handle == nullptr) return nullptr;
        static const Gio gio(handle);
        return &gio;
    }();
    return loaded;
}

void* Gio::find(const char* name) const {
    void* const symbol = ::dlsym(handle_, name);
    if (symbol == nullptr) {
        std::fprintf(stderr, "GIO has no %s.\n", name);
        std::abort();
    }
    return symbol;
}
}  // namespace ombrix

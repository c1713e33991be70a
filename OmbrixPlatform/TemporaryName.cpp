#include "OmbrixPlatform/TemporaryName.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <utility>

#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Process.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

// A handler may use neither locks nor memory that another call manages, so the names are in fixed
// places, each of which is taken and left with one atomic step.
std::array<std::atomic<const char*>, 1024> names;
static_assert(std::atomic<const char*>::is_always_lock_free);

constexpr std::string_view prefix = ".ombrix-";
constexpr std::string_view extension = ".tmp";
constexpr std::string_view uuidForm = "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX";

void removeAndDie(int signal) {
    for (const auto& name : names)
        if (const char* const path = name.load()) ::unlink(path);
    ::raise(signal);  // the handler was reset when it was called
}
}  // namespace

TemporaryName::TemporaryName(std::string path) : path_(std::move(path)), slot_(0) {
    for (; slot_ < names.size(); ++slot_) {
        const char* isFree = nullptr;
        if (names[slot_].compare_exchange_strong(isFree, path_.c_str())) return;
    }
}

TemporaryName::~TemporaryName() {
    if (slot_ < names.size()) names[slot_].store(nullptr);
}

std::string TemporaryName::in(std::string_view folder) {
    std::string name(prefix);
    name.append(Process::uniqueString()).append(extension);
    return Paths::joined(folder, name);
}

bool TemporaryName::isOne(std::string_view name) {
    if (name.size() != prefix.size() + uuidForm.size() + extension.size() ||
        !name.starts_with(prefix) || !name.ends_with(extension))
        return false;
    return std::ranges::equal(
        name.substr(prefix.size(), uuidForm.size()), uuidForm, [](char c, char form) {
            return form == '-' ? c == '-' : Text::isAsciiHexDigit(c) && !(c >= 'a' && c <= 'f');
        });
}

void TemporaryName::removeOnSignals() {
    struct sigaction action {};
    action.sa_handler = removeAndDie;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction old {};
        if (::sigaction(signal, nullptr, &old) == 0 && old.sa_handler == SIG_DFL)
            ::sigaction(signal, &action, nullptr);
    }
}
}  // namespace ombrix

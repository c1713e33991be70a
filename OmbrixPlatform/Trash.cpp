#include "OmbrixPlatform/Trash.h"

#include <memory>

#include "OmbrixPlatform/Gio.h"

namespace ombrix::Trash {
namespace {

[[noreturn]] void fail(const std::string& path, const std::string& why) {
    throw Error("Cannot move \"" + path + "\" to the Trash: " + why);
}
}  // namespace

void move(const std::string& path) {
    const Gio* const gio = Gio::library();
    if (gio == nullptr) fail(path, "this machine has no desktop library");
    const std::unique_ptr<GFile, decltype(gio->g_object_unref)> file(
        gio->g_file_new_for_path(path.c_str()), gio->g_object_unref);
    GError* failure = nullptr;
    if (gio->g_file_trash(file.get(), nullptr, &failure)) return;
    const std::unique_ptr<GError, decltype(gio->g_error_free)> error(failure, gio->g_error_free);
    fail(path, error ? error->message : "no reason given");
}
}  // namespace ombrix::Trash

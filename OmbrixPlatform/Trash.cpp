#include "OmbrixPlatform/Trash.h"

#include <memory>

#include "OmbrixPlatform/Gio.h"

namespace ombrix::Trash {

std::optional<std::string> move(const std::string& path) {
    const Gio* const gio = Gio::library();
    if (gio == nullptr) return "This machine has no library for the desktop's Trash.";
    const std::unique_ptr<GFile, decltype(gio->g_object_unref)> file(
        gio->g_file_new_for_path(path.c_str()), gio->g_object_unref);
    GError* failure = nullptr;
    if (gio->g_file_trash(file.get(), nullptr, &failure)) return std::nullopt;
    const std::unique_ptr<GError, decltype(gio->g_error_free)> error(failure, gio->g_error_free);
    return error ? std::string(error->message) : "The file could not be moved to the Trash.";
}
}  // namespace ombrix::Trash

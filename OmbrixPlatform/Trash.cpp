#include "OmbrixPlatform/Trash.h"

#include <gio/gio.h>

#include <memory>

namespace ombrix::Trash {

std::optional<std::string> move(const std::string& path) {
    const std::unique_ptr<GFile, decltype(&g_object_unref)> file(g_file_new_for_path(path.c_str()),
                                                                 &g_object_unref);
    GError* failure = nullptr;
    if (g_file_trash(file.get(), nullptr, &failure)) return std::nullopt;
    const std::unique_ptr<GError, decltype(&g_error_free)> error(failure, &g_error_free);
    return error ? std::string(error->message) : "The file could not be moved to the Trash.";
}
}  // namespace ombrix::Trash

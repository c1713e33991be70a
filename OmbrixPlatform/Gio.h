// The functions of GIO that this library calls. GIO is loaded when the first of them is needed:
// linking it would add a millisecond to the start of every command, a quarter of its time, and few
// commands post a notification or move a file to the Trash. Only .cpp files that wrap a service of
// the desktop include this header.
#pragma once

#include <gio/gio.h>

namespace ombrix {

class Gio {
    // Declared before the functions, whose initialisers use it.
    void* handle_;

    explicit Gio(void* handle) : handle_(handle) {}
    /// The address of a symbol. Ends the process when the library does not have it.
    void* find(const char* name) const;

  public:
    /// The library, loaded for the rest of the process; nullptr when the machine does not have it.
    static const Gio* library();

    // Each member is a pointer to the function of that name. When the header also defines a macro
    // of that name, call it as (gio.g_object_ref)(object).
#define OMBRIX_GIO_FUNCTION(name) \
    decltype(&::name) name = reinterpret_cast<decltype(&::name)>(find(#name))
    OMBRIX_GIO_FUNCTION(g_cancellable_cancel);
    OMBRIX_GIO_FUNCTION(g_cancellable_new);
    OMBRIX_GIO_FUNCTION(g_dbus_address_escape_value);
    OMBRIX_GIO_FUNCTION(g_dbus_connection_emit_signal);
    OMBRIX_GIO_FUNCTION(g_dbus_connection_flush);
    OMBRIX_GIO_FUNCTION(g_dbus_connection_flush_finish);
    OMBRIX_GIO_FUNCTION(g_dbus_connection_new_for_address);
    OMBRIX_GIO_FUNCTION(g_dbus_connection_new_for_address_finish);
    OMBRIX_GIO_FUNCTION(g_error_free);
    OMBRIX_GIO_FUNCTION(g_file_new_for_path);
    OMBRIX_GIO_FUNCTION(g_file_trash);
    OMBRIX_GIO_FUNCTION(g_free);
    OMBRIX_GIO_FUNCTION(g_main_context_iteration);
    OMBRIX_GIO_FUNCTION(g_main_context_new);
    OMBRIX_GIO_FUNCTION(g_main_context_pop_thread_default);
    OMBRIX_GIO_FUNCTION(g_main_context_push_thread_default);
    OMBRIX_GIO_FUNCTION(g_main_context_unref);
    OMBRIX_GIO_FUNCTION(g_object_ref);
    OMBRIX_GIO_FUNCTION(g_object_unref);
    OMBRIX_GIO_FUNCTION(g_source_attach);
    OMBRIX_GIO_FUNCTION(g_source_destroy);
    OMBRIX_GIO_FUNCTION(g_source_set_callback);
    OMBRIX_GIO_FUNCTION(g_source_unref);
    OMBRIX_GIO_FUNCTION(g_timeout_source_new);
    OMBRIX_GIO_FUNCTION(g_variant_new);
#undef OMBRIX_GIO_FUNCTION
};
}  // namespace ombrix

#include "OmbrixPlatform/NotificationCenter.h"

#include <sys/stat.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "OmbrixPlatform/Gio.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Process.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::NotificationCenter {
namespace {

/// Call it only when the library is known to exist.
const Gio& gio() { return *Gio::library(); }

constexpr const char* objectPath = "/com/ombrix/Notifications";
constexpr const char* interfaceName = "com.ombrix.Notifications";
constexpr const char* signalName = "Posted";

// GIO's own time limits are 25 seconds and more, and authentication has none. So each step runs on
// its own main context, is cancelled after the time limit, and is abandoned when it ignores that. A
// bus that never answers fails in the first step, in less than half a second. A slow bus has the
// full time for each of the two steps.
constexpr unsigned cancelAfterMilliseconds = 400;
constexpr unsigned abandonAfterMilliseconds = 450;

template <typename T>
struct Unref {
    void operator()(T* object) const { gio().g_object_unref(object); }
};
using Connection = std::unique_ptr<GDBusConnection, Unref<GDBusConnection>>;
using Result = std::unique_ptr<GAsyncResult, Unref<GAsyncResult>>;
using Cancellable = std::unique_ptr<GCancellable, Unref<GCancellable>>;

/// A main context with a time limit; the thread's default context during its lifetime.
class LimitedContext {
  public:
    LimitedContext()
        : context_(gio().g_main_context_new()), cancellable_(gio().g_cancellable_new()) {
        gio().g_main_context_push_thread_default(context_);
        cancelTimer_ = timer(cancelAfterMilliseconds, [](void* self) -> gboolean {
            gio().g_cancellable_cancel(static_cast<LimitedContext*>(self)->cancellable());
            return G_SOURCE_REMOVE;
        });
        abandonTimer_ = timer(abandonAfterMilliseconds, [](void* self) -> gboolean {
            static_cast<LimitedContext*>(self)->isOver_ = true;
            return G_SOURCE_REMOVE;
        });
    }
    ~LimitedContext() {
        for (GSource* source : {cancelTimer_, abandonTimer_}) {
            gio().g_source_destroy(source);
            gio().g_source_unref(source);
        }
        gio().g_main_context_pop_thread_default(context_);
        gio().g_main_context_unref(context_);
    }
    LimitedContext(const LimitedContext&) = delete;
    LimitedContext& operator=(const LimitedContext&) = delete;

    GCancellable* cancellable() const { return cancellable_.get(); }

    /// Starts a step and waits for its result; nothing when it was abandoned. `start` receives the
    /// callback and its data. A later result is ignored, because the context no longer runs; the
    /// callback's data leaks in that case.
    template <typename Start>
    Result await(Start start) {
        auto* slot = new std::shared_ptr<Outcome>(std::make_shared<Outcome>());
        const std::shared_ptr<Outcome> outcome = *slot;
        start(
            [](GObject*, GAsyncResult* result, void* data) {
                const std::unique_ptr<std::shared_ptr<Outcome>> owned(
                    static_cast<std::shared_ptr<Outcome>*>(data));
                (*owned)->result.reset(static_cast<GAsyncResult*>((gio().g_object_ref)(result)));
            },
            slot);
        while (!outcome->result && !isOver_) gio().g_main_context_iteration(context_, TRUE);
        return std::move(outcome->result);
    }

  private:
    struct Outcome {
        Result result;
    };

    GSource* timer(unsigned milliseconds, GSourceFunc function) {
        GSource* source = gio().g_timeout_source_new(milliseconds);
        gio().g_source_set_callback(source, function, this, nullptr);
        gio().g_source_attach(source, context_);
        return source;
    }

    GMainContext* context_;
    Cancellable cancellable_;
    GSource* cancelTimer_ = nullptr;
    GSource* abandonTimer_ = nullptr;
    bool isOver_ = false;
};

bool isSocket(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

/// The address of the running session bus; empty when there is none. Nobody listens on a bus that
/// is only started now, so addresses that start one are left out.
std::string busAddress() {
    if (const auto given = Process::environment("DBUS_SESSION_BUS_ADDRESS");
        given && !given->empty()) {
        std::vector<std::string_view> addresses;
        for (const std::string_view address : Text::splitDroppingEmpty(*given, ";"))
            if (!address.starts_with("autolaunch:")) addresses.push_back(address);
        return Text::joined(addresses, ";");
    }
    const auto runtime = Process::environment("XDG_RUNTIME_DIR");
    if (!runtime || runtime->empty()) return {};
    const std::string socket = Paths::joined(*runtime, "bus");
    if (!isSocket(socket) || Gio::library() == nullptr) return {};
    const std::unique_ptr<char, decltype(gio().g_free)> escaped(
        gio().g_dbus_address_escape_value(socket.c_str()), gio().g_free);
    return std::string("unix:path=") + escaped.get();
}

/// `text` as the bus accepts it: valid UTF-8 without U+0000.
std::string busString(std::string_view text) {
    return Text::replacingAll(Utf8::repaired(text), std::string_view("\0", 1), "\xEF\xBF\xBD");
}

Connection connect(const std::string& address) {
    LimitedContext context;
    constexpr auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    const Result result = context.await([&](GAsyncReadyCallback callback, void* data) {
        gio().g_dbus_connection_new_for_address(address.c_str(), flags, nullptr,
                                                context.cancellable(), callback, data);
    });
    if (!result) return nullptr;
    return Connection(gio().g_dbus_connection_new_for_address_finish(result.get(), nullptr));
}
}  // namespace

void post(std::string_view name, std::optional<std::string_view> object) {
    const std::string address = busAddress();
    if (address.empty() || Gio::library() == nullptr) return;
    const Connection connection = connect(address);
    if (!connection) return;
    GVariant* arguments = gio().g_variant_new(
        "(ss)", busString(name).c_str(), busString(object.value_or(std::string_view())).c_str());
    if (!gio().g_dbus_connection_emit_signal(connection.get(), nullptr, objectPath, interfaceName,
                                             signalName, arguments, nullptr)) {
        return;
    }
    LimitedContext context;
    // Emitting only queues the message for GIO's thread, and the process may end after this call.
    const Result flushed = context.await([&](GAsyncReadyCallback callback, void* data) {
        gio().g_dbus_connection_flush(connection.get(), context.cancellable(), callback, data);
    });
    if (flushed) gio().g_dbus_connection_flush_finish(connection.get(), flushed.get(), nullptr);
}
}  // namespace ombrix::NotificationCenter

// The desktop application as the tool sees it: listens on the session bus, prints what it hears and
// answers as a script says: FakeDesktop <script> <state folder>.
//
//   on com.ombrix.app.state-request    each time this name is heard, do the steps below
//   wait 200                           milliseconds
//   write state-{id}.json whole.json   in the state folder, from the script's own folder, in place
//   remove state-{id}.json
//
// {id} is the notification's object. In a file that is written, {script} becomes the text of
// "web-eval-{id}.js", so that a case sees whether the script arrived.
#include <gio/gio.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ToolTests {
namespace {

namespace fs = std::filesystem;

struct Step {
    std::string verb, first, second;
};

struct Desktop {
    fs::path scriptFolder;
    fs::path stateFolder;
    std::map<std::string, std::vector<Step>> answers;
};

std::map<std::string, std::vector<Step>> readScript(const std::string& path) {
    std::map<std::string, std::vector<Step>> answers;
    std::istringstream lines(Files::bytes(path));
    std::string line, heard;
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        Step step;
        words >> step.verb >> step.first >> step.second;
        if (step.verb == "on")
            heard = step.first;
        else if (!step.verb.empty())
            answers[heard].push_back(step);
    }
    return answers;
}

void take(const Desktop& desktop, const Step& step, const std::string& id) {
    const fs::path target = desktop.stateFolder / Text::replacingAll(step.first, "{id}", id);
    if (step.verb == "wait") {
        g_usleep(std::stoul(step.first) * 1000);
    } else if (step.verb == "remove") {
        fs::remove(target);
    } else if (step.verb == "write") {
        const std::string script = desktop.stateFolder / ("web-eval-" + id + ".js");
        fs::create_directories(desktop.stateFolder);
        std::ofstream(target, std::ios::binary | std::ios::trunc)
            << Text::replacingAll(Files::bytes(desktop.scriptFolder / step.second), "{script}",
                                  fs::exists(script) ? Files::bytes(script) : "");
    } else {
        std::cerr << "FakeDesktop: unknown step " << step.verb << "\n";
        std::exit(2);
    }
}

void hear(GDBusConnection*, const char*, const char*, const char*, const char*,
          GVariant* parameters, void* data) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ss)"))) return;
    const char* name = nullptr;
    const char* object = nullptr;
    g_variant_get(parameters, "(&s&s)", &name, &object);
    std::cout << name << "\t" << object << std::endl;
    const auto& desktop = *static_cast<const Desktop*>(data);
    const auto answer = desktop.answers.find(name);
    if (answer == desktop.answers.end()) return;
    for (const Step& step : answer->second) take(desktop, step, object);
}

int listen(const char* script, const char* stateFolder) {
    Desktop desktop{fs::path(script).parent_path(), stateFolder, readScript(script)};
    GDBusConnection* const bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    if (bus == nullptr) {
        std::cout << "no session bus" << std::endl;
        return 1;
    }
    g_dbus_connection_signal_subscribe(bus, nullptr, "com.ombrix.Notifications", "Posted",
                                       "/com/ombrix/Notifications", nullptr,
                                       G_DBUS_SIGNAL_FLAGS_NONE, hear, &desktop, nullptr);
    // The bus has taken the subscription when it answers a call that was made after it.
    GVariant* const answer = g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetId",
        nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr);
    std::cout << (answer != nullptr ? "ready" : "the bus does not answer") << std::endl;
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
    return 0;
}
}  // namespace
}  // namespace ombrix::ToolTests

int main(int argc, char* argv[]) {
    return argc == 3 ? ombrix::ToolTests::listen(argv[1], argv[2]) : 2;
}

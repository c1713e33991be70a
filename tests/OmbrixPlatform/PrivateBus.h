// A session bus for one test, and an ear on it.
#pragma once

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <vector>

#include "OmbrixPlatform/TestFolder.h"

namespace ombrix::test {

/// A program that runs beside the test, with its output; ended with it.
class Beside {
  public:
    explicit Beside(std::vector<std::string> arguments) {
        std::vector<char*> vector;
        for (std::string& argument : arguments) vector.push_back(argument.data());
        vector.push_back(nullptr);
        int ends[2];
        if (::pipe(ends) != 0) return;
        process_ = ::fork();
        if (process_ == 0) {
            ::dup2(ends[1], STDOUT_FILENO);
            ::dup2(ends[1], STDERR_FILENO);
            ::execvp(vector[0], vector.data());
            ::_exit(127);
        }
        ::close(ends[1]);
        output_ = ends[0];
    }
    ~Beside() {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
        ::close(output_);
    }
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;

    /// Reads on until the output holds `part`, behind `before` when that is given; false when that
    /// takes more than ten seconds.
    bool prints(std::string_view part, std::string_view before = {}) {
        using Clock = std::chrono::steady_clock;
        const auto end = Clock::now() + std::chrono::seconds(10);
        const auto found = [&] {
            const std::size_t at = text_.find(before);
            return at != std::string::npos &&
                   text_.find(part, at + before.size()) != std::string::npos;
        };
        while (!found()) {
            pollfd ready{.fd = output_, .events = POLLIN, .revents = 0};
            if (Clock::now() > end || ::poll(&ready, 1, 10000) <= 0) return false;
            char bytes[4096];
            const ssize_t got = ::read(output_, bytes, sizeof bytes);
            if (got <= 0) return false;
            text_.append(bytes, static_cast<std::size_t>(got));
        }
        return true;
    }
    const std::string& text() const { return text_; }

  private:
    pid_t process_ = -1;
    int output_ = -1;
    std::string text_;
};

/// A bus that is the session's for this process while it stands.
class PrivateBus {
  public:
    PrivateBus()
        : address_("unix:path=" + folder_.at("bus")),
          daemon_(
              {"dbus-daemon", "--session", "--nofork", "--print-address", "--address=" + address_}),
          runs_(daemon_.prints("unix:path=")),
          variable_("DBUS_SESSION_BUS_ADDRESS", address_) {}

    /// False where no bus can be started.
    bool runs() const { return runs_; }
    std::string socket() const { return folder_.at("bus"); }

  private:
    TestFolder folder_;
    std::string address_;
    Beside daemon_;
    bool runs_;
    Variable variable_;
};

/// Prints every notification that is posted on the session's bus.
class Ear {
  public:
    Ear() : monitor_({"dbus-monitor", "interface='com.ombrix.Notifications'"}) {
        listens_ = monitor_.prints("NameLost");  // the bus has made it a monitor
    }
    bool listens() const { return listens_; }
    /// Whether a notification with these two strings comes in.
    bool hears(const std::string& name, const std::string& object) {
        return monitor_.prints("   string \"" + name + "\"\n   string \"" + object + "\"\n");
    }
    /// The object of the first notification of that name; empty when none comes in.
    std::string objectOf(const std::string& name) {
        const std::string begin = "   string \"" + name + "\"\n   string \"";
        if (!monitor_.prints(begin) || !monitor_.prints("\"\n", begin)) return {};
        const std::size_t at = monitor_.text().find(begin) + begin.size();
        return monitor_.text().substr(at, monitor_.text().find('"', at) - at);
    }
    const std::string& all() const { return monitor_.text(); }

  private:
    Beside monitor_;
    bool listens_ = false;
};
}  // namespace ombrix::test

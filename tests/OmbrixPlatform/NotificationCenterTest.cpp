#include "OmbrixPlatform/NotificationCenter.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <functional>
#include <thread>

#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

using Clock = std::chrono::steady_clock;

double secondsToPost() {
    const auto start = Clock::now();
    NotificationCenter::post("com.ombrix.test", "object");
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// True when posting takes at most half a second. Several tries, because the machine may be busy.
bool postsWithinHalfASecond(const std::function<double()>& tryOnce) {
    for (int tries = 0; tries < 5; ++tries)
        if (tryOnce() <= 0.5) return true;
    return false;
}

/// A socket that is not a bus: it accepts one caller and calls `act` with it.
class FalseBus {
  public:
    FalseBus(const std::string& path, std::function<void(int caller, const std::atomic<bool>&)> act)
        : listener_(::socket(AF_UNIX, SOCK_STREAM, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
        EXPECT_EQ(::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address),
                  0);
        EXPECT_EQ(::listen(listener_, 1), 0);
        thread_ = std::thread([this, act = std::move(act)] {
            const int caller = ::accept(listener_, nullptr, nullptr);
            if (caller < 0) return;
            act(caller, isOver_);
            ::close(caller);
        });
    }
    ~FalseBus() {
        isOver_ = true;
        ::shutdown(listener_, SHUT_RDWR);
        thread_.join();
        ::close(listener_);
    }

  private:
    int listener_;
    std::atomic<bool> isOver_ = false;
    std::thread thread_;
};

void pause() { std::this_thread::sleep_for(std::chrono::milliseconds(20)); }
void say(int caller, std::string_view text) {
    ::send(caller, text.data(), text.size(), MSG_NOSIGNAL);
}
}  // namespace

TEST(NotificationCenter, WithoutABusPostingIsQuietAndQuick) {
    const test::TestFolder folder;
    const test::Variable runtime("XDG_RUNTIME_DIR", folder.path());
    for (const char* address : {"", "autolaunch:", "garbage", "unix:path=/nowhere/at/all", ";;",
                                "autolaunch:;unix:path=/no"}) {
        const test::Variable variable("DBUS_SESSION_BUS_ADDRESS", address);
        testing::internal::CaptureStderr();
        EXPECT_TRUE(postsWithinHalfASecond(secondsToPost)) << address;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << address;
    }
}

TEST(NotificationCenter, ABusThatDoesNotAnswerCostsAtMostHalfASecond) {
    const struct {
        const char* behaviour;
        std::function<void(int, const std::atomic<bool>&)> act;
    } cases[] = {
        {"hangs up", [](int, const std::atomic<bool>&) {}},
        {"drips",
         [](int caller, const std::atomic<bool>& over) {
             for (; !over; pause()) say(caller, "x");
         }},
        {"authenticates and never greets",
         [](int caller, const std::atomic<bool>& over) {
             for (; !over; pause()) {
                 char bytes[512];
                 const ssize_t got = ::recv(caller, bytes, sizeof bytes, MSG_DONTWAIT);
                 const std::string_view asked(bytes, got < 0 ? 0 : static_cast<std::size_t>(got));
                 if (asked.ends_with("AUTH\r\n")) say(caller, "REJECTED EXTERNAL\r\n");
                 if (asked.starts_with("AUTH EXTERNAL"))
                     say(caller, "OK 0123456789abcdef0123456789abcdef\r\n");
                 if (asked.starts_with("NEGOTIATE")) say(caller, "AGREE_UNIX_FD\r\n");
             }
         }},
    };
    for (const auto& [behaviour, act] : cases) {
        EXPECT_TRUE(postsWithinHalfASecond([&act = act] {
            const test::TestFolder folder;
            const FalseBus bus(folder.at("bus"), act);
            const test::Variable variable("DBUS_SESSION_BUS_ADDRESS",
                                          "unix:path=" + folder.at("bus"));
            return secondsToPost();
        })) << behaviour;
    }
}
}  // namespace ombrix

#include "OmbrixPlatform/Process.h"

#include <sys/random.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "OmbrixPlatform/Numbers.h"

namespace ombrix::Process {
namespace {

using Uuid = std::array<std::uint8_t, 16>;

Uuid randomBytes() {
    Uuid bytes{};
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t got = ::getrandom(bytes.data() + filled, bytes.size() - filled, 0);
        if (got < 0 && errno == EINTR) continue;
        // No fallback: with a predictable name two runs could use the same file.
        if (got < 0) throw std::system_error(errno, std::generic_category(), "getrandom");
        filled += static_cast<std::size_t>(got);
    }
    return bytes;
}
}  // namespace

std::optional<std::string> executable() {
    std::error_code error;
    const auto path = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return std::nullopt;
    return path.string();
}

std::optional<std::string> environment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    if (value == nullptr) return std::nullopt;
    return value;
}

std::string uniqueString() {
    Uuid bytes = randomBytes();
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);  // version 4: random
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);  // the common variant
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        Numbers::appendHex(text, bytes[i], Numbers::HexDigits::upper);
    }
    return text;
}
}  // namespace ombrix::Process

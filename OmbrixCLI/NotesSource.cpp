#include "OmbrixCLI/NotesSource.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::NotesSource {
namespace {

/// The bytes up to the end of the stream, at most `most`, read into a text that doubles its size.
std::string allBytes(int descriptor, std::size_t most) {
    constexpr std::size_t firstSize = 1 << 16;
    std::string bytes;
    std::size_t length = 0;
    while (length < most) {
        if (length == bytes.size())
            bytes.resize(std::min(most, std::max(firstSize, 2 * bytes.size())));
        const ssize_t got = ::read(descriptor, bytes.data() + length, bytes.size() - length);
        if (got == 0) break;
        if (got > 0) {
            length += static_cast<std::size_t>(got);
        } else if (errno == EAGAIN) {
            pollfd input{.fd = descriptor, .events = POLLIN, .revents = 0};
            ::poll(&input, 1, -1);
        } else if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "Cannot read standard input");
        }
    }
    bytes.resize(length);
    return bytes;
}

/// The refusal of a file that the system itself would read, or refuse with "Invalid argument".
std::runtime_error unreadable(const std::string& path, const char* reason) {
    return std::runtime_error("Cannot read \"" + path + "\": " + reason);
}
}  // namespace

std::string fromStandardInput() {
    std::string bytes = allBytes(STDIN_FILENO, Files::unlimited);
    return Utf8::isValid(bytes) ? bytes : Utf8::repaired(bytes);
}

std::string bytesOfStandardInput(std::size_t most) { return allBytes(STDIN_FILENO, most); }

std::string fromFile(const std::string& path) {
    std::error_code unknown;
    using std::filesystem::file_type;
    const file_type kind = std::filesystem::status(path, unknown).type();
    if (kind == file_type::fifo || kind == file_type::socket || kind == file_type::character ||
        kind == file_type::block) {
        throw unreadable(path, "not a regular file");
    }
    std::string bytes = Files::bytes(path);
    if (!Utf8::isValid(bytes)) throw unreadable(path, "not valid UTF-8");
    return bytes;
}
}  // namespace ombrix::NotesSource

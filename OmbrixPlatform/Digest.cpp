#include "OmbrixPlatform/Digest.h"

#include <nettle/sha2.h>

#include "OmbrixPlatform/Numbers.h"

namespace ombrix::Digest {

std::array<std::uint8_t, 32> sha256(std::string_view bytes) {
    sha256_ctx context;
    sha256_init(&context);
    sha256_update(&context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    std::array<std::uint8_t, 32> digest{};
    static_assert(digest.size() == SHA256_DIGEST_SIZE);
    sha256_digest(&context, digest.size(), digest.data());
    return digest;
}

std::string hex(const std::uint8_t* bytes, std::size_t count) {
    std::string text;
    text.reserve(count * 2);
    for (std::size_t i = 0; i < count; ++i) Numbers::appendHex(text, bytes[i]);
    return text;
}

std::string sha256Hex(std::string_view bytes) {
    const auto digest = sha256(bytes);
    return hex(digest.data(), digest.size());
}
}  // namespace ombrix::Digest

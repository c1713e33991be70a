#include "OmbrixPlatform/Base64.h"

#include <nettle/base64.h>

#include <cstddef>
#include <cstdint>

namespace ombrix::Base64 {

std::string encode(std::string_view bytes) {
    std::string text(BASE64_ENCODE_RAW_LENGTH(bytes.size()), '\0');
    base64_encode_raw(text.data(), bytes.size(),
                      reinterpret_cast<const std::uint8_t*>(bytes.data()));
    return text;
}

std::optional<std::string> decode(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    std::string bytes(BASE64_DECODE_LENGTH(text.size()), '\0');
    std::size_t count = bytes.size();
    base64_decode_ctx context;
    base64_decode_init(&context);
    if (base64_decode_update(&context, &count, reinterpret_cast<std::uint8_t*>(bytes.data()),
                             text.size(), text.data()) == 0 ||
        base64_decode_final(&context) == 0)
        return std::nullopt;
    // The library skips white space, and then there are fewer bytes than the length promises.
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    if (count != text.size() / 4 * 3 - padding) return std::nullopt;
    bytes.resize(count);
    return bytes;
}
}  // namespace ombrix::Base64

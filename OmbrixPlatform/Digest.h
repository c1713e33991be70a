// SHA-256.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ombrix::Digest {

std::array<std::uint8_t, 32> sha256(std::string_view bytes);

/// 64 lower-case hexadecimal digits.
std::string sha256Hex(std::string_view bytes);

/// Lower-case hexadecimal, two digits a byte.
std::string hex(const std::uint8_t* bytes, std::size_t count);
}  // namespace ombrix::Digest

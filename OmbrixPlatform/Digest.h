// SHA-256, and FNV-1a for fingerprints that only tell a change.
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

/// 64-bit FNV-1a over bytes that come in pieces. Nobody is kept from making two texts with one
/// value.
class Fnv1a64 {
  public:
    void add(std::string_view bytes) {
        for (const char c : bytes) value_ = (value_ ^ static_cast<unsigned char>(c)) * prime;
    }
    std::uint64_t value() const { return value_; }

  private:
    static constexpr std::uint64_t prime = 0x100000001b3;
    std::uint64_t value_ = 0xcbf29ce484222325;
};
}  // namespace ombrix::Digest

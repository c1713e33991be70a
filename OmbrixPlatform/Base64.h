// Base64 of RFC 4648: the alphabet with "+" and "/", padded with "=".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ombrix::Base64 {

std::string encode(std::string_view bytes);

/// The bytes of a text that is base64 and nothing else; nothing for a length that is no multiple of
/// four, for another character (white space too) and for padding that is not at the end.
std::optional<std::string> decode(std::string_view text);
}  // namespace ombrix::Base64

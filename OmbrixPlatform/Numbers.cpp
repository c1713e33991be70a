#include "OmbrixPlatform/Numbers.h"

#include <array>
#include <cmath>
#include <cstdlib>

#include <locale.h>

namespace ombrix::Numbers {

std::optional<double> parseDouble(std::string_view text) {
    if (text.empty()) return std::nullopt;
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    const std::string terminated(text);
    char* stop = nullptr;
    const double value = strtod_l(terminated.c_str(), &stop, cLocale);
    if (stop != terminated.c_str() + terminated.size()) return std::nullopt;
    return value;
}

std::string shortest(double value) {
    // Outside this range the plain form would be mostly zeros.
    constexpr double leastPlain = 1e-4;
    constexpr double firstWithExponent = 1e16;
    const double size = std::fabs(value);
    const bool plain = size == 0 || (size >= leastPlain && size < firstWithExponent);
    std::array<char, 64> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value,
                      plain ? std::chars_format::fixed : std::chars_format::scientific);
    return std::string(digits.data(), end.ptr);
}

std::string described(double value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    std::string text = shortest(value);
    if (text.find_first_of(".e") == std::string::npos) text += ".0";
    return text;
}

void appendHex(std::string& text, std::uint8_t byte, HexDigits digits) {
    const char* const all = digits == HexDigits::lower ? "0123456789abcdef" : "0123456789ABCDEF";
    text.push_back(all[byte >> 4U]);
    text.push_back(all[byte & 0xFU]);
}
}  // namespace ombrix::Numbers

#include "OmbrixMemoryKit/Identity/MeetingKey.h"

#include <cstddef>

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::MeetingKey {
namespace {

bool stays(std::string_view character) {
    return character == "-" || character == "_" || character == "." ||
           Text::isLetterOrNumber(Utf8::decode(character, 0).scalar);
}

std::string sanitized(std::string_view id) {
    std::string key;
    Characters::Cursor cursor(id);
    for (std::size_t at = 0; at < id.size();) {
        const auto character = id.substr(at, cursor.after(at) - at);
        key += stays(character) ? character : "_";
        at += character.size();
    }
    return key;
}
}  // namespace

std::string make(std::string_view spendID, std::string_view startedAt, std::string_view date,
                 std::string_view title) {
    const auto id = Text::trimmed(spendID);
    if (!id.empty()) return sanitized(id);
    std::string hashed(startedAt.empty() ? date : startedAt);
    hashed += '\x1F';
    hashed += title;
    return "m-" + Digest::hex(Digest::sha256(hashed).data(), 8);
}
}  // namespace ombrix::MeetingKey

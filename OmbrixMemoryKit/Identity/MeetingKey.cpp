#include "OmbrixMemoryKit/Identity/MeetingKey.h"

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::MeetingKey {
namespace {

std::string sanitized(std::string_view id) {
    std::string key;
    Characters::Cursor cursor(id);
    for (std::size_t at = 0; at < id.size();) {
        const std::size_t end = cursor.after(at);
        const char32_t first = Utf8::decode(id, at).scalar;
        const bool stays =
            first == '-' || first == '_' || first == '.' || Text::isLetterOrNumber(first);
        key += stays ? id.substr(at, end - at) : "_";
        at = end;
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

#include "OmbrixMemoryKit/Identity/CommitmentID.h"

#include <algorithm>

#include "OmbrixMarkdownKit/Transcript/TextNormalize.h"
#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::CommitmentID {

std::string make(std::string_view meetingKey, std::string_view what, std::string_view whoKey) {
    return makeNormalized(meetingKey, normalize(what), Text::lowercased(whoKey));
}

std::string makeNormalized(std::string_view meetingKey, std::string_view words,
                           std::string_view lowercasedKey) {
    std::string hashed;
    hashed.reserve(meetingKey.size() + words.size() + lowercasedKey.size() + 2);
    hashed += meetingKey;
    hashed += '\x1F';
    hashed += words;
    hashed += '\x1F';
    hashed += lowercasedKey;
    return "c-" + Digest::hex(Digest::sha256(hashed).data(), 4);
}

std::string normalize(std::string_view what) { return TextNormalize::words(what); }

bool isValid(std::string_view text) {
    return text.size() == 10 && text.starts_with("c-") &&
           std::ranges::all_of(text.substr(2), Text::isAsciiHexDigit);
}
}  // namespace ombrix::CommitmentID

#include "OmbrixMemoryKit/Identity/CommitmentID.h"

#include <algorithm>

#include "OmbrixMarkdownKit/Transcript/TextNormalize.h"
#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::CommitmentID {

std::string make(std::string_view meetingKey, std::string_view what, std::string_view whoKey) {
    std::string hashed(meetingKey);
    hashed += '\x1F';
    hashed += normalize(what);
    hashed += '\x1F';
    hashed += Text::lowercased(whoKey);
    return "c-" + Digest::hex(Digest::sha256(hashed).data(), 4);
}

std::string normalize(std::string_view what) { return TextNormalize::words(what); }

bool isValid(std::string_view text) {
    return text.size() == 10 && text.starts_with("c-") &&
           std::ranges::all_of(text.substr(2), Text::isAsciiHexDigit);
}
}  // namespace ombrix::CommitmentID

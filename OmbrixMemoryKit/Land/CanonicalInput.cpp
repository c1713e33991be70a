#include "OmbrixMemoryKit/Land/CanonicalInput.h"

#include <utility>

#include "OmbrixPlatform/Digest.h"

namespace ombrix {

CanonicalInput canonicalInput(const Json::Value& input) {
    Json::Members members = *input.members();
    members.insert_or_assign("hash", "");
    const std::string hash =
        "sha256:" + Digest::sha256Hex(Json::write(members, Json::Style::canonical));
    members.insert_or_assign("hash", hash);
    return {.json = Json::write(std::move(members), Json::Style::canonical), .hash = hash};
}
}  // namespace ombrix

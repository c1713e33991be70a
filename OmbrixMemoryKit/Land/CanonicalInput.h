// The text of a recipe's input, as a model is given it, and the hash that identifies it. A caller
// may skip a run whose hash it has had before.
#pragma once

#include <string>

#include "OmbrixPlatform/Json.h"

namespace ombrix {

struct CanonicalInput {
    std::string json;
    std::string hash;  ///< "sha256:" and 64 lower-case hexadecimal digits
    bool operator==(const CanonicalInput&) const = default;
};

/// The text of `input` without white space and with its keys sorted. Its member "hash" becomes the
/// hash, which is that of the text with an empty hash: inputs of equal content have equal hashes,
/// whatever the member says before. `input` is an object.
CanonicalInput canonicalInput(const Json::Value& input);
}  // namespace ombrix

// The maps of YAML that are written in braces: {a: b, "c": [d, e]}. Nothing here throws; everything
// is linear.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "OmbrixMemoryKit/Skills/YamlScalars.h"
#include "OmbrixPlatform/ByteRange.h"

namespace ombrix::YamlFlowMap {

/// What a map has under one key.
struct Member {
    bool isEmpty = true;                        ///< the map has no members
    bool isThere = false;                       ///< the map has this key
    std::optional<YamlScalars::Found> value{};  ///< under this key, if it is a scalar
    ByteRange range{};                          ///< of the key and all that is under it
};

/// Looks for `key` in the map whose brace is at `start`. Nothing when there is no brace, or it is
/// not closed, or something follows it.
std::optional<Member> member(std::string_view text, std::size_t start, std::string_view key);
}  // namespace ombrix::YamlFlowMap

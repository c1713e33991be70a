// The small part of YAML that frontmatter is written in: top-level keys, scalars in their five
// forms, and one level of keys below a key. It is tolerant: a plain scalar may hold ": ", as people
// write descriptions, and keys may be repeated. Nothing here throws; everything is linear.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Skills/Skill.h"
#include "OmbrixMemoryKit/Skills/YamlScalars.h"
#include "OmbrixPlatform/ByteRange.h"

namespace ombrix::SkillFrontmatter {

/// The lines in entries. Lines indented deeper than the keys, "- " lines at their depth, and blank
/// and comment lines between these belong to the key before them. Nothing when another line has no
/// key, or stands before the first one.
std::optional<std::vector<FrontmatterEntry>> groupEntries(std::span<const std::string> lines);

/// A scalar; its range is within the lines of its entry, joined by LF. A comment does not belong to
/// it.
using Scalar = YamlScalars::Found;

/// The value of an entry with a key: plain, in single or double quotes, a block scalar, or empty.
/// Lines are folded as YAML does; a block scalar has no line end at its end. Nothing for a list, a
/// map, an anchor, an alias, a tag, and quotes that are not closed or have an unknown escape.
std::optional<Scalar> scalar(const FrontmatterEntry& entry);

/// The value under `key` in the map of an entry, in block or flow form; the range is within the
/// lines of that entry. Nothing when there is none, or it is no scalar.
std::optional<Scalar> nestedScalar(const FrontmatterEntry& entry, std::string_view key);

/// The entry with `text` in place of the range.
FrontmatterEntry replacing(const FrontmatterEntry& entry, ByteRange range, std::string_view text);

/// The entry with `value` under `key` in its map, whatever stood there before. The rest of a map
/// stays as it is; a value that is no map is replaced. `value` is a plain scalar.
FrontmatterEntry settingNested(const FrontmatterEntry& entry, std::string_view key,
                               std::string_view value);
}  // namespace ombrix::SkillFrontmatter

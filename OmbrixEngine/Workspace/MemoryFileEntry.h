// One Markdown file in the Memory folder, as far as it can be read: the person may have written or
// damaged it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "OmbrixMemoryKit/Memory/MemoryFiles.h"
#include "OmbrixMemoryKit/Region/Corrections.h"

namespace ombrix {

/// One Markdown file in the Memory folder itself, "Follow Ups.md" aside.
struct MemoryFileEntry {
    std::string path{};  ///< inside the transcripts folder
    std::string text{};
    std::optional<MemoryFile::Parsed> parsed{};  ///< nothing for another file or a damaged one
    /// What can be read even of a damaged file: its key, made of the file's name when the
    /// frontmatter has none; its title, else the file's name; its corrections.
    std::string key{}, title{};
    std::vector<Correction> corrections{};
    bool declares = false;  ///< its frontmatter says that it is a memory file

    /// Of any bytes; never throws.
    static MemoryFileEntry of(std::string path, std::string bytes);
};
}  // namespace ombrix

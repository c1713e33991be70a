// The names of the engine's folders and files inside a transcripts folder.
#pragma once

#include <string_view>

namespace ombrix::EnginePaths {

/// The Memory folder, unless `config.json` gives it another name.
constexpr std::string_view defaultMemoryFolderName = "Memory";
}  // namespace ombrix::EnginePaths

// The names of the engine's folders and files. All but the file names are relative to the
// transcripts folder; the Memory folder's own name may be another one in `config.json`.
#pragma once

#include <array>
#include <string_view>

namespace ombrix::EnginePaths {

/// The Memory folder, unless `config.json` gives it another name.
constexpr std::string_view defaultMemoryFolderName = "Memory";

constexpr std::string_view hiddenFolderName = ".ombrix";
constexpr std::string_view landFolder = ".ombrix/land";        ///< one sidecar a landed meeting
constexpr std::string_view engineFolder = ".ombrix/engine";    ///< what is kept once a library
constexpr std::string_view prepareFolder = ".ombrix/prepare";  ///< one sidecar a prepared meeting
constexpr std::string_view movesFolder = ".ombrix/moves";      ///< the state of each move

constexpr std::string_view jobsFile = ".ombrix/engine/jobs.json";        ///< the application's own
constexpr std::string_view catchUpFile = ".ombrix/engine/catchup.json";  ///< the application's own
constexpr std::string_view aliasesFile = ".ombrix/engine/aliases.json";  ///< see PersonAliases.h

/// Both in the Memory folder.
constexpr std::string_view followUpsFileName = "Follow Ups.md";
constexpr std::string_view nextMovesFolder = "Next Moves";

/// What the line "source: ..." in the frontmatter of each kind of engine file says.
constexpr std::string_view followUpsSource = "Ombrix Follow Ups";
constexpr std::string_view memorySource = "Ombrix Memory";
constexpr std::string_view beforeSource = "Ombrix Before";
constexpr std::string_view nextMoveSource = "Ombrix Next Move";
constexpr std::array<std::string_view, 4> engineSources = {followUpsSource, memorySource,
                                                           beforeSource, nextMoveSource};

/// True when the text has a line "source: ..." with one of `engineSources` that is neither its
/// first line nor an unfinished last one. Line ends may be CR LF. Such a file is no transcript.
bool declaresEngineFile(std::string_view text);
}  // namespace ombrix::EnginePaths

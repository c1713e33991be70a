// The file side of import: reads exports, writes their transcripts, and leaves alone what an
// earlier import wrote. Nothing is ever overwritten, and no name ever stands for half a transcript:
// a run that is killed leaves whole transcripts, and the next one imports what is missing.
//
// A transcript is named after its export, "weekly.vtt" gives "weekly.md". When another file has the
// name, it is "weekly (imported 2).md", up to 50. The meetings of an export with several are
// "weekly (1 of 3).md" to "weekly (3 of 3).md", and in the same case "weekly (1 of 3) (2).md". A
// transcript belongs to an export when it has its "imported_from:" line. The name of a Markdown
// export keeps its extension: "weekly.md" gives "weekly.md.md".
//
// A failure is the outcome of its file, and the others go on. Only a source folder that cannot be
// listed is thrown, as `Files::Error`.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "OmbrixMarkdownKit/Import/ImportFormat.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix::TranscriptImportRunner {

/// Extensions of files that may be exports, in lower case.
constexpr std::array<std::string_view, 7> candidateExtensions = {"vtt",      "srt",  "txt", "md",
                                                                 "markdown", "json", "csv"};
/// The largest export that is read, in bytes; conversion needs several times its memory.
constexpr std::size_t largestExport = std::size_t{1} << 30;

struct Imported {
    std::string destination;
    TranscriptImport::Format format{};
    std::int64_t turns = 0;
    bool operator==(const Imported&) const = default;
};
/// The export held several meetings; `turns` is their sum, `format` that of the first.
struct ImportedMany {
    std::vector<std::string> destinations;
    TranscriptImport::Format format{};
    std::int64_t turns = 0;
    bool operator==(const ImportedMany&) const = default;
};
struct AlreadyImported {
    std::string destination;
    bool operator==(const AlreadyImported&) const = default;
};
struct Unreadable {
    std::string message;
    bool operator==(const Unreadable&) const = default;
};
/// A transcript of this system.
struct AlreadyOmbrix {
    bool operator==(const AlreadyOmbrix&) const = default;
};
struct Unrecognized {
    bool operator==(const Unrecognized&) const = default;
};
struct NoSpeech {
    bool operator==(const NoSpeech&) const = default;
};
using Outcome = std::variant<Imported, ImportedMany, AlreadyImported, Unreadable, AlreadyOmbrix,
                             Unrecognized, NoSpeech>;

struct FileOutcome {
    std::string source;
    Outcome outcome;
    bool operator==(const FileOutcome&) const = default;
};

/// Called after each file with the number of files done and of all.
using Progress = std::function<void(std::size_t done, std::size_t all)>;

/// Imports one export into `folder`, which is created when it is missing. An export that tells no
/// day gets the day on which the file was last changed, by `calendar`.
FileOutcome importFile(const std::string& source, const std::string& folder,
                       const Calendar& calendar);

/// Imports every candidate below `folder` in the order of their paths; hidden files and folders are
/// skipped, and so is the folder's own `memoryName`. Transcripts go into `destination`, or beside
/// each export without one. A destination inside `folder` is skipped; when it is `folder` itself
/// or contains it, the transcripts there have the outcome `AlreadyOmbrix`. Of two exports with one
/// name the second gets the next free name, in every run the same, so that none is lost. Reads no
/// file of the destination more than once.
std::vector<FileOutcome> importFolder(const std::string& folder,
                                      const std::optional<std::string>& destination,
                                      std::string_view memoryName, const Calendar& calendar,
                                      const Progress& progress = {});

/// What an import would do with `source`, a file or a folder of exports, writing nothing. It does
/// not look for earlier imports, so nothing is `AlreadyImported`, and every path with "/Memory/" or
/// "/.ombrix/" in it is left out.
std::vector<FileOutcome> plan(const std::string& source, bool isDirectory,
                              const std::optional<std::string>& destination,
                              const Progress& progress = {});

/// The transcript of `source` in `folder`: the first name that is free or belongs to `source`, else
/// the last of the fifty. Never `source` itself.
std::string destinationURL(const std::string& source, const std::string& folder);
/// The same for the meeting at `index`, from 1, of `count`.
std::string destinationURL(const std::string& source, const std::string& folder, std::size_t index,
                           std::size_t count);

/// The day on which a file was last changed, "yyyy-MM-dd"; nothing when that is unknown.
std::optional<std::string> modifiedDay(const std::string& path, const Calendar& calendar);
}  // namespace ombrix::TranscriptImportRunner

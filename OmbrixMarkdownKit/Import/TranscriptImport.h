// Turns another tool's export into the text of a transcript. Text in, text out: the runner reads
// and writes the files. A conversion keeps who said what; times, cue numbers, tags and headings go.
// The format is found by looking at the text. docs/import.md shows every shape that is read.
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/ExportFacts.h"
#include "OmbrixMarkdownKit/Import/ImportFormat.h"
#include "OmbrixMarkdownKit/Import/ImportedTranscript.h"

namespace ombrix::TranscriptImport {

/// Why a text gives no transcript.
class Failure : public std::exception {
  public:
    enum class Kind {
        unrecognizedFormat,  ///< no export of a known shape
        noSpeech,            ///< of a known shape, but nobody says anything
        alreadyOmbrix,       ///< a transcript of this system
    };

    explicit Failure(Kind kind) : kind_(kind) {}
    Kind kind() const { return kind_; }
    const char* what() const noexcept override;

  private:
    Kind kind_;
};

/// One meeting, converted.
struct Result {
    std::string markdown;  ///< the whole file
    Format format{};
    std::string title;
    std::vector<std::string> participants;
    std::int64_t turnCount = 0;
    std::optional<std::string> date;  ///< "YYYY-MM-DD"
    bool operator==(const Result&) const = default;
};

/// The format of an export with any line ends; nothing when it has no shape that is known by its
/// beginning or, for JSON, by its segments. `convertAll` reads more: shapes that are known only
/// when the whole text proves to be a conversation.
std::optional<Format> detect(std::string_view text);

/// One result for each meeting in the export, at least one, in the export's order. `text` is valid
/// UTF-8 with any line ends; a byte order mark before it is ignored. `filename` is the name of the
/// source file: the title, and the day if the name holds one, come from it when the export does not
/// tell them. `fallbackDate`, "YYYY-MM-DD", is the day when neither does. Throws `Failure` and
/// nothing else. Linear in the text, of which it needs several times the memory.
std::vector<Result> convertAll(std::string_view text, std::string_view filename,
                               const std::optional<std::string>& fallbackDate);

/// The first of `convertAll`.
Result convert(std::string_view text, std::string_view filename,
               const std::optional<std::string>& fallbackDate);
}  // namespace ombrix::TranscriptImport

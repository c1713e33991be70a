// The transcripts folder: where `config.json` puts it, and which of its files are transcripts.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Search/AnswerScope.h"
#include "OmbrixPlatform/Json.h"

namespace ombrix::AnswerFolderResolver {

/// `config.json` of a support directory. A file that is missing, unreadable, larger than 1 GiB or
/// no JSON object reads as one without keys; there is no message.
class Config {
  public:
    /// Reads the file once.
    explicit Config(const std::string& supportDirectory);
    /// The string under `key`; nothing for a missing key and for another type.
    std::optional<std::string> string(std::string_view key) const;

  private:
    Json::Value content_;
};

/// The transcripts folder: `output_folder_display_path` as it stands, a leading "~" or "~/" being
/// `home`; "Documents/Ombrix" in `home` when there is none or it is blank.
std::string resolve(const Config& config, std::string_view home);

/// The name of the Memory folder inside it: `engine_folder_name`, trimmed, or "Memory".
std::string memoryFolderName(const Config& config);

/// `user_name` without blanks around it, also when nothing is left; nothing without the key.
std::optional<std::string> userName(const Config& config);

/// The order of a library: the latest start (or day, when a transcript has no start) first, then
/// the greater id. Two entries never tie.
struct LibraryOrder {
    std::string_view start;
    std::string_view id;
    /// True when this one comes first.
    bool operator<(const LibraryOrder& other) const {
        return start != other.start ? start > other.start : id > other.id;
    }
};
/// What `start` is for a document.
const std::string& startOf(const TranscriptDocument& document);

/// The paths, standardised, of the files below `folder` that may be transcripts: those with the
/// extension "md" in any case, outside of the skills' folder. In no particular order.
std::vector<std::string> transcriptPaths(const std::string& folder,
                                         std::string_view memoryFolderName);

/// The transcripts below `folder` in the library's order. A file that cannot be read, is not valid
/// UTF-8 or does not declare itself ours is left out without a word. Holds the whole library in
/// memory; `LibrarySearch` answers questions without that.
std::vector<IdentifiedDocument> scan(const std::string& folder, std::string_view memoryFolderName);
}  // namespace ombrix::AnswerFolderResolver

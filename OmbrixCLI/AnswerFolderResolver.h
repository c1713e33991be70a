// The transcripts folder, as `config.json` of the support directory configures it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Library/TranscriptLibrary.h"
#include "OmbrixPlatform/Json.h"

namespace ombrix::AnswerFolderResolver {

/// `config.json` of a support directory. A file that is missing, unreadable, larger than 1 GiB or
/// no JSON object counts as one without keys; nothing is reported.
class Config {
  public:
    /// Reads the file once.
    explicit Config(const std::string& supportDirectory);
    /// The string under `key`; nothing for a missing key and for another type.
    std::optional<std::string> string(std::string_view key) const;

  private:
    Json::Value content_;
};

/// Where the transcripts are unless a configuration says otherwise: "Documents/Ombrix" in `home`.
std::string defaultFolder(std::string_view home);

/// The transcripts folder: `output_folder_display_path` as it is, with `home` for a leading "~"
/// or "~/"; the default folder when there is none or it is blank.
std::string resolve(const Config& config, std::string_view home);

/// The transcripts folder in the user's home or wherever `config` says. Throws
/// `CLIError::notFound` when there is no folder at that place.
std::string existing(const Config& config);

/// The name of the Memory folder inside it: `engine_folder_name`, trimmed, or "Memory".
std::string memoryFolderName(const Config& config);

/// `user_name` without blanks around it, which may leave an empty text; nothing without the key.
std::optional<std::string> userName(const Config& config);

/// The library in `folder`; the skills' folder inside the Memory folder holds no transcripts.
TranscriptLibrary library(std::string folder, std::string memoryFolderName);

/// The transcripts of that library in its order, all in memory; see `TranscriptLibrary::scan`.
std::vector<IdentifiedDocument> scan(std::string folder, std::string memoryFolderName);
}  // namespace ombrix::AnswerFolderResolver

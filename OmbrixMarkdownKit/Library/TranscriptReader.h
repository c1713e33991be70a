// Reads transcript files one after the other through one buffer.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixPlatform/Files.h"

namespace ombrix {

class TranscriptReader {
  public:
    /// The document of a file; nothing when it cannot be read, has 2 GiB or more, is not valid
    /// UTF-8, does not declare itself ours or has no frontmatter.
    std::optional<TranscriptDocument> document(const std::string& path);

    /// The same file as views, which show the reader's buffer until the next call.
    struct View {
        TranscriptDocument header;  ///< the frontmatter's fields; the sections' are empty
        TranscriptSections::Sections sections;
    };
    std::optional<View> view(const std::string& path);

    /// The frontmatter's fields from the beginning of the file alone; nothing when that does not
    /// hold all of it. Says nothing of whether the rest of the file makes it a transcript.
    std::optional<TranscriptDocument> peek(const std::string& path);

  private:
    /// The bytes of a transcript of ours, as they stand in the file.
    std::optional<std::string_view> bytes(const std::string& path);

    Files::Reader files_;
    std::string lineFeeds_;
};
}  // namespace ombrix

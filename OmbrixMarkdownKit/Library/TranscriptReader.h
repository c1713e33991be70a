// Reads transcript files, one at a time, through one buffer: whole, as views, or the
// frontmatter.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixPlatform/Files.h"

namespace ombrix {

/// A day of speech has about two million bytes. Reading takes up to four times the bytes of a file,
/// so a larger file is passed over: it is no transcript, and could take all memory.
inline constexpr std::size_t largestTranscript = std::size_t{64} << 20U;

/// For `ForkJoin::workersFor`: fewer files are read sooner than a thread is made.
inline constexpr std::size_t filesPerReader = 32;

class TranscriptReader {
  public:
    explicit TranscriptReader(Files::From from = Files::From::anywhere) : files_(from) {}

    /// The document of a file; nothing when it cannot be read, has more than `largestTranscript`
    /// bytes, is not valid UTF-8, does not declare itself ours or has no frontmatter.
    std::optional<TranscriptDocument> document(const std::string& path);

    /// The same as views into the reader's buffer, valid until the next call.
    struct View {
        TranscriptDocument header;  ///< the frontmatter's fields; the sections' are empty
        TranscriptSections::Sections sections;
    };
    std::optional<View> view(const std::string& path);

    /// The frontmatter's fields of a transcript of ours, without its sections. Reads the beginning
    /// of the file and goes on only when that does not hold the whole frontmatter with the line
    /// that makes it ours. What it does not read need not be valid UTF-8; otherwise as `document`.
    std::optional<TranscriptDocument> header(const std::string& path);

    /// The frontmatter's fields, from the first 4 KiB of the file alone; nothing when the
    /// frontmatter does not end there. The rest of the file may still make it no transcript.
    std::optional<TranscriptDocument> peek(const std::string& path);

  private:
    /// The frontmatter at the beginning of a file, its "---" lines included, with LF line ends;
    /// nothing when it does not end there. A loose closing line counts only when the whole file has
    /// no strict one.
    std::optional<std::string_view> frontmatterOf(std::string_view beginning);
    /// The bytes of a file that declares itself a transcript of ours, unchanged.
    std::optional<std::string_view> bytes(const std::string& path);

    Files::Reader files_;
    std::string lineFeeds_;
};
}  // namespace ombrix

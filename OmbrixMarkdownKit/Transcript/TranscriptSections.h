// A transcript file cut into views: its header, its sections and its turns, without a copy of
// anything. `MarkdownTranscriptParser` makes a document of them; search reads them as they are.
// Texts have LF line ends; the views show the bytes of the given text.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ombrix::TranscriptSections {

enum class Section { notes, transcript, summary, meetingNotes, actionItems, keyMoments };

/// The headings, in the order of `Section`.
constexpr std::array<std::string_view, 6> sectionHeaders = {
    "## Notes",         "## Transcript",   "## Summary",
    "## Meeting Notes", "## Action Items", "## Key Moments",
};
/// Closes the machine block, and with it the section before it.
constexpr std::string_view machineBlockEnd = "<!-- /ombrix:ai -->";

struct Frame {
    std::string_view header;  ///< between the "---" lines
    std::string_view body;    ///< after the closing one
};

/// The header and the body; nothing when the text does not begin with a closed frontmatter.
std::optional<Frame> frame(std::string_view text);

/// Each section untrimmed; empty when its heading is missing.
class Sections {
  public:
    explicit Sections(std::string_view body);
    std::string_view raw(Section section) const {
        return sections_[static_cast<std::size_t>(section)];
    }
    /// The section as a document holds it: trimmed, and without comment lines except in the notes.
    /// The view shows bytes of the body, or of `storage` when lines were removed.
    std::string_view text(Section section, std::string& storage) const;

  private:
    std::array<std::string_view, sectionHeaders.size()> sections_{};
};

/// A paragraph of the transcript section that belongs to a turn.
struct Paragraph {
    bool opensTurn = false;
    std::string_view speaker;  ///< only when it opens a turn; never empty then
    std::string_view text;
};

/// Walks the paragraphs of a transcript section. Those before the first turn and those whose
/// speaker is empty are skipped.
class Paragraphs {
  public:
    explicit Paragraphs(std::string_view section) : rest_(section) {}
    /// False after the last paragraph.
    bool next(Paragraph& paragraph);

  private:
    std::string_view rest_;
    bool hasTurn_ = false;
};

/// Finds the paragraphs of a transcript section that hold some of its bytes, without a walk through
/// those between them.
class ParagraphFinder {
  public:
    explicit ParagraphFinder(std::string_view section) : section_(section) {}

    struct Block {
        std::string_view text;  ///< of the paragraph that `Paragraphs` gives; empty for none
        std::size_t end = 0;    ///< of the section; the paragraph's bytes end there or before
    };
    /// The block around the byte `at`, which must be less than the section's size and no line feed.
    Block around(std::size_t at);

  private:
    std::string_view section_;
    std::optional<std::size_t> firstTurn_;  // where its text begins; npos for none
};
}  // namespace ombrix::TranscriptSections

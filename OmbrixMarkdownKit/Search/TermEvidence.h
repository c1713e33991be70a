// The first step of ranking: what one document has of a question's keywords. The second step
// scores the evidence of all documents without the documents, so a library can be read file by
// file. docs/search.md shows both.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Search/SpeakerIdentity.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixMarkdownKit/Words/KeywordMatcher.h"

namespace ombrix {

/// How many spoken hits one in the title, or in a participant's name, is worth.
constexpr double titleTermWeight = 3.0;
constexpr double participantTermWeight = 2.0;

/// The body fields that are searched, in this order: notes, summary, action items, key moments.
/// Meeting notes are not searched.
using BodyFields = std::array<std::string_view, 4>;
BodyFields bodyFields(const TranscriptDocument& document);

/// Where one keyword is found in one document.
struct TermEvidence {
    std::size_t keyword = 0;  ///< its index among the keywords
    double tf = 0;            ///< weighted count; above 0 when `EvidenceCollector` made it
    std::vector<std::size_t> turnIndexes;
    std::vector<std::size_t> bodyIndexes;  ///< into `BodyFields`
    bool titleHit = false;
    bool participantHit = false;
    bool operator==(const TermEvidence&) const = default;
};

struct DocumentEvidence {
    std::string date;                 ///< the document's
    std::vector<TermEvidence> terms;  ///< keywords that occur, in keyword order
    bool userSpoke = false;           ///< only determined when `terms` is not empty
    bool operator==(const DocumentEvidence&) const = default;
};

/// Leaves what scores need and the memory of a large library can hold: no `turnIndexes`, no
/// `bodyIndexes`.
void forgetPlaces(DocumentEvidence& evidence);

/// Who "the user" is for `userSpoke`, and how many turns are needed.
struct SpeakerQuestion {
    SpeakerIdentity identity;
    std::int64_t minTurns = 1;
};

/// Collects evidence from one document after the other with the same keywords. Both forms of
/// `collect` give the same evidence for the same file.
class EvidenceCollector {
  public:
    EvidenceCollector(const KeywordMatcher& matcher, std::optional<SpeakerQuestion> speaker);

    DocumentEvidence collect(const TranscriptDocument& document);

    /// The evidence from views of a file. `header` has the title, the date and the participants;
    /// its other fields are not read.
    DocumentEvidence collect(const TranscriptDocument& header,
                             const TranscriptSections::Sections& sections);

    /// The same after `forgetPlaces`. Quicker: it reads no turn without a keyword.
    DocumentEvidence count(const TranscriptDocument& header,
                           const TranscriptSections::Sections& sections);

  private:
    struct Slot {
        std::size_t document = 0;  // the one it was last used for
        std::size_t index = 0;     // in `terms_`
    };

    void begin();
    DocumentEvidence finish(const TranscriptDocument& header);
    DocumentEvidence finish(const TranscriptDocument& header,
                            const TranscriptSections::Sections& sections);
    TermEvidence& term(std::size_t keyword);
    void addHeader(const TranscriptDocument& header);
    void addBodies(const BodyFields& bodies);
    void addBodies(const TranscriptSections::Sections& sections);
    void addTurns(std::string_view section);
    bool countInTurns(std::string_view section);
    /// What was counted since the last field, as a turn's.
    void finishTurn(std::size_t index);
    bool userSpoke(std::string_view section) const;
    /// Counts the keywords of `text`; quick when the scan shows that there is none.
    const std::vector<KeywordMatcher::Counter::Found>& count(std::string_view text);

    const KeywordMatcher& matcher_;
    std::optional<SpeakerQuestion> speaker_;
    KeywordMatcher::Counter counter_;
    std::vector<Slot> slots_;
    std::size_t document_ = 0;
    std::vector<TermEvidence> terms_;
    std::vector<std::string_view> pieces_;  // of the turn being read
};
}  // namespace ombrix

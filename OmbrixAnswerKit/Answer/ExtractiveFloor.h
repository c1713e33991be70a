// The answer that always exists: the retrieved sources quoted in a fixed Markdown form, every line
// with the number of its source. Only formats and extracts; never blocks.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OmbrixAnswerKit/Answer/AnswerSynthesis.h"
#include "OmbrixAnswerKit/Ask/AskIntentRouter.h"
#include "OmbrixAnswerKit/Commitments/CommitmentExtractor.h"
#include "OmbrixAnswerKit/Shape/AnswerShape.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

namespace ombrix {

class ExtractiveFloor final : public AnswerSynthesizer {
  public:
    using Documents = std::map<std::string, TranscriptDocument, std::less<>>;

    /// A negative cap counts as 0.
    struct Caps {
        std::int64_t snippetCap = 8;      ///< the most lines of a snippet list or a timeline
        std::int64_t commitmentCap = 12;  ///< the most commitments listed
    };

    /// `documents` are the sources' documents by id; of two with one id the first wins. Hand the
    /// list over with std::move and no document is copied. `userAliases` are the user's names.
    ExtractiveFloor(std::vector<std::pair<std::string, TranscriptDocument>> documents,
                    std::vector<std::string> userAliases, Caps caps);

    std::string_view label() const override { return "extractive-floor"; }
    std::string_view displayName() const override { return "From your transcripts"; }
    bool isAvailable() const override { return true; }

    const Documents& documents() const { return documents_; }
    const std::vector<std::string>& userAliases() const { return userAliases_; }
    std::int64_t snippetCap() const { return caps_.snippetCap; }
    std::int64_t commitmentCap() const { return caps_.commitmentCap; }

    /// `markdown` in the shape and for the intent of the question, and the ids of all citations,
    /// quoted or not. Fails as `emptyInput` without citations, never otherwise.
    SynthesizedAnswer synthesize(std::string_view question,
                                 const std::vector<RetrievedCitation>& citations) const override;
    /// The same in a given shape, read back into a structured answer.
    StructuredAnswer synthesize(std::string_view question,
                                const std::vector<RetrievedCitation>& citations,
                                AnswerShape shape) const override;

    /// The citations as a snippet list, a timeline or a list of the commitments in their documents;
    /// a snippet list in place of the last when the floor has no documents. May be empty.
    std::string markdown(const std::vector<RetrievedCitation>& citations, AnswerShape shape,
                         AskIntent intent) const;

    /// The commitments in the documents of the citations, in the direction of the intent, the
    /// latest meeting first, at most `commitmentCap`. A citation without a document yields none.
    std::vector<Commitment> commitments(const std::vector<RetrievedCitation>& citations,
                                        AskIntent intent) const;

    /// The only direction an intent asks for; nothing when it asks for all.
    static std::optional<Commitment::Direction> direction(AskIntent intent);

  private:
    std::string snippetList(const std::vector<RetrievedCitation>& citations) const;
    std::string timeline(const std::vector<RetrievedCitation>& citations) const;
    std::string commitmentList(const std::vector<RetrievedCitation>& citations,
                               AskIntent intent) const;

    Documents documents_;
    std::vector<std::string> userAliases_;
    Caps caps_;
};
}  // namespace ombrix

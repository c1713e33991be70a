// The interface of what writes an answer from numbered sources: the extractive floor, a model that
// the desktop application offers, a mock. All write only what the sources say, with their numbers.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Answer/RetrievedCitation.h"
#include "OmbrixAnswerKit/Shape/AnswerShape.h"
#include "OmbrixAnswerKit/Shape/StructuredAnswer.h"

namespace ombrix {

struct SynthesizedAnswer {
    std::string text{};
    std::vector<std::string> citationIDs{};
    bool operator==(const SynthesizedAnswer&) const = default;
};

/// The one error of a synthesizer.
class AnswerSynthesisError : public std::runtime_error {
  public:
    enum class Reason {
        unavailable,
        emptyInput,   ///< no citations
        emptyOutput,  ///< the model wrote nothing
        cancelled,    ///< a model's task was cancelled; never by the floor or the mock
    };

    explicit AnswerSynthesisError(Reason reason);
    Reason reason() const { return reason_; }

  private:
    Reason reason_;
};

/// Calls of `isAvailable` and `synthesize` may block for as long as a model takes.
class AnswerSynthesizer {
  public:
    virtual ~AnswerSynthesizer() = default;

    /// A short name for machines.
    virtual std::string_view label() const = 0;
    /// The name the user sees.
    virtual std::string_view displayName() const = 0;
    virtual bool isAvailable() const = 0;

    /// Throws `AnswerSynthesisError`.
    virtual SynthesizedAnswer synthesize(std::string_view question,
                                         const std::vector<RetrievedCitation>& citations) const = 0;

    /// The answer in a shape. Prose is asked for with the question alone; for another shape its
    /// format instructions follow the question after a blank line, and the text is read back, which
    /// may turn out to be prose. Throws `AnswerSynthesisError`.
    virtual StructuredAnswer synthesize(std::string_view question,
                                        const std::vector<RetrievedCitation>& citations,
                                        AnswerShape shape) const;

  protected:
    AnswerSynthesizer() = default;
    AnswerSynthesizer(const AnswerSynthesizer&) = default;
    AnswerSynthesizer(AnswerSynthesizer&&) = default;
    AnswerSynthesizer& operator=(const AnswerSynthesizer&) = default;
    AnswerSynthesizer& operator=(AnswerSynthesizer&&) = default;
};

/// Answers with a fixed text: for developing and checking what calls a synthesizer.
class MockAnswerSynthesizer final : public AnswerSynthesizer {
  public:
    bool available = true;
    std::optional<std::string> response;

    std::string_view label() const override { return "mock"; }
    std::string_view displayName() const override { return "Mock synthesizer"; }
    bool isAvailable() const override { return available; }

    using AnswerSynthesizer::synthesize;
    /// `response` with the ids of all citations. Fails, in this order, as `unavailable`, as
    /// `emptyInput` without citations and as `emptyOutput` without a response.
    SynthesizedAnswer synthesize(std::string_view question,
                                 const std::vector<RetrievedCitation>& citations) const override;
};
}  // namespace ombrix

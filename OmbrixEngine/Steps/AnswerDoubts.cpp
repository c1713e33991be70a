#include "OmbrixEngine/Steps/AnswerDoubts.h"

#include <algorithm>

#include "OmbrixMarkdownKit/Transcript/TextNormalize.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

constexpr std::size_t mostDoubts = 20;

class Doubts {
  public:
    explicit Doubts(std::span<const TranscriptDocument::Turn> turns) {
        for (const auto& turn : turns) said_ += " " + TextNormalize::words(turn.text);
        said_ += ' ';
    }

    template <typename Claim>
    void checkQuotes(const char* list, const std::vector<Claim>& claims) {
        for (std::size_t i = 0; i < claims.size(); ++i)
            if (!isSaid(claims[i].quote)) add(list, i, "quote", claims[i].quote, "nobody said");
    }
    void add(const char* list, std::size_t index, const char* field, const std::string& text,
             const char* problem) {
        if (found.size() < mostDoubts) {
            found.push_back(std::string(list) + "[" + std::to_string(index) + "]." + field + ": " +
                            problem + " \"" + text + "\".");
        }
    }

    std::vector<std::string> found;

  private:
    bool isSaid(std::string_view quote) const {
        const std::string parts = Text::replacingAll(quote, "…", "...");
        return std::ranges::all_of(Text::split(parts, "..."), [this](std::string_view part) {
            const std::string words = TextNormalize::words(part);
            return words.empty() || Text::contains(said_, " " + words + " ");
        });
    }

    std::string said_;
};
}  // namespace

std::vector<std::string> doubtsAbout(const LandOutput& output,
                                     std::span<const TranscriptDocument::Turn> turns) {
    Doubts doubts(turns);
    doubts.checkQuotes("decisions", output.decisions);
    doubts.checkQuotes("open_questions", output.openQuestions);
    doubts.checkQuotes("commitments", output.commitments);
    doubts.checkQuotes("resolutions", output.resolutions);
    doubts.checkQuotes("memory", output.memory);
    return std::move(doubts.found);
}
}  // namespace ombrix

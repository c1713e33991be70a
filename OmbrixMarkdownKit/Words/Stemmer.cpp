#include "OmbrixMarkdownKit/Words/Stemmer.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Stemmer {
namespace {

struct Lemma {
    std::string_view word;
    std::string_view stem;
};

/// The few business words that matter most. Their stems are those that the rules give to the verbs:
/// "decided" and "deciding" are "decid", "agreed" is "agre".
constexpr std::array<Lemma, 14> lemmaOverrides = {{
    {"decision", "decid"},
    {"decisions", "decid"},
    {"commitment", "commit"},
    {"commitments", "commit"},
    {"discussion", "discuss"},
    {"discussions", "discuss"},
    {"agreement", "agre"},
    {"agreements", "agre"},
    {"blocker", "block"},
    {"blockers", "block"},
    {"priorities", "priority"},
    {"prioritize", "priority"},
    {"prioritized", "priority"},
    {"prioritise", "priority"},
}};

static_assert(std::ranges::all_of(lemmaOverrides,
                                  [](const Lemma& lemma) { return mayLoseLetters(lemma.word); }));

/// Rules out most words by their length and first letter before the table is searched.
consteval auto overrideLetters() {
    std::array<std::uint32_t, 16> letters{};  // by length, a bit for each first letter
    for (const auto& [word, stem] : lemmaOverrides)
        letters.at(word.size()) |= std::uint32_t{1} << static_cast<unsigned>(word[0] - 'a');
    return letters;
}

std::string_view overrideOf(std::string_view word) {
    static constexpr auto letters = overrideLetters();
    if (word.size() >= letters.size()) return {};
    const auto letter = static_cast<unsigned char>(word[0] - 'a');
    if (letter >= 26 || (letters[word.size()] >> letter & 1U) == 0) return {};
    const auto found = std::ranges::find(lemmaOverrides, word, &Lemma::word);
    return found == lemmaOverrides.end() ? std::string_view() : found->stem;
}

/// A word that loses its endings. Lengths are counted in characters.
class Stripped {
  public:
    Stripped(std::string_view word, std::size_t characters)
        : word_(word), characters_(characters) {}

    std::string_view word() const { return word_; }
    bool endsIn(std::string_view ending, std::size_t atLeast) const {
        return word_.ends_with(ending) && characters_ >= ending.size() + atLeast;
    }
    void drop(std::size_t count) {
        word_.remove_suffix(count);
        characters_ -= count;
    }
    bool dropEnding(std::string_view ending, std::size_t atLeast) {
        if (!endsIn(ending, atLeast)) return false;
        drop(ending.size());
        return true;
    }
    void undouble();

  private:
    std::string_view word_;
    std::size_t characters_;
};

/// Drops the second of two equal letters, unless English doubles the letter at the end of a stem.
void Stripped::undouble() {
    constexpr std::string_view keptDouble = "aeioulsz";
    if (characters_ < 2) return;
    const char last = word_.back();
    if (static_cast<unsigned char>(last) < 0x80) {
        if (word_[word_.size() - 2] == last && Text::isAsciiLetter(last) &&
            keptDouble.find(last) == std::string_view::npos)
            drop(1);
        return;
    }
    const std::size_t at = Characters::backward(word_, word_.size(), 1);
    const std::size_t before = Characters::backward(word_, at, 1);
    const auto letter = word_.substr(at);
    if (letter != word_.substr(before, at - before)) return;
    if (!Text::isLetter(Utf8::decode(letter, 0).scalar)) return;
    word_ = word_.substr(0, at);
    --characters_;
}

bool leavesHiss(std::string_view withoutEs) {
    return withoutEs.ends_with('x') || withoutEs.ends_with('z') || withoutEs.ends_with("ch") ||
           withoutEs.ends_with("sh");
}

/// True when "ies" was removed: the caller must append a "y".
bool stripPlural(Stripped& word) {
    if (!word.word().ends_with('s')) return false;
    if (word.dropEnding("ies", minPluralStem)) return true;
    const auto text = word.word();
    if (word.endsIn("es", minPluralStem) && leavesHiss(text.substr(0, text.size() - 2)))
        word.drop(2);
    else if (!text.ends_with("ss") && !text.ends_with("us") && !text.ends_with("sis"))
        word.dropEnding("s", minPluralStem);
    return false;
}
}  // namespace

std::string_view stem(std::string_view normalForm, std::size_t characters, std::string& storage) {
    if (!mayLoseLetters(normalForm)) return normalForm;
    if (const auto fixed = overrideOf(normalForm); !fixed.empty()) return fixed;
    Stripped word(normalForm, characters);
    if (stripPlural(word)) {
        // No further rule applies to what ends in "y".
        storage.assign(word.word());
        storage.push_back('y');
        return storage;
    }
    if (word.dropEnding("ing", minStem) || word.dropEnding("ed", minStem)) word.undouble();
    word.dropEnding("e", minStem);
    return word.word();
}

std::string commonPrefix(std::string_view stem) {
    std::string_view shared = stem;
    // "stories" has lost its "ies" to the "y" of "story"; all other rules only cut at the end.
    if (shared.size() > 1 && shared.ends_with('y')) shared.remove_suffix(1);
    for (const auto& [word, fixed] : lemmaOverrides) {
        if (fixed != stem) continue;
        const auto end = std::ranges::mismatch(shared, word).in1;
        shared = shared.substr(0, static_cast<std::size_t>(end - shared.begin()));
    }
    return std::string(shared);
}
}  // namespace ombrix::Stemmer

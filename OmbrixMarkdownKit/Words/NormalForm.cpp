#include "OmbrixMarkdownKit/Words/NormalForm.h"

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::NormalForm {
namespace {

struct Spelled {
    bool isWhole = true;  // false when a scalar was met that may or may not be kept
    std::size_t characters = 0;
};

/// Appends the word as far as its scalars are characters that are kept, and marks that are dropped.
Spelled spell(std::string& result, std::string_view word) {
    Spelled spelled;
    for (std::size_t at = 0; at < word.size();) {
        const auto found = Letters::find(word, at);
        if (found.letter.characters == 0 && found.letter.foldSize != 0) {
            spelled.isWhole = false;
            return spelled;
        }
        result += Letters::foldOf(found, word, at);
        spelled.characters += found.letter.characters;
        at += found.length;
    }
    return spelled;
}

std::string withoutPossessive(std::string fold) {
    for (const std::string_view possessive : {"'s", "\u2019s"}) {
        if (fold.ends_with(possessive)) {
            fold.resize(fold.size() - possessive.size());
            break;
        }
    }
    return fold;
}
}  // namespace

std::size_t append(std::string& result, std::string_view word) {
    const std::size_t before = result.size();
    if (const auto spelled = spell(result, word); spelled.isWhole) return spelled.characters;
    result.resize(before);
    const std::string fold = withoutPossessive(Text::folded(word));
    Characters::Cursor cursor(fold);
    for (std::size_t at = 0; at < fold.size();) {
        const std::size_t next = cursor.after(at);
        if (Text::isLetterOrNumber(Utf8::decode(fold, at).scalar))
            result.append(fold, at, next - at);
        at = next;
    }
    return Characters::count(std::string_view(result).substr(before));
}

std::string of(std::string_view word) {
    std::string kept;
    kept.reserve(word.size());
    append(kept, word);
    return kept;
}
}  // namespace ombrix::NormalForm

#include "OmbrixMarkdownKit/Words/NormalForm.h"

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::NormalForm {

std::string of(std::string_view word) {
    std::string fold = Text::folded(word);
    for (const std::string_view possessive : {"'s", "\u2019s"}) {
        if (fold.ends_with(possessive)) {
            fold.resize(fold.size() - possessive.size());
            break;
        }
    }
    std::string kept;
    kept.reserve(fold.size());
    Characters::Cursor cursor(fold);
    for (std::size_t at = 0; at < fold.size();) {
        const std::size_t next = cursor.after(at);
        if (Text::isLetterOrNumber(Utf8::decode(fold, at).scalar)) kept.append(fold, at, next - at);
        at = next;
    }
    return kept;
}
}  // namespace ombrix::NormalForm

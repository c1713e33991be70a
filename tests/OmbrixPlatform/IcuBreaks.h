// The breaks that ICU finds in a whole text, to compare the quick ways with.
#pragma once

#include <gtest/gtest.h>
#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include <cstddef>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/ByteRange.h"

namespace ombrix::test {

/// The pieces between breaks; for words only the pieces that ICU counts as words.
inline std::vector<ByteRange> icuPieces(UBreakIteratorType type, std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    UText* bytes = utext_openUTF8(nullptr, text.data(), static_cast<int64_t>(text.size()), &status);
    UBreakIterator* it = ubrk_open(type, "", nullptr, 0, &status);
    ubrk_setUText(it, bytes, &status);
    EXPECT_TRUE(U_SUCCESS(status));
    std::vector<ByteRange> pieces;
    std::size_t begin = 0;
    for (int32_t at = ubrk_next(it); at != UBRK_DONE; at = ubrk_next(it)) {
        const auto end = static_cast<std::size_t>(at);
        if (type != UBRK_WORD || ubrk_getRuleStatus(it) != UBRK_WORD_NONE)
            pieces.push_back({begin, end});
        begin = end;
    }
    ubrk_close(it);
    utext_close(bytes);
    return pieces;
}
}  // namespace ombrix::test

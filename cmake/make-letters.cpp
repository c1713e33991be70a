// make-letters FILE
//
// Writes the table of OmbrixPlatform/Letters.h as C++, from ICU's data and our own fold.
#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

// Text.cpp reads the table that is yet to be written: here everything is unknown, so that it asks
// ICU.
namespace ombrix::Letters::Table {
const Letter letters[(asciiPages + 1) * pageSize] = {};
const std::uint16_t pagesOfTwo[32] = {};
const std::uint16_t pagesOfThree[1024] = {};
}  // namespace ombrix::Letters::Table

namespace {

using namespace ombrix;
using Letters::Kind;
using Letters::Letter;
using Page = std::vector<Letter>;

int property(char32_t scalar, UProperty which) {
    return u_getIntPropertyValue(static_cast<UChar32>(scalar), which);
}

UScriptCode scriptOf(char32_t scalar) {
    UErrorCode status = U_ZERO_ERROR;
    return uscript_getScript(static_cast<UChar32>(scalar), &status);
}

bool needsDictionary(char32_t scalar) {
    const UScriptCode script = scriptOf(scalar);
    return property(scalar, UCHAR_LINE_BREAK) == U_LB_COMPLEX_CONTEXT || script == USCRIPT_HAN ||
           script == USCRIPT_HIRAGANA || script == USCRIPT_KATAKANA || script == USCRIPT_HANGUL;
}

/// True for what ICU cuts with a dictionary, and for scalars that rules of their own treat.
bool needsIcu(char32_t scalar) {
    const auto icu = static_cast<UChar32>(scalar);
    const bool isFullWidthDigit = scalar >= 0xFF10 && scalar <= 0xFF19;
    return needsDictionary(scalar) || u_hasBinaryProperty(icu, UCHAR_IDEOGRAPHIC) != 0 ||
           isFullWidthDigit || U_IS_SURROGATE(icu);
}

Kind kindOf(char32_t scalar) {
    if (needsIcu(scalar)) return Kind::unknown;
    if (scalar == '@') return Kind::letter;  // ICU's rules differ in two scalars from Unicode's
    if (scalar == ':' || scalar == 0xFE55 || scalar == 0xFF1A) return Kind::gap;
    switch (property(scalar, UCHAR_WORD_BREAK)) {
        case U_WB_ALETTER:
            return Kind::letter;
        case U_WB_NUMERIC:
            return Kind::digit;
        case U_WB_EXTENDNUMLET:
            return Kind::connector;
        case U_WB_MIDLETTER:
            return Kind::betweenLetters;
        case U_WB_MIDNUM:
            return Kind::betweenDigits;
        case U_WB_MIDNUMLET:
        case U_WB_SINGLE_QUOTE:
            return Kind::betweenBoth;
        case U_WB_OTHER:
        case U_WB_CR:
        case U_WB_LF:
        case U_WB_NEWLINE:
        case U_WB_WSEGSPACE:
        case U_WB_DOUBLE_QUOTE:
            return Kind::gap;
        default:
            return Kind::unknown;
    }
}

/// What the scalars of a fold have in common.
struct Fold {
    explicit Fold(std::string_view fold) {
        for (std::size_t at = 0; at < fold.size();) {
            const auto [scalar, length] = Utf8::decode(fold, at);
            const bool isKept = Text::isLetterOrNumber(scalar);
            allKept = allKept && isKept;
            allDropped = allDropped && !isKept;
            standAlone =
                standAlone && property(scalar, UCHAR_GRAPHEME_CLUSTER_BREAK) == U_GCB_OTHER;
            ++scalars;
            at += length;
        }
    }
    std::size_t scalars = 0;
    bool allKept = true;
    bool allDropped = true;
    bool standAlone = true;  // each is a character, whatever is beside it
};

bool standsAlone(char32_t scalar) {
    switch (property(scalar, UCHAR_GRAPHEME_CLUSTER_BREAK)) {
        case U_GCB_OTHER:
        case U_GCB_CONTROL:
        case U_GCB_CR:
        case U_GCB_LF:
            return true;
        default:
            return false;
    }
}

bool attaches(char32_t scalar) {
    switch (property(scalar, UCHAR_WORD_BREAK)) {
        case U_WB_EXTEND:
        case U_WB_FORMAT:
        case U_WB_ZWJ:
            return true;
        default:
            return false;
    }
}

Letter letterOf(char32_t scalar) {
    Letter letter;
    if (U_IS_SURROGATE(static_cast<UChar32>(scalar))) return letter;
    std::string itself;
    Utf8::append(itself, scalar);
    const std::string fold = Text::folded(scalar);
    const Fold facts(fold);
    letter.kind = kindOf(scalar);
    letter.isPrefix = property(scalar, UCHAR_GRAPHEME_CLUSTER_BREAK) == U_GCB_PREPEND;
    letter.standsAlone = standsAlone(scalar);
    letter.needsDictionary = needsDictionary(scalar);
    letter.attaches = attaches(scalar);
    const bool inWord = letter.isKnown() && letter.kind != Kind::gap;
    const bool isPlain = facts.standAlone && (facts.allKept || facts.allDropped);
    if (fold.size() > letter.fold.size() || (inWord && !isPlain)) letter.kind = Kind::unknown;
    if (!letter.isKnown() && fold == itself) {
        letter.foldSize = Letter::asItIs;  // not repeated, so that many pages are the same
    } else if (fold.size() <= letter.fold.size()) {
        letter.foldSize = static_cast<std::uint8_t>(fold.size());
        std::copy(fold.begin(), fold.end(), letter.fold.begin());
    }
    if (facts.allKept && facts.standAlone)
        letter.characters = static_cast<std::uint8_t>(facts.scalars);
    return letter;
}

void write(std::FILE* out, const Letter& letter) {
    std::fprintf(out, "{Kind(%d),%d,%d,%d,%d,%d,%d,{", static_cast<int>(letter.kind),
                 letter.foldSize, letter.characters, int{letter.isPrefix}, int{letter.standsAlone},
                 int{letter.needsDictionary}, int{letter.attaches});
    for (const char c : letter.fold) std::fprintf(out, "char(%d),", static_cast<int>(c));
    std::fputs("}},\n", out);
}

/// Distinct pages in the order in which they are first needed.
class Pages {
  public:
    std::size_t add(const Page& page) {
        for (std::size_t i = 0; i < pages_.size(); ++i)
            if (pages_[i] == page) return i;
        pages_.push_back(page);
        return pages_.size() - 1;
    }
    /// The page with the 64 scalars from `first` on.
    std::size_t add(std::size_t first) {
        Page page;
        for (std::size_t i = 0; i < Letters::Table::pageSize; ++i)
            page.push_back(letterOf(static_cast<char32_t>(first + i)));
        return add(page);
    }
    void write(std::FILE* out) const {
        std::fputs("const Letter letters[] = {\n", out);
        for (const Page& page : pages_)
            for (const Letter& letter : page) ::write(out, letter);
        std::fputs("};\nconst std::size_t letterCount = std::size(letters);\n", out);
    }

  private:
    std::vector<Page> pages_;
};

void writeNumbers(std::FILE* out, const char* name, const std::vector<std::size_t>& numbers) {
    std::fprintf(out, "const std::uint16_t %s[] = {", name);
    for (const std::size_t number : numbers) std::fprintf(out, "%zu,", number);
    std::fputs("};\n", out);
}
}  // namespace

int main(int argc, char** argv) {
    std::FILE* out = argc == 2 ? std::fopen(argv[1], "w") : nullptr;
    if (out == nullptr) {
        std::fputs("usage: make-letters FILE\n", stderr);
        return 64;
    }
    constexpr std::size_t pageSize = Letters::Table::pageSize;
    constexpr std::size_t shortestOfTwo = 0x80, shortestOfThree = 0x800;
    Pages pages;
    for (std::size_t first = 0; first < shortestOfTwo; first += pageSize) pages.add(first);
    const std::size_t unknown = pages.add(Page(pageSize));
    std::vector<std::size_t> pagesOfTwo, pagesOfThree;
    for (std::size_t first = 0; first < shortestOfThree; first += pageSize)
        pagesOfTwo.push_back(first < shortestOfTwo ? unknown : pages.add(first));
    for (std::size_t first = 0; first < 0x10000; first += pageSize)
        pagesOfThree.push_back(first < shortestOfThree ? unknown : pages.add(first));
    std::fputs(
        "// Written by the build from ICU's data.\n#include \"OmbrixPlatform/Letters.h\"\n"
        "#include <iterator>\n"
        "namespace ombrix::Letters::Table {\n",
        out);
    pages.write(out);
    writeNumbers(out, "pagesOfTwo", pagesOfTwo);
    writeNumbers(out, "pagesOfThree", pagesOfThree);
    std::fputs("}  // namespace ombrix::Letters::Table\n", out);
    return std::fclose(out) == 0 ? 0 : 1;
}

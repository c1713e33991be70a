#include "OmbrixMarkdownKit/Words/ByteScan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <span>

#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"
#include "OmbrixPlatform/Words.h"

namespace ombrix {
namespace {

std::vector<std::size_t> places(const ByteScan::WordStarts& starts, std::string_view text) {
    std::vector<std::size_t> found;
    ByteScan::WordStarts::Walk walk(starts, text);
    for (std::size_t at = 0; (at = walk.next(at)) < text.size(); ++at) found.push_back(at);
    return found;
}

std::size_t firstOneForm(std::string_view text, std::size_t from) {
    return ByteScan::OneForms(text).next(from);
}

TEST(ByteScan, FindsOneFormsAtEveryPlaceOfABlock) {
    for (std::size_t before = 0; before < 140; ++before) {
        for (const std::string_view form : {"1", "one", "ONE", "oNe"}) {
            // What comes before looks like it and is not: a control character, cut words.
            const std::string text =
                std::string(before, before % 2 == 0 ? '\x11' : 'o') + std::string(form) + " on";
            ASSERT_EQ(firstOneForm(text, 0), before) << test::visible(text);
            ASSERT_EQ(firstOneForm(text, before), before);
            ASSERT_EQ(firstOneForm(text, before + 1), text.size());
        }
    }
    EXPECT_EQ(firstOneForm("", 0), 0U);
    EXPECT_EQ(firstOneForm("no on", 0), 5U);
}

TEST(ByteScan, EveryWordThatBeginsSoHasAPlaceInsideIt) {
    test::RandomText random(40);
    for (int round = 0; round < 8000; ++round) {
        const std::string text = random.any();
        std::vector<std::pair<ByteRange, std::string>> words;
        for (const auto& range : Words::ranges(text))
            words.emplace_back(range, QueryTokenizer::normalize(range.of(text)));
        // Beginnings of the text's own words, so that they are met, and one of no word.
        std::vector<std::string> beginnings{"qq"};
        for (std::size_t i = 1 + random.below(3); i > 0 && !words.empty(); --i) {
            const std::string& normal = words[random.below(words.size())].second;
            std::size_t end = std::min(1 + random.below(8), normal.size());
            while (end > 0 && !Utf8::isValid(normal.substr(0, end))) --end;
            if (end > 0) beginnings.push_back(normal.substr(0, end));
        }
        const auto found = places(ByteScan::WordStarts(beginnings), text);
        for (const auto& [range, normal] : words) {
            for (const auto& beginning : beginnings) {
                if (normal.starts_with(beginning)) {
                    const auto place = std::ranges::lower_bound(found, range.begin);
                    ASSERT_TRUE(place != found.end() && *place < range.end)
                        << test::visible(normal) << " by " << test::visible(beginning) << " at "
                        << range.begin << " of " << test::visible(text);
                }
            }
        }
    }
}

TEST(ByteScan, EveryKindOfVectorsMarksTheSame) {
    test::RandomText random(41);
    for (int round = 0; round < 2000; ++round) {
        std::string text = random.any();
        text.resize(WordMarks::readBefore + 3 * WordMarks::blockSize + WordMarks::readAfter, ' ');
        const std::string_view beginnings[] = {"n", "on", "ab", "se7", "\u0161x", "e\u00E6", "z.b"};
        const std::span some(beginnings, 1 + random.below(std::size(beginnings)));
        WordMarks::Beginnings looked(
            some, round % 3 == 0 ? WordMarks::Where::anywhere : WordMarks::Where::wordStarts);
        for (const std::string_view character : {"\u00E9", "\u03A3", "\u0436", "\u4F1A"})
            looked.addCharacters(static_cast<unsigned char>(character[0]),
                                 static_cast<unsigned char>(character[1]));
        // A copy that ends where memory does, as far as the sanitizers see.
        const std::vector<char> bytes(text.begin(), text.end());
        std::array<std::uint64_t, 3> plain{};
        WordMarks::ways().back().mark(looked, bytes.data() + WordMarks::readBefore, plain.size(),
                                      plain.data());
        for (const auto& [vectors, mark] : WordMarks::ways()) {
            std::array<std::uint64_t, 3> marks{};
            mark(looked, bytes.data() + WordMarks::readBefore, marks.size(), marks.data());
            ASSERT_EQ(marks, plain) << vectors << ": " << test::visible(text);
        }
    }
}

TEST(ByteScan, LatinLettersGoOnWithAWord) {
    // What the marks leave out: a Latin letter after an ASCII one starts no word.
    for (char32_t scalar = 0x80; scalar < 0x280; ++scalar) {
        for (std::string text : {"a", "7"}) {
            Utf8::append(text, scalar);
            for (const auto& range : Words::ranges(text + "b"))
                ASSERT_NE(range.begin, 1U) << test::visible(text);
        }
    }
}

TEST(ByteScan, AWordIsFoundAcrossTheBordersOfBlocks) {
    const struct {
        std::string word, beginning;
    } cases[] = {
        {"price", "pric"},
        {"PRICE", "price"},
        {"p'rice", "price"},
        {"p", "p"},
        {"pr_ice", "price"},
        {"pri\u00E7ing", "pricing"},
        {"\u00E9cole", "ecol"},
        {"e\u0301cole", "ecol"},
        {"\u212Aelvin", "kel"},
        {"\uFB01nd", "find"},
        {"\u0600xprice", "pric"},
        {"@price", "price"},
        {"\u00DFa", "ssa"},
        {"\uD55C\uAD6D", "\u1112\u1161"},
        {"p\u0301rice", "price"},
        {"\u0416\u0443\u0440\u043D\u0430\u043B", "\u0436\u0443\u0440"},
        {"\u0418\u0306\u043E\u0434", "\u0438\u043E\u0434"},
        {"\u0419\u043E\u0434", "\u0438\u043E\u0434"},
        {"\u03A3\u03CD\u03BD\u03C2", "\u03C3\u03C5\u03BD\u03C3"},
        {"z\u0142oty", "z\u0142ot"},
    };
    for (const auto& [word, beginning] : cases) {
        for (std::size_t i = 0; i < 440; ++i) {
            const std::size_t before =
                i < 140 ? i : 3800 + i;  // also where the next marks are read
            const std::string text =
                std::string(before, 'x') + " " + word + std::string(before % 70, ' ');
            const auto found = places(ByteScan::WordStarts({"zz", beginning}), text);
            ASSERT_EQ(found.size(), 1U) << test::visible(text);
            ASSERT_GT(found[0], before);
            ASSERT_LE(found[0], before + word.size());
        }
    }
}

TEST(ByteScan, OtherWordsAreRarelyLookedAt) {
    const ByteScan::WordStarts starts({"pric", "launch"});
    EXPECT_TRUE(
        places(starts, "surprice apricot prince _xprice lunch p r launc \u00E9price").empty());
    EXPECT_EQ(places(starts, "x pricing, launches"), (std::vector<std::size_t>{2, 11}));
    EXPECT_EQ(ByteScan::WordStarts::Walk(starts, "price price").next(1), 6U) << "not inside a word";
    EXPECT_TRUE(places(starts, "").empty());
}
}  // namespace
}  // namespace ombrix

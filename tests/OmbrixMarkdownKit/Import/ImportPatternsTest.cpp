#include "OmbrixMarkdownKit/Import/ImportPatterns.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

using namespace TranscriptImport;

constexpr std::string_view pieces[] = {
    "Ann", "Lee", "é",  "e\u0301", "王", " ",  " ",      " ",      "\t",     "\u00A0",
    ":",   ":",   ": ", "1",       "2",  "12", "\u0663", "0:12",   "12:30",  "1:02:31",
    ":30", "(",   ")",  "[",       "]",  "am", "P",      "M",      " x",     "\v",
    "<",   ">",   "<b", "-->",     ",",  ".",  "500",    "\u2028", "\u0085", "123456789012345678"};

/// A line as readers see it: trimmed, without line feeds.
std::string randomLine(test::RandomText& random) {
    std::string line;
    for (std::size_t left = random.below(14); left > 0; --left)
        line += random.below(30) == 0 ? random.any() : random.from(pieces);
    line = Text::replacingAll(Utf8::repaired(line), "\n", "");
    return std::string(Text::trimmed(line));
}

/// The group of the first match; nothing without a match.
std::optional<std::string_view> groupOf(const Regex& pattern, std::size_t group,
                                        std::string_view line) {
    const auto match = pattern.firstMatch(line);
    return match ? std::optional(match->group(group, line)) : std::nullopt;
}

TEST(ImportPatterns, ScannersGiveWhatTheExpressionsGive) {
    const Regex timed(
        R"(^(.{1,48}?)(?:\s+[\(\[]?\d{1,2}:\d{2}(?::\d{2})?\s*(?:[AaPp][Mm])?[\)\]]?)?\s*:\s+(.+)$)");
    const Regex otter(R"(^(.{1,48}?)\s+\d{1,2}:\d{2}(:\d{2})?\s*$)");
    const Regex clock(R"(^\[?\d{1,2}:\d{2}(:\d{2})?\]?\s*)");
    const Regex timing(R"(^\d+:\d{2}(:\d{2})?[.,]\d{3}\s*-->)");
    const Regex tags("<[^>]+>");
    test::RandomText random(91);
    for (int round = 0; round < 60000; ++round) {
        const std::string line = randomLine(random);
        const auto speech = timedSpeech(line);
        const auto speaker = speech ? std::optional(speech->speaker) : std::nullopt;
        const auto text = speech ? std::optional(speech->text) : std::nullopt;
        ASSERT_EQ(speaker, groupOf(timed, 1, line)) << test::visible(line);
        ASSERT_EQ(text, groupOf(timed, 2, line)) << test::visible(line);
        ASSERT_EQ(otterHeader(line), groupOf(otter, 1, line)) << test::visible(line);
        const std::size_t clockSize = groupOf(clock, 0, line).value_or("").size();
        ASSERT_EQ(withoutLeadingClock(line), line.substr(clockSize)) << test::visible(line);
        ASSERT_EQ(beginsWithCueTiming(line), timing.found(line)) << test::visible(line);
        std::string storage;
        ASSERT_EQ(stripTags(line, storage), tags.replacingAll(line, [](const auto&) {
            return std::string();
        })) << test::visible(line);
    }
}
}  // namespace
}  // namespace ombrix

#include "OmbrixMemoryKit/Memory/BeforeFile.h"

#include <gtest/gtest.h>

#include <random>

#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Kind = BeforeCard::Kind;
using Source = MemoryRegionParser::Source;

const Calendar berlin("Europe/Berlin", Calendar::Weekday::monday);
const Instant at = *parseIsoInstant("2026-09-08T07:50:00Z");
const Instant call = *parseIsoInstant("2026-09-08T08:00:00Z");

const std::string answer =
    R"({"version": 2, "who_and_when": "Ana Ruiz and Ben · third conversation",
  "not_sure": [{"text": "Budget?", "sources": ["[Weekly, 2026-09-01]"]}],
  "remember": [{"text": "Back from leave", "sources": ["[Kickoff]"]}],
  "you_owe": [{"text": "The deck", "sources": []}, {"text": " ", "sources": ["[W]"]}],
  "they_owe": [{"text": " The list ", "sources": ["[Q3, plan, 2026-09-01]", "Weekly"]}],
  "unanswered": [], "changed_since": [], "ignored": 7,
  "question": [{"text": "Who pays?", "sources": ["[W]"]}],
  "openers": [{"text": "One", "sources": []}, {"text": "Two", "sources": ["[W]"]},
              {"text": "Three", "sources": []}]})";

BeforeCard card() {
    return BeforeOutput::decode(answer).card("Q3: sync", call, {"Ana Ruiz", "Ben"}, "Launch",
                                             "Claude", at);
}

TEST(BeforeOutput, AnAnswerIsTakenWholeOrRefused) {
    const auto output = BeforeOutput::decode(answer);
    EXPECT_EQ(BeforeOutput::decode(Json::write(encode(output), Json::Style::file)), output);
    const std::string opener = R"({"text": "One", "sources": []},)";
    const struct {
        std::string from, to;
        const char* problem;
    } cases[] = {
        {"\"version\": 2", "\"version\": 3", "before output version 3"},
        {opener, "", "before output needs three openers"},
        {opener, opener + opener, "before output needs three openers"},
        {"they_owe", "owe", "they_owe: missing"},
    };
    for (const auto& [from, to, problem] : cases) {
        try {
            BeforeOutput::decode(Text::replacingAll(answer, from, to));
            ADD_FAILURE() << problem;
        } catch (const Json::DecodingError& error) {
            EXPECT_STREQ(error.what(), problem);
        }
    }
    EXPECT_THROW(BeforeOutput::decode("{"), Json::SyntaxError);
}

TEST(BeforeOutput, SourcesAreTitlesAndDays) {
    EXPECT_EQ(BeforeOutput::sources({" [Q3, plan, 2026-09-01]\n", "[Kickoff]", "[T, 2026-02-31]",
                                     "[a, bcdefghij]", "[, 2026-09-01]", "[]", "[", "x", "[x"}),
              (std::vector<Source>{{"Q3, plan", "2026-09-01"},
                                   {"Kickoff", ""},
                                   {"T, 2026-02-31", ""},
                                   {"a, bcdefghij", ""}}));
}

TEST(BeforeOutput, ACardHasTheItemsWithTextAndSource) {
    std::string lines;
    for (const auto& [kind, text, sources, certainty, hedge] : card().lines)
        lines.append(rawValue(kind)).append("|" + text + "|").append(rawValue(certainty)) += '\n';
    EXPECT_EQ(lines,
              "remember|Budget?|read\nremember|Back from leave|recorded\n"
              "theyOwe|The list|recorded\nquestion|Who pays?|recorded\n"
              "opener|One|recorded\nopener|Two|recorded\nopener|Three|recorded\n");
}

TEST(BeforeFile, OnlyAWholeCardIsRead) {
    const std::string file = BeforeFile::render(card(), "Claude", at, 2, berlin);
    EXPECT_EQ(BeforeFile::parse(Text::replacingAll(file, "\n", "\r\n"), berlin), card());
    EXPECT_EQ(card().names(), (std::vector<std::string>{"Ana Ruiz", "Ben"}));
    BeforeCard odd = card();
    odd.title = odd.whoAndWhen = EngineRegion::closeMarker;
    odd.thread = "";
    const std::string oddFile = BeforeFile::render(odd, "Claude", at, 2, berlin);
    EXPECT_TRUE(BeforeFile::parse(oddFile, berlin));
    EXPECT_FALSE(Text::contains(oddFile, "thread"));
    const std::pair<const char*, const char*> damages[] = {{"\nfor:", "\nat:"},
                                                           {"\ntitle:", "\nx:"},
                                                           {"T10:", " 10:"},
                                                           {"-08T10", "-31T10"},
                                                           {"Before\nfor", "Before \nfor"},
                                                           {"<!-- /ombrix", "<!-- "},
                                                           {"---\n<!--", "<!--"}};
    for (const auto& [from, to] : damages)
        EXPECT_FALSE(BeforeFile::parse(Text::replacingAll(file, from, to), berlin)) << to;
}

TEST(BeforeFile, OlderHeadingsAndFormsAreRead) {
    std::string file = BeforeFile::render({.title = "x", .forDate = call}, "Claude", at, 0, berlin);
    const auto place = file.find("## Who and when");
    const std::string old =
        "- no heading yet\n## Not sure\n- a [T]  [U, 2026-09-01] b\n12. c\nprose\n"
        "## Open questions\n- Reads as: d\n- [W]\n## Remember\n-e\n- f\n## Else\n- g\n";
    const auto parsed = BeforeFile::parse(file.insert(place, old), berlin);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->lines,
              (std::vector<BeforeCard::Line>{
                  {.text = "a b",
                   .sources = {{"T", ""}, {"U", "2026-09-01"}},
                   .certainty = Certainty::read},
                  {.text = "c", .certainty = Certainty::read},
                  {.kind = Kind::question, .text = "d", .certainty = Certainty::read},
                  {.text = "f"}}));
}

TEST(BeforeFile, ACardThatIsRenderedReadsBack) {
    std::mt19937 random(11);
    const std::string pieces[] = {"a", "é", "Z", " ", ", ", ": ", "\"", "- ", "2. ", "## "};
    const auto words = [&] {
        std::string text = "x";
        for (auto i = random() % 5; i > 0; --i) text += pieces[random() % std::size(pieces)];
        return text + "x";
    };
    for (int round = 0; round < 500; ++round) {
        BeforeCard card{.title = words(),
                        .forDate = call + std::chrono::seconds(random() % 99999999),
                        .whoAndWhen = (random() % 9 == 0 ? "## " : "") + words(),
                        .writer = Text::replacingAll(words(), "\"", "'"),
                        .writtenAt = at};
        if (random() % 2 == 0) card.thread = words();
        for (auto i = random() % 3; i > 0; --i) card.people.push_back(words());
        for (const auto& [kind, name] : EnumNames::rows<Kind>) {
            for (auto i = random() % 3; i > 0; --i) {
                auto& line =
                    card.lines.emplace_back(BeforeCard::Line{.kind = kind, .text = words()});
                if (random() % 3 == 0) line.certainty = Certainty::read;
                if (random() % 2 == 0) line.sources.push_back({words(), "2026-09-01"});
                if (random() % 2 == 0) line.sources.push_back({words(), ""});
            }
        }
        const std::string file = BeforeFile::render(card, *card.writer, at, 1, berlin);
        const auto read = BeforeFile::parse(file, berlin);
        ASSERT_TRUE(read) << file;
        EXPECT_EQ(BeforeFile::render(*read, *card.writer, at, 1, berlin), file);
        // Of two hours that the clock shows alike, the first is read.
        const auto later = card.forDate - read->forDate;
        EXPECT_TRUE(later == std::chrono::hours(0) || later == std::chrono::hours(1)) << file;
        card.forDate = read->forDate;
        EXPECT_EQ(read, card) << file;
        EXPECT_TRUE(BeforeFile::declares(file));
    }
}

TEST(BeforeFile, ASlugHasNoTwoDashesInARow) {
    const std::string xs(59, 'x');
    const std::pair<std::string, std::string> cases[] = {
        {"Q3: Launch -- plan!", "q3-launch-plan"},
        {"¡Éva!", "-éva"},
        {"...", ""},
        {"e\u0301 三", "e\u0301-三"},
        {xs + ": y", xs},
        {xs + "XX", xs + "x"},
    };
    for (const auto& [text, slug] : cases) EXPECT_EQ(BeforeFile::slug(text), slug);
    EXPECT_EQ(BeforeFile::fileName("2026-09-08", "q3"), "2026-09-08-q3.md");
}
}  // namespace
}  // namespace ombrix

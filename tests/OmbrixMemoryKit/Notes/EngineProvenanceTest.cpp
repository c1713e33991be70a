#include "OmbrixMemoryKit/Notes/EngineProvenance.h"

namespace ombrix {
namespace {

const Instant written = *parseIsoInstant("2026-09-01T23:30:00Z");

TEST(EngineProvenance, IsWrittenInOneLineForMachinesAndOneForPeople) {
    EngineProvenance provenance{.route = EngineProvenance::Route::claudeCode,
                                .model = "claude-sonnet-4-5",
                                .at = written,
                                .version = 2};
    EXPECT_EQ(provenance.machineLine(),
              R"(<!-- ombrix:written-by route="claudeCode" model="claude-sonnet-4-5" )"
              R"(at="2026-09-01T23:30:00Z" v="2" -->)");
    EXPECT_EQ(provenance.humanLine(Calendar("Europe/Berlin", Calendar::Weekday::monday)),
              "_Written by Claude Sonnet 4.5 using your Claude Code on Sep 2, 2026. "
              "Regenerate or delete any time._");
    for (const auto& [route, name] : EnumNames::rows<EngineProvenance::Route>) {
        provenance.route = route;
        EXPECT_EQ(EngineProvenance::parse(" " + provenance.machineLine() + "\n"), provenance);
        provenance.edited = written + std::chrono::hours(7);
        EXPECT_EQ(EngineProvenance::parse(provenance.machineLine()), provenance) << name;
    }
}

TEST(EngineProvenance, IsNotReadFromADamagedLine) {
    const std::string start = "<!-- ombrix:written-by ", at = R"(at="2026-09-01T23:30:00Z" )";
    const struct {
        const char* damage;
        std::string line;
        bool readable;
    } cases[] = {
        {"none", start + R"(route="ombrix" model="" v="1" )" + at + "-->", true},
        {"the date the notes were edited",
         start + R"(route="ombrix" model="m" v="1" )" + at + R"(edited="soon" -->)", true},
        {"an unknown route", start + R"(route="Ombrix" model="m" v="1" )" + at + "-->", false},
        {"no model", start + R"(route="ombrix" v="1" )" + at + "-->", false},
        {"no instant", start + R"(route="ombrix" model="m" v="1" at="2026-09-01" -->)", false},
        {"a version with a fraction", start + R"(route="ombrix" model="m" v="1.0" )" + at + "-->",
         false},
        {"no end", start + R"(route="ombrix" model="m" v="1" )" + at, false},
        {"another comment", R"(<!-- route="ombrix" model="m" v="1" )" + at + "-->", false},
    };
    for (const auto& [damage, line, readable] : cases) {
        const auto parsed = EngineProvenance::parse(line);
        EXPECT_EQ(parsed.has_value(), readable) << damage;
        EXPECT_FALSE(parsed && parsed->edited) << damage;
    }
}

TEST(EngineProvenance, NamesTheModelForPeople) {
    const struct {
        const char *model, *name;
    } cases[] = {
        {"claude-sonnet-4-5", "Claude Sonnet 4.5"},
        {"Claude--OPUS-5-fast", "Claude Opus 5"},
        {"claude-haiku", "Claude Haiku"},
        {"claude-éclair-4.5", "Claude Éclair"},
        {"claude", "Claude"},
        {"-claude-", "Claude"},
        {"gpt-5", "GPT-5"},
        {"GPT-5", "an AI model"},
        {"deepseek-v4-pro", "Auto"},  // in the catalogue, but not in its list
        {"gpt-x", "an AI model"},
        {"", "an AI model"},
    };
    for (const auto& [model, name] : cases)
        EXPECT_EQ(EngineProvenance::writerName(model), name) << model;
}
}  // namespace
}  // namespace ombrix

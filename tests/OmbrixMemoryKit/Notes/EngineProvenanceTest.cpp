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
    const std::string start = "<!-- ombrix:written-by ", at = R"(at="2026-09-01T23:30:00Z" )",
                      route = R"(route="ombrix" )", rest = R"(model="" v="1" )" + at;
    for (const auto& line :
         {start + route + rest + "-->", start + route + rest + R"(edited="soon" -->)",
          start + std::string(200'000, 'x') + " " + route + rest + "-->"}) {
        const auto parsed = EngineProvenance::parse(line);
        ASSERT_TRUE(parsed) << line.substr(0, 99);
        EXPECT_EQ(parsed->edited, std::nullopt);
    }
    for (const auto& line :
         {start + R"(route="Ombrix" )" + rest + "-->", start + route + R"(v="1" )" + at + "-->",
          start + route + R"(model="" v="1" at="2026-09-01" -->)",
          start + route + R"(model="" v="1.0" )" + at + "-->", start + route + rest,
          "<!-- " + route + rest + "-->"})
        EXPECT_FALSE(EngineProvenance::parse(line)) << line;
}

TEST(EngineProvenance, NamesTheModelForPeople) {
    for (const auto& [model, name] : {std::pair{"claude-sonnet-4-5", "Claude Sonnet 4.5"},
                                      {"Claude--OPUS-5-fast", "Claude Opus 5"},
                                      {"claude-éclair-4.5", "Claude Éclair"},
                                      {"-claude-", "Claude"},
                                      {"gpt-5", "GPT-5"},
                                      {"GPT-5", "an AI model"},
                                      {"deepseek-v4-pro", "Auto"},  // in the catalogue, not listed
                                      {"", "an AI model"}})
        EXPECT_EQ(EngineProvenance::writerName(model), name) << model;
}
}  // namespace
}  // namespace ombrix

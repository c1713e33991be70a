#include "OmbrixPlatform/JsonDecoding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "OmbrixPlatform/JsonFault.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

using Json::Array;
using Json::Members;
using Json::Value;

bool isRead(std::string_view text) {
    try {
        Json::parse(text);
        return true;
    } catch (const Json::SyntaxError&) {
        return false;
    }
}

TEST(JsonFault, IsFoundInExactlyWhatIsNotRead) {
    const std::string good =
        R"( {"a\n\u00e9\ud83d\ude00":[true,false,null,-0.5e-3,[],{}],"":{"b":"\\/"}} )";
    const std::string pieces = "{}[],:\"\\ue0d8-+.19tn \n\x01\x7F\xC3";
    const Regex tooLarge(R"(e\+?\d{3})");
    std::mt19937 random(7);
    const auto below = [&](std::size_t n) { return random() % n; };
    for (int round = 0; round < 30'000; ++round) {
        std::string text = good;
        for (std::size_t edits = below(3) + 1; edits > 0; --edits) {
            const auto at = below(text.size());
            text.replace(at, below(3), below(4), pieces[below(pieces.size())]);
        }
        const auto fault = Json::firstFault(text);
        if (const bool mayBeTooLarge = tooLarge.found(text); !mayBeTooLarge) {
            ASSERT_EQ(!fault, isRead(text)) << text << (fault ? fault->problem : "");
        }
        if (fault && !fault->isCut) {
            ASSERT_LT(fault->at, text.size());
        }
    }
    for (std::size_t end = 2; end < good.size() - 1; ++end)
        EXPECT_TRUE(Json::firstFault(good.substr(0, end)).value().isCut) << end;
}

TEST(Json, ReadsWholeTextsOnly) {
    for (const char* good :
         {"null", " [ ] ", "{\"a\":{}}\n", "\"\\u00e9\\ud83d\\ude00\"", "-0.5e-3"}) {
        EXPECT_NO_THROW(Json::parse(good)) << good;
    }
    const std::string nothing(1, '\0');
    const std::string tooLong(400, '9');
    for (const std::string& text : std::vector<std::string>{"",
                                                            " \n",
                                                            "{\"a\":",
                                                            "{} {}",
                                                            "[1]x",
                                                            "[1]]",
                                                            "[1]" + nothing,
                                                            "\xEF\xBB\xBF{}",
                                                            "[1,]",
                                                            "[1 /* one */]",
                                                            "{'a':1}",
                                                            "01",
                                                            "+1",
                                                            "1.",
                                                            "NaN",
                                                            "\"a\nb\"",
                                                            "\"\\ud83d\"",
                                                            "\"\\udc00\"",
                                                            "\"\\x\"",
                                                            "\"\xFF\"",
                                                            "1e999",
                                                            tooLong}) {
        EXPECT_THROW(Json::parse(text), Json::SyntaxError) << test::visible(text);
    }
}

TEST(Json, AParserReadsOneTextAfterTheOther) {
    test::RandomText random(11);
    Json::Parser parser;
    const auto readWith = [](auto read) -> std::optional<Value> {
        try {
            return read();
        } catch (const Json::SyntaxError&) {
            return std::nullopt;
        }
    };
    constexpr std::string_view pieces[] = {
        "[", "]", "{\"a\":", "}", ",", "12345678901234567890", "1", "\"x\"", "null", " ", "\xFF"};
    for (int round = 0; round < 3000; ++round) {
        std::string text(random.below(700), '[');
        for (std::size_t left = random.below(4); left > 0; --left) text += random.from(pieces);
        text.append(std::count(text.begin(), text.end(), '['), ']');
        EXPECT_EQ(readWith([&] { return parser.parse(text).value(); }),
                  readWith([&] { return Json::parse(text); }))
            << test::visible(text);
    }
}

/// Lists and objects by turns, as `choose` says, around the innermost text.
std::string nested(std::size_t depth, std::string_view innermost, auto choose) {
    std::string open;
    std::string close;
    for (std::size_t i = 0; i < depth; ++i) {
        const bool list = choose();
        open += list ? "[" : "{\"a\":";
        close += list ? ']' : '}';
    }
    return open + std::string(innermost) + std::string(close.rbegin(), close.rend());
}

TEST(Json, NestsTo512WhateverTheBrackets) {
    std::mt19937 random(11);
    const auto any = [&] { return random() % 2 == 0; };
    const auto lists = [] { return true; };
    const auto objects = [] { return false; };
    for (const std::string_view empty : {"[]", "{}"}) {
        EXPECT_NO_THROW(Json::parse(nested(511, empty, any))) << empty;
        EXPECT_THROW(Json::parse(nested(512, empty, any)), Json::SyntaxError) << empty;
    }
    EXPECT_NO_THROW(Json::parse(nested(512, "1", lists)));
    EXPECT_NO_THROW(Json::parse(nested(512, "1", objects)));
    EXPECT_NO_THROW(Json::parse(nested(512, "1", any)));
    EXPECT_THROW(Json::parse(nested(513, "1", lists)), Json::SyntaxError);
    EXPECT_THROW(Json::parse(nested(513, "1", objects)), Json::SyntaxError);
    EXPECT_THROW(Json::parse(nested(100'000, "1", any)), Json::SyntaxError);
}

TEST(Json, NumbersKeepTheirKind) {
    const struct {
        const char* text;
        Value value;
        std::optional<std::int64_t> integer;
    } cases[] = {
        {"3", std::int64_t{3}, 3},
        {"3.0", 3.0, 3},
        {"3.5", 3.5, {}},
        {"9223372036854775807", std::int64_t{INT64_MAX}, INT64_MAX},
        {"-9223372036854775808", std::int64_t{INT64_MIN}, INT64_MIN},
        {"9223372036854775808", 9223372036854775808.0, {}},
        {"-9223372036854775809", -9223372036854775808.0, INT64_MIN},
        {"0.10000000000000000000000000001", 0.1, {}},
        {"1e0000000000000000000000001", 10.0, 10},
        {"\"3\"", "3", {}},
    };
    for (const auto& [text, value, integer] : cases) {
        EXPECT_EQ(Json::parse(text), value) << text;
        EXPECT_EQ(Json::parse(text).integer(), integer) << text;
    }
    EXPECT_EQ(Json::parse("{\"99999999999999999999\":[-99999999999999999999,1]}"),
              (Members{{"99999999999999999999", Array{-1e20, 1}}}))
        << "digits in a string are no number";
    EXPECT_EQ(Json::parse("{\"a\":1,\"b\":2,\"a\":3}"), (Members{{"a", 3}, {"b", 2}}));
}

// ---- records ------------------------------------------------------------------------------------

enum class Colour { red, darkBlue };
constexpr auto rawValues(Colour) {
    return EnumNames::table<Colour>({{Colour::red, "red"}, {Colour::darkBlue, "dark-blue"}});
}

struct Part {
    std::string name;
    std::optional<int> count = {};
    bool operator==(const Part&) const = default;
};

Json::Value encode(const Part& part) {
    return Json::object({{"name", part.name}, {"count", part.count}});
}

Part decode(Json::As<Part>, const Json::Object& in) {
    return {.name = in.required<std::string>("name"), .count = in.optional<int>("count")};
}

struct Whole {
    std::vector<Part> parts;
    std::map<std::string, std::vector<Part>> byRoom;
    std::map<Colour, double> shares;
    std::set<Colour> colours;
    std::vector<std::optional<std::int64_t>> numbers;
    std::optional<Part> spare;
    std::optional<bool> isNew;
    bool operator==(const Whole&) const = default;
};

Json::Value encode(const Whole& whole) {
    return Json::object({{"parts", whole.parts},
                         {"byRoom", whole.byRoom},
                         {"shares", whole.shares},
                         {"colours", whole.colours},
                         {"numbers", whole.numbers},
                         {"spare", whole.spare},
                         {"isNew", whole.isNew}});
}

Whole decode(Json::As<Whole>, const Json::Object& in) {
    return {.parts = in.required<std::vector<Part>>("parts"),
            .byRoom = in.required<std::map<std::string, std::vector<Part>>>("byRoom"),
            .shares = in.required<std::map<Colour, double>>("shares"),
            .colours = in.required<std::set<Colour>>("colours"),
            .numbers = in.required<std::vector<std::optional<std::int64_t>>>("numbers"),
            .spare = in.optional<Part>("spare"),
            .isNew = in.optional<bool>("isNew")};
}

constexpr const char* wholeText =
    R"({"byRoom":{"hall":[{"count":2,"name":"lamp"}],"loft":[]},"colours":["red","dark-blue"],)"
    R"("isNew":true,"numbers":[3,null],"parts":[{"name":"seat"}],"shares":{"dark-blue":0.5},)"
    R"("spare":{"count":-1,"name":"bolt"}})";

TEST(Json, RecordsListsMapsAndEnumerationsCompose) {
    const Whole whole{.parts = {{.name = "seat"}},
                      .byRoom = {{"hall", {{.name = "lamp", .count = 2}}}, {"loft", {}}},
                      .shares = {{Colour::darkBlue, 0.5}},
                      .colours = {Colour::red, Colour::darkBlue},
                      .numbers = {3, std::nullopt},
                      .spare = Part{.name = "bolt", .count = -1},
                      .isNew = true};
    EXPECT_EQ(Json::write(encode(whole), Json::Style::canonical), wholeText);
    EXPECT_EQ(Json::decode<Whole>(wholeText), whole);
}

/// A text that knows when it is copied.
struct Tracked {
    std::string text;
    int* copies;
    Tracked(std::string t, int* c) : text(std::move(t)), copies(c) {}
    Tracked(const Tracked& other) : text(other.text), copies(other.copies) { ++*copies; }
    Tracked(Tracked&&) = default;
};
Json::Value encode(Tracked tracked) { return std::move(tracked.text); }

TEST(Json, AnObjectMovesWhatItIsGiven) {
    int copies = 0;
    std::vector<Tracked> list;
    list.reserve(2);
    list.emplace_back("one", &copies);
    list.emplace_back("two", &copies);
    const std::string text(100, 'x');
    Json::Value inner = Json::object({{"text", text}});
    const char* const bytes = inner.member("text")->string()->data();
    const Json::Value outer = Json::object({{"list", std::move(list)}, {"in", std::move(inner)}});
    EXPECT_EQ(copies, 0);
    EXPECT_EQ(outer.member("in")->member("text")->string()->data(), bytes);
}

/// The message that decoding a `Whole` ends with, when `from` in its text is replaced by `to`.
std::string problem(std::string_view from, std::string_view to, Json::Reading reading) {
    const std::string text = Text::replacingAll(wholeText, from, to);
    try {
        Json::decode<Whole>(text, reading);
    } catch (const Json::DecodingError& error) {
        return error.what();
    }
    return "none";
}

TEST(Json, AFieldOfTheWrongShapeIsNamedByItsPath) {
    const struct {
        const char *from, *to, *message;
    } cases[] = {
        {"\"numbers\"", "\"Numbers\"", "numbers: missing"},
        {"[3,null]", "null", "numbers: missing"},
        {"[3,null]", "[3.0]", "none"},
        {"[3,null]", "[1,3.5]", "numbers[1]: not an integer"},
        {"[3,null]", "[1,\"3\"]", "numbers[1]: not an integer"},
        {":2,", ":true,", "byRoom.hall[0].count: not an integer"},
        {":-1,", ":3000000000,", "spare.count: an integer out of range"},
        {"\"lamp\"", "7", "byRoom.hall[0].name: not a string"},
        {"\"loft\":[]", "\"loft\":{}", "byRoom.loft: not a list"},
        {"[{\"name\":\"seat\"}]", "[{\"name\":\"a\"},[]]", "parts[1]: not an object"},
        {"true", "1", "isNew: not a boolean"},
        {"0.5", "\"half\"", "shares.dark-blue: not a number"},
        {"{\"dark-blue\"", "{\"blue\"", "shares.blue: unknown key"},
        {"\"red\"", "\"Red\"", "colours[0]: unknown value \"Red\""},
        {"\"isNew\":true", "\"isNew\":null,\"other\":[{}]", "none"},
        {"\"isNew\":true", "\"isNew\":1,\"isNew\":false", "none"},  // the last one counts
        {"\"isNew\":true", "\"isNew\":false,\"isNew\":1", "isNew: not a boolean"},
    };
    for (const auto& [from, to, message] : cases)
        EXPECT_EQ(problem(from, to, Json::Reading::stored), message) << from << " " << to;
    EXPECT_THROW(Json::decode<Whole>("[]"), Json::DecodingError);
    EXPECT_THROW(Json::decode<Whole>("{"), Json::SyntaxError);
}

TEST(Json, AModelsAnswerHoldsWhatItsRecordKnowsAndNothingElse) {
    const struct {
        const char *from, *to, *message;
    } cases[] = {
        {"{\"name\":\"seat\"}", "{\"name\":\"seat\",\"count\":null}", "none"},
        {"seat", "seat", "parts[0].count: missing"},
        {"{\"name\":\"seat\"}", "{\"name\":\"seat\",\"count\":1,\"c\":2}",
         "parts[0].c: unknown key"},
        {"{\"name\":\"seat\"}],", "{\"name\":\"seat\",\"count\":1}],\"x\":0,", "x: unknown key"},
    };
    for (const auto& [from, to, message] : cases)
        EXPECT_EQ(problem(from, to, Json::Reading::answer), message) << to;
}

// A temporary document or value would be gone before its record is read.
static_assert(!std::is_constructible_v<Json::Object, Json::Value>);
template <typename Document>
concept GivesRoot = requires(Document&& document) {
    std::forward<Document>(document).root();
};
static_assert(GivesRoot<Json::Document&> && !GivesRoot<Json::Document>);

TEST(Json, WritesThreeStyles) {
    const std::optional<std::string> absent;
    std::optional<std::string> there = "yes";
    const Value value = Json::object({{"b/c", Array{1, Members{}, Array{}}},
                                      {"a", "x/y"},
                                      {"absent", absent},
                                      {"there", there},
                                      {"nothing", nullptr},
                                      {"Z", 30.0},
                                      {"\u00E9", false}});
    EXPECT_EQ(Json::write(value, Json::Style::envelope),
              "{\n  \"Z\" : 30,\n  \"a\" : \"x\\/y\",\n  \"b\\/c\" : [\n    1,\n    {},\n    []\n  "
              "],\n  \"nothing\" : null,\n  \"there\" : \"yes\",\n  \"\u00E9\" : false\n}");
    EXPECT_EQ(Json::write(value, Json::Style::canonical),
              "{\"Z\":30,\"a\":\"x/y\",\"b/c\":[1,{},[]],\"nothing\":null,\"there\":\"yes\","
              "\"\u00E9\":false}");
    EXPECT_EQ(Json::write(Members{{"a/b", "c/d"}}, Json::Style::file), "{\n  \"a/b\" : \"c/d\"\n}");
}

TEST(Json, EscapesControlCharactersAndNothingMore) {
    const std::string text = std::string("\b\f\n\r\t\"\\", 7) + std::string("\0\x01\x1F\x7F", 4) +
                             "\u00E9\u2028\U0001F600\xFF";
    EXPECT_EQ(Json::write(text, Json::Style::canonical),
              "\"\\b\\f\\n\\r\\t\\\"\\\\\\u0000\\u0001\\u001f\x7F\u00E9\u2028\U0001F600\uFFFD\"");
    EXPECT_THROW(Json::write(std::nan(""), Json::Style::file), Json::EncodingError);
    EXPECT_THROW(Json::write(Array{-HUGE_VAL}, Json::Style::file), Json::EncodingError);
}

Value randomValue(test::RandomText& random, std::size_t depth) {
    const std::size_t kind = random.below(depth == 0 ? 5 : 7);
    if (kind == 0) return nullptr;
    if (kind == 1) return random.below(2) == 0;
    if (kind == 2) return static_cast<std::int64_t>(random.below(1U << 31U)) << random.below(33);
    if (kind == 3) return static_cast<double>(random.below(1U << 31U)) / 1000 + 0.0001;
    if (kind == 4) return Utf8::repaired(random.any());
    Array list;
    Members members;
    for (std::size_t i = random.below(4); i > 0; --i) {
        list.push_back(randomValue(random, depth - 1));
        members.emplace(Utf8::repaired(random.mixed(3, 3)), list.back());
    }
    if (kind == 5) return list;
    return members;
}

TEST(Json, WhatWasWrittenReadsBack) {
    // As "-0" it would be read as an integer, and the next writing would lose the sign.
    EXPECT_EQ(Json::write(-0.0, Json::Style::canonical), "0");
    test::RandomText random(12);
    for (int round = 0; round < 500; ++round) {
        const Value value = randomValue(random, 4);
        for (const auto style :
             {Json::Style::envelope, Json::Style::file, Json::Style::canonical}) {
            const std::string text = Json::write(value, style);
            ASSERT_EQ(Json::parse(text), value) << text;
            ASSERT_EQ(Json::write(Json::parse(text), style), text);
        }
    }
}
}  // namespace
}  // namespace ombrix

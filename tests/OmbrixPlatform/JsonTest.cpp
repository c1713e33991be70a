#include "OmbrixPlatform/Json.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

using Json::Array;
using Json::Members;
using Json::Object;
using Json::Value;

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
                                                            "\"\\x\"",
                                                            "\"\xFF\"",
                                                            "1e999",
                                                            tooLong}) {
        EXPECT_THROW(Json::parse(text), Json::SyntaxError) << test::visible(text);
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

/// The message that decoding ends with.
std::string problem(const auto& decode) {
    try {
        decode();
    } catch (const Json::DecodingError& error) {
        return error.what();
    }
    return "none";
}

TEST(Json, AFieldOfTheWrongShapeIsNamedByItsPath) {
    const Value value = Json::parse(R"({"n": null, "i": 3.0, "big": 3000000000, "half": 3.5,
        "text": "3", "yes": true, "tags": ["a", 1], "list": [{}, []],
        "map": {"k": 1}})");
    const Object in(value);
    EXPECT_EQ(in.required<int>("i"), 3);
    EXPECT_EQ(in.required<std::int64_t>("big"), 3'000'000'000);
    EXPECT_EQ(in.optional<std::string>("n"), std::nullopt);
    EXPECT_TRUE(in.optionalObjects("n").empty());
    EXPECT_EQ((in.required<std::map<std::string, double>>("map")),
              (std::map<std::string, double>{{"k", 1}}));
    const struct {
        const char* message;
        std::function<void()> decode;
    } cases[] = {
        {"n: missing", [&] { in.required<std::string>("n"); }},
        {"list: not an object", [&] { in.requiredObject("list"); }},
        {"list[1]: not an object", [&] { in.requiredObjects("list"); }},
        {"half: not an integer", [&] { in.required<int>("half"); }},
        {"yes: not an integer", [&] { in.optional<std::int64_t>("yes"); }},
        {"yes: not a number", [&] { in.optional<double>("yes"); }},
        {"i: not a boolean", [&] { in.optional<bool>("i"); }},
        {"i: not a string", [&] { in.optional<std::string>("i"); }},
        {"big: an integer out of range", [&] { in.required<int>("big"); }},
        {"tags[1]: not a string", [&] { in.required<std::vector<std::string>>("tags"); }},
        {"text: not a list", [&] { in.required<std::vector<std::string>>("text"); }},
        {"map.k: not a string", [&] { in.required<std::map<std::string, std::string>>("map"); }},
        {"the record: not an object", [] { Object(Value(7)); }},
    };
    for (const auto& [message, decode] : cases) EXPECT_EQ(problem(decode), message);
    const Value items = Json::parse(R"({"list": [{}, {"in": {"x": 7}}]})");
    const auto objects = Object(items, "record").requiredObjects("list");
    EXPECT_EQ(objects[1].requiredObject("in").required<int>("x"), 7);
    EXPECT_EQ(problem([&] { objects[1].requiredObject("in").required<std::string>("x"); }),
              "record.list[1].in.x: not a string");
}

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

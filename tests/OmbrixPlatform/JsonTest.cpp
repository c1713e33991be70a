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
    const struct {
        const char* why;
        std::string text;
    } cases[] = {
        {"empty", ""},
        {"blank", " \n"},
        {"cut short", "{\"a\":"},
        {"a second value", "{} {}"},
        {"a letter behind", "[1]x"},
        {"a closing bracket too many", "[1]]"},
        {"a NUL behind", std::string("[1]\0", 4)},
        {"a byte order mark", "\xEF\xBB\xBF{}"},
        {"a trailing comma", "[1,]"},
        {"a comment", "[1 /* one */]"},
        {"single quotes", "{'a':1}"},
        {"a leading zero", "01"},
        {"a plus", "+1"},
        {"a bare point", "1."},
        {"not a number", "NaN"},
        {"a line feed in a string", "\"a\nb\""},
        {"half a surrogate pair", "\"\\ud83d\""},
        {"an unknown escape", "\"\\x\""},
        {"bytes that are no UTF-8", "\"\xFF\""},
        {"beyond a double", "1e999"},
        {"a long integer beyond a double", std::string(400, '9')},
    };
    for (const auto& [why, text] : cases) EXPECT_THROW(Json::parse(text), Json::SyntaxError) << why;
}

TEST(Json, NestsTo512WhateverTheBrackets) {
    std::mt19937 random(11);
    for (int round = 0; round < 40; ++round) {
        for (const std::size_t depth : {511U, 512U, 513U, 100'000U}) {
            for (const std::string_view innermost : {"", "1"}) {
                std::string open;
                std::string close;
                for (std::size_t i = 0; i < depth; ++i) {
                    const bool list = round < 2 ? round == 0 : random() % 2 == 0;
                    const bool last = i + 1 == depth && innermost.empty();
                    open += list ? "[" : last ? "{" : "{\"a\":";
                    close.insert(close.begin(), list ? ']' : '}');
                }
                const std::string text = open + std::string(innermost) + close;
                if (depth <= Json::maximalDepth) {
                    EXPECT_NO_THROW(Json::parse(text)) << depth << " '" << innermost << "'";
                } else {
                    EXPECT_THROW(Json::parse(text), Json::SyntaxError)
                        << depth << " '" << innermost << "'";
                }
                if (depth == 100'000U) break;
            }
        }
    }
}

TEST(Json, NumbersKeepTheirKind) {
    const struct {
        const char* text;
        Value value;
        std::optional<std::int64_t> integer;
    } cases[] = {
        {"3", std::int64_t{3}, 3},
        {"3.0", 3.0, 3},
        {"3e2", 300.0, 300},
        {"3.5", 3.5, {}},
        {"-0", std::int64_t{0}, 0},
        {"9223372036854775807", std::int64_t{INT64_MAX}, INT64_MAX},
        {"-9223372036854775808", std::int64_t{INT64_MIN}, INT64_MIN},
        {"9223372036854775808", 9223372036854775808.0, {}},
        {"18446744073709551616", 18446744073709551616.0, {}},
        {"-9223372036854775809", -9223372036854775808.0, INT64_MIN},
        {"100000000000000000000000000", 1e26, {}},
        {"0.10000000000000000000000000001", 0.1, {}},
        {"1e0000000000000000000000001", 10.0, 10},
        {"\"3\"", "3", {}},
        {"true", true, {}},
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
template <typename Decode>
std::string problem(Decode decode) {
    try {
        decode();
    } catch (const Json::DecodingError& error) {
        return error.what();
    }
    return "none";
}

TEST(Json, AFieldOfTheWrongShapeIsNamedByItsPath) {
    const Value value = Json::parse(R"({"n": null, "i": 3.0, "big": 3000000000, "half": 3.5,
        "text": "3", "yes": true, "tags": ["a", 1], "list": [{"in": {"x": "y"}}, {"in": 7}, []],
        "map": {"k": 1}})");
    const Object in(value);
    EXPECT_EQ(in.required<int>("i"), 3);
    EXPECT_EQ(in.required<double>("i"), 3.0);
    EXPECT_EQ(in.required<std::int64_t>("big"), 3'000'000'000);
    EXPECT_EQ(in.optional<std::string>("n"), std::nullopt);
    EXPECT_EQ(in.optional<std::string>("missing"), std::nullopt);
    EXPECT_TRUE(in.optionalObjects("n").empty());
    EXPECT_EQ((in.required<std::map<std::string, double>>("map")),
              (std::map<std::string, double>{{"k", 1}}));
    const struct {
        const char* message;
        std::function<void()> decode;
    } cases[] = {
        {"n: missing", [&] { in.required<std::string>("n"); }},
        {"missing: missing", [&] { in.required<bool>("missing"); }},
        {"list: not an object", [&] { in.requiredObject("list"); }},
        {"missing: missing", [&] { in.requiredObjects("missing"); }},
        {"half: not an integer", [&] { in.required<int>("half"); }},
        {"text: not an integer", [&] { in.optional<int>("text"); }},
        {"yes: not an integer", [&] { in.optional<std::int64_t>("yes"); }},
        {"yes: not a number", [&] { in.optional<double>("yes"); }},
        {"i: not a boolean", [&] { in.optional<bool>("i"); }},
        {"i: not a string", [&] { in.optional<std::string>("i"); }},
        {"big: an integer out of range", [&] { in.required<int>("big"); }},
        {"tags[1]: not a string", [&] { in.required<std::vector<std::string>>("tags"); }},
        {"text: not a list", [&] { in.required<std::vector<std::string>>("text"); }},
        {"list[2]: not an object", [&] { in.requiredObjects("list"); }},
        {"map.k: not a string", [&] { in.required<std::map<std::string, std::string>>("map"); }},
        {"the record: not an object", [] { Object(Value(7)); }},
    };
    for (const auto& [message, decode] : cases) EXPECT_EQ(problem(decode), message);
    const Value items = Json::parse(R"({"list": [{"in": {"x": "y"}}, {"in": {"x": 7}}]})");
    const auto objects = Object(items, "record").requiredObjects("list");
    EXPECT_EQ(objects[0].requiredObject("in").required<std::string>("x"), "y");
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
    EXPECT_EQ(Json::write(Array{}, Json::Style::envelope), "[]");
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
    switch (random.below(depth == 0 ? 5 : 7)) {
        case 0:
            return nullptr;
        case 1:
            return random.below(2) == 0;
        case 2:
            return static_cast<std::int64_t>(random.below(1U << 31U)) << random.below(33);
        case 3:
            return static_cast<double>(random.below(1U << 31U)) / 1000 + 0.0001;
        case 4:
            return Utf8::repaired(random.any());
        case 5: {
            Array list;
            for (std::size_t i = random.below(4); i > 0; --i)
                list.push_back(randomValue(random, depth - 1));
            return list;
        }
        default: {
            Members members;
            for (std::size_t i = random.below(4); i > 0; --i)
                members.emplace(Utf8::repaired(random.mixed(3, 3)), randomValue(random, depth - 1));
            return members;
        }
    }
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

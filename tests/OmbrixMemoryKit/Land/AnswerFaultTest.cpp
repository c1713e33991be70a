// A refused answer teaches: what every decoder says about it, and where.
#include "OmbrixMemoryKit/Land/AnswerFault.h"

#include <gtest/gtest.h>

#include <functional>

#include "OmbrixMemoryKit/Memory/BeforeModels.h"
#include "OmbrixMemoryKit/Moves/PrepareOutput.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

/// A decoder and an answer that it takes.
struct Step {
    std::function<void(const std::string&)> take;
    std::string good;
};
const Step land{[](const std::string& text) { LandOutput::decode(text); },
                R"({"version":1,"summary":"It rained.","notes":[{"topic":"Rain",
"bullets":["Much."]}],"decisions":[],"open_questions":[],"commitments":[{"direction":"user_owes",
"who":"Ana","who_key":"name:ana","what":"Bring it","quote":"","speaker":"Me","due_raw":"",
"due":"2026-09-04","certainty":"read"}],"resolutions":[],"memory":[],"unresolved_speakers":[],
"not_sure":["A joke?"]})"};
const Step consolidate{[](const std::string& text) { ConsolidateOutput::decode(text); },
                       R"({"version":1,"kind":"person","who":[],"what_this_is":[],
"through_line":"","decisions":[],"open":[{"text":"a","direction":"other","due":"2026-09-04",
"sources":[]}],"not_sure":[]})"};
const Step before{[](const std::string& text) { BeforeOutput::decodeOrRefuse(text); },
                  R"({"version":1,"who_and_when":"","not_sure":[],"you_owe":[],"they_owe":[],
"unanswered":[],"changed_since":[],"openers":[{"text":"a","sources":[]},{"text":"b","sources":[]},
{"text":"c","sources":[]}]})"};
const Step prepare{[](const std::string& text) {
                       const auto output = PrepareOutput::decode(text);
                       output.validate({"t1"});
                       output.validateCommitments({"c-1"});
                   },
                   R"({"version":1,"not_sure":[],"moves":[{"key":"call",
"commitment_ids":["c-1"],"kind":"prompt","stance":"stated","title":"","recipients":[],"due":null,
"hedge":null,"idea":null,"blocks":[{"id":"b","label":"","lines":[{"id":"l","text":"",
"claim_ids":["c1"]}]}],"unresolved":[],"claims":[{"id":"c1","gist":"","role":"open",
"turn_ids":["t1"]}],"invite":null,"email":null}]})"};

/// The fault as one line: the rule and the message.
std::string refusal(const Step& step, const std::string& answer) {
    try {
        step.take(answer);
        return "taken";
    } catch (const RefusedAnswer& error) {
        EXPECT_EQ(error.what(), error.fault().message());
        return std::string(rawValue(error.fault().rule)) + " | " + error.what();
    }
}

TEST(AnswerFault, SaysTheRuleThePlaceAndTheWords) {
    const struct {
        const Step& step;
        const char *from, *to, *expected;
    } cases[] = {
        {land, "\"version\":1", "\"version\":3", "version | version: must be 1, not 3"},
        {land, "\"Bring it\"", "[1]", "shape | commitments[0].what: not a string: a list"},
        {land, "\"Bring it\"", "12", "shape | commitments[0].what: not a string: 12"},
        {land, "\"what\":\"Bring it\",", "", "shape | commitments[0].what: missing"},
        {land, "user_owes", "me", "shape | commitments[0].direction: unknown value \"me\""},
        {land, "\"Rain\"", "\" decisions\"",
         "notes | notes[0].topic: this is no topic; name what was talked about: \"decisions\""},
        {land, "\"Much.\"", "\"a\",\" \"", "notes | notes[0].bullets[1]: empty: \" \""},
        {land, "\"Much.\"", "\"a\",\"a\",\"a\",\"a\"",
         "notes | notes[0].bullets: 4 bullets, and 3 at most"},
        {land, "2026-09-04", "2026-02-30",
         "day | commitments[0].due: \"2026-02-30\" is no day; write YYYY-MM-DD, or null"},
        {land, "A joke?", "As I think, no",
         "commentary | not_sure[0]: \"I think\" is about how the record was made; say what the "
         "meeting said"},
        {consolidate, "2026-09-04", "Friday",
         "day | open[0].due: \"Friday\" is no day; write YYYY-MM-DD, or null"},
        {consolidate, "\"other\"", "null", "shape | open[0].direction: missing: null"},
        {before, "\"version\":1", "\"version\":3", "version | version: before output version 3"},
        {before, "{\"text\":\"b\",\"sources\":[]},", "",
         "openers | openers: before output needs three openers: 2"},
        {before, "\"text\":\"b\"", "\"test\":\"b\"", "shape | openers[1].text: missing"},
        {prepare, "\"version\":1", "\"version\":1,\"more\":{}",
         "shape | more: unknown key: an object"},
        {prepare, "\"hedge\":null,", "", "shape | moves[0].hedge: missing"},
        {prepare, "\"email\":null", R"("email":{"to":[],"subject":""})",
         "kind | moves[0].email: only a message has one; write null, or another kind: prompt"},
        {prepare, R"("claim_ids":["c1"])", R"("claim_ids":["c1","c9"])",
         "citation | moves[0].blocks[0].lines[0].claim_ids[1]: no claim \"c9\" in this move"},
        {prepare, R"(["c1"])", "[]",
         "citation | moves[0].blocks[0].lines[0].claim_ids: none, and a line rests on at least one "
         "claim"},
        {prepare, "\"t1\"", "\"t7\"",
         "citation | moves[0].claims[0].turn_ids[0]: no turn \"t7\" in the input"},
        {prepare, "c-1", "c-2",
         "citation | moves[0].commitment_ids[0]: no commitment \"c-2\" in the input"},
    };
    for (const auto& [step, from, to, expected] : cases) {
        ASSERT_TRUE(Text::contains(step.good, from)) << from;
        EXPECT_EQ(refusal(step, step.good), "taken");
        EXPECT_EQ(refusal(step, Text::replacingAll(step.good, from, to)), expected);
    }
}

TEST(AnswerFault, SaysHowAnAnswerIsNoJson) {
    const std::string utf16("{\0\"\0", 4);
    const std::pair<std::string, const char*> cases[] = {
        {" \n", "the answer is empty"},
        {utf16, "the answer is UTF-16; send UTF-8"},
        {"\xEF\xBB\xBF{}", "the answer begins with a byte order mark; send it without"},
        {"{\"\xC3\"}", "the answer is not UTF-8"},
        {"```json\n{}\n```", "the answer is fenced in Markdown; send the JSON alone: ```json"},
        {"Sure! Here it is:\n{}", "words before the JSON; send the JSON alone: Sure! Here it is:"},
        {"I cannot.", "the answer holds no JSON object: I cannot."},
        {"{\"a\": {\"b\": \"one tw",
         "the answer is cut off: the text ends inside a string; send it whole: {\"a\": {\"b\": "
         "\"one tw"},
        {"{\"a\":\n1,}", "not JSON in line 2: a key in double quotes was expected: }"},
        {"{} Done.", "not JSON in line 1: something follows the JSON: Done."},
        {"{\"a\": \"b\nc\"}", "not JSON in line 1: a line end inside a string; write \\n: c\"}"},
    };
    for (const auto& [answer, expected] : cases)
        for (const auto* step : {&land, &consolidate, &before, &prepare})
            EXPECT_EQ(refusal(*step, answer), std::string("json | ") + expected);
    // Every beginning of an answer is known as one.
    for (std::size_t end = 1; end < prepare.good.size(); ++end)
        EXPECT_TRUE(refusal(prepare, prepare.good.substr(0, end))
                        .starts_with("json | the answer is cut off: "))
            << end;
}
}  // namespace
}  // namespace ombrix
